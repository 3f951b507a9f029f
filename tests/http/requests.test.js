// Resources, events, pages and the lab's questions over HTTP.
import assert from 'node:assert/strict';
import { execFile } from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { test } from 'node:test';
import { promisify } from 'node:util';
import { EventSource } from 'eventsource';
import { ask, brightness, builds, hostOf, startHost, startServer } from './server.js';

const run = promisify(execFile);

/** Resolves with so many events of a stream, and closes it. */
function eventsOf(address, name, count, options) {
    const source = new EventSource(address, options);
    const events = [];
    const all = new Promise((resolve, reject) => {
        source.addEventListener(name, (event) => {
            if (events.push({ id: event.lastEventId, data: JSON.parse(event.data) }) === count) {
                source.close();
                resolve([...events]);
            }
        });
        source.addEventListener('error', ({ code }) => code && reject(new Error(`the stream answers ${code}`)));
    });
    return { all, opened: new Promise((resolve) => source.addEventListener('open', resolve)) };
}

for (const build of builds)
    test(build, async (t) => {
        const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'pell-http-'));
        t.after(() => fs.rmSync(folder, { recursive: true }));
        fs.mkdirSync(`${folder}/page/inner`, { recursive: true });
        fs.writeFileSync(`${folder}/secret.txt`, 'secret');
        fs.writeFileSync(`${folder}/page/index.html`, '<p>desk');
        fs.writeFileSync(`${folder}/page/main.js`, '//');
        fs.writeFileSync(`${folder}/page/inner/index.html`, '<p>inner');
        fs.writeFileSync(`${folder}/page/ö.svg`, '<svg/>');
        fs.symlinkSync('../secret.txt', `${folder}/page/link.txt`);
        const origin = 'http://localhost:5173';
        const server = await startServer(t, build, '--page', `${folder}/page`, '--origin', origin);
        const { address } = server;

        await t.test('resources answer at their URIs', async () => {
            const envelope = (value) => JSON.stringify({ error: null, value });
            const rows = [
                ['GET', brightness, undefined, 200, envelope(50)],
                ['GET', `${brightness}?range`, undefined, 200, '{"error":null,"value":{"max":100,"min":0}}'],
                ['GET', `${brightness}?{%22range%22:1}`, undefined, 200, '{"error":null,"value":{"max":100,"min":0}}'],
                ['PUT', brightness, '60', 200, envelope(null)],
                ['GET', '/pell/Monitors/TQ%3271-P/10000001/Brightness', undefined, 200, envelope(60)],
                ['PUT', brightness, '600', 500, /Out of range/],
                ['PUT', brightness, '"a', 400, /BadRequestError/],
                ['GET', `${brightness}?{a`, undefined, 400, /BadRequest/],
                ['POST', brightness, '1', 405, /./],
                ['GET', '/pell/Monitors', undefined, 200, /10000002/],
                ['GET', '/pell/FileSystem/DfwFile/none', undefined, 500, /./],
                ['GET', '/pell/Monitors/TQ271-P//Brightness', undefined, 400, /URI is invalid/],
                ['GET', '/pell/Monitors/TQ271-P/99999999/Brightness', undefined, 500, /DmError/],
                ['GET', '/pell/Monitors/TQ271-P/10000001/Nothing', undefined, 404, /NotFound/],
                ['GET', `${brightness}/`, undefined, 404, /did you mean \\"Brightness\\"/],
                ['GET', '/pell/Monitors/A/1/SelfQCLEAData', undefined, 404, /did you mean \\"SelfQC\/LEA\/Data\\"/],
                ['GET', '/pell/Monitors/TQ271-P/10000001', undefined, 404, /NotFound/],
                ['GET', '/pell/Brightness', undefined, 404, /below \/pell\/Monitors\/{product}\/{serial}\//],
                ['GET', '/pell/', undefined, 404, /resources are below this address/],
                ['GET', '/pell', undefined, 404, /resources are below this address/], // also before a page
                ['PATCH', brightness, '1', 405, /MethodNotAllowed/], // which the plug-in would take for a GET
                ['PUT', brightness, '5\0', 400, /NUL/],
            ];
            for (const [method, target, body, status, text] of rows) {
                const answer = await ask(address, target, { method, body });
                assert.equal(answer.status, status, `${method} ${target}: ${answer.text}`);
                if (typeof text === 'string') assert.equal(answer.text, text);
                else assert.match(answer.text, text);
                assert.equal(answer.headers['cache-control'], 'no-store');
            }
        });

        await t.test('a HEAD is a GET without the body', async () => {
            const targets = [
                brightness,
                `${brightness}?supports`,
                '/pell/none',
                '/lab/api/state',
                '/lab/api/recording',
            ];
            for (const target of targets) {
                const [get, head] = [await ask(address, target), await ask(address, target, { method: 'HEAD' })];
                assert.deepEqual([head.status, head.text], [get.status, '']);
                const [expected, length] = [get, head].map(({ headers }) => Number(headers['content-length']));
                // The recording has got a line more.
                assert.ok(target.endsWith('recording') ? length >= expected : length === expected, target);
            }
            for (const target of ['/pell/events', '/lab/api/exchanges?since=0']) {
                const { status, headers } = await ask(address, target, { method: 'HEAD' });
                const { 'content-type': type, connection } = headers;
                assert.deepEqual([status, type, connection], [200, 'text/event-stream', 'close']); // as of a GET
            }
        });

        await t.test('a colour table of 33 points a side, and curl, which asks before it sends one', async () => {
            const table = `${folder}/table.json`;
            fs.writeFileSync(table, JSON.stringify(Array.from({ length: 33 ** 3 }, () => [1023, 1023, 1023])));
            const [status, text] = await run('curl', [
                ...['-s', '-w', '%{http_code}', '-o', `${folder}/answer`, '-X', 'PUT'],
                ...['-H', 'Expect: 100-continue', '--data-binary', `@${table}`],
                `${address}/pell/Monitors/TQ271-P/10000001/3DLUT`,
            ]).then(({ stdout }) => [stdout, fs.readFileSync(`${folder}/answer`, 'utf8')]);
            // It has come to the monitor, whose own table is smaller.
            assert.equal(status, '500');
            assert.match(text, /Invalid data size.*Set 3D LUT/);
        });

        await t.test('fetch reads what curl has set', async () => {
            await run('curl', ['-s', '-X', 'PUT', '-d', '33', address + brightness]);
            assert.equal((await fetch(address + brightness).then((response) => response.json())).value, 33);
        });

        await t.test('events come as they happen, and again for who has missed them', async () => {
            const file = `${folder}/new.dfw`;
            await run(
                ...commandOf(
                    build,
                    'firmware',
                    'create',
                    server.pathOf(file),
                    '--product',
                    'TQ271-P',
                    '--version',
                    '3.0.0.0.0',
                    '--size',
                    '4096',
                ),
            );
            const post = (target, body) =>
                ask(address, target, { method: 'POST', body: JSON.stringify(body) }).then(
                    ({ text }) => JSON.parse(text).value,
                );
            const { id } = await post('/pell/FileSystem/DfwFile', { path: server.pathOf(file) });
            const live = eventsOf(`${address}/pell/events`, 'transferFirmwareData', 4);
            await live.opened;
            await post('/pell/Monitors/TQ271-P/10000001/FirmwareUpdate/Transfer', { dfwFile: id });
            const events = await live.all;
            assert.deepEqual(
                events.map(({ data }) => data.transferredBlock),
                [1, 2, 3, 4],
            );
            const resume = (id) => ({
                fetch: (url, init) => fetch(url, { ...init, headers: { ...init.headers, 'Last-Event-ID': id } }),
            });
            const { id: last } = events[1];
            assert.deepEqual(
                await eventsOf(`${address}/pell/events`, 'transferFirmwareData', 2, resume(last)).all,
                events.slice(2),
            );
            // Those of a server that ran before: whatever is there may be new.
            for (const other of ['2', '999', '1-2', `${last}9`, `${last}-`, `9${last}`, 'a']) {
                const lost = await eventsOf(`${address}/pell/events`, 'lost', 1, resume(other)).all;
                const all = await eventsOf(`${address}/pell/events`, 'transferFirmwareData', 4, resume(other)).all;
                assert.deepEqual(all, events, other);
                assert.deepEqual(
                    await eventsOf(`${address}/pell/events`, 'transferFirmwareData', 4, resume(lost[0].id)).all,
                    events,
                );
            }
            assert.equal((await ask(address, `/pell/FileSystem/DfwFile/${id}`, { method: 'DELETE' })).status, 200);
        });

        await t.test('a page is served without a way out of its folder', async () => {
            const rows = [
                ['/', 200, 'text/html; charset=utf-8', '<p>desk'],
                ['/?query', 200, 'text/html; charset=utf-8', '<p>desk'],
                ['/main.js', 200, 'text/javascript; charset=utf-8', '//'],
                ['/%C3%B6.svg', 200, 'image/svg+xml', '<svg/>'],
                ['/inner/', 200, 'text/html; charset=utf-8', '<p>inner'],
                ['/inner', 302],
                ...['/../secret.txt', '/%2e%2e/secret.txt', '/inner/../../secret.txt', '/..%2fsecret.txt'].map(none),
                ...[
                    '/..%5csecret.txt',
                    ...(build === 'windows' ? [] : ['/link.txt']),
                    '//secret.txt',
                    '/main.js.',
                    '/main.js::$DATA',
                    '/main.js%00',
                ].map(none),
                ...['/inner//index.html', '/nothing', '/con/', '/%ff%fe', `/${'a/'.repeat(5000)}`].map(none),
                ...[`/C:%5C`, `/C:/`, `/%5C%5Chost%5Cshare`].map(none),
            ];
            function none(target) {
                return [target, 404];
            }
            for (const [target, status, type, text] of rows) {
                const answer = await ask(address, target);
                assert.equal(answer.status, status, target);
                if (type) assert.deepEqual([answer.headers['content-type'], answer.text], [type, text], target);
                assert.doesNotMatch(answer.text, /secret$/);
            }
            assert.equal((await ask(address, '/inner')).headers.location, './inner/');
            assert.equal((await ask(address, '/main.js', { method: 'POST' })).status, 405);
            const head = await ask(address, '/main.js', { method: 'HEAD' });
            assert.deepEqual([head.status, head.headers['content-length'], head.text], [200, '2', '']);
        });

        await t.test('other pages are refused before they reach anything', async () => {
            await server.simulate({ simulate: 'reset' });
            const { port } = server;
            const rows = [
                [{}, 200],
                [{ Host: `localhost:${port}` }, 200],
                [{ Host: `LOCALHOST:${port}` }, 200],
                [{ Host: `[::1]:${port}` }, 200],
                [{ Origin: address }, 200],
                [{ Origin: origin, 'Sec-Fetch-Site': 'same-site' }, 200],
                [{ Origin: origin, 'Sec-Fetch-Site': 'cross-site' }, 200],
                [{ 'Sec-Fetch-Site': 'same-origin' }, 200],
                [{ 'Sec-Fetch-Site': 'none' }, 200],
                [{ Origin: address, 'Sec-Fetch-Site': 'same-site' }, 200],
                [{ Origin: `http://localhost:${port}`, 'Sec-Fetch-Site': 'cross-site' }, 200],
                [{ 'Sec-Fetch-Site': 'cross-site' }, 403],
                [{ 'Sec-Fetch-Site': 'same-site' }, 403], // of another port of this machine
                [{ 'Sec-Fetch-Site': 'none, same-site' }, 403],
                [{ Host: 'evil.example' }, 403],
                [{ Host: `evil.example:${port}` }, 403],
                [{ Host: `127.0.0.1` }, 403],
                [{ Host: `127.0.0.1:${port + 1}` }, 403],
                [{ Host: `localhost.evil.example:${port}` }, 403],
                [{ Host: `localhost:${port}@evil.example` }, 403],
                [{ Origin: 'null' }, 403],
                [{ Origin: 'https://evil.example' }, 403],
                [{ Origin: `${origin}.evil.example` }, 403],
                [{ Origin: `https://127.0.0.1:${port}` }, 403],
                [{ Origin: 'http://localhost' }, 403],
                [{ Origin: 'http://localhost:5174' }, 403],
            ];
            for (const [headers, status] of rows)
                for (const target of [brightness, '/', '/lab/api/state', '/pell/events'])
                    for (const method of ['PUT', 'OPTIONS', ...(target === '/pell/events' ? [] : ['GET'])]) {
                        const answer = await ask(address, target, {
                            method,
                            headers,
                            body: method === 'PUT' ? '99' : undefined,
                        });
                        const expected = status === 403 ? 403 : answer.status === 403 ? 'not 403' : answer.status;
                        assert.equal(answer.status, expected, `${method} ${target} ${JSON.stringify(headers)}`);
                        const allowed = answer.headers['access-control-allow-origin'];
                        assert.equal(allowed, headers.Origin === origin ? origin : undefined);
                    }
            await server.simulate({ simulate: 'reset' });
            for (const headers of [
                { Origin: 'https://evil.example' },
                { 'Sec-Fetch-Site': 'cross-site' },
                { Host: 'evil.example' },
            ])
                await ask(address, brightness, { method: 'PUT', headers, body: '99' });
            assert.match((await ask(address, brightness)).text, /"value":50/);
            const preflight = await ask(address, brightness, {
                method: 'OPTIONS',
                headers: { Origin: origin, 'Access-Control-Request-Method': 'PUT' },
            });
            assert.equal(preflight.status, 204);
            assert.match(preflight.headers['access-control-allow-methods'], /PUT/);
        });

        await t.test('the lab sees and simulates', async () => {
            const state = async () => JSON.parse((await ask(address, '/lab/api/state')).text);
            const { monitors, ...others } = await state();
            assert.deepEqual(monitors[0], {
                product: 'TQ271-P',
                serial: '10000001',
                connected: true,
                found: true,
                delay: 0,
                power: 1,
                inputPort: [1],
                brightness: 50,
                firmware: '2.0.1.5.3',
            });
            assert.deepEqual([others.simulated, others.scenario, others.speed], [true, 'built-in', 1]);
            assert.deepEqual(others.scenarios, [
                'built-in',
                ...fs
                    .readdirSync('simulator/scenarios')
                    .map((name) => name.replace('.json', ''))
                    .sort(),
            ]);
            const script = { simulate: 'return', function: 'DmCtrlGetGain', result: 2147483658, times: 2 };
            await server.simulate(script);
            await server.simulate({ simulate: 'delay', milliseconds: 5, product: 'TB240' });
            assert.deepEqual((await state()).scripts, [script]);
            assert.deepEqual(
                (await state()).monitors.map(({ delay }) => delay),
                [0, 5, 5],
            );
            await server.simulate({ simulate: 'unplug', product: 'TB240', serial: '10000002' });
            assert.equal((await state()).monitors[1].connected, false);
            await server.simulate({ simulate: 'scenario', name: 'twins' });
            assert.equal((await state()).scenario, 'twins');
            for (const body of ['', '{', '[]', '{"simulate":"scenario","name":"twin"}', '{"simulate":"advance"}']) {
                const { status, text } = await ask(address, '/lab/api/simulate', { method: 'POST', body });
                assert.deepEqual([status, JSON.parse(text).ok], [400, false], body);
            }
            const twin = JSON.parse(
                (
                    await ask(address, '/lab/api/simulate', {
                        method: 'POST',
                        body: '{"simulate":"scenario","name":"twin"}',
                    })
                ).text,
            );
            assert.match(twin.error, /twins/);
        });

        await t.test('the lab hands over texts as they are', async () => {
            const call = async (line) => {
                const { status, text } = await ask(address, '/lab/api/call', { method: 'POST', body: line });
                return { status, ...JSON.parse(text) };
            };
            const texts = ['{"method":"GET"}', '{"product":"TQ271-P"', '', ''];
            const { status, responses } = await call(JSON.stringify({ call: 'Brightness', texts }));
            assert.deepEqual([status, responses.length, responses[0].status], [200, 1, 400]);
            for (const line of ['', '{"call":"Brightnes","texts":["","","",""]}', '{"simulate":"reset"}'])
                assert.deepEqual([(await call(line)).status, (await call(line)).ok], [400, false], line);
        });

        await t.test('exchanges are streamed from their beginning', async () => {
            const live = eventsOf(`${address}/lab/api/exchanges`, 'exchange', 1);
            await live.opened;
            await ask(address, `${brightness}?supports`, { headers: { Referer: `${address}/lab/?timeline` } });
            const [{ data }] = await live.all;
            assert.deepEqual([data.resource, data.status, data.source], ['Brightness', 200, 'lab']);
            assert.ok(data.calls.at(-1).milliseconds >= 0);
            const opened = await eventsOf(`${address}/lab/api/exchanges?since=0`, 'opened', 3).all;
            assert.deepEqual(
                opened.map((one) => one.data.id),
                [1, 2, 3],
            );
        });
    });

test('an origin is as browsers write it', async (t) => {
    const wrong = ['', 'bogus', 'null', '*', 'http://', 'localhost:5173', 'http://a/', 'http://a/b', 'http://a?b'];
    for (const origin of [...wrong, 'HTTP://a', 'http://A', 'http://a:80', 'https://a:443', 'http://b@a', 'http://a:x'])
        await assert.rejects(startServer(t, builds[0], '--origin', origin), /"code":2.*such as http/, origin);
    for (const origin of ['https://a.example', 'http://[::1]:5173', 'app://page'])
        await startServer(t, builds[0], '--origin', origin);
});

for (const build of builds)
    test(`${build}: with companion libraries that are not simulated`, async (t) => {
        const plugin = `build/${build}/full/bare_plugin.${build === 'windows' ? 'dll' : 'so'}`;
        const plain = hostOf(build).pathOf(plugin);
        const { address } = await startHost(t, build, '--plugin', plain, 'serve', '--port', '0');
        const { simulated, ...others } = JSON.parse((await ask(address, '/lab/api/state')).text);
        assert.deepEqual([simulated, Object.keys(others)], [false, ['plugin']]);
        const events = eventsOf(`${address}/pell/events`, 'fromElsewhere', 1);
        await events.opened;
        assert.deepEqual(JSON.parse((await ask(address, brightness)).text).value, 7);
        assert.deepEqual((await events.all)[0].data, { a: 1 });
        assert.equal((await ask(address, brightness.replace('Brightness', 'Contrast'))).status, 404);
        const simulate = await ask(address, '/lab/api/simulate', { method: 'POST', body: '{"simulate":"reset"}' });
        assert.match(simulate.text, /not simulated/);
    });

for (const build of builds)
    test(`${build}: a pellhost that has no lab beside it says how it gets one`, async (t) => {
        const { command, pathOf } = hostOf(build);
        const host = { command: command.map((one) => one.replace('/full/', '/minimal/')), pathOf };
        const { address } = await startHost(t, host, 'serve', '--port', '0');
        for (const target of ['/lab/', '/lab/client/index.js']) {
            const { status, text } = await ask(address, target);
            assert.equal(status, 404);
            assert.match(text, /scripts\/lab builds them/);
        }
    });

function commandOf(build, ...args) {
    const program = path.resolve('build', build, 'full', 'pellhost');
    return build === 'windows' ? ['scripts/wine', [`${program}.exe`, ...args]] : [program, args];
}
