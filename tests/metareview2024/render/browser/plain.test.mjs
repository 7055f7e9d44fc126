import assert from 'node:assert/strict';
import { test } from 'node:test';
import { findingsOf, open, pageOf, written } from './support.mjs';

const withoutScript = { javaScriptEnabled: false };

test('without a script everything can be read', async () => {
  const findings = findingsOf(300);
  await open(pageOf(300), withoutScript, async (page) => {
    // What is out of sight is not laid out, and would not count as text.
    await page.evaluate(() => { for (const node of document.querySelectorAll('.place, .element')) node.style.contentVisibility = 'visible'; });
    const text = await page.locator('body').innerText();
    for (const finding of findings) assert.ok(text.includes(finding.path.split('/')[3]), finding.path);
    assert.equal(await page.locator('form').isVisible(), false);
    assert.equal(await page.locator('button:visible').count(), 0);
    assert.equal(await page.locator('[role=status]').count(), 0);
  });
});

test('without a script elements unfold', async () => {
  await open(pageOf(600), withoutScript, async (page) => {
    assert.equal(await page.locator('.element[open]').count(), 0);
    await page.evaluate(() => document.querySelector('.element > summary').click());
    assert.equal(await page.locator('.element[open]').count(), 1);
  });
});

test('without a script numbers lead to the first of what they count', async () => {
  await open(pageOf(300), withoutScript, async (page) => {
    const counts = await page.locator('a[href^="#"]').evaluateAll((links) => links.map((link) => {
      const id = link.getAttribute('href').slice(1);
      return [id, document.querySelectorAll(`[id="${id}"]`).length];
    }));
    assert.ok(counts.length > 300);
    assert.deepEqual(counts.filter(([, count]) => count !== 1), []);
  });
});

test('without a style everything can be read', async () => {
  const findings = findingsOf(300);
  await open(pageOf(300), withoutScript, async (page) => {
    await page.locator('style').evaluate((style) => style.remove());
    const text = await page.locator('body').innerText();
    for (const finding of findings) assert.ok(text.includes(finding.path.split('/')[3]), finding.path);
    assert.match(text, /Loss/);
  });
});

test('risks are told by word and shape, not by colour alone', async () => {
  await open(pageOf(300), {}, async (page) => {
    const risks = await page.locator('.risk').evaluateAll((nodes) => nodes.map((node) => {
      const shape = getComputedStyle(node, '::before');
      return { risk: node.classList[1], word: node.textContent.trim() !== '', shape: `${shape.clipPath} ${shape.borderRadius}` };
    }));
    assert.ok(risks.every(({ word }) => word));
    const shapes = new Map(risks.map(({ risk, shape }) => [risk, shape]));
    assert.deepEqual(new Set(shapes.keys()), new Set(['loss', 'block', 'attention', 'safe', 'accepted', 'both']));
    assert.equal(new Set(shapes.values()).size, shapes.size);
  });
});

test('hostile names are only text', async () => {
  const saved = JSON.parse(written('hostile', 'json'));
  await open(pageOf('hostile'), {}, async (page) => {
    assert.equal(await page.locator('#all tr[id^="f-"]').count(), saved.findings.length);
    assert.deepEqual(await page.evaluate(() => ['script', 'img', 'i', 'x', 'iframe', 'base', 'link', 'meta[http-equiv=refresh]']
      .map((name) => document.body.getElementsByTagName(name).length)), [1, 0, 0, 0, 0, 0, 0, 0]);
    assert.equal(await page.locator('style').count(), 1);
    assert.equal(await page.locator('h1').count(), 1);
    const hrefs = await page.locator('a').evaluateAll((nodes) => nodes.map((node) => node.getAttribute('href')[0]));
    assert.deepEqual(new Set(hrefs), new Set(['#']));
    const text = await page.locator('body').evaluate((body) => body.textContent);
    for (const name of ['<script>alert(1)</script>', '"><img src=x onerror=alert(1)>', '{{words.title}}{{{style}}}', ']]><x/>',
      'nul\\x00nul', 'line\\nline', '\\x1B[2J', 'left\\u202Etfel\\u2066\\u200F', '&lt;&amp;&#0;', 'עברית العربية']) {
      assert.ok(text.includes(name), name);
    }
    assert.doesNotMatch(text, /[\u202a-\u202e\u2066-\u2069\u0000-\u0008\u001b]/);
    assert.ok(await page.evaluate(() => document.documentElement.scrollWidth <= innerWidth));
  });
});

test('hostile names can be filtered for', async () => {
  await open(pageOf('hostile'), {}, async (page) => {
    await page.locator('#filter-q').fill('<img');
    await page.keyboard.press('Enter');
    assert.ok(await page.locator('#all tr[id]:visible').count() > 0);
  });
});

test('a failed review shows a banner and nothing that looks like a result', async () => {
  await open(pageOf('failed'), {}, async (page) => {
    assert.match(await page.locator('h1').textContent(), /^No answer\. The review did not finish/);
    assert.match(await page.locator('.remark').textContent(), /client\.json:3:1: <no> metamodel/);
    assert.equal(await page.locator('table, form, section').count(), 0);
  });
});
