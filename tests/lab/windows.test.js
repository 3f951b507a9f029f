// The lab and the example page before the Windows build, under Wine.
import assert from 'node:assert/strict';
import { after, before, test } from 'node:test';
import { walkScenarios } from './scenarios.js';
import { open, openBrowser, pathFor, serve } from './support.js';

let browser;
let server;
before(async () => {
    [browser, server] = await Promise.all([
        openBrowser(),
        serve('windows', '--page', pathFor('windows', 'examples/desk')),
    ]);
});
after(async () => {
    await browser?.close();
    server?.close();
});

test('a monitor is asked and unplugged in the lab', async () => {
    const page = await open(browser, `${server.address}/lab/`);
    const row = page.locator('lab-row').filter({ hasText: '?range' }).first();
    await page.getByText('libpell.dll').waitFor();
    await row.getByRole('button').first().click();
    await row.getByText('{"max":100,"min":0}').waitFor();
    await page.getByRole('option').filter({ hasText: 'GET Brightness' }).last().click();
    await page.locator('lab-exchange').getByText('DmCtrlGetRangeBrightnessForStep').waitFor();
    await page.getByRole('button', { name: 'Unplug' }).first().click();
    await page.locator('lab-monitor').first().getByText('unplugged').waitFor();
    await row.getByRole('button').first().click();
    await row.getByText(/Monitor is not found/).waitFor();
    await page.locator('lab-header').getByRole('button', { name: 'Reset' }).click();
    await page.locator('lab-monitor').first().getByText('connected').waitFor();
    assert.deepEqual(page.problems, []);
    await page.context().close();
});

walkScenarios('windows', () => ({ browser, server }));
