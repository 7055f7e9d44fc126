import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { test } from 'node:test';
import { choose, findingsOf, isAmong, open, pageOf } from './support.mjs';

/// The text of the page on paper, without the places where its lines end.
async function printed(page) {
  const pdf = await page.pdf({ preferCSSPageSize: true });
  const size = execFileSync('pdfinfo', ['-'], { input: pdf }).toString().match(/Page size:\s+([\d.]+) x ([\d.]+)/);
  assert.ok(Math.abs(size[1] - 595) < 2 && Math.abs(size[2] - 842) < 2, 'A4');
  return execFileSync('pdftotext', ['-', '-'], { input: pdf, maxBuffer: 1 << 28 }).toString().replace(/\s+/g, '');
}

const nameOf = (finding) => finding.path.split('/')[3];

test('paper has all findings, folded or not', async () => {
  const findings = findingsOf(600);
  await open(pageOf(600), {}, async (page) => {
    assert.equal(await page.locator('.element[open]').count(), 0);
    const text = await printed(page);
    assert.deepEqual(findings.map(nameOf).filter((name) => !text.includes(name)), []);
    assert.ok(!text.includes('Filter:'));
  });
});

test('paper has what is filtered, and says what that is', async () => {
  const findings = findingsOf(300);
  await open(pageOf(300), {}, async (page) => {
    const choice = { risk: 'safe', kind: 'class', report: 'no' };
    await choose(page, { ...choice, q: 'Class' });
    const text = await printed(page);
    const rest = text.slice(text.indexOf('Alldifferences,byelement'), text.indexOf('Decisionsonrecord'));
    for (const finding of findings) assert.equal(rest.includes(nameOf(finding)), isAmong(finding, choice), finding.path);
    assert.ok(text.includes('Filter:“Class”·Classes·Safe·Notinthereport('));
  });
});

test('paper has all findings without a script, too', async () => {
  const findings = findingsOf(600);
  await open(pageOf(600), { javaScriptEnabled: false }, async (page) => {
    const text = await printed(page);
    assert.deepEqual(findings.map(nameOf).filter((name) => !text.includes(name)), []);
  });
});

test('after printing, what was folded is folded again', async () => {
  await open(pageOf(600), {}, async (page) => {
    await page.pdf();
    assert.equal(await page.locator('.element[open]').count(), 0);
  });
});
