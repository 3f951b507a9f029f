// The client and the plug-in, over HTTP: every example of the catalogue; errors; a transfer.
import assert from 'node:assert/strict';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { EventSource } from 'eventsource';
import { parseExamples } from '../../catalogue/tools/examples.js';
import { ask, firmwarePackage, hostOf, startServer } from '../../tests/pellhost.js';
import { DfwFile, httpTransport, Monitor, Pell } from '../../build/client/index.js';
import { catalogue, pages } from './support.js';

const product = 'TQ271-P';
const serial = '10000001';
const firmware = firmwarePackage(path.resolve(pages, 'new.dfw'));
const smallFirmware = firmwarePackage(path.resolve(pages, 'small.dfw'), '--size', '1024'); // which examples describe
let server;
let http;

before(async () => {
    globalThis.EventSource = EventSource;
    server = await startServer(null, 'native');
    http = httpTransport(`${server.address}/pell`);
});
after(() => server?.close());
const reset = { simulate: 'reset' };

/** Runs the examples of a resource, which are to come out as they say. */
async function runExamples(name, { examples }) {
    const known = { package: smallFirmware };
    const filled = (value) =>
        value && JSON.parse(JSON.stringify(value).replace(/\$(\w+)/g, (whole, key) => known[key] ?? whole));
    for (const example of parseExamples(examples.flat().join('\n'), assert.fail)) {
        const { request, method, resource = name, value, error, isAbridged } = example;
        const [query, body, id] = [example.query, example.body, example.id].map(filled);
        const isOfMonitor = catalogue.resources[resource].of === 'monitor';
        const other = id ? new DfwFile(http, id) : new Pell(http);
        const target = isOfMonitor ? new Monitor(http, product, serial) : other;
        const given = method === 'GET' ? [query] : [body ?? undefined, query];
        const failed = ({ name, message, reason }) => ({ name, message, reason });
        const outcome = await target[method.toLowerCase()](resource, ...given).catch(failed);
        const identifier = /^\$(\w+)$/.exec(value?.id)?.[1];
        if (identifier) known[identifier] = outcome.id;
        const expected = error ? { reason: undefined, ...error } : method === 'PUT' ? 'done' : filled(value);
        assert.deepEqual(isAbridged ? abridged(outcome, expected) : outcome, expected, `${name}: ${request}`);
    }
}

/** What came, its lists cut to the length of what was expected. */
function abridged(value, expected) {
    if (Array.isArray(expected)) return value.slice(0, expected.length);
    if (typeof expected !== 'object') return value;
    return Object.fromEntries(Object.entries(value).map(([name, part]) => [name, abridged(part, expected[name])]));
}

test('every example of the catalogue', async () => {
    for (const [name, resource] of Object.entries(catalogue.resources)) {
        await server.simulate(reset);
        await runExamples(name, resource);
    }
});

const values = [true, false, 0, -1.5e-7, '', 'v4', '10', 'true', 'null', '"', 'a&b=c?d#e%20+ü/€'];
values.push([1, '2'], { a: { b: null } }, null);

test('addresses and queries arrive as they were given', async () => {
    await server.choose('twins');
    const parameters = { product: 'A/B?#%20 1', serial: '7%31' };
    const queries = [...values.map((value) => ({ value, 'another name': value })), { range: undefined }];
    for (const query of queries) await http({ resource: 'Hue', method: 'GET', parameters, query });
    const { text } = await ask(server.address, '/lab/api/recording');
    const lines = text.trim().split('\n').slice(-queries.length);
    const arrived = lines.map((line) =>
        JSON.parse(line)
            .texts.slice(1, 3)
            .map((part) => JSON.parse(part || '{}')),
    );
    assert.deepEqual(arrived, JSON.parse(JSON.stringify(queries.map((query) => [parameters, query]))));
});

test('a listener that goes before its stream is open holds up no POST', { timeout: 20_000 }, async () => {
    const stop = http.on('transferFirmwareData', () => {});
    stop();
    stop();
    const posted = new Monitor(http, product, serial).post('FirmwareUpdateTrigger');
    await assert.rejects(posted, { name: 'DmError' });
});

const advices = { isUnsupported: 'unsupported', isDisconnected: 'reconnect', isOutdatedLibrary: 'outdated' };
const flagsOf = (error) => Object.keys(advices).filter((flag) => error[flag]);
const flagsFor = (advice) => Object.keys(advices).filter((flag) => advices[flag] === advice);

test('errors advise what the catalogue does', async () => {
    await server.simulate(reset);
    const monitor = new Monitor(http, product, serial);
    for (const [code, { message, advice }] of Object.entries(catalogue.results.codes)) {
        await server.simulate({
            simulate: 'return',
            function: 'DmCtrlGetBrightnessForStep',
            result: Number(code),
            times: 1,
        });
        const error = await monitor.get('Brightness').catch((error) => error);
        assert.deepEqual([error.message, error.code, ...flagsOf(error)], [message, Number(code), ...flagsFor(advice)]);
    }
    const gone = await new Monitor(http, product, 'none').tryGet('Brightness').catch((error) => error);
    assert.deepEqual(flagsOf(gone), ['isDisconnected']);
});

test('what an older library or monitor lacks is undefined for tryGet', async (t) => {
    assert.equal(await new Monitor(http, 'TB240', '10000002').tryGet('ModeName'), undefined);
    const older = await startServer(t, hostOf('native', 'minimal'));
    const monitor = new Monitor(httpTransport(`${older.address}/pell`), product, serial);
    assert.equal(await monitor.tryGet('ColorPatch', { supports: true }), undefined);
    assert.deepEqual(flagsOf(await monitor.put('ColorPatch', {}).catch((error) => error)), ['isOutdatedLibrary']);
});

test('the steps of a transfer over HTTP', { timeout: 60_000 }, async () => {
    await server.simulate(reset);
    const pell = new Pell(http);
    const steps = [];
    const stop = pell.on('transferFirmwareData', (step) => steps.push(step.transferredBlock));
    const file = await pell.open(firmware);
    let last;
    for await (const step of new Monitor(http, product, serial).transfer(file).progress()) last = step;
    assert.deepEqual([last.product, last.transferredBlock], [product, last.blockCount]);
    assert.deepEqual(
        steps,
        Array.from({ length: last.blockCount }, (_, at) => at + 1),
    );
    await file.close();
    stop();
});
