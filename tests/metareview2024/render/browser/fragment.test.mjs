import assert from 'node:assert/strict';
import { test } from 'node:test';
import { choose, findingsOf, isAmong, open, pageOf, shownIds } from './support.mjs';

const kReview = 300;

function chosen(page) {
  return page.evaluate(() => Object.fromEntries(
    Array.from(document.getElementById('filter').elements).filter((field) => field.name && field.name !== 'clear')
      .map((field) => [field.name, field.type === 'checkbox' ? (field.checked ? field.value : '') : field.value])
      .filter(([, value]) => value)));
}

test('the address keeps what is filtered', async () => {
  await open(pageOf(kReview), {}, async (page) => {
    await choose(page, { q: 'a b&c=d ü', kind: 'class', risk: 'loss', origin: 'customer', decision: 'decide', since: 'new', report: 'no' });
    assert.equal(new URL(page.url()).hash,
      '#q=a%20b%26c%3Dd%20%C3%BC&kind=class&risk=loss&origin=customer&decision=decide&since=new&report=no');
  });
});

test('the address brings back what was filtered', async () => {
  const choice = { q: 'Class', kind: 'class', risk: 'loss', origin: 'customer', decision: 'open', since: 'new', report: 'no' };
  const findings = findingsOf(kReview);
  await open(`${pageOf(kReview)}#${new URLSearchParams(choice)}`, {}, async (page) => {
    assert.deepEqual(await chosen(page), choice);
    assert.deepEqual(await shownIds(page), findings.filter((finding) => isAmong(finding, choice)).map(({ id }) => id));
    await page.reload();
    assert.deepEqual(await chosen(page), choice);
  });
});

test('an address that is changed or gone back to is followed', async () => {
  const findings = findingsOf(kReview);
  const ids = (choice) => findings.filter((finding) => isAmong(finding, choice)).map(({ id }) => id);
  await open(pageOf(kReview), {}, async (page) => {
    await page.evaluate(() => { location.hash = 'risk=loss'; });
    await page.waitForFunction(() => document.querySelector('[name=risk]').value === 'loss');
    await page.evaluate(() => { location.hash = 'kind=link'; });
    await page.waitForFunction(() => document.querySelector('[name=kind]').value === 'link');
    assert.deepEqual(await shownIds(page), ids({ kind: 'link' }));
    await page.goBack();
    await page.waitForFunction(() => document.querySelector('[name=risk]').value === 'loss');
    assert.deepEqual(await shownIds(page), ids({ risk: 'loss' }));
  });
});

test('what no filter has is not filtered by', async () => {
  const findings = findingsOf(kReview);
  for (const fragment of ['risk=terrible', 'colour=red', 'q=', '%', 'q=%E4', '=', 'a=b&c', 'constructor=1']) {
    await open(`${pageOf(kReview)}#${fragment}`, {}, async (page) => {
      const isText = fragment === 'q=%E4';
      assert.equal((await shownIds(page)).length, isText ? 0 : findings.length, fragment);
    });
  }
});

test('an address leads to a finding, a place and a rule, folded or filtered away as they may be', async () => {
  const findings = findingsOf(kReview);
  const one = findings.find((finding) => finding.isToDecide);
  await open(pageOf(kReview), {}, async (page) => {
    await page.locator('.fold button').nth(1).click();
    const isInView = (id) => page.waitForFunction((name) => {
      const box = document.getElementById(name).getBoundingClientRect();
      return box.height > 0 && box.bottom > 0 && box.top < innerHeight;
    }, id);
    await page.evaluate((id) => { location.hash = id; }, `f-${one.id}`);
    await isInView(`f-${one.id}`);
    await choose(page, { q: 'no such words' });
    await page.evaluate((id) => { location.hash = id; }, `f-${one.id}`);
    await isInView(`f-${one.id}`);
    await page.locator(`#f-${one.id} .by a`).click();
    await page.waitForFunction(() => document.querySelector('.place:target') !== null);
    await page.locator('.place:target .a a').first().click();
    await page.waitForFunction(() => document.querySelector('.rules tr:target') !== null);
  });
});

test('an address leads to a finding of a page that is just opened', async () => {
  const one = findingsOf(kReview).at(-1);
  await open(`${pageOf(kReview)}#f-${one.id}`, {}, async (page) => {
    await page.waitForFunction((id) => {
      const box = document.getElementById(id).getBoundingClientRect();
      return box.height > 0 && box.bottom > 0 && box.top < innerHeight;
    }, `f-${one.id}`);
  });
});
