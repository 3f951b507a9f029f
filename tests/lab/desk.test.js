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

test('a failure leaves the values that the monitor has', async () => {
    await server.choose('blank-serial');
    const page = await open(browser, server.address);
    await isReady(page, first);
    const card = page.getByRole('article').filter({ hasText: first });
    const brightness = await card.getByLabel('Brightness').inputValue();
    for (const name of ['DmCtrlSetBrightnessForStep', 'DmCtrlSetInputPorts'])
        await server.simulate({ simulate: 'return', function: name, result: -2147483648 });

    await card.getByLabel('Brightness').fill('80');
    await card.getByText('That did not work').waitFor();
    assert.equal(await card.getByLabel('Brightness').inputValue(), brightness);
    assert.equal(await card.locator('output').textContent(), brightness);
    await card.getByLabel('Input').fill('3');
    await card.getByRole('button', { name: 'Switch' }).click();
    await page.waitForFunction(() => document.querySelectorAll('.input input')[1].value === '1');

    await server.simulate({ simulate: 'reset' });
    await card.getByLabel('Input').fill('9');
    await card.getByRole('button', { name: 'Switch' }).click();
    await card.getByText('It has no input 9.').waitFor();
    assert.equal(await card.getByLabel('Input').inputValue(), '1');
    await page.context().close();
});

test('of two monitors without a serial none can be controlled', async () => {
    const page = await open(browser, server.address);
    const value = Array(2).fill({ product: 'TB240', serial: '' });
    await page.route('**/pell/Monitors?update', async (route) => {
        const response = await route.fetch();
        await route.fulfill({ response, json: { ...(await response.json()), value } });
    });
    await page.getByRole('button', { name: 'Look for monitors' }).click();
    await page.getByText('2 monitors call themselves TB240 without a serial: none can be controlled.').waitFor();
    await page.context().close();
});

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
