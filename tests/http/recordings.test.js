// Recordings: what they hold, and what a replay says of them.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { test } from 'node:test';
import Ajv from 'ajv/dist/2020.js';
import { ask, brightness, builds, firmwarePackage, hostOf, runHost, startHost, startServer } from '../pellhost.js';

const isLine = new Ajv({ allowUnionTypes: true }).compile(
    JSON.parse(fs.readFileSync('docs/recording.schema.json', 'utf8')),
);
const recordings = fs.readdirSync('tests/recordings').filter((name) => name.endsWith('.jsonl'));
const address = { product: 'TQ271-P', serial: '10000001' };
const call = (resource, method, body = '', parameters = address) =>
    JSON.stringify({ call: resource, texts: [JSON.stringify({ method }), JSON.stringify(parameters), '', body] });

for (const build of builds)
    test(build, async (t) => {
        const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'pell-recordings-'));
        t.after(() => fs.rmSync(folder, { recursive: true }));
        fs.cpSync('tests/recordings', folder, { recursive: true });
        const host = hostOf(build);
        const file = (name) => path.join(folder, name);
        const run = (args, lines = []) => runHost(host, args, lines.join('\n'));
        const record = (name, lines, before = [], ...after) => {
            const outcome = run([...before, 'batch', '--record', host.pathOf(file(name)), ...after], lines);
            assert.deepEqual([outcome.status, outcome.stderr], [0, '']);
            return outcome.stdout;
        };
        const replay = (name) => run(['replay', host.pathOf(file(name))]);
        const same = (count) => ({ status: 0, stderr: '', stdout: `${count} requests, 0 differences\n` });
        const textOf = (name) => fs.readFileSync(file(name), 'utf8');
        const linesOf = (name) => JSON.parse(`[${textOf(name).trimEnd().replaceAll('\n', ',')}]`);

        for (const name of recordings)
            await t.test(`${name} comes out the same`, () => {
                const outcome = replay(name);
                assert.deepEqual([outcome.status, outcome.stderr], [0, ''], outcome.stdout);
                for (const line of linesOf(name))
                    assert.ok(isLine(line), `${JSON.stringify(line)}: ${JSON.stringify(isLine.errors)}`);
            });

        await t.test('a batch is recorded, and its differences are told', () => {
            const failure = {
                simulate: 'return',
                function: 'DmCtrlGetBrightnessForStep',
                result: 0x8000000a,
                times: 1,
            };
            const batch = [call('Brightness', 'PUT', '60'), JSON.stringify(failure), call('Brightness', 'GET')];
            batch.push(call('Monitors', 'GET', '', {}));
            assert.equal(record('batch', batch), run(['batch'], batch).stdout); // is what it is without
            assert.equal(linesOf('batch').filter((line) => isLine(line)).length, 5);
            assert.deepEqual(replay('batch'), same(3));

            const changes = [
                [/60\]/, '61]', 'line 2: PUT Brightness of TQ271-P/10000001\n    calls/2/arguments/2: 61 is now 60'],
                ['"status":200,"text"', '"status":201,"text"', 'responses/0/status: 201 is now 200'],
                ['statusCode:200', 'statusCode:404', 'log/0/line'],
                ['"promise":1,', '"promise":7,', 'responses/0/isOfThisRequest: false is now true'],
                [/"result":2147483658,"simulate":"return"/, '"simulate":"throw"', 'line 4: GET Brightness'],
                ['"events":[]', '"events":[{"name":"a","text":"{}"}]', 'events: [{"name":"a","text":{}}] is now []'],
            ];
            for (const [from, to, told] of changes) {
                const changed = textOf('batch').replace(from, to);
                assert.notEqual(changed, textOf('batch'));
                fs.writeFileSync(file('changed'), changed);
                const { status, stdout, stderr } = replay('changed');
                assert.equal(status, 1, stderr);
                assert.ok(stdout.includes(told), stdout);
            }
        });

        await t.test('a difference says what ran at the same time', () => {
            const [head, ...others] = linesOf('batch');
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
                all.push({ ...list, ...after });
                fs.writeFileSync(file('met'), all.map((line) => `${JSON.stringify(line)}\n`).join(''));
                const { differences } = JSON.parse(run(['--json', 'replay', host.pathOf(file('met'))]).stdout);
                const [{ line, where, ranTogetherWith }, ...more] = differences;
                assert.deepEqual([line, where, ranTogetherWith, more], [4, 'responses/0/status', expected, []]);
                const told = expected ? `, ran together with line ${expected}` : '';
                assert.ok(replay('met').stdout.startsWith(`line 4: GET Brightness of TQ271-P/10000001${told}\n`));
            }
        });

        await t.test('what is no recording is refused; one that was cut off is replayed as far as it is whole', () => {
            const text = textOf('batch').trimEnd();
            const [head, line] = text.split('\n');
            const wrong = ['', '{}', 'x', head.slice(0, 99), head.replace('"version":1', '"version":2')];
            wrong.push(`${head}\n{}`, `${head}\n${line.slice(0, 99)}\n`);
            for (const one of wrong) {
                fs.writeFileSync(file('wrong'), one);
                const { status, stderr } = replay('wrong');
                assert.equal(status, 2, one);
                assert.match(stderr, /line \d/);
            }
            for (const end of [text.length, text.length - 1, text.lastIndexOf('\n') + 2]) {
                fs.writeFileSync(file('torn'), text.slice(0, end));
                const { stderr, ...outcome } = replay('torn');
                const isTorn = end < text.length;
                assert.deepEqual({ ...outcome, stderr: '' }, same(isTorn ? 2 : 3));
                assert.match(stderr, isTorn ? /^pellhost: line 5 is torn.*\n$/ : /^$/);
            }
            assert.equal(JSON.parse(run(['--json', 'replay', host.pathOf(file('torn'))]).stdout).tornLine, 5);
        });

        await t.test('other monitors and simulations than the recording has', () => {
            fs.writeFileSync(file('one.json'), JSON.stringify({ monitors: [{ product: 'A', serial: '1' }] }));
            record('one', [call('Monitors', 'GET', '', {})], ['--scenario', host.pathOf(file('one.json'))]);
            assert.equal(replay('one').stdout, '1 request, 0 differences\n');
            const changed = [
                [['--scenario', 'twins'], /responses\/0\/text\/value.*TQ271-P/],
                [['--simulate', '{"simulate":"return","function":"DmCtrlGetSerialProduct","result":-1}'], /calls/],
            ];
            for (const [others, told] of changed) {
                const { status, stdout } = run([...others, 'replay', host.pathOf(file('one'))]);
                assert.equal(status, 1, stdout);
                assert.match(stdout, told);
            }
        });

        await t.test('a file that cannot be written', { skip: build !== 'native' && 'asks Linux' }, () => {
            const input = `${call('Brightness', 'GET')}\n`;
            const full = runHost(host, ['batch', '--record', '/dev/full'], input);
            assert.deepEqual(full, { status: 1, stdout: '', stderr: 'pellhost: cannot write /dev/full\n' });
            const limited = ['bash', '-c', 'trap "" XFSZ; ulimit -f 1; exec "$@"', 'bash', ...host.command];
            const { status, stdout, stderr } = runHost(
                { command: limited },
                ['batch', '--record', file('limited')],
                input.repeat(20),
            );
            assert.deepEqual([status, stdout.trim().split('\n').length], [1, 20]);
            assert.match(stderr, /^The recording ends here: cannot write .*limited\npellhost: .*incomplete\n$/);
            assert.match(replay('limited').stderr, /torn/);
        });

        await t.test('serials are redacted wherever they are, and what only looks like them is not', () => {
            const deep = '['.repeat(100_000) + '"10000001"' + ']'.repeat(100_000); // too deep for any stack
            const tag = JSON.stringify('of 10000001, not 110000001');
            const batch = [call('Monitors', 'GET', '', {}), call('Brightness', 'GET'), call('AssetTag', 'PUT', tag)];
            record('redacted', [...batch, call('AssetTag', 'PUT', deep)], [], '--redact');
            assert.doesNotMatch(textOf('redacted'), /\b1000000[12]\b/);
            assert.match(textOf('redacted'), /of R0000001, not 110000001/);
            assert.deepEqual(replay('redacted'), same(4));

            fs.writeFileSync(file('50.json'), JSON.stringify({ monitors: [{ product: 'TQ271-P', serial: '50' }] }));
            const request = call('Brightness', 'GET', '', { product: 'TQ271-P', serial: '50' });
            record('50', [request], ['--scenario', host.pathOf(file('50.json'))], '--redact');
            assert.equal(linesOf('50')[1].responses[0].text, '{"error":null,"value":50}');
            assert.equal(replay('50').status, 0);
        });

        await t.test('a scenario that is chosen, and what is simulated from the start, are in it', async (inner) => {
            const options = ['--record', host.pathOf(file('chosen')), '--redact'];
            const fault = { simulate: 'return', function: 'DmCtrlGetBrightnessForStep', result: 0x8000000a, times: 1 };
            const simulate = ['--simulate', JSON.stringify(fault)];
            const server = await startHost(inner, build, ...simulate, 'serve', '--port', '0', ...options);
            assert.equal((await ask(server.address, brightness)).status, 500);
            await server.simulate({ simulate: 'scenario', name: 'twins' });
            await ask(server.address, '/pell/Monitors');
            await ask(server.address, brightness);
            for (const [name, target] of Object.entries({ kept: 'recording', keptRedacted: 'recording?redact' }))
                fs.writeFileSync(file(name), (await ask(server.address, `/lab/api/${target}`)).text);
            for (const name of ['chosen', 'kept', 'keptRedacted']) {
                assert.deepEqual(replay(name), same(3), name);
                const [head, , , scenario] = linesOf(name);
                assert.equal(head.scenario.monitors.length, 3);
                assert.equal(head.scenario.monitors[1].product, 'TB240'); // as it was when all began
                assert.equal(scenario.scenario.monitors[1].product, 'TQ271-P');
                for (const line of linesOf(name)) assert.ok(isLine(line), JSON.stringify(isLine.errors));
            }
            for (const name of ['chosen', 'keptRedacted']) assert.doesNotMatch(textOf(name), /\b1000000[12]\b/);
            const batch = record('simulated', [call('Brightness', 'GET')], simulate);
            assert.equal(JSON.parse(batch).responses[0].status, 500);
            assert.equal(replay('simulated').stdout, '1 request, 0 differences\n');
        });

        await t.test('a server is recorded with its packages and its time', async (inner) => {
            const server = await startServer(inner, build, '--record', host.pathOf(file('served')));
            const path = host.pathOf(firmwarePackage(file('new.dfw'), '--size', '2048'));
            await server.choose('slow-waker', 1000);
            const { value } = await server.pell('POST', 'FileSystem/DfwFile', JSON.stringify({ path }));
            const body = JSON.stringify({ dfwFile: value.id });
            await server.pell('POST', 'Monitors/TQ271-P/10000001/FirmwareUpdate/Transfer', body);
            await ask(server.address, brightness);
            await server.pell('DELETE', `FileSystem/DfwFile/${value.id}`);
            fs.writeFileSync(file('kept'), (await ask(server.address, '/lab/api/recording')).text);
            const [kept, served] = ['kept', 'served'].map((name) => linesOf(name).slice(1));
            assert.deepEqual(kept, served);
            // Elsewhere, too.
            fs.mkdirSync(file('elsewhere'));
            for (const name of ['new.dfw', 'served']) fs.renameSync(file(name), file(`elsewhere/${name}`));
            assert.deepEqual(replay('elsewhere/served'), same(4));
            assert.equal(replay('kept').status, 1); // whose package is gone
        });
    });
