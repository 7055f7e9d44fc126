import assert from 'node:assert/strict';
import { test } from 'node:test';
import { open, pageOf, shownIds } from './support.mjs';

const kReview = 40;

test('the keyboard alone reaches everything that can be used, in the order of the page', async () => {
  await open(pageOf(kReview), {}, async (page) => {
    const wanted = await page.evaluate(() => Array.from(document.querySelectorAll('a[href], button, input, select, summary'))
      .filter((node) => !node.disabled && node.checkVisibility()).map((node, at) => {
        node.dataset.wanted = at;
        return at;
      }));
    assert.ok(wanted.length > 100);
    const reached = [];
    for (let i = 0; i < wanted.length; ++i) {
      await page.keyboard.press('Tab');
      reached.push(await page.evaluate(() => Number(document.activeElement.dataset.wanted)));
    }
    assert.deepEqual(reached, wanted);
  });
});

test('what the keyboard is at can be seen', async () => {
  await open(pageOf(kReview), {}, async (page) => {
    for (let i = 0; i < 60; ++i) {
      await page.keyboard.press('Tab');
      const seen = await page.evaluate(() => {
        const node = document.activeElement;
        const box = node.getBoundingClientRect();
        const style = getComputedStyle(node);
        return { outline: style.outlineStyle !== 'none' && parseFloat(style.outlineWidth) > 0,
          inView: box.width > 0 && box.bottom > 0 && box.top < innerHeight, what: node.outerHTML.slice(0, 80) };
      });
      assert.ok(seen.outline && seen.inView, JSON.stringify(seen));
    }
  });
});

test('the first key leads past the contents', async () => {
  await open(pageOf(kReview), {}, async (page) => {
    await page.keyboard.press('Tab');
    await page.keyboard.press('Enter');
    assert.equal(await page.evaluate(() => document.activeElement.id), 'answer');
  });
});

test('the keyboard filters, clears, folds and unfolds', async () => {
  await open(pageOf(kReview), {}, async (page) => {
    const all = (await shownIds(page)).length;
    await page.locator('#filter [name=risk]').focus();
    await page.keyboard.press('ArrowDown');
    await page.waitForFunction(() => document.querySelector('#filter-risk').value === 'loss' && location.hash === '#risk=loss');
    assert.ok((await shownIds(page)).length < all);
    await page.locator('#filter [name=report]').focus();
    await page.keyboard.press('Space');
    await page.waitForFunction(() => location.hash === '#risk=loss&report=no');
    await page.keyboard.press('Tab');
    await page.keyboard.press('Enter');
    assert.equal((await shownIds(page)).length, all);
    assert.equal(await page.evaluate(() => document.activeElement.id), 'filter-q');
    const summary = page.locator('.element > summary').first();
    const isOpen = () => page.locator('.element').first().evaluate((node) => node.open);
    await summary.focus();
    await page.keyboard.press('Enter');
    assert.equal(await isOpen(), false);
    await page.keyboard.press('Space');
    assert.equal(await isOpen(), true);
  });
});

test('all elements fold and unfold together', async () => {
  await open(pageOf(kReview), {}, async (page) => {
    const states = () => page.evaluate(() => new Set(Array.from(document.querySelectorAll('.element'), (node) => node.open)).size === 1 &&
      document.querySelector('.element').open);
    await page.getByRole('button', { name: 'Collapse all' }).click();
    assert.equal(await states(), false);
    assert.equal(await page.locator('#all tr[id]:visible').count(), 0);
    await page.getByRole('button', { name: 'Expand all' }).click();
    assert.equal(await states(), true);
    assert.equal(await page.locator('#all tr[id]:visible').count(), kReview);
  });
});

test('elements in which little is left after filtering are unfolded', async () => {
  await open(pageOf(600), {}, async (page) => {
    assert.equal(await page.locator('.element[open]').count(), 0);
    await page.locator('#filter-q').fill('Class1');
    await page.keyboard.press('Enter');
    const hidden = await page.locator('#all tr[id]:not([hidden])').evaluateAll((rows) => rows
      .filter((row) => !row.closest('[hidden]') && !row.closest('details').open).length);
    assert.equal(hidden, 0);
    assert.ok(await page.locator('.element[open]').count() > 0);
  });
});

test('each command is copied as it is shown, and the button says so', async () => {
  await open(pageOf(kReview), { permissions: ['clipboard-read', 'clipboard-write'] }, async (page) => {
    const places = await page.locator('.place').all();
    assert.ok(places.length > 5);
    for (const place of places) {
      const button = place.getByRole('button');
      await button.focus();
      await page.keyboard.press('Enter');
      await place.getByText('Copied').waitFor();
      const command = await place.locator('code').textContent();
      assert.equal(await page.evaluate(() => navigator.clipboard.readText()), command);
      assert.match(command, /^upgradesrv decide --reason '' \\\n  upgrade \\\n  \S/);
      assert.equal(await page.locator('[role=status].hear').textContent(), 'Copied');
    }
  });
});

test('without the clipboard of the page a command is copied as a selection', async () => {
  await open(pageOf(kReview), { permissions: ['clipboard-read'] }, async (page) => {
    await page.addInitScript(() => Object.defineProperty(navigator, 'clipboard', { value: undefined }));
    await page.reload();
    const place = page.locator('.place').first();
    await place.getByRole('button').click();
    await place.getByText('Copied').waitFor();
    assert.equal(await page.evaluate(() => getSelection().toString().trim()), (await place.locator('code').textContent()).trim());
  });
});

test('where nothing can be copied, the command is selected', async () => {
  await open(pageOf(kReview), {}, async (page) => {
    await page.addInitScript(() => {
      Object.defineProperty(navigator, 'clipboard', { value: { writeText: () => Promise.reject(new Error('no')) } });
      document.execCommand = () => false;
    });
    await page.reload();
    const place = page.locator('.place').first();
    await place.getByRole('button').click();
    await place.getByText('Selected: copy it with the keyboard').waitFor();
    assert.equal(await page.evaluate(() => getSelection().toString().trim()), (await place.locator('code').textContent()).trim());
  });
});
