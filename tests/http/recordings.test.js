// Recordings: what they hold, and what a replay says of them.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { test } from 'node:test';
import Ajv from 'ajv/dist/2020.js';
import { ask, brightness, builds, hostOf, startHost, startServer } from './server.js';

const isLine = new Ajv({ allowUnionTypes: true }).compile(
    JSON.parse(fs.readFileSync('docs/recording.schema.json', 'utf8')),
);
const recordings = fs.readdirSync('tests/recordings').filter((name) => name.endsWith('.jsonl'));

const call = (resource, method, body = '', parameters = { product: 'TQ271-P', serial: '10000001' }) => ({
    call: resource,
    texts: [JSON.stringify({ method }), JSON.stringify(parameters), '', body],
});

for (const build of builds)
    test(build, async (t) => {
        const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'pell-recordings-'));
        t.after(() => fs.rmSync(folder, { recursive: true }));
        const { command, pathOf } = hostOf(build);
        const run = (args, input = '') => {
            const { status, stdout, stderr } = spawnSync(command[0], [...command.slice(1), ...args], {
                input,
                encoding: 'utf8',
            });
            return { status, stdout, stderr };
        };
        const replay = (file) => run(['replay', pathOf(file)]);
        const lines = (file) =>
            fs
                .readFileSync(file, 'utf8')
                .trimEnd()
                .split('\n')
                .map((line) => JSON.parse(line));
        const file = (name) => path.join(folder, name);

        for (const name of recordings)
            await t.test(`${name} comes out the same`, () => {
                const outcome = replay(`tests/recordings/${name}`);
                assert.deepEqual([outcome.status, outcome.stderr], [0, ''], outcome.stdout);
                for (const line of lines(`tests/recordings/${name}`))
                    assert.ok(isLine(line), `${JSON.stringify(line)}: ${JSON.stringify(isLine.errors)}`);
            });

        await t.test('a batch is recorded, and its differences are told', () => {
            const batch = [
                call('Brightness', 'PUT', '60'),
                { simulate: 'return', function: 'DmCtrlGetBrightnessForStep', result: 0x80000020 - 22, times: 1 },
                call('Brightness', 'GET'),
                call('Monitors', 'GET', '', {}),
            ];
            const input = batch.map((line) => JSON.stringify(line)).join('\n');
            const recorded = run(['batch', '--record', pathOf(file('batch.jsonl'))], input);
            assert.equal(recorded.status, 0, recorded.stderr);
            assert.deepEqual(recorded.stdout, run(['batch'], input).stdout); // is what it is without
            assert.equal(lines(file('batch.jsonl')).filter((line) => isLine(line)).length, 5);
            assert.deepEqual(replay(file('batch.jsonl')), {
                status: 0,
                stdout: '3 requests, 0 differences\n',
                stderr: '',
            });

            const changes = [
                [/60\]/, '61]', 'line 2: PUT Brightness of TQ271-P/10000001\n    calls/2/arguments/2: 61 is now 60'],
                ['"status":200,"text"', '"status":201,"text"', 'responses/0/status: 201 is now 200'],
                ['statusCode:200', 'statusCode:404', 'log/0/line'],
                ['"promise":1,', '"promise":7,', 'responses/0/isOfThisRequest: false is now true'],
                ['"simulate":"return"', '"simulate":"throw"', /line 4: GET Brightness/],
                ['"events":[]', '"events":[{"name":"a","text":"{}"}]', 'events: [{"name":"a","text":{}}] is now []'],
            ];
            const text = fs.readFileSync(file('batch.jsonl'), 'utf8');
            for (const [from, to, told] of changes) {
                let changed = text.replace(from, to);
                if (to.includes('throw')) changed = changed.replace(/"result":2147483658,"simulate/, '"simulate');
                assert.notEqual(changed, text);
                fs.writeFileSync(file('changed.jsonl'), changed);
                const { status, stdout, stderr } = replay(file('changed.jsonl'));
                assert.equal(status, 1, stderr);
                assert.ok(told instanceof RegExp ? told.test(stdout) : stdout.includes(told), stdout);
            }
        });

        await t.test('a difference says what ran at the same time', () => {
            const [head, ...others] = lines(file('batch.jsonl'));
            const [put, simulation, get, list] = others.map((line) => ({ ...line, time: 5000, milliseconds: 0.5 }));
            get.responses[0].status = 299;
            const rows = [
                [{}, {}, null], // within the same millisecond, one behind the other
                [{ milliseconds: 900 }, { time: 5900 }, null], // which may have begun just behind
                [{ milliseconds: 900 }, { time: 5899 }, 2],
                [{ time: 5500 }, { milliseconds: 501 }, 2], // a line is written when its request has ended
            ];
            for (const [early, late, expected] of rows) {
                const after = { time: 9000 };
                const all = [head, { ...put, ...early }, { ...simulation, ...after }, { ...get, ...late }];
                delete all[2].milliseconds;
                fs.writeFileSync(
                    file('met.jsonl'),
                    [...all, { ...list, ...after }].map((line) => `${JSON.stringify(line)}\n`).join(''),
                );
                const { differences } = JSON.parse(run(['--json', 'replay', pathOf(file('met.jsonl'))]).stdout);
                assert.deepEqual(
                    differences.map(({ line, where, ranTogetherWith }) => [line, where, ranTogetherWith]),
                    [[4, 'responses/0/status', expected]],
                );
                const told = expected ? `, ran together with line ${expected}` : '';
                const title = `line 4: GET Brightness of TQ271-P/10000001${told}\n`;
                assert.ok(replay(file('met.jsonl')).stdout.startsWith(title));
            }
        });

        await t.test('what is no recording is refused, with its line', () => {
            const [head, line] = fs.readFileSync(file('batch.jsonl'), 'utf8').split('\n');
            const texts = [
                '',
                '{}',
                'x',
                head.slice(0, 99),
                head.replace('"version":1', '"version":2'),
                `${head}\n{}`,
                `${head}\n${line.slice(0, 99)}\n`,
            ];
            for (const text of texts) {
                fs.writeFileSync(file('wrong.jsonl'), text);
                const { status, stderr } = replay(file('wrong.jsonl'));
                assert.equal(status, 2, text);
                assert.match(stderr, /line \d/);
            }
        });

        await t.test('a recording that was cut off is replayed as far as it is whole', () => {
            const text = fs.readFileSync(file('batch.jsonl'), 'utf8').trimEnd();
            for (const [cut, requests, told] of [
                [0, 3, ''],
                [1, 2, /^pellhost: line 5 is torn.*\n$/],
                [text.length - text.lastIndexOf('\n') - 2, 2, /line 5 is torn/],
            ]) {
                fs.writeFileSync(file('torn.jsonl'), text.slice(0, text.length - cut));
                const { status, stdout, stderr } = replay(file('torn.jsonl'));
                assert.deepEqual([status, stdout], [0, `${requests} requests, 0 differences\n`]);
                assert.match(stderr, told || /^$/);
            }
            assert.equal(JSON.parse(run(['--json', 'replay', pathOf(file('torn.jsonl'))]).stdout).tornLine, 5);
        });

        await t.test('other monitors and simulations than the recording has', () => {
            fs.writeFileSync(file('one.json'), JSON.stringify({ monitors: [{ product: 'A', serial: '1' }] }));
            const options = ['--record', pathOf(file('one.jsonl'))];
            const input = JSON.stringify(call('Monitors', 'GET', '', {}));
            run(['--scenario', pathOf(file('one.json')), 'batch', ...options], input);
            assert.equal(replay(file('one.jsonl')).stdout, '1 request, 0 differences\n');
            const changed = [
                [['--scenario', 'twins'], /responses\/0\/text\/value.*TQ271-P/],
                [['--simulate', '{"simulate":"return","function":"DmCtrlGetSerialProduct","result":-1}'], /calls/],
            ];
            for (const [others, told] of changed) {
                const { status, stdout } = run([...others, 'replay', pathOf(file('one.jsonl'))]);
                assert.equal(status, 1, stdout);
                assert.match(stdout, told);
            }
        });

        await t.test(
            'a file that cannot be written is told',
            { skip: build !== 'native' && 'asks Linux' },
            async () => {
                const input = JSON.stringify(call('Brightness', 'GET'));
                const full = run(['batch', '--record', '/dev/full'], input);
                assert.deepEqual(full, { status: 1, stdout: '', stderr: 'pellhost: cannot write /dev/full\n' });
                const limited = spawnSync(
                    'bash',
                    [
                        '-c',
                        'trap "" XFSZ; ulimit -f 1; exec "$@"',
                        'bash',
                        ...command,
                        'batch',
                        '--record',
                        file('limited'),
                    ],
                    { input: `${input}\n`.repeat(20), encoding: 'utf8' },
                );
                assert.deepEqual([limited.status, limited.stdout.trim().split('\n').length], [1, 20]);
                assert.match(
                    limited.stderr,
                    /^The recording ends here: cannot write .*limited\npellhost: .*incomplete\n$/,
                );
                assert.match(replay(file('limited')).stderr, /torn/);
            },
        );

        await t.test('serials are redacted alike wherever they are', () => {
            const input = [
                call('Monitors', 'GET', '', {}),
                call('Brightness', 'GET'),
                call('AssetTag', 'PUT', JSON.stringify('of 10000001, not 110000001')),
            ].map((line) => JSON.stringify(line));
            run(['batch', '--redact', '--record', pathOf(file('redacted.jsonl'))], input.join('\n'));
            const text = fs.readFileSync(file('redacted.jsonl'), 'utf8');
            assert.doesNotMatch(text, /\b1000000[12]\b/);
            assert.match(text, /of R0000001, not 110000001/);
            assert.deepEqual(replay(file('redacted.jsonl')), {
                status: 0,
                stdout: '3 requests, 0 differences\n',
                stderr: '',
            });
        });

        await t.test('numbers that look like a serial are left alone', () => {
            const scenario = JSON.stringify({ monitors: [{ product: 'TQ271-P', serial: '50' }] });
            fs.writeFileSync(file('fifty.json'), scenario);
            const input = [call('Brightness', 'GET', '', { product: 'TQ271-P', serial: '50' })];
            const options = ['--scenario', pathOf(file('fifty.json'))];
            const output = pathOf(file('fifty.jsonl'));
            run(
                [...options, 'batch', '--redact', '--record', output],
                input.map((line) => JSON.stringify(line)).join('\n'),
            );
            const [, line] = lines(file('fifty.jsonl'));
            assert.equal(line.responses[0].text, '{"error":null,"value":50}');
            assert.equal(replay(file('fifty.jsonl')).status, 0);
        });

        await t.test('a body that is nested too deeply for any stack', () => {
            const deep = '['.repeat(100_000) + '"10000001"' + ']'.repeat(100_000);
            const input = ['', deep].map((body) => JSON.stringify(call('AssetTag', 'PUT', body))).join('\n');
            assert.equal(run(['batch', '--redact', '--record', pathOf(file('deep.jsonl'))], input).status, 0);
            assert.doesNotMatch(fs.readFileSync(file('deep.jsonl'), 'utf8'), /\b10000001\b/);
            assert.equal(replay(file('deep.jsonl')).stdout, '2 requests, 0 differences\n');
        });

        await t.test('a scenario that is chosen, and what is simulated from the start, are in it', async (inner) => {
            const options = ['--record', pathOf(file('chosen.jsonl')), '--redact'];
            const fault = { simulate: 'return', function: 'DmCtrlGetBrightnessForStep', result: 0x8000000a, times: 1 };
            const simulate = ['--simulate', JSON.stringify(fault)];
            const server = await startHost(inner, build, ...simulate, 'serve', '--port', '0', ...options);
            assert.equal((await ask(server.address, brightness)).status, 500);
            await server.simulate({ simulate: 'scenario', name: 'twins' });
            await ask(server.address, '/pell/Monitors');
            await ask(server.address, brightness);
            for (const [name, target] of Object.entries({ kept: 'recording', keptRedacted: 'recording?redact' }))
                fs.writeFileSync(file(`${name}.jsonl`), (await ask(server.address, `/lab/api/${target}`)).text);
            for (const name of ['chosen', 'kept', 'keptRedacted']) {
                const outcome = replay(file(`${name}.jsonl`));
                assert.deepEqual([name, outcome.stdout], [name, '3 requests, 0 differences\n']);
                const [head, , , scenario] = lines(file(`${name}.jsonl`));
                assert.equal(head.scenario.monitors.length, 3);
                assert.equal(head.scenario.monitors[1].product, 'TB240'); // as it was when all began
                assert.equal(scenario.scenario.monitors[1].product, 'TQ271-P');
                for (const line of lines(file(`${name}.jsonl`))) assert.ok(isLine(line), JSON.stringify(isLine.errors));
            }
            for (const name of ['chosen', 'keptRedacted'])
                assert.doesNotMatch(fs.readFileSync(file(`${name}.jsonl`), 'utf8'), /\b1000000[12]\b/);
            const batch = run([...simulate, 'batch', ...options], JSON.stringify(call('Brightness', 'GET')));
            assert.equal(JSON.parse(batch.stdout).responses[0].status, 500);
            assert.equal(replay(file('chosen.jsonl')).stdout, '1 request, 0 differences\n');
        });

        await t.test('a server is recorded with its packages and its time', async (inner) => {
            const server = await startServer(inner, build, '--record', pathOf(file('served.jsonl')));
            run([
                'firmware',
                'create',
                pathOf(file('new.dfw')),
                '--product',
                'TQ271-P',
                '--version',
                '3.0.0.0.0',
                '--size',
                '2048',
            ]);
            const post = async (target, body) => {
                const { text } = await ask(server.address, target, { method: 'POST', body: JSON.stringify(body) });
                return JSON.parse(text).value;
            };
            await server.simulate({ simulate: 'scenario', name: 'slow-waker' });
            await server.simulate({ simulate: 'speed', factor: 1000 });
            const path = pathOf(file('new.dfw'));
            const { id } = await post('/pell/FileSystem/DfwFile', { path });
            await post('/pell/Monitors/TQ271-P/10000001/FirmwareUpdate/Transfer', { dfwFile: id });
            await ask(server.address, brightness);
            await ask(server.address, `/pell/FileSystem/DfwFile/${id}`, { method: 'DELETE' });
            const kept = (await ask(server.address, '/lab/api/recording')).text;
            fs.writeFileSync(file('kept.jsonl'), kept);
            assert.equal(
                kept.split('\n').slice(1).join('\n'),
                fs.readFileSync(file('served.jsonl'), 'utf8').split('\n').slice(1).join('\n'),
            );
            // Elsewhere, too.
            fs.mkdirSync(file('elsewhere'));
            fs.renameSync(file('new.dfw'), file('elsewhere/new.dfw'));
            fs.renameSync(file('served.jsonl'), file('elsewhere/served.jsonl'));
            assert.deepEqual(replay(file('elsewhere/served.jsonl')), {
                status: 0,
                stdout: '4 requests, 0 differences\n',
                stderr: '',
            });
            assert.equal(replay(file('kept.jsonl')).status, 1); // whose package is gone
        });
    });
