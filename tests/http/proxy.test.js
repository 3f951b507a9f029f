// A development server behind the address: its pages, its WebSocket, and what it never gets to see.
import assert from 'node:assert/strict';
import { createHash } from 'node:crypto';
import http from 'node:http';
import { test } from 'node:test';
import { ask, brightness, builds, connect, startHost, startServer } from '../pellhost.js';

/** Echoes what it is asked, and what comes through a WebSocket. */
async function startDevelopmentServer(t) {
    const seen = [];
    const server = http.createServer(async (request, response) => {
        let body = '';
        for await (const chunk of request.setEncoding('utf8')) body += chunk;
        seen.push(request.url);
        response.writeHead(request.url === '/none' ? 404 : 200, {
            'Content-Type': 'text/plain',
            'X-Dev': '1',
            'Access-Control-Allow-Origin': '*',
            'Access-Control-Allow-Credentials': 'true',
        });
        const { host, origin } = request.headers;
        response.end(JSON.stringify({ method: request.method, url: request.url, host, origin, body: body.length }));
    });
    server.on('upgrade', (request, socket, first) => {
        const accept = createHash('sha1')
            .update(`${request.headers['sec-websocket-key']}258EAFA5-E914-47DA-95CA-C5AB0DC85B11`)
            .digest('base64');
        socket.write(`HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n`);
        socket.write(`Sec-WebSocket-Accept: ${accept}\r\n\r\n`);
        socket.write(first);
        socket.pipe(socket);
    });
    await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
    t.after(() => server.close() && server.closeAllConnections());
    return { server, seen, host: `127.0.0.1:${server.address().port}` };
}

for (const build of builds)
    test(build, async (t) => {
        const development = await startDevelopmentServer(t);
        const { address, port, ...server } = await startServer(
            t,
            build,
            '--proxy',
            `http://${development.host}`,
            '--origin',
            'http://localhost:5173',
        );
        const json = async (target, options) => JSON.parse((await ask(address, target, options)).text);

        await t.test('all but the own addresses goes on', async () => {
            const { host } = development;
            const own = { host, method: 'GET', body: 0 };
            assert.deepEqual(await json('/'), { ...own, url: '/' });
            assert.deepEqual(await json('/src/main.ts?v=1'), { ...own, url: '/src/main.ts?v=1' });
            const body = 'x'.repeat(300_000);
            const posted = await json('/api', { method: 'POST', body, headers: { Origin: address } });
            assert.deepEqual(posted, { ...own, url: '/api', method: 'POST', body: 300_000, origin: `http://${host}` });
            const none = await ask(address, '/none');
            assert.deepEqual([none.status, none.headers['x-dev']], [404, '1']);
            assert.equal((await json(`${address}/absolute`)).url, '/absolute');
            assert.equal((await json(brightness)).value, 50);
            assert.equal((await json('/lab/api/state')).simulated, true);
            assert.deepEqual(development.seen, ['/', '/src/main.ts?v=1', '/api', '/none', '/absolute']);
        });

        await t.test('other pages do not get through', async () => {
            const refused = [
                { Host: 'evil.example' },
                { Origin: 'https://evil.example' },
                { 'Sec-Fetch-Site': 'cross-site' },
            ];
            for (const headers of refused) assert.equal((await ask(address, '/', { headers })).status, 403);
            assert.equal(development.seen.length, 5);
        });

        await t.test('who may read the answers is said here', async () => {
            const corsOf = ({ headers }) =>
                ['origin', 'credentials'].map((name) => headers[`access-control-allow-${name}`]);
            assert.deepEqual(corsOf(await ask(address, '/')), [undefined, undefined]);
            const Origin = 'http://localhost:5173';
            assert.deepEqual(corsOf(await ask(address, '/', { headers: { Origin } })), [Origin, undefined]);
        });

        await t.test('a body that waits to be asked for', async () => {
            const { socket, text, answer } = connect(port);
            const fields = 'Expect: 100-continue\r\nContent-Length: 4\r\nConnection: keep-alive\r\n\r\n';
            socket.write(`POST /api HTTP/1.1\r\nHost: 127.0.0.1:${port}\r\n${fields}`);
            while (!text().includes('\r\n\r\n')) await new Promise((resolve) => socket.once('data', resolve));
            assert.match(text(), /^HTTP\/1.1 100 Continue\r\n\r\n$/);
            socket.write('body');
            assert.match(await answer, /100 Continue\r\n\r\nHTTP\/1.1 200 OK\r\n.*connection: close.*"body":4}/is);
        });

        await t.test('a WebSocket is a tunnel', async () => {
            const { socket, text, answer } = connect(port);
            const until = async (pattern) => {
                while (!pattern.test(text())) await new Promise((resolve) => socket.once('data', resolve));
            };
            const head = `GET /hot HTTP/1.1\r\nHost: 127.0.0.1:${port}\r\nConnection: Upgrade\r\nUpgrade: websocket\r\n`;
            socket.write(
                `${head}Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: dGhlIHNhbXBsZSBub25jZQ==\r\n\r\nfirst`,
            );
            await until(/101 Switching.*s3pPLMBiTxaQ9kYGzzhZRbK\+xOo=.*first/s);
            socket.write('second');
            await until(/firstsecond/);
            socket.end();
            await answer;
            await server.assertAlive();
        });

        await t.test('a development server that is gone', async () => {
            development.server.close();
            development.server.closeAllConnections();
            assert.equal((await ask(address, '/')).status, 502);
            await server.assertAlive();
        });
    });

test('a proxy is a server on this machine', async (t) => {
    const wrong = ['https://localhost:1', 'http://example.com', 'http://127.0.0.1:1/path', 'localhost:1'];
    for (const url of [...wrong, 'http://localhost:x', 'http://localhost:0', 'http://localhost:99999'])
        await assert.rejects(startServer(t, builds[0], '--proxy', url), /"code":2.*on this machine/, url);
    const development = await startDevelopmentServer(t);
    const { port } = new URL(`http://${development.host}`);
    await new Promise((resolve) => development.server.close(resolve));
    const itself = startHost(t, builds[0], 'serve', '--port', port, '--proxy', `http://localhost:${port}`);
    await assert.rejects(itself, /not this server itself/);
});
