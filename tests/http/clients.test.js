// Clients that are hostile, slow, broken or many.
import assert from 'node:assert/strict';
import { execFileSync } from 'node:child_process';
import fs from 'node:fs';
import http from 'node:http';
import os from 'node:os';
import path from 'node:path';
import { test } from 'node:test';
import { setTimeout as later } from 'node:timers/promises';
import { ask, brightness, builds, connect, startServer } from '../pellhost.js';

const head = (port, fields = '', target = brightness) =>
    `GET ${target} HTTP/1.1\r\nHost: 127.0.0.1:${port}\r\n${fields}`;

/** What is sent, and the status of the answer. */
const hostile = (port) => [
    ['no HTTP', 'hello\r\n\r\n', 400],
    ['TLS', '\x16\x03\x01\x02\x00\x01\x00\x01\xfc\x03\x03\r\n\r\n', 400],
    ['HTTP/2', 'PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n', 400],
    ['no Host', `GET ${brightness} HTTP/1.1\r\n\r\n`, 400],
    ['an empty Host', `GET ${brightness} HTTP/1.1\r\nHost:\r\n\r\n`, 403],
    ['two Hosts', head(port, `Host: 127.0.0.1:${port}\r\n\r\n`), 400],
    ['two Origins', head(port, `Origin: http://127.0.0.1:${port}\r\nOrigin: http://evil.example\r\n\r\n`), 400],
    ['a foreign target', head(port, 'Connection: close\r\n\r\n', 'http://evil.example/'), 403],
    [
        'the own address as a target',
        head(port, 'Connection: close\r\n\r\n', `HTTP://LocalHost:${port}${brightness}`),
        200,
    ],
    ['the same without a path', head(port, 'Connection: close\r\n\r\n', `http://127.0.0.1:${port}?a`), 302],
    ['an asterisk', head(port, '\r\n', '*'), 400],
    ['CONNECT', `CONNECT 127.0.0.1:${port} HTTP/1.1\r\nHost: 127.0.0.1:${port}\r\n\r\n`, 400],
    ['a long target', head(port, '\r\n', '/' + 'a'.repeat(20_000)), 431],
    ['a long field', head(port, `X: ${'a'.repeat(20_000)}\r\n\r\n`), 431],
    ['many fields', head(port, 'a: b\r\n'.repeat(500) + '\r\n'), 431],
    ['a field without a name', head(port, ': a\r\n\r\n'), 400],
    ['a space before the colon', head(port, 'Content-Length : 3\r\n\r\n'), 400],
    ['a NUL in a field', head(port, 'X: \0\r\n\r\n'), 400],
    ['a body that waits to be asked for', head(port, 'Expect: 100-continue\r\nContent-Length: 1\r\n\r\n'), 100],
    ['a large body', head(port, `Content-Length: ${9 << 20}\r\n\r\n`), 413],
    ['an endless body', head(port, 'Content-Length: 99999999999999999999\r\n\r\n'), 400],
    ['a negative body', head(port, 'Content-Length: -1\r\n\r\n'), 400],
    ['two lengths', head(port, 'Content-Length: 1\r\nContent-Length: 2\r\n\r\n1'), 400],
    ['a length and chunks', head(port, 'Content-Length: 1\r\nTransfer-Encoding: chunked\r\n\r\n1'), 400],
    ['compressed', head(port, 'Transfer-Encoding: gzip\r\n\r\n'), 501],
    ['compressed chunks', head(port, 'Transfer-Encoding: gzip, chunked\r\n\r\n0\r\n\r\n'), 501],
    ['chunks of chunks', head(port, 'Transfer-Encoding: chunked\r\nTransfer-Encoding: chunked\r\n\r\n'), 400],
    ['chunks of HTTP/1.0', head(port, 'Transfer-Encoding: chunked\r\n\r\n').replace('1.1', '1.0'), 501],
    ['a chunk without a size', head(port, 'Transfer-Encoding: chunked\r\n\r\nzz\r\n'), 400],
    ['a chunk of a terabyte', head(port, 'Transfer-Encoding: chunked\r\n\r\nffffffffff\r\n'), 413],
    ['a colon for a stream', head(port, '\r\n', '/pell/events/../../lab/api/state'), 404],
];

for (const build of builds)
    test(build, { timeout: 300_000 }, async (t) => {
        const server = await startServer(t, build);
        const { address, port } = server;

        await t.test('hostile requests', async () => {
            for (const [name, text, status] of hostile(port)) {
                const { socket, answer } = connect(port);
                socket.write(text, 'latin1');
                const end = setTimeout(() => socket.end(), 300); // those that are an answer's beginning, too
                const received = await answer;
                clearTimeout(end);
                assert.match(received, new RegExp(`^HTTP/1.1 ${status} `), `${name}: ${received}`);
            }
            await server.assertAlive();
        });

        await t.test('requests one behind the other are answered in order', async () => {
            const { socket, answer } = connect(port);
            socket.write(
                head(port, '\r\n') +
                    head(port, '\r\n', `${brightness}?range`) +
                    head(port, 'Connection: close\r\n\r\n', '/none'),
            );
            assert.match(await answer, /"value":50.*"max":100.*NotFound/s);
        });

        await t.test('bodies in chunks are large once they are', async () => {
            const chunk = (size) => `${size.toString(16)}\r\n${'1'.repeat(size)}\r\n`;
            const fields = 'Connection: close\r\nTransfer-Encoding: chunked\r\n\r\n';
            const begin = (size, target) => {
                const connection = connect(port);
                connection.socket.write(head(port, fields, target) + chunk(size));
                return connection;
            };
            const large = Array.from({ length: 8 }, () => begin(100_000));
            const small = Array.from({ length: 20 }, () => begin(2));
            await later(200);
            assert.match(await begin(100_000).answer, /^HTTP\/1.1 503/);
            for (const { socket } of [...small, ...large]) socket.write('0\r\n\r\n');
            for (const { answer } of [...small, ...large]) assert.match(await answer, /^HTTP\/1.1 200/);
        });

        await t.test('idle connections make room, and those that are left are answered at once', async () => {
            const idle = Array.from({ length: 2048 }, () => connect(port));
            const closed = new Set();
            for (const { socket } of idle) socket.on('close', () => closed.add(socket));
            await Promise.all(idle.map(({ socket }) => new Promise((resolve) => socket.on('connect', resolve))));
            // To have begun a request does not help.
            for (const { socket } of idle) socket.write(head(port, 'Connection: close\r\nContent-Length: 1\r\n\r\n'));
            await server.assertAlive();
            assert.ok(closed.size >= 1 && closed.size < 16, `${closed.size}`);
            const [used, others] = [idle.slice(-1000), idle.slice(0, -1000)];
            used.forEach(({ socket }) => socket.write('1'));
            // Any of them may be one that made room.
            const answers = await Promise.all(used.map(({ answer }) => answer));
            const unanswered = answers.filter((text) => !text.includes('"value":50'));
            assert.ok(unanswered.length < 16 && unanswered.every((text) => !text), unanswered.join());
            others.forEach(({ socket }) => socket.destroy());
            await later(100);
        });

        await t.test('connections that are reset at once', async () => {
            const connections = Array.from({ length: 500 }, () => connect(port));
            for (const { socket } of connections) {
                socket.on('connect', () => socket.resetAndDestroy());
                socket.write(head(port, '\r\n'));
            }
            await Promise.all(connections.map(({ answer }) => answer));
            await server.assertAlive();
        });

        await t.test('a client that has ended its side still gets the answer', async () => {
            const { socket, answer } = connect(port);
            socket.end(head(port, '\r\n'));
            assert.match(await answer, /"value":50/);
        });

        await t.test('slow clients hold up nobody', async () => {
            const slow = [];
            for (const text of [head(port), head(port, 'Content-Length: 100\r\n\r\n1'), 'GET', '']) {
                const { socket } = connect(port);
                socket.write(text);
                slow.push(socket);
            }
            // One that reads nothing of what it asks for, a byte at a time, and one that reads no events.
            const deaf = connect(port).socket.pause();
            deaf.write(head(port, '\r\n', '/lab/api/state').repeat(200));
            const events = connect(port).socket.pause();
            events.write(head(port, '\r\n', '/lab/api/exchanges?since=0'));
            for (let count = 0; count < 50; ++count) await server.assertAlive();
            [...slow, deaf, events].forEach((socket) => socket.destroy());
        });

        await t.test('readers of events that read nothing are not let in without end', async () => {
            const readers = Array.from({ length: 100 }, () => connect(port));
            for (const { socket } of readers) socket.write(head(port, '\r\n', '/lab/api/exchanges?since=0'));
            while (readers.some(({ text }) => !text().includes('\r\n\r\n'))) await later(10);
            const refused = readers.filter(({ text }) => text().startsWith('HTTP/1.1 503 '));
            assert.equal(refused.length, 36);
            for (const { text } of refused) assert.match(text(), /Too many streams/);
            await server.assertAlive();
            readers.forEach(({ socket }) => socket.destroy());
            await later(100);
        });

        const memory = () => Number(/VmRSS:\s*(\d+)/.exec(fs.readFileSync(`/proc/${server.child.pid}/status`))[1]);
        const onLinux = { skip: build !== 'native' && 'asks Linux' };

        await t.test('readers of events that read nothing share what they are sent', onLinux, async () => {
            const before = memory();
            const readers = [];
            for (let count = 0; count < 30; ++count) {
                readers.push(connect(port).socket.pause(), connect(port).socket.pause());
                for (const reader of readers.slice(-2)) reader.write(head(port, '\r\n', '/lab/api/exchanges?since=0'));
                await ask(address, brightness, { method: 'PUT', body: '9'.repeat(8 << 20) });
            }
            assert.ok(memory() < before + 200_000, `${before} kB became ${memory()} kB`);
            readers.forEach((reader) => reader.destroy());
        });

        // More than there are threads for the plug-in. Only the lab can end that.
        await t.test(
            'many requests that take long wait for their own monitor only, and not the lab',
            { timeout: 60_000 },
            async () => {
                await server.choose('eight-monitors');
                const { monitors } = JSON.parse((await ask(address, '/lab/api/state')).text);
                const targets = monitors.map(({ product, serial }) => `/pell/Monitors/${product}/${serial}/Brightness`);
                for (const { product, serial } of monitors.slice(1))
                    await server.simulate({ simulate: 'delay', product, serial, milliseconds: 3_600_000 });
                const call = ({ product, serial }) => {
                    const texts = ['{"method":"GET"}', JSON.stringify({ product, serial }), '', ''];
                    const body = JSON.stringify({ call: 'Brightness', texts });
                    return ask(address, '/lab/api/call', { method: 'POST', body });
                };
                const slow = targets
                    .slice(1)
                    .flatMap((target) => Array.from({ length: 40 }, () => ask(address, target)));
                slow.push(...Array.from({ length: 40 }, () => call(monitors[1])));
                const gone = connect(port);
                gone.socket.write(head(port, '\r\n', targets[1]));
                await later(100);
                gone.socket.destroy(); // does not wait for its answer
                assert.equal((await ask(address, targets[0])).status, 200);
                assert.equal((await call(monitors[0])).status, 200);
                assert.equal((await ask(address, '/pell/Monitors')).status, 200);
                await server.simulate({ simulate: 'reset' });
                await server.simulate({ simulate: 'advance', milliseconds: 3_600_000 });
                for (const { status } of await Promise.all(slow)) assert.equal(status, 200);
            },
        );

        await t.test('kept connections do not make it grow', onLinux, async () => {
            const agent = new http.Agent({ keepAlive: true, maxSockets: 16 });
            const burst = (count) =>
                Promise.all(
                    Array.from({ length: 16 }, async () => {
                        for (let done = 0; done < count / 16; ++done)
                            assert.equal((await ask(address, brightness, { agent })).status, 200);
                    }),
                );
            await server.choose('twins');
            await burst(12_000); // what the lab is shown is kept up to a bound
            const before = memory();
            await burst(8_000);
            agent.destroy();
            assert.ok(memory() < before + 4096, `${before} kB became ${memory()} kB`);
            // The choice of the scenario is long forgotten, but what it has chosen is not.
            const recording = (await ask(address, '/lab/api/recording')).text;
            const { incomplete, scenario } = JSON.parse(recording.slice(0, recording.indexOf('\n')));
            assert.deepEqual([incomplete, scenario.monitors[1].product], [true, 'TQ271-P']);
        });
    });

for (const build of builds)
    test(`${build}: an interruption waits for what runs`, async (t) => {
        const server = await startServer(t, build);
        await server.simulate({ simulate: 'delay', milliseconds: 3_600_000 });
        const slow = Array.from({ length: 12 }, () => ask(server.address, brightness).catch(() => {}));
        const ready = async () => {
            while (!server.errors().includes('again')) await later(10);
        };
        await server.begun('Brightness', 8); // as many as run at once; the others wait
        await later(100);
        server.child.kill('SIGINT');
        await ready();
        assert.deepEqual(server.errors().trim().split('\n'), [
            'Waiting requests that are dropped: 4',
            'Waiting for the end of GET Brightness of TQ271-P/10000001 (8 times)',
            'Ctrl+C again leaves at once.',
        ]);
        server.child.kill('SIGINT');
        assert.deepEqual((await server.ended).code, 1);
        await Promise.all(slow);

        const idle = await startServer(t, build);
        await idle.assertAlive();
        idle.child.kill('SIGINT');
        assert.deepEqual(await idle.ended, { code: 0, signal: null, errors: '' });
    });

const onLinux = { skip: !builds.includes('native') && 'asks Linux' };

test('a program whose file is replaced goes on', onLinux, async (t) => {
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'pell-replaced-'));
    t.after(() => fs.rmSync(folder, { recursive: true }));
    fs.cpSync('build/native/full', folder, { recursive: true });
    fs.mkdirSync(`${folder}/lab`, { recursive: true });
    fs.writeFileSync(`${folder}/lab/index.html`, '<p>lab');
    const server = await startServer(t, { command: [`${folder}/pellhost`] });
    fs.rmSync(`${folder}/pellhost`);
    const { status, text } = await ask(server.address, '/lab/');
    assert.deepEqual([status, text], [200, '<p>lab']);
    await server.assertAlive();
});

test(
    'for want of memory, a request ends alone, and waits for a thread that is there',
    { ...onLinux, timeout: 60_000 },
    async (t) => {
        const server = await startServer(t, 'native');
        const limitTo = (size) => execFileSync('prlimit', ['--pid', server.child.pid, `--as=${size}:unlimited`]);
        const status = fs.readFileSync(`/proc/${server.child.pid}/status`, 'utf8');
        limitTo((Number(/VmSize:\s*(\d+)/.exec(status)[1]) + 4096) * 1024); // less than the stack of a thread
        await server.simulate({ simulate: 'delay', product: 'TB240', serial: '10000002', milliseconds: 3_600_000 });
        const slow = ask(server.address, '/pell/Monitors/TB240/10000002/Brightness');
        await server.begun('Brightness');
        const next = ask(server.address, brightness);
        await later(100);
        await server.simulate({ simulate: 'advance', milliseconds: 3_600_000 });
        for (const answer of [slow, next]) assert.equal((await answer).status, 200);
        assert.equal(server.errors(), '');
        await assert.rejects(ask(server.address, brightness, { method: 'PUT', body: '9'.repeat(8 << 20) }));
        limitTo('unlimited');
        await server.assertAlive();
        assert.match(server.errors(), /^A connection was dropped: .*\n$/);
    },
);
