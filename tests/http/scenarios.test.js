// The scenarios that hurt: what a page meets in each.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { test } from 'node:test';
import { ask, builds, hostOf, startServer } from './server.js';

const first = '/pell/Monitors/TQ271-P/10000001';
const envelope = ({ text }) => JSON.parse(text);
const connectionError = 2147549185;
const { results } = JSON.parse(fs.readFileSync('catalogue/catalogue.json', 'utf8'));
const absent = results.notConnected.code;

for (const build of builds)
    test(build, async (t) => {
        const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'pell-http-'));
        t.after(() => fs.rmSync(folder, { recursive: true }));
        const server = await startServer(t, build);
        const { address, pathOf } = server;
        const file = pathOf(path.join(folder, 'new.dfw'));
        const [program, ...others] = hostOf(build).command;
        const options = ['--product', 'TQ271-P', '--version', '3.0.0.0.0', '--size', '65536'];
        execFileSync(program, [...others, 'firmware', 'create', file, ...options]);

        const get = async (target) => envelope(await ask(address, target));
        const send = async (method, target, value) =>
            envelope(await ask(address, target, { method, body: JSON.stringify(value) }));
        const monitors = async () =>
            (await get('/pell/Monitors')).value.map(({ product, serial }) => `${product}/${serial}`);
        const state = async () => JSON.parse((await ask(address, '/lab/api/state')).text);

        /** What the steps of an update answer, and the version afterwards. */
        async function update(base = first) {
            const { id } = (await send('POST', '/pell/FileSystem/DfwFile', { path: file })).value;
            const steps = [await send('POST', `${base}/FirmwareUpdate/Transfer`, { dfwFile: id })];
            if (!steps[0].error) steps.push(await send('POST', `${base}/FirmwareUpdate/Trigger`));
            for (let poll = 0; poll < 4 && !steps.at(-1).error; ++poll) steps.push(await get(`${base}/FirmwareUpdate`));
            await ask(address, `/pell/FileSystem/DfwFile/${id}`, { method: 'DELETE' });
            return { steps, system: (await get(`${base}/FirmwareUpdate/Version`)).value?.system };
        }

        const scenarios = {
            twins: async () => {
                assert.deepEqual(await monitors(), ['TQ271-P/10000001', 'TQ271-P/10000001', 'TB240/10000002']);
                await send('PUT', `${first}/Brightness`, 70);
                assert.deepEqual(
                    (await state()).monitors.map(({ brightness }) => brightness),
                    [70, 50, 50],
                );
                const unplug = { simulate: 'unplug', product: 'TQ271-P', serial: '10000001' };
                await server.simulate(unplug);
                assert.equal((await get(`${first}/Brightness`)).value, 50); // the other one answers now
                await server.simulate(unplug);
                assert.deepEqual(await monitors(), ['TB240/10000002']);
            },
            'blank-serial': async () => {
                assert.deepEqual(await monitors(), ['TB240/', 'TQ271-P/10000001']);
                assert.equal((await get('/pell/Monitors/TB240//Brightness')).error.message, 'URI is invalid.');
                assert.equal((await get(`${first}/Brightness`)).value, 50);
            },
            'slow-waker': async () => {
                await server.simulate({ simulate: 'speed', factor: 1000 });
                const slow = get(`${first}/Brightness`);
                assert.equal((await get('/pell/Monitors/TB240/10000002/Brightness')).value, 50);
                assert.equal((await slow).value, 50);
                // However fast the time passes, it is the monitors' two seconds.
                await server.simulate({ simulate: 'speed', factor: 0 });
                const { value } = await get(`${first}/Brightness`);
                assert.equal(value, 50);
                await server.simulate({ simulate: 'speed', factor: 1 });
            },
            'ignores-writes': async () => {
                assert.equal((await send('PUT', `${first}/Brightness`, 70)).error, null);
                assert.equal((await send('PUT', `${first}/InputPort`, [2])).error, null);
                assert.deepEqual((await state()).monitors[0].inputPort, [1]);
                assert.equal((await get(`${first}/Brightness`)).value, 50);
            },
            vanishes: async () => {
                const answers = [];
                for (let count = 0; count < 14; ++count) answers.push(await get(`${first}/Brightness`));
                const failed = answers.findIndex(({ error }) => error);
                assert.equal(failed, 11);
                assert.deepEqual(
                    answers.slice(failed).map(({ error }) => error.code),
                    [connectionError, absent, absent],
                );
                assert.deepEqual(await monitors(), ['TB240/10000002']);
                await server.simulate({ simulate: 'plug', product: 'TQ271-P', serial: '10000001' });
                assert.equal((await get('/pell/Monitors?update')).value.length, 2);
                assert.equal((await get(`${first}/Brightness`)).value, 50);
            },
            'input-switch': async () => {
                assert.equal((await send('PUT', `${first}/InputPort`, [2])).error, null);
                assert.deepEqual(await monitors(), ['TB240/10000002']);
                assert.equal((await get(`${first}/InputPort`)).error.code, absent);
                await server.simulate({ simulate: 'plug', product: 'TQ271-P', serial: '10000001' });
                assert.deepEqual((await get('/pell/Monitors?update')).value.length, 2);
                assert.deepEqual((await get(`${first}/InputPort`)).value, [1]);
            },
            'update-fails': async () => {
                const { steps, system } = await update();
                assert.equal(steps[0].error.reason, 'Transfer firmware data.');
                assert.equal(system, 2);
            },
            'update-gone': async () => {
                const { steps, system } = await update();
                assert.deepEqual([steps[0].error, steps[1].error], [null, null]);
                assert.equal(steps.at(-1).error.code, connectionError);
                assert.equal(system, undefined);
                await server.simulate({ simulate: 'plug', product: 'TQ271-P', serial: '10000001' });
                await get('/pell/Monitors?update');
                assert.equal((await get(`${first}/FirmwareUpdate/Version`)).value.system, 2);
            },
            'update-in-vain': async () => {
                const { steps, system } = await update();
                assert.deepEqual(steps.at(-1).value, { state: 0 });
                assert.equal(system, 2);
            },
            'eight-monitors': async () => {
                assert.equal((await monitors()).length, 8);
                const bases = [1, 2, 3, 4].map((number) => `/pell/Monitors/TQ271-P/1000000${number}`);
                const updates = await Promise.all(bases.map(update));
                assert.deepEqual(
                    updates.map(({ system }) => system),
                    [3, 3, 3, 3],
                );
            },
        };

        assert.deepEqual(['built-in', ...Object.keys(scenarios).sort()], (await state()).scenarios);
        for (const [name, prove] of Object.entries(scenarios))
            await t.test(name, async () => {
                await server.simulate({ simulate: 'scenario', name });
                await prove();
            });
    });
