// The example page: in every scenario that hurts, and its looks.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import { after, before, test } from 'node:test';
import { first, isReady, scenarioNames, walkScenarios } from './scenarios.js';
import { open, openBrowser, screenshots, seriousFindings, serve } from './support.js';

let browser;
let server;
before(async () => {
    [browser, server] = await Promise.all([openBrowser(), serve('native', '--page', 'examples/desk')]);
});
after(async () => {
    await browser?.close();
    server?.close();
});

test('there is a way through every scenario', () => {
    const files = fs.readdirSync('simulator/scenarios').map((name) => name.replace('.json', ''));
    assert.deepEqual(scenarioNames.sort(), files.sort());
});

walkScenarios('native', () => ({ browser, server }));

for (const [name, options] of Object.entries({
    light: {},
    'narrow-dark': { viewport: { width: 400, height: 800 }, colorScheme: 'dark' },
}))
    test(`axe finds nothing serious in the example page, ${name}`, async () => {
        await server.choose('blank-serial');
        const page = await open(browser, server.address, options);
        await isReady(page, first);
        assert.deepEqual(await seriousFindings(page), []);
        await page.screenshot({ path: `${screenshots}/desk-${name}.png` });
        await page.context().close();
    });
