// Resources, events, pages and the lab's questions over HTTP.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { test } from 'node:test';
import { EventSource } from 'eventsource';
import { ask, brightness, builds, firmwarePackage, hostOf, startHost, startServer } from '../pellhost.js';

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
        const { address, port } = server;

        await t.test('resources answer at their URIs', async () => {
            const envelope = (value) => JSON.stringify({ error: null, value });
            const large = ' '.repeat(2 << 20) + '60'; // as long as a colour table of 33 points a side
            const rows = [
                ['GET', brightness, undefined, 200, envelope(50)],
                ['GET', `${brightness}?range`, undefined, 200, envelope({ max: 100, min: 0 })],
                ['GET', `${brightness}?{%22range%22:1}`, undefined, 200, envelope({ max: 100, min: 0 })],
                ['PUT', brightness, large, 200, envelope(null)],
                ['GET', '/pell/Monitors/TQ%3271-P/10000001/Brightness', undefined, 200, envelope(60)],
                ['PUT', brightness, '600', 500, /Out of range/],
                ['PUT', brightness, '"a', 400, /BadRequestError/],
                ['GET', `${brightness}?{a`, undefined, 400, /BadRequest/],
                ['POST', brightness, '1', 405, /./],
                ['GET', '/pell/Monitors', undefined, 200, /10000002/],
                ['GET', '/pell/FileSystem/DfwFile/none', undefined, 500, /./],
                ['GET', '/pell/Monitors/TQ271-P//Brightness', undefined, 400, /URI is invalid/],
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
            for (const target of [brightness, '/pell/none', '/main.js', '/lab/api/state']) {
                const [get, head] = [await ask(address, target), await ask(address, target, { method: 'HEAD' })];
                assert.deepEqual([head.status, head.text], [get.status, '']);
                const [expected, length] = [get, head].map(({ headers }) => Number(headers['content-length']));
                assert.equal(length, expected, target);
            }
            for (const target of ['/pell/events', '/lab/api/exchanges?since=0']) {
                const { status, headers } = await ask(address, target, { method: 'HEAD' });
                const { 'content-type': type, connection } = headers;
                assert.deepEqual([status, type, connection], [200, 'text/event-stream', 'close']); // as of a GET
            }
        });

        await t.test('events come as they happen, and again for who has missed them', async () => {
            const path = server.pathOf(firmwarePackage(`${folder}/new.dfw`, '--size', '4096'));
            const { value: file } = await server.pell('POST', 'FileSystem/DfwFile', JSON.stringify({ path }));
            const stream = (name, count, id) => {
                const resume = (url, init) =>
                    fetch(url, { ...init, headers: { ...init.headers, 'Last-Event-ID': id } });
                return eventsOf(`${address}/pell/events`, name, count, id && { fetch: resume });
            };
            const live = stream('transferFirmwareData', 4);
            await live.opened;
            const body = JSON.stringify({ dfwFile: file.id });
            await server.pell('POST', 'Monitors/TQ271-P/10000001/FirmwareUpdate/Transfer', body);
            const events = await live.all;
            const blocks = events.map(({ data }) => data.transferredBlock);
            assert.deepEqual(blocks, [1, 2, 3, 4]);
            const { id: last } = events[1];
            assert.deepEqual(await stream('transferFirmwareData', 2, last).all, events.slice(2));
            // Those of a server that ran before: whatever is there may be new.
            for (const other of ['2', '999', '1-2', `${last}9`, `${last}-`, `9${last}`, 'a']) {
                const [lost] = await stream('lost', 1, other).all;
                for (const id of [other, lost.id])
                    assert.deepEqual(await stream('transferFirmwareData', 4, id).all, events, other);
            }
            await server.pell('DELETE', `FileSystem/DfwFile/${file.id}`);
        });

        await t.test('a page is served without a way out of its folder', async () => {
            const rows = [
                ['/', 'text/html; charset=utf-8', '<p>desk'],
                ['/?query', 'text/html; charset=utf-8', '<p>desk'],
                ['/main.js', 'text/javascript; charset=utf-8', '//'],
                ['/%C3%B6.svg', 'image/svg+xml', '<svg/>'],
                ['/inner/', 'text/html; charset=utf-8', '<p>inner'],
            ];
            for (const [target, type, text] of rows) {
                const answer = await ask(address, target);
                const received = [answer.status, answer.headers['content-type'], answer.text];
                assert.deepEqual(received, [200, type, text], target);
            }
            const outside = ['/../secret.txt', '/%2e%2e/secret.txt', '/inner/../../secret.txt', '/..%2fsecret.txt'];
            outside.push('/..%5csecret.txt', '//secret.txt', `${'/..'.repeat(9)}${folder}/secret.txt`);
            if (build !== 'windows') outside.push('/link.txt');
            const none = ['/main.js.', '/main.js::$DATA', '/main.js%00', '/inner//index.html', '/nothing', '/con/'];
            none.push('/%ff%fe', `/${'a/'.repeat(5000)}`, '/C:%5C', '/C:/', '/%5C%5Chost%5Cshare');
            for (const target of [...outside, ...none]) {
                const { status, text } = await ask(address, target);
                assert.equal(status, 404, target);
                assert.doesNotMatch(text, /secret$/);
            }
            const { status, headers } = await ask(address, '/inner');
            assert.deepEqual([status, headers.location], [302, './inner/']);
            assert.equal((await ask(address, '/main.js', { method: 'POST' })).status, 405);
        });

        await t.test('other pages are refused before they reach anything', async () => {
            await server.simulate({ simulate: 'reset' });
            const refused = [
                { 'Sec-Fetch-Site': 'cross-site' },
                { 'Sec-Fetch-Site': 'same-site' }, // of another port of this machine
                { 'Sec-Fetch-Site': 'none, same-site' },
                { Host: 'evil.example' },
                { Host: `evil.example:${port}` },
                { Host: `127.0.0.1` },
                { Host: `127.0.0.1:${port + 1}` },
                { Host: `localhost.evil.example:${port}` },
                { Host: `localhost:${port}@evil.example` },
                { Origin: 'null' },
                { Origin: 'https://evil.example' },
                { Origin: `${origin}.evil.example` },
                { Origin: `https://127.0.0.1:${port}` },
                { Origin: 'http://localhost' },
                { Origin: 'http://localhost:5174' },
            ];
            const allowed = [
                {},
                { Host: `LocalHost:${port}` },
                { Host: `[::1]:${port}` },
                { 'Sec-Fetch-Site': 'same-origin' },
                { 'Sec-Fetch-Site': 'none' },
                { Origin: address, 'Sec-Fetch-Site': 'same-site' },
                { Origin: `http://localhost:${port}`, 'Sec-Fetch-Site': 'cross-site' },
                { Origin: origin, 'Sec-Fetch-Site': 'cross-site' },
            ];
            const requests = [brightness, '/', '/lab/api/state', '/pell/events'].flatMap((target) =>
                ['PUT', 'OPTIONS', ...(target === '/pell/events' ? [] : ['GET'])].map((method) => [method, target]),
            );
            for (const headers of [...refused, ...allowed])
                for (const [method, target] of requests) {
                    const isRefused = refused.includes(headers);
                    const body = { PUT: isRefused ? '99' : '50' }[method];
                    const answer = await ask(address, target, { method, headers, body });
                    const title = `${method} ${target} ${JSON.stringify(headers)}`;
                    assert.equal(answer.status === 403, isRefused, title);
                    const readableBy = answer.headers['access-control-allow-origin'];
                    assert.equal(readableBy, headers.Origin === origin ? origin : undefined, title);
                    if (method === 'GET' && target === brightness && !isRefused)
                        assert.match(answer.text, /"value":50/);
                }
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
            const files = fs.readdirSync('simulator/scenarios').map((name) => name.replace('.json', ''));
            assert.deepEqual(others.scenarios, ['built-in', ...files.sort()]);
            const script = { simulate: 'return', function: 'DmCtrlGetGain', result: 2147483658, times: 2 };
            await server.simulate(script);
            await server.simulate({ simulate: 'delay', milliseconds: 5, product: 'TB240' });
            await server.simulate({ simulate: 'unplug', product: 'TB240', serial: '10000002' });
            const changed = await state();
            assert.deepEqual(changed.scripts, [script]);
            const those = changed.monitors.map(({ delay, connected }) => [delay, connected]);
            assert.deepEqual(those, [[0, true], [5, false], [5, true]]); // prettier-ignore
            await server.simulate({ simulate: 'scenario', name: 'twins' });
            assert.equal((await state()).scenario, 'twins');
            for (const body of ['', '{', '[]', '{"simulate":"advance"}', '{"simulate":"scenario","name":"twin"}']) {
                const { status, text } = await ask(address, '/lab/api/simulate', { method: 'POST', body });
                assert.deepEqual([status, JSON.parse(text).ok], [400, false], body);
                if (body.includes('twin')) assert.match(text, /twins/);
            }
        });

        await t.test('the lab hands over texts as they are', async () => {
            const texts = ['{"method":"GET"}', '{"product":"TQ271-P"', '', ''];
            const lines = [JSON.stringify({ call: 'Brightness', texts }), '', '{"simulate":"reset"}'];
            lines.push('{"call":"Brightnes","texts":["","","",""]}');
            for (const body of lines) {
                const { status, text } = await ask(address, '/lab/api/call', { method: 'POST', body });
                const { ok, responses = [] } = JSON.parse(text);
                const expected = body === lines[0] ? [200, undefined, [400]] : [400, false, []];
                assert.deepEqual([status, ok, responses.map((response) => response.status)], expected, body);
            }
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
        const { address } = await startHost(t, hostOf(build, 'minimal'), 'serve', '--port', '0');
        for (const target of ['/lab/', '/lab/client/index.js']) {
            const { status, text } = await ask(address, target);
            assert.equal(status, 404);
            assert.match(text, /scripts\/lab builds them/);
        }
    });
