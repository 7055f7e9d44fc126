// What the tests of the page share: reviews to look at, a browser, and what holds for every page that is opened.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { mkdtempSync, rmSync, writeFileSync } from 'node:fs';
import { createRequire } from 'node:module';
import { tmpdir } from 'node:os';
import { join } from 'node:path';
import { after, before } from 'node:test';
import { pathToFileURL } from 'node:url';

const { WRITE_REVIEW, NPM_DIRECTORY, BROWSER } = process.env;
export const packages = createRequire(join(NPM_DIRECTORY, 'package.json'));

export const languages = ['en', 'zh', 'de', 'fr', 'ja', 'es'];
/// Milliseconds after which something hangs; a busy machine is slow.
const kPatience = 180000;
export const keys = ['q', 'kind', 'risk', 'origin', 'decision', 'since', 'report'];

let browser = null;
let directory = null;

before(async () => {
  directory = mkdtempSync(join(tmpdir(), 'upgradesrv-page-'));
  browser = await packages('playwright-core').chromium.launch({
    executablePath: BROWSER,
    // A browser of root has no sandbox; the pages are our own.
    args: process.getuid() === 0 ? ['--no-sandbox'] : [],
  });
});

after(async () => {
  await browser?.close();
  if (directory) rmSync(directory, { recursive: true });
});

const texts = new Map();

/// A review as text, in any format.
export function written(review, format, language = 'en') {
  const key = `${review} ${format} ${language}`;
  if (!texts.has(key)) texts.set(key, execFileSync(WRITE_REVIEW, key.split(' '), { maxBuffer: 1 << 30 }).toString());
  return texts.get(key);
}

/// The findings of a review as the saved one has them, each with what the page's filters ask for.
export function findingsOf(review) {
  const saved = JSON.parse(written(review, 'json'));
  const key = ({ path, change }) => `${path}\n${change}`;
  const outdated = new Set(saved.outdated.map(key));
  const expired = new Set(saved.expired.map(key));
  return saved.findings.map((finding) => {
    const decision = finding.accepted ? 'accepted'
      : outdated.has(key(finding)) ? 'outdated'
      : expired.has(key(finding)) ? 'expired' : 'open';
    const isBad = finding.risk === 'loss' || finding.risk === 'block' || finding.origin === 'both';
    return { ...finding, kind: finding.path.split('/')[0], decision, isToDecide: decision !== 'accepted' && isBad };
  });
}

/// Writes a page to a file and gives its address.
export function pageOf(review, language = 'en') {
  const file = join(directory, `${review}.${language}.html`);
  writeFileSync(file, written(review, 'html', language));
  return pathToFileURL(file).href;
}

/// Opens an address in a context of its own for `look`. Whatever the page is, it must ask for nothing but itself, say
/// nothing on the console, and open no dialog. `beforeOpening` is called with the page that is still empty.
export async function open(address, { beforeOpening, ...options }, look) {
  const context = await browser.newContext({ viewport: { width: 1440, height: 900 }, ...options });
  try {
    context.setDefaultTimeout(kPatience);
    const page = await context.newPage();
    const trouble = [];
    page.on('console', (message) => trouble.push(`console: ${message.text()}`));
    page.on('pageerror', (error) => trouble.push(`error: ${error.message}`));
    page.on('dialog', async (dialog) => {
      trouble.push(`dialog: ${dialog.message()}`);
      await dialog.dismiss();
    });
    page.on('request', (request) => {
      if (request.url().split('#')[0] !== address.split('#')[0]) trouble.push(`request: ${request.url()}`);
    });
    await beforeOpening?.(page, context);
    await page.goto(address);
    await look(page, context);
    assert.deepEqual(trouble, []);
  } finally {
    await context.close();
  }
}

/// The ids of the findings whose rows are shown among all differences, folded or not.
export function shownIds(page) {
  return page.evaluate(() => Array.from(document.querySelectorAll('.element:not([hidden]) tr[id]:not([hidden])'),
    (row) => row.id.slice(2)));
}

/// Fills in the form and sends it off; the page follows at once.
export async function choose(page, choice) {
  await page.locator('#filter').evaluate((form, values) => {
    for (const [key, value] of Object.entries(values)) {
      const field = form.elements[key];
      if (field.type === 'checkbox') field.checked = value === field.value;
      else field.value = value;
    }
    form.requestSubmit();
  }, choice);
}

/// Whether a finding is among those that a choice of the form asks for, its text aside.
export function isAmong(finding, choice) {
  return (!choice.kind || finding.kind === choice.kind) && (!choice.risk || finding.risk === choice.risk) &&
    (!choice.origin || finding.origin === choice.origin) && (!choice.since || finding.since === choice.since) &&
    (!choice.report || !finding.reported) &&
    (!choice.decision || finding.decision === choice.decision ||
      (choice.decision === 'open' && finding.decision !== 'accepted') ||
      (choice.decision === 'decide' && finding.isToDecide));
}
