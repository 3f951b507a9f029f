// The scenarios that hurt: what a page meets in each, and what the client tells it.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import { test } from 'node:test';
import { EventSource } from 'eventsource';
import { httpTransport, Monitor, Pell } from '../../build/client/index.js';
import { startServer } from '../../tests/http/server.js';
import { firmwarePackage } from './support.js';

const firmware = firmwarePackage();
const neighbour = ['TB240', '10000002'];
let server;
let pell;
let monitor;

const at = (...address) => new Monitor(pell.transport, ...address);
const failure = (promise) => promise.then(assert.fail, (error) => error);
const names = async (query) => (await pell.monitors(query)).map(({ product, serial }) => `${product}/${serial}`);
const state = async () => (await (await fetch(`${server.address}/lab/api/state`)).json()).monitors;
const plug = () => server.simulate({ simulate: 'plug', product: 'TQ271-P', serial: '10000001' });
const version = async (one = monitor) => {
    const { system, controller } = await one.get('FirmwareUpdateVersion');
    return `${system}.${controller}`;
};

/** Transfers the package, with what `seen` makes of each step, and closes it. */
async function transfer(one, seen = () => {}) {
    const file = await pell.open(firmware);
    try {
        for await (const step of one.transfer(file).progress()) seen(step);
    } finally {
        await file.close();
    }
}

/** Transfers and triggers the update, and resolves when it is over. */
async function update(one = monitor, seen) {
    await transfer(one, seen);
    await one.post('FirmwareUpdateTrigger');
    while ((await one.get('FirmwareUpdate')).state === 3);
}

const scenarios = {
    async twins() {
        const [one, other, third] = await pell.monitors();
        assert.deepEqual([one.serial, other.serial, third.serial], ['10000001', '10000001', '10000002']);
        await other.put('Brightness', 70);
        assert.deepEqual(
            (await state()).map(({ brightness }) => brightness),
            [70, 50, 50],
        );
        const unplug = { simulate: 'unplug', product: 'TQ271-P', serial: '10000001' };
        await server.simulate(unplug);
        assert.equal(await one.get('Brightness'), 50); // The other one answers now.
        await server.simulate(unplug);
        assert.ok((await failure(one.get('Brightness'))).isDisconnected);
    },

    async 'blank-serial'() {
        const [nameless, other] = await pell.monitors();
        assert.equal(nameless.serial, '');
        const { message, isDisconnected } = await failure(nameless.get('Brightness'));
        assert.deepEqual([message, isDisconnected], ['URI is invalid.', false]);
        assert.equal(await other.get('Brightness'), 50);
    },

    async 'slow-waker'() {
        await server.simulate({ simulate: 'speed', factor: 50 });
        const outcomes = [10, 20, 30].map((step) => monitor.put('Brightness', step));
        assert.equal(await at(...neighbour).get('Brightness'), 50);
        assert.deepEqual(await Promise.all(outcomes), ['done', 'superseded', 'done']);
        assert.equal(await monitor.get('Brightness'), 30);
    },

    async 'ignores-writes'() {
        assert.equal(await monitor.put('Brightness', 70), 'done');
        assert.equal(await monitor.put('InputPort', [2]), 'done');
        assert.deepEqual([await monitor.get('Brightness'), await monitor.get('InputPort')], [50, [1]]);
    },

    async vanishes() {
        let answers = 0;
        const ask = () => monitor.get('Brightness').then(() => ++answers && ask());
        const errors = [await failure(ask()), await failure(monitor.tryGet('Brightness'))];
        assert.equal(answers, 11);
        assert.deepEqual(
            errors.map(({ message, reason, isDisconnected }) => [message, reason, isDisconnected]),
            [
                ['Monitor connection error.', 'Get brightness.', true],
                ['Failed.', 'Monitor is not found.', true],
            ],
        );
        assert.deepEqual(await names({ update: true }), ['TB240/10000002']);
        await plug();
        assert.equal((await names({ update: true })).length, 2);
        assert.equal(await monitor.get('Brightness'), 50);
    },

    async 'input-switch'() {
        assert.equal(await monitor.put('InputPort', [2]), 'done');
        assert.ok((await failure(monitor.get('InputPort'))).isDisconnected);
        assert.deepEqual(await names(), ['TB240/10000002']);
        await plug();
        assert.equal((await names({ update: true })).length, 2);
        assert.deepEqual(await monitor.get('InputPort'), [1]);
    },

    async 'update-fails'() {
        const blocks = [];
        const { reason } = await failure(transfer(monitor, ({ transferredBlock }) => blocks.push(transferredBlock)));
        assert.equal(reason, 'Transfer firmware data.');
        assert.ok(blocks.at(-1) < 20);
        assert.deepEqual([await monitor.get('FirmwareUpdate'), await version()], [{ state: 0 }, '2.0']);
        assert.equal((await failure(transfer(monitor))).reason, reason, 'it can be tried again');
    },

    async 'update-gone'() {
        assert.ok((await failure(update())).isDisconnected);
        assert.deepEqual(await names({ update: true }), ['TB240/10000002']);
        await plug();
        await names({ update: true });
        assert.equal(await version(), '2.0');
    },

    async 'update-in-vain'() {
        await update();
        assert.equal(await version(), '2.0');
    },

    async 'eight-monitors'() {
        const all = (await pell.monitors()).filter(({ product }) => product === 'TQ271-P');
        assert.equal(all.length, 4);
        const steps = await Promise.all(
            all.map(async (one) => {
                const own = [];
                await update(one, ({ serial, transferredBlock }) => own.push([serial, transferredBlock]));
                return own.at(-1);
            }),
        );
        assert.deepEqual(
            steps,
            all.map(({ serial }) => [serial, 64]),
        );
        assert.deepEqual(await Promise.all(all.map(version)), ['2.1', '2.1', '2.1', '2.1']);
    },
};

test('there is a way through every scenario', () => {
    const files = fs.readdirSync('simulator/scenarios').map((name) => name.replace('.json', ''));
    assert.deepEqual(Object.keys(scenarios).sort(), files.sort());
});

test('a walk through every scenario', { timeout: 60_000 }, async (t) => {
    globalThis.EventSource = EventSource;
    server = await startServer(t, 'native');
    pell = new Pell(httpTransport(`${server.address}/pell`));
    monitor = at('TQ271-P', '10000001');
    for (const [name, walk] of Object.entries(scenarios))
        await t.test(name, async () => {
            await server.simulate({ simulate: 'scenario', name });
            await server.simulate({ simulate: 'speed', factor: 20 });
            await walk();
        });
});
