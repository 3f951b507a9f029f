// The client and the plug-in: every example of the catalogue, over a bridge and over HTTP; errors; a transfer.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import { after, before, test } from 'node:test';
import { EventSource } from 'eventsource';
import { parseExamples } from '../../catalogue/tools/examples.js';
import { readTable } from '../../catalogue/tools/source.js';
import { DfwFile, httpTransport, Monitor, Pell } from '../../build/client/index.js';
import { pathOf } from '../../build/client/paths.js';
import { bridge, catalogue, firmwarePackage, Host, serve } from './support.js';

function withResolvers() {
    let resolve;
    return { promise: new Promise((settle) => (resolve = settle)), resolve };
}

const product = 'TQ271-P';
const serial = '10000001';
const firmware = firmwarePackage();
const host = new Host();
let server;

before(async () => {
    server = await serve(host);
    globalThis.EventSource = EventSource;
});

after(() => {
    server.close();
    host.close();
});

/** Runs the examples of a resource, and resolves with what was expected of them and what came. */
async function runExamples(transport, name, { examples }) {
    await host.line({ simulate: 'reset' });
    const known = { package: firmware };
    const filled = (value) =>
        JSON.parse(JSON.stringify(value).replace(/\$(\w+)/g, (whole, key) => known[key] ?? whole));
    const outcomes = [];
    const lines = examples.flat().join('\n');
    for (const example of parseExamples(lines, assert.fail)) {
        const {
            method,
            resource = name,
            id,
            query,
            body,
            error,
            isAbridged,
        } = { ...example, ...filled({ query: example.query, body: example.body, id: example.id }) };
        const { of } = catalogue.resources[resource];
        const target =
            of === 'monitor'
                ? new Monitor(transport, product, serial)
                : id
                  ? new DfwFile(transport, id)
                  : new Pell(transport);
        const given = method === 'GET' ? [query] : [body ?? undefined, query];
        const outcome = await target[method.toLowerCase()](resource, ...given).catch(({ name, message, reason }) => ({
            name,
            message,
            reason,
        }));
        const identifier = /^\$(\w+)$/.exec(example.value?.id)?.[1];
        if (identifier) known[identifier] = outcome.id;
        const expected = error ? { reason: undefined, ...error } : method === 'PUT' ? 'done' : filled(example.value);
        outcomes.push({ request: example.request, outcome, expected, isAbridged });
    }
    return outcomes;
}

const transports = { 'over a bridge': () => bridge(host), 'over HTTP': () => httpTransport(server.address) };
for (const [name, connect] of Object.entries(transports))
    test(`every example of the catalogue, ${name}`, async () => {
        const transport = connect();
        for (const [resource, one] of Object.entries(catalogue.resources))
            for (const { request, outcome, expected, isAbridged } of await runExamples(transport, resource, one))
                assert.deepEqual(
                    isAbridged ? abridged(outcome, expected) : outcome,
                    expected,
                    `${resource}: ${request}`,
                );
    });

test('a listener that goes before its stream is open holds up no POST', { timeout: 20_000 }, async () => {
    const transport = httpTransport(server.address);
    const stop = transport.on('transferFirmwareData', () => {});
    stop();
    stop();
    assert.equal(
        await new Monitor(transport, product, serial).post('FirmwareUpdateTrigger').catch(() => 'failed'),
        'failed',
    );
});

/** What came, its lists cut to the length of what was expected. */
function abridged(value, expected) {
    if (Array.isArray(expected)) return value.slice(0, expected.length);
    if (typeof expected !== 'object') return value;
    return Object.fromEntries(Object.entries(value).map(([name, part]) => [name, abridged(part, expected[name])]));
}

test('every resource stands at its path', () => {
    const rows = [...readTable().values()].filter(({ path }) => path);
    const expected = rows.filter(({ kind }) => kind !== 'ALIAS').map(({ name, path }) => [name, path]);
    assert.deepEqual(
        expected.map(([name]) => [name, pathOf(name)]),
        expected,
    );
});

const values = [
    true,
    false,
    0,
    -1.5e-7,
    '',
    'v4',
    '10',
    'true',
    'null',
    '"',
    'a&b=c?d#e%20+ü/€',
    [1, '2'],
    { a: { b: null } },
    null,
];
const queries = values.map((value) => ({ value, 'another name': value }));

test('addresses and queries arrive as they were given', async () => {
    const transport = httpTransport(server.address);
    const parameters = { product: 'A/B?#%20 1', serial: '7%' };
    const heard = [];
    const { call } = host;
    host.call = (resource, texts, answered) => {
        heard.push(texts.slice(1, 3).map((text) => JSON.parse(text)));
        answered(200, '{"error":null,"value":null}');
    };
    for (const query of [...queries, { range: undefined }])
        await transport({ resource: 'Hue', method: 'GET', parameters, query });
    host.call = call;
    assert.deepEqual(
        heard,
        [...queries, {}].map((query) => [parameters, query]),
    );
});

test('the development host reads a query as the client writes it', async (context) => {
    const fetched = context.mock.method(globalThis, 'fetch', async () => new Response('')).mock;
    const transport = httpTransport('/pell');
    for (const query of queries) await transport({ resource: 'Hue', method: 'GET', parameters: {}, query });
    const read = fetched.calls.map(({ arguments: [url] }) => {
        const command = ['--json', 'get', 'Hue', '--query', url.slice(url.indexOf('?') + 1)];
        const { request } = JSON.parse(execFileSync('build/native/full/pellhost', command));
        return JSON.parse(request.query);
    });
    assert.deepEqual(read, queries);
});

const advices = { isUnsupported: 'unsupported', isDisconnected: 'reconnect', isOutdatedLibrary: 'outdated' };
const flagsOf = (error) => Object.keys(advices).filter((flag) => error[flag]);
const flagsFor = (advice) => Object.keys(advices).filter((flag) => advices[flag] === advice);

test('errors advise what the catalogue does', async () => {
    await host.line({ simulate: 'reset' });
    const monitor = new Monitor(bridge(host), product, serial);
    for (const [code, { message, advice }] of Object.entries(catalogue.results.codes)) {
        await host.line({ simulate: 'return', function: 'DmCtrlGetBrightnessForStep', result: Number(code), times: 1 });
        const error = await monitor.get('Brightness').catch((error) => error);
        assert.deepEqual([error.message, error.code, ...flagsOf(error)], [message, Number(code), ...flagsFor(advice)]);
    }
    const gone = await new Monitor(bridge(host), product, 'none').tryGet('Brightness').catch((error) => error);
    assert.deepEqual(flagsOf(gone), ['isDisconnected']);
});

test('what an older library or monitor lacks is undefined for tryGet', async (context) => {
    await host.line({ simulate: 'reset' });
    assert.equal(await new Monitor(bridge(host), 'TB240', '10000002').tryGet('ModeName'), undefined);
    const older = new Host('minimal');
    context.after(() => older.close());
    const monitor = new Monitor(bridge(older), product, serial);
    assert.equal(await monitor.tryGet('ColorPatch', { supports: true }), undefined);
    assert.deepEqual(flagsOf(await monitor.put('ColorPatch', {}).catch((error) => error)), ['isOutdatedLibrary']);
});

for (const refusals of [0, 1])
    test(
        `the steps of a transfer over HTTP, of which ${refusals} streams are refused at first`,
        { timeout: 60000 },
        async () => {
            await host.line({ simulate: 'reset' });
            const pell = new Pell(httpTransport(server.address));
            const opened = server.refuseEvents(refusals);
            const steps = [];
            const { promise, resolve } = withResolvers();
            const stop = pell.on('transferFirmwareData', (step) => {
                steps.push(step.transferredBlock);
                if (step.transferredBlock === step.blockCount) resolve(step.blockCount);
            });
            if (refusals) await opened;
            const file = await pell.open(firmware);
            const update = new Monitor(pell.transport, product, serial).transfer(file);
            let last;
            for await (const step of update.progress()) last = step;
            assert.deepEqual([last.product, last.transferredBlock], [product, last.blockCount]);
            assert.deepEqual(
                steps,
                Array.from({ length: await promise }, (_, at) => at + 1),
            );
            await file.close();
            stop();
        },
    );
