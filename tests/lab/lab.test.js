// The lab in a browser: its main ways, and its looks.
import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import fs from 'node:fs';
import path from 'node:path';
import { after, afterEach, before, beforeEach, test } from 'node:test';
import { promisify } from 'node:util';
import { connect, firmwarePackage, startHost, startServer } from '../pellhost.js';
import { open, openBrowser, screenshots, seriousFindings } from './support.js';

const run = promisify(execFile);
const catalogue = JSON.parse(fs.readFileSync('catalogue/catalogue.json', 'utf8'));
const first = 'Monitors/TQ271-P/10000001';
let browser;
let server;
let page;

before(async () => {
    browser = await openBrowser();
});
beforeEach(async () => {
    server = await startServer(null, 'native');
    page = await openLab();
});
afterEach(async () => {
    assert.deepEqual(page.problems, []);
    await page.context().close();
    server.close();
});
after(() => browser?.close());

/** The lab when it shows the monitors. Its timeline begins empty. */
async function openLab(options) {
    const lab = await open(browser, `${server.address}/lab/`, options);
    await lab.getByText('connected', { exact: true }).first().waitFor();
    if (lab.viewportSize().width > 1000) await lab.getByRole('button', { name: 'Clear' }).click();
    return lab;
}

const choose = (name, lab = page) =>
    lab.getByRole('group', { name: 'Resources by topic' }).getByRole('button', { name, exact: true }).click();
/** The way to ask that begins with these words, such as "GET ?range". */
const row = (text, lab = page) => lab.locator('lab-row').filter({ hasText: text }).first();
const send = (text, lab = page) => row(text, lab).getByRole('button').first().click();
const answered = (text, answer, lab = page) => row(text, lab).locator('lab-answer').getByText(answer).waitFor();
const lines = (lab = page) => lab.getByRole('listbox', { name: 'Requests' }).getByRole('option');
const card = (name, lab = page) => lab.locator('lab-monitor').filter({ hasText: name }).first();
const textOf = async (locator) => (await locator.textContent()).replace(/\s+/g, ' ').trim();
const exchange = (lab = page) => lab.locator('lab-exchange');

test('a resource is found and asked, and the timeline shows the request down to the calls', async () => {
    await page.getByLabel('Search resources').fill('luminance of white in cd');
    await page.getByText('No resource has this').waitFor();
    await page.getByLabel('Search resources').fill('contr brightness');
    await choose('Contrast');
    await send('?range');
    await answered('?range', '{"max":100,"min":0}');
    await lines().filter({ hasText: 'GET Contrast' }).last().click();
    for (const text of ['{"range":true}', 'DmCtrlGetRangeContrast', '"10000001", "TQ271-P"', 'msg:Success'])
        await exchange().getByText(text).first().waitFor();
    await exchange().getByRole('button', { name: 'Close' }).click();
    assert.equal(await exchange().count(), 0);
});

test('requests of other pages appear at once, and filters find them', async () => {
    await server.pell('GET', `${first}/Hue`);
    await server.pell('PUT', `${first}/Brightness`, '400');
    await server.pell('GET', 'Monitors/TB240/10000002/Brightness');
    await lines().nth(2).waitFor();
    assert.match(await textOf(lines().nth(1)), /PUT Brightness 400 TQ271-P\/10000001 500/);

    await page.getByLabel('Failures only').check();
    assert.equal(await lines().count(), 1);
    await page.getByLabel('Failures only').uncheck();
    await page.getByLabel('Filter by resource').fill('bright');
    assert.equal(await lines().count(), 2);
    await page.getByLabel('Filter by monitor').selectOption('TB240/10000002');
    assert.equal(await lines().count(), 1);
    await page.getByText('1 of 3').waitFor();
    await page.getByLabel('Filter by monitor').selectOption('All monitors');
    await send('?range');
    await page.getByText('3 of 4').waitFor();
    await page.getByLabel("Hide the lab's own").check();
    await page.getByText('2 of 4').waitFor();
});

test('a cable is pulled, a monitor switched off and slowed down, a function fails once', async () => {
    const monitor = card('TQ271-P');
    await monitor.getByRole('button', { name: 'Unplug' }).click();
    await monitor.getByText('unplugged').waitFor();
    await choose('Brightness');
    await send('?range');
    await answered('?range', /Monitor is not found/);
    await monitor.getByRole('button', { name: 'Plug in' }).click();
    await monitor.getByText('not found').waitFor();
    await page.getByRole('button', { name: 'Look for monitors' }).click();
    await monitor.getByText('connected').waitFor();

    await page.getByLabel('Function of a library').fill('DmCtrlGetRangeBrightnessForStep');
    await page.getByLabel('Result').selectOption({ label: 'Timed out. 0x80000013' });
    await page.getByRole('button', { name: 'Let it fail' }).click();
    const failing = page
        .locator('lab-faults')
        .getByText('DmCtrlGetRangeBrightnessForStep: 0x80000013 Timed out., once');
    await failing.waitFor();
    await send('?range');
    await answered('?range', /Timed out/);
    await failing.waitFor({ state: 'detached' });
    await send('?range');
    await answered('?range', '{"max":100,"min":0}');

    await page.getByLabel('Function of a library').fill('DmCtrlGetBrightnesForStep');
    await page.getByRole('button', { name: 'Let it fail' }).click();
    await page.getByRole('alert').getByText('DmCtrlGetBrightnessForStep').waitFor();

    await monitor.getByLabel('Answers').selectOption({ label: '50 ms late, each call' });
    await lines().filter({ hasText: 'delay' }).waitFor();
    await monitor.getByRole('button', { name: 'Switch off' }).click();
    await monitor.getByRole('button', { name: 'Switch on' }).waitFor();
    await page.getByLabel('Clock').selectOption('10 times as fast');
    await lines().filter({ hasText: 'speed' }).waitFor();
    await page.locator('lab-header').getByRole('button', { name: 'Reset' }).click();
    await monitor.getByRole('button', { name: 'Switch off' }).waitFor();
    await lines().filter({ hasText: 'speed' }).nth(1).waitFor();
    const { speed } = await (await fetch(`${server.address}/lab/api/state`)).json();
    assert.equal(speed, 1);
    assert.equal(await monitor.getByLabel('Answers').inputValue(), '0');
    await server.simulate({ simulate: 'delay', milliseconds: 70 });
    await monitor.getByText('70 ms late').waitFor({ state: 'attached' });
    assert.equal(await monitor.getByLabel('Answers').inputValue(), '70');
});

test('a scenario is chosen, and requests go to the monitor that is chosen', async () => {
    await page.getByLabel('Scenario').selectOption('eight-monitors');
    await card('20000004').waitFor();
    await page.getByLabel('Clock').selectOption('10 times as fast');
    await card('20000004').getByRole('radio').check();
    await choose('LUTA');
    await send('?supports');
    await answered('?supports', /true|false/);
    await lines().filter({ hasText: 'TB240/20000004' }).first().waitFor();
    await page.getByRole('button', { name: 'Which does it support?' }).click();
    await page.getByRole('button', { name: 'SelfQCCalibration not supported' }).waitFor();
    await page.getByRole('button', { name: 'Brightness supported' }).waitFor();

    await page.getByText('A good page:').waitFor();
    await page.getByLabel('Scenario').selectOption('built-in');
    await card('20000004').waitFor({ state: 'detached' });
    await card('TQ271-P').getByRole('radio').check();
    await page.getByRole('button', { name: 'Which does it support?' }).click();
    await page.getByRole('button', { name: 'KVMSetting supported' }).waitFor();
});

test('a monitor that is not connected is not asked about everything', async () => {
    await card('TQ271-P').getByRole('button', { name: 'Unplug' }).click();
    await page.getByRole('button', { name: 'Which does it support?' }).click();
    await page.getByRole('alert').getByText('TQ271-P/10000001 cannot be reached.').waitFor();
    await page.getByRole('button', { name: 'Which does it support?' }).waitFor();
    assert.ok((await lines().count()) < 10);
});

test('the line that is opened stays in sight, and says what was asked of whom', async () => {
    for (let at = 0; at < 40; ++at) await server.pell('GET', `${first}/Gain?color=red`);
    await lines().nth(20).waitFor();
    await lines().last().click();
    await exchange().getByText('GET Gain').waitFor();
    const box = (locator) => locator.evaluate((element) => element.getBoundingClientRect().toJSON());
    const opened = page.locator('[role=option][aria-selected=true]');
    const [line, list] = [await box(opened), await box(page.getByRole('listbox'))];
    assert.ok(line.top >= list.top && line.bottom <= list.bottom, JSON.stringify([line, list]));
    assert.match(await textOf(opened), /GET Gain \?color=red TQ271-P\/10000001 200/);
    const isCut = (element) => element.scrollWidth > element.clientWidth;
    for (const part of await opened.locator('span').all()) assert.ok(!(await part.evaluate(isCut)));
});

test('texts are sent as they are written', async () => {
    await choose('Brightness');
    await page.getByRole('button', { name: 'Raw texts' }).click();
    const raw = page.locator('lab-raw');
    const sends = async (texts, answer) => {
        for (const [name, text] of Object.entries(texts)) await raw.getByLabel(name).fill(text);
        await raw.getByRole('button', { name: 'Send' }).click();
        await raw.locator('lab-answer').getByText(answer).waitFor();
    };
    await sends({ Query: '{"range": 0}' }, '{"max":100,"min":0}');
    await sends({ Options: '{"method": "PUT"}', Query: '', Body: '{"data": 33' }, 'data must be number.');
    await sends({ Parameters: '{"product": "TQ271-P"' }, 'BadRequestError');
    await sends({ Parameters: '{"product": "TQ271-P", "serial": "10000001"}', Body: '{"data": 33}' }, 'null');
    await card('TQ271-P').getByText('33').waitFor();
    await lines().filter({ hasText: 'PUT Brightness {"data": 33}' }).waitFor();
    await raw.getByRole('button', { name: 'Copy as' }).click();
    const command = (await raw.locator('lab-copy pre').innerText()).replace('pellhost', 'build/native/full/pellhost');
    const { responses } = JSON.parse((await run('sh', ['-c', command])).stdout);
    assert.equal(responses[0].status, 200);
});

test('tabs that nobody sees leave the connections to the others', async () => {
    const hide = () => {
        globalThis.isSeen = false;
        Object.defineProperty(document, 'hidden', { get: () => !globalThis.isSeen });
    };
    const show = () => {
        globalThis.isSeen = true;
        document.dispatchEvent(new Event('visibilitychange'));
    };
    const tabs = [];
    while (tabs.length < 6) {
        const tab = await page.context().newPage();
        await tab.addInitScript(hide);
        await tab.goto(`${server.address}/lab/`, { waitUntil: 'commit' });
        tabs.push(tab);
    }
    await choose('Contrast');
    await send('?range');
    await answered('?range', '{"max":100,"min":0}');
    await tabs[0].evaluate(show);
    await lines(tabs[0]).filter({ hasText: 'GET Contrast' }).waitFor();
    for (const tab of tabs) await tab.close();
});

/** Runs a program in the page, and resolves with the variable of this name. */
const runInPage = (program, name) =>
    page.evaluate((body) => new (async () => {}).constructor(body)(), `${program}\nreturn ${name};`);

// What is copied must run: the client and fetch in the page, pellhost in a shell.
for (const [resource, at, value, tag] of [
    ['Brightness', '?range', { max: 100, min: 0 }],
    ['Gain', '?color', 236],
    ['AssetTag', 'PUT', null, `It's "5" \\ $HOME`],
])
    test(`${resource} ${at} is copied as code that runs`, async () => {
        await choose(resource);
        if (tag) await row(at).getByLabel('tag').fill(tag);
        await row(at).getByRole('button', { name: 'Copy as' }).click();
        const copied = async (kind) => {
            await row(at).getByRole('button', { name: kind, exact: true }).click();
            return row(at).locator('lab-copy pre').innerText();
        };
        const client = (await copied('Client')).replace(
            /^import (.+) from 'libpell-client';/,
            "const $1 = await import('/lab/client/index.js');",
        );
        assert.deepEqual(await runInPage(client, tag ? 'outcome' : 'value'), tag ? 'done' : value);
        if (tag) assert.equal((await server.pell('GET', `${first}/AssetTag`)).value.tag, tag);
        assert.deepEqual(await runInPage(await copied('fetch'), 'value'), value);
        const command = (await copied('pellhost')).replace('pellhost', 'build/native/full/pellhost --json');
        const { request, value: printed } = JSON.parse((await run('sh', ['-c', command])).stdout);
        assert.deepEqual(printed, value);
        if (tag) assert.equal(JSON.parse(request.body).tag, tag);
    });

test('a recording is saved and opened again', async () => {
    await server.pell('GET', `${first}/Hue`);
    await lines().first().waitFor();
    const save = async () => {
        const download = page.waitForEvent('download');
        await page.getByRole('link', { name: 'Save recording' }).click();
        return fs.readFileSync(await (await download).path(), 'utf8').trim();
    };
    const saved = (await save()).split('\n');
    assert.equal(JSON.parse(saved[0]).format, 'pell-recording');
    assert.ok(saved.some((line) => line.includes('10000001')));
    await page.getByLabel('redact serials').check();
    assert.ok(!(await save()).includes('10000001'));

    await page.locator('lab-timeline input[type=file]').setInputFiles({
        name: 'bug.jsonl',
        mimeType: 'application/x-ndjson',
        buffer: Buffer.from(saved.join('\n')),
    });
    await page.getByText('This is the recording bug.jsonl').waitFor();
    await page.getByText(`${saved.length - 1} lines`, { exact: true }).waitFor();
    await server.pell('GET', `${first}/Contrast`);
    assert.equal(
        await lines().filter({ hasText: 'Contrast' }).count(),
        saved.filter((l) => l.includes('"resource":"Contrast"')).length,
    );
    await page.getByRole('button', { name: 'Back to what happens now' }).click();
    await lines().filter({ hasText: 'Contrast' }).last().waitFor();

    await page
        .locator('lab-timeline input[type=file]')
        .setInputFiles({ name: 'x.txt', mimeType: 'text/plain', buffer: Buffer.from('x') });
    await page.getByText('x.txt is no recording.').waitFor();
});

test('a firmware transfer of another page is a bar with blocks', async () => {
    await server.choose('eight-monitors', 0.2);
    const file = firmwarePackage(path.resolve('build/lab.dfw'));
    const { value } = await server.pell('POST', 'FileSystem/DfwFile', JSON.stringify({ path: file }));
    const transfer = server.pell('POST', `${first}/FirmwareUpdate/Transfer`, JSON.stringify({ dfwFile: value.id }));
    const bar = page.locator('lab-transfers');
    await bar.getByText(/block \d+ of 64/).waitFor();
    await bar.getByText(/left|almost done/).waitFor();
    await page.screenshot({ path: `${screenshots}/lab-transfer.png` });
    await server.simulate({ simulate: 'speed', factor: 20 });
    assert.deepEqual(await transfer, { error: null, value: null });
    await bar.getByText('transferred').waitFor();
    await bar.getByText('block 64 of 64').waitFor();
    await server.pell('DELETE', `FileSystem/DfwFile/${value.id}`);
});

test('all of it is reached with the keyboard', async () => {
    for (let at = 0; at < 3; ++at) await server.pell('GET', `${first}/Hue`);
    await lines().nth(2).waitFor();
    await page.getByLabel('Search resources').focus();
    const isOn = (name) =>
        page.evaluate((name) => {
            let element = document.activeElement;
            while (element?.shadowRoot?.activeElement) element = element.shadowRoot.activeElement;
            return (element.textContent + (element.getAttribute('aria-label') ?? '')).includes(name);
        }, name);
    const tabTo = async (name) => {
        for (let presses = 0; presses < 25; ++presses) {
            await page.keyboard.press('Tab');
            if (await isOn(name)) return;
        }
        assert.fail(`Tab does not reach ${name}`);
    };
    await tabTo('Brightness');
    await page.keyboard.press('ArrowDown');
    await page.keyboard.press('Enter');
    await tabTo('GET');
    await page.keyboard.press('Enter');
    await lines().nth(3).waitFor();
    await row('PUT').getByRole('textbox').first().focus();
    await page.keyboard.press('Tab');
    assert.ok(await isOn('PUT'), 'the button comes after its field');
    await tabTo('Requests');
    await page.keyboard.press('End');
    await exchange().getByText('GET Candela').waitFor();
    await page.keyboard.press('ArrowUp');
    await exchange().getByText('GET Hue').waitFor();
    await page.keyboard.press('Escape');
    assert.equal(await exchange().count(), 0);
    assert.ok(await isOn('Requests'));
});

test('10,000 requests are kept, of which those in sight are drawn', async () => {
    const request = `GET /pell/${first}/Brightness HTTP/1.1\r\nHost: 127.0.0.1:${server.port}\r\n`;
    const { socket, answer } = connect(server.port);
    socket.write(`${request}\r\n`.repeat(10_099) + `${request}Connection: close\r\n\r\n`);
    await answer;
    await page.getByText('10,000 lines').waitFor();
    assert.ok((await lines().count()) < 100);
    await lines().last().click();
    await page.keyboard.press('Home');
    await page.keyboard.press('ArrowDown');
    const opened = page.locator('[role=option][aria-selected=true]');
    assert.equal(await opened.getAttribute('aria-posinset'), '2');
});

test('with libraries that are not simulated, the lab says so and hides what cannot be done', async () => {
    await page.route('**/lab/api/state', (route) =>
        route.fulfill({ json: { simulated: false, plugin: 'C:\\host\\libpell.dll' } }),
    );
    await page.reload();
    await page.getByText('nothing can be simulated here').waitFor();
    await card('TB240').waitFor();
    for (const name of ['Unplug', 'Reset', 'Let it fail'])
        assert.equal(await page.locator('lab-header, lab-monitors').getByRole('button', { name }).count(), 0);
    await choose('Brightness');
    await send('?range');
    await answered('?range', '{"max":100,"min":0}');
});

test('a server that ends and comes back is noticed', async () => {
    const own = await startServer(null, 'native');
    const lab = await open(browser, `${own.address}/lab/`);
    await lab.getByText('connected', { exact: true }).first().waitFor();
    await own.pell('GET', 'Monitors');
    await lines(lab).first().waitFor();
    own.close();
    await lab.getByText('The server does not answer').waitFor();
    await own.ended;
    const again = await startHost(null, 'native', 'serve', '--port', String(own.port));
    await lab.getByText('The server does not answer').waitFor({ state: 'hidden' });
    await again.pell('GET', `${first}/Hue`);
    await lines(lab).filter({ hasText: 'Hue' }).waitFor();
    await lab.context().close();
    again.close();
});

test('a monitor of the Windows build is asked and unplugged', async (t) => {
    const { address } = await startServer(t, 'windows');
    const lab = await open(browser, `${address}/lab/`);
    await lab.getByText('libpell.dll').waitFor();
    await send('?range', lab);
    await answered('?range', '{"max":100,"min":0}', lab);
    await lines(lab).filter({ hasText: 'GET Brightness' }).last().click();
    await exchange(lab).getByText('DmCtrlGetRangeBrightnessForStep').waitFor();
    await card('TQ271-P', lab).getByRole('button', { name: 'Unplug' }).click();
    await card('TQ271-P', lab).getByText('unplugged').waitFor();
    await send('?range', lab);
    await answered('?range', /Monitor is not found/, lab);
    assert.deepEqual(lab.problems, []);
    await lab.context().close();
});

// The looks, for a person to judge, and what axe says of them.
const looks = { wide: {}, 'narrow-dark': { viewport: { width: 400, height: 800 }, colorScheme: 'dark' } };
for (const [name, options] of Object.entries(looks))
    test(`${name}: nothing is cut off, and axe finds nothing serious`, async () => {
        const lab = await openLab(options);
        const isNarrow = name !== 'wide';
        const show = (part) => isNarrow && lab.getByRole('navigation').getByRole('button', { name: part }).click();
        // A wide window shows all parts at once, so one look at the end is enough.
        const check = async (part) => {
            if (!isNarrow && part !== 'all') return;
            assert.deepEqual(await seriousFindings(lab), []);
            const width = await lab.evaluate(() => document.documentElement.scrollWidth);
            assert.ok(width <= lab.viewportSize().width, `${width} pixels wide`);
            await lab.screenshot({ path: `${screenshots}/lab-${name}-${part}.png` });
        };
        await server.pell('GET', `Monitors/TB240/10000002/FineContrast?supports`);
        await choose('Brightness', lab);
        await send('?range', lab);
        await answered('?range', '{"max":100,"min":0}', lab);
        await row('?range', lab).getByRole('button', { name: 'Copy as' }).click();
        await server.pell('PUT', `${first}/Brightness`, '400');
        await server.simulate({ simulate: 'unplug', product: 'TB240', serial: '10000001' });
        await check('resources');
        await show('Timeline');
        await lines(lab).filter({ hasText: 'GET Brightness' }).last().click();
        await exchange(lab).getByText('DmCtrlGetRangeBrightnessForStep').waitFor();
        await check('timeline');
        if (!isNarrow) {
            await lab.setViewportSize({ width: 1280, height: 760 });
            await lab.screenshot({ path: `${screenshots}/readme.png` });
        }
        await show('Monitors');
        await card('TB240 10000001', lab).getByText('unplugged').waitFor();
        await check(isNarrow ? 'monitors' : 'all');
        assert.deepEqual(lab.problems, []);
        await lab.context().close();
    });

test('the links to the reference lead somewhere', () => {
    const pages = Object.fromEntries(
        fs
            .readdirSync('build/lab/reference')
            .map((name) => [name, fs.readFileSync(`build/lab/reference/${name}`, 'utf8')]),
    );
    const missing = Object.entries(catalogue.resources)
        .map(([name, { family }]) => [`${family}.html`, name.toLowerCase()])
        .concat(
            Object.entries(pages).flatMap(([from, text]) =>
                [...text.matchAll(/<a href="([^"#]*)(?:#([^"]*))?"/g)].map(([, to, anchor]) => [to || from, anchor]),
            ),
        )
        .filter(([to, anchor]) => !pages[to] || (anchor && !pages[to].includes(`id="${anchor}"`)));
    assert.deepEqual(missing, []);
});
