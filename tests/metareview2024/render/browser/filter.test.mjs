import assert from 'node:assert/strict';
import { test } from 'node:test';
import { choose, findingsOf, isAmong, open, pageOf, shownIds } from './support.mjs';

const kReview = 300;
const options = {
  kind: ['class', 'link', 'behavior'],
  risk: ['loss', 'block', 'attention', 'safe'],
  origin: ['customer', 'vendor', 'both'],
  decision: ['decide', 'open', 'accepted', 'outdated', 'expired'],
  since: ['new', 'changed', 'known'],
  report: ['no'],
};
const none = { q: '', kind: '', risk: '', origin: '', decision: '', since: '', report: '' };

function expectedIds(findings, choice) {
  return findings.filter((finding) => isAmong(finding, choice)).map((finding) => finding.id);
}

async function expectShown(page, findings, choice) {
  await choose(page, { ...none, ...choice });
  const ids = expectedIds(findings, choice);
  assert.deepEqual(await shownIds(page), ids, JSON.stringify(choice));
  assert.equal(await page.locator('#status').textContent(), `${ids.length} of ${findings.length} differences`);
  return ids.length;
}

test('every option of every field shows what it says', async () => {
  const findings = findingsOf(kReview);
  await open(pageOf(kReview), {}, async (page) => {
    for (const [key, values] of Object.entries(options)) {
      for (const value of values) {
        const count = await expectShown(page, findings, { [key]: value });
        assert.ok(count > 0 && count < findings.length, `${key}=${value} tells findings apart`);
      }
    }
  });
});

test('two fields together show what both say', async () => {
  const findings = findingsOf(kReview);
  await open(pageOf(kReview), {}, async (page) => {
    const fields = Object.entries(options);
    for (const [at, [key, values]] of fields.entries()) {
      for (const [otherKey, otherValues] of fields.slice(at + 1)) {
        for (const value of values) {
          await expectShown(page, findings, { [key]: value, [otherKey]: otherValues[values.indexOf(value) % otherValues.length] });
        }
      }
    }
  });
});

test('all fields together show what all say', async () => {
  const findings = findingsOf(kReview);
  const one = findings.find((finding) => finding.isToDecide && !finding.reported && finding.since === 'new');
  const choice = { kind: one.kind, risk: one.risk, origin: one.origin, decision: 'decide', since: 'new', report: 'no' };
  await open(pageOf(kReview), {}, async (page) => {
    const count = await expectShown(page, findings, choice);
    assert.ok(count >= 1);
    await choose(page, { q: one.path });
    assert.deepEqual(await shownIds(page), [one.id]);
  });
});

test('a text finds names, values, sentences and paths, whatever the case of their letters', async () => {
  const findings = findingsOf(kReview);
  const length = findings.find((finding) => finding.rule === 'length-shrinks');
  const labelled = findings.filter((finding) => finding.display_name?.startsWith('Label '));
  const name = (finding) => finding.path.split('/')[3];
  await open(pageOf(kReview), {}, async (page) => {
    const find = async (text) => {
      await choose(page, { q: text });
      return shownIds(page);
    };
    assert.deepEqual(await find(name(length)), [length.id]);
    assert.deepEqual(await find(`  ${name(length).toUpperCase()}  `), [length.id]);
    for (const finding of [labelled.at(0), labelled.at(-1)]) {
      const found = await find(finding.display_name);
      assert.ok(found.includes(finding.id) && found.length < labelled.length, finding.display_name);
    }
    assert.deepEqual(await find(`${name(length)} shortens`), [length.id]);
    assert.deepEqual(await find(length.path), [length.id]);
    assert.deepEqual(await find('no such words'), []);
    assert.equal(await page.locator('#all .nothing').isVisible(), true);
    assert.equal(await page.locator('#decide .nothing').isVisible(), true);
    assert.equal(await page.locator('.kind:visible').count(), 0);
  });
});

test('what has to be decided is shown as a whole place or not at all', async () => {
  const findings = findingsOf(kReview);
  await open(pageOf(kReview), {}, async (page) => {
    await choose(page, { risk: 'block' });
    const toDecide = findings.filter((finding) => finding.isToDecide && finding.risk === 'block');
    const places = new Set(toDecide.map((finding) => finding.path.split('/').slice(0, 4).join('/')));
    assert.equal(await page.locator('.place:visible').count(), places.size);
  });
});

test('clearing shows all again', async () => {
  const findings = findingsOf(kReview);
  await open(pageOf(kReview), {}, async (page) => {
    await choose(page, { risk: 'loss', q: 'Class' });
    const clear = page.getByRole('button', { name: 'Clear' });
    await clear.click();
    assert.equal((await shownIds(page)).length, findings.length);
    assert.equal(await clear.isDisabled(), true);
    assert.equal(new URL(page.url()).hash, '');
    assert.equal(await page.locator('#status').textContent(), `${findings.length} differences`);
  });
});

test('typing filters without a key that ends it', async () => {
  const findings = findingsOf(kReview);
  const one = findings.find((finding) => finding.rule === 'length-shrinks');
  await open(pageOf(kReview), {}, async (page) => {
    await page.locator('#filter-q').pressSequentially(one.path.split('/')[3]);
    await page.waitForFunction(() => document.getElementById('status').textContent.startsWith('1 of'));
    assert.deepEqual(await shownIds(page), [one.id]);
  });
});

test('a number of the table filters what it counts, and says so', async () => {
  const findings = findingsOf(kReview);
  await open(pageOf(kReview), {}, async (page) => {
    const links = await page.locator('a[data-cell][href*="="]').all();
    assert.ok(links.length > 15);
    await links[0].click();
    await page.waitForFunction(() => document.querySelector('a[aria-current]') !== null);
    for (const link of links) {
      const [fragment, number] = await link.evaluate((node) => new Promise((followed) => {
        const answer = () => followed([node.hash.slice(1), node.textContent]);
        if (node.hash === location.hash) return answer();
        addEventListener('hashchange', answer, { once: true });
        return node.click();
      }));
      const ids = await shownIds(page);
      assert.deepEqual(ids, expectedIds(findings, Object.fromEntries(new URLSearchParams(fragment))), fragment);
      assert.equal(String(ids.length), number, fragment);
      assert.equal(await link.getAttribute('aria-current'), 'true');
      assert.equal(await page.locator('a[aria-current]').count(), 1);
    }
  });
});
