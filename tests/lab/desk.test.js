// The example page: in every scenario that hurts, and its looks.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, beforeEach, test } from 'node:test';
import { ask, firmwarePackage, hostOf, startServer } from '../pellhost.js';
import { open, openBrowser, screenshots, seriousFindings } from './support.js';

const firmware = firmwarePackage(path.resolve('build/desk.dfw'));
const servers = {};
let browser;
let server; // of them, the one that a test is about
before(async () => {
    browser = await openBrowser();
    for (const build of ['windows', 'native'])
        servers[build] = await startServer(null, build, '--page', hostOf(build).pathOf('examples/desk'));
});
after(async () => {
    await browser?.close();
    for (const { close } of Object.values(servers)) close();
});
beforeEach(() => (server = servers.native));

/** The monitor that misbehaves. */
const first = 'TQ271-P 10000001';

const card = (page, name = first) => page.getByRole('article').filter({ hasText: name });
const says = (page, text, name) => card(page, name).getByText(text).waitFor();
const isReady = (page, name) => card(page, name).locator('fieldset:enabled').waitFor();
const move = (page, step, name) => card(page, name).getByLabel('Brightness').fill(String(step));
const look = (page) => page.getByRole('button', { name: 'Look for monitors' }).click();
const update = (page, name) => card(page, name).getByRole('button', { name: 'Update firmware' }).click();
const brightness = async (address = 'TQ271-P/10000001') =>
    (await server.pell('GET', `Monitors/${address}/Brightness`)).value;
const neighbour = 'TB240 10000002';

const hurry = () => server.simulate({ simulate: 'speed', factor: 20 });

/** For each scenario its speed at first, slow enough to see what passes, and what a person does and sees; beside the bad monitor, the other one works. */
const scenarios = {
    twins: [
        1,
        async (page) => {
            await page.getByText('2 monitors call themselves TQ271-P 10000001: only one can be controlled.').waitFor();
            assert.equal(await card(page).count(), 1);
        },
    ],
    'blank-serial': [
        1,
        async (page) => {
            await says(page, 'It tells no serial number, so it cannot be controlled.', 'TB240 without a serial');
            await isReady(page, first);
        },
        first,
    ],
    'slow-waker': [
        1,
        async (page) => {
            await says(page, 'Asking the monitor…');
            await hurry();
            await isReady(page, neighbour);
            await isReady(page);
            const { length } = await puts();
            await card(page)
                .getByLabel('Brightness')
                .evaluate((slider) => {
                    for (slider.value = 10; slider.valueAsNumber < 70; slider.value = slider.valueAsNumber + 10)
                        slider.dispatchEvent(new Event('input'));
                    slider.dispatchEvent(new Event('input'));
                });
            await eventually(async () => (await puts()).length >= length + 2);
            assert.equal(await brightness(), 70);
            assert.equal((await puts()).length, length + 2, 'only the first and the latest step are sent');
        },
    ],
    'ignores-writes': [
        1,
        async (page) => {
            await isReady(page);
            await move(page, 80);
            await says(page, 'The monitor did not follow: its brightness is still 50.');
            await card(page).getByLabel('Input').fill('3');
            await says(page, 'Then this page cannot reach the monitor any more');
            await card(page).getByRole('button', { name: 'Switch' }).click();
            await says(page, 'it still shows input 1.');
            assert.equal(await card(page).getByLabel('Input').inputValue(), '1');
        },
    ],
    vanishes: [
        1,
        async (page) => {
            await isReady(page);
            // It is gone when it has been called often enough, maybe while the slider is about to be moved.
            for (let step = 51; await card(page).locator('fieldset:enabled').count(); ++step)
                await card(page)
                    .getByLabel('Brightness')
                    .fill(String(step), { timeout: 1000 })
                    .catch(() => {});
            await says(page, 'check its cable and power');
            await page.getByText('Connected monitors: 1.').waitFor();
            await server.simulate({ simulate: 'reset' });
            await look(page);
            await isReady(page);
        },
    ],
    'input-switch': [
        1,
        async (page) => {
            await isReady(page);
            const switches = card(page).getByRole('button', { name: 'Switch' });
            await card(page).getByLabel('Input').fill('2');
            await says(
                page,
                'Input 2 may belong to another computer. Then this page cannot reach the monitor any more',
            );
            assert.deepEqual((await server.pell('GET', 'Monitors/TQ271-P/10000001/InputPort')).value, [1]);
            await card(page).getByLabel('Input').fill('1');
            await switches.waitFor({ state: 'hidden' });
            await card(page).getByLabel('Input').fill('2');
            await switches.click();
            await says(page, 'It shows input 2 now, and cannot be reached from here.');
            await page.getByText('Connected monitors: 1.').waitFor();
        },
    ],
    'update-fails': [
        0.2,
        async (page) => {
            await isReady(page);
            await update(page);
            await card(page)
                .getByText(/block \d+ of 64/)
                .waitFor();
            await hurry();
            await says(page, 'It runs 2.0.1.5.3 as before. Check its cable and try again.');
            await isReady(page);
        },
    ],
    'update-gone': [
        20,
        async (page) => {
            await updateEnds(page, 'It did not come back. Switch it off and on');
            await page.getByText('Connected monitors: 1.').waitFor();
            await server.simulate({ simulate: 'plug', product: 'TQ271-P', serial: '10000001' });
            await look(page);
            await pass(page, () => card(page).getByText('The update had no effect: it still runs 2.0.1.5.3.').count());
            await isReady(page);
        },
    ],
    'update-in-vain': [20, (page) => updateEnds(page, 'The update had no effect: it still runs 2.0.1.5.3.')],
    'eight-monitors': [
        0.2,
        async (page) => {
            const all = [1, 2, 3, 4].map((at) => `TQ271-P 1000000${at}`);
            for (const name of all) await isReady(page, name);
            for (const name of all) await update(page, name);
            for (const name of all.slice(0, 2))
                await card(page, name)
                    .getByText(/block \d+ of 64/)
                    .waitFor();
            await page.screenshot({ path: `${screenshots}/desk-update.png` });
            await card(page, all[3]).getByRole('button', { name: 'Cancel' }).click();
            await says(page, 'The update was cancelled before it began.', all[3]);
            await hurry();
            const isUpdated = () => page.getByText('Updated from 2.0.1.5.3 to 2.1.0.3.7.').count();
            await pass(page, async () => (await isUpdated()) === 3);
            await update(page, 'TB240 20000001');
            await says(page, 'The package is for another product.', 'TB240 20000001');
        },
        'TB240 20000002',
    ],
};

async function updateEnds(page, text) {
    await isReady(page);
    await update(page);
    await says(page, 'It updates itself now. Leave it switched on.');
    await pass(page, () => card(page).getByText(text).count());
}

/** The PUTs of the first monitor's brightness that have reached the plug-in. */
async function puts() {
    const { text } = await ask(server.address, '/lab/api/recording');
    return text.split('\n').filter((line) => /"method":"PUT".*"resource":"Brightness"/.test(line));
}

/** Until something holds. */
async function eventually(holds) {
    while (!(await holds())) await new Promise((resolve) => setTimeout(resolve, 20));
}

/** Lets the time of the page pass, which counts in seconds, until something holds. */
function pass(page, holds) {
    return eventually(async () => {
        await page.clock.fastForward(1000);
        return holds();
    });
}

test('there is a way through every scenario', () => {
    const files = fs.readdirSync('simulator/scenarios').map((name) => name.replace('.json', ''));
    assert.deepEqual(Object.keys(scenarios).sort(), files.sort());
});

for (const build of ['native', 'windows'])
    for (const [scenario, [speed, walk, healthy = neighbour]] of Object.entries(scenarios))
        test(`${build}: the example page in ${scenario}`, { timeout: 60_000 }, async () => {
            server = servers[build];
            await server.choose(scenario, speed);
            const page = await open(browser, server.address, { hasOwnTime: true });
            await page.getByLabel('Firmware package').fill(server.pathOf(firmware));
            await walk(page);
            await page.screenshot({ path: `${screenshots}/desk-${scenario}-${build}.png` });
            await isReady(page, healthy);
            await move(page, 65, healthy);
            await eventually(async () => (await brightness(healthy.replace(' ', '/'))) === 65);
            assert.deepEqual(page.problems, []);
            await page.context().close();
        });

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
