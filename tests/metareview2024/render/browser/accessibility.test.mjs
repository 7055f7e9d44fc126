import assert from 'node:assert/strict';
import { test } from 'node:test';
import { languages, open, packages, pageOf } from './support.mjs';

const kReview = 24;
const axe = packages('axe-core').source;

async function expectNoTrouble(page, what) {
  // What is out of sight would be taken for hidden.
  await page.addStyleTag({ content: '.place, .element { content-visibility: visible !important }' });
  await page.evaluate(axe);
  const { violations } = await page.evaluate(() => window.axe.run({ resultTypes: ['violations'] }));
  assert.deepEqual(violations.map(({ id, nodes }) => `${id}: ${nodes[0].html}`), [], what);
  const [wide, room] = await page.evaluate(() => [document.documentElement.scrollWidth, innerWidth]);
  assert.ok(wide <= room, `${what}: nothing beside the screen`);
}

for (const language of languages) {
  test(`everybody can use the page: ${language}, light and dark, narrow and wide`, async () => {
    for (const colorScheme of ['light', 'dark']) {
      for (const width of [360, 1440]) {
        const options = { colorScheme, viewport: { width, height: 900 }, bypassCSP: true };
        await open(pageOf(kReview, language), options, async (page) => {
          assert.equal(await page.locator('html').getAttribute('lang'), language);
          await expectNoTrouble(page, `${language} ${colorScheme} ${width}`);
        });
      }
    }
  });
}

for (const review of ['failed', 'equal', 'no-base', 'hostile']) {
  test(`everybody can use the page of a review: ${review}`, async () => {
    for (const width of [360, 1440]) {
      await open(pageOf(review), { viewport: { width, height: 900 }, bypassCSP: true }, async (page) => {
        await expectNoTrouble(page, `${review} ${width}`);
      });
    }
  });
}

test('light and dark differ', async () => {
  const colours = [];
  for (const colorScheme of ['light', 'dark']) {
    await open(pageOf(kReview), { colorScheme }, async (page) => {
      colours.push(await page.evaluate(() => getComputedStyle(document.documentElement).backgroundColor));
    });
  }
  assert.deepEqual(colours, ['rgb(255, 255, 255)', 'rgb(20, 23, 27)']);
});
