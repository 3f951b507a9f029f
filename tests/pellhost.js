// `pellhost serve` as a process, and ways to talk to it that browsers do not have.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import fs from 'node:fs';
import http from 'node:http';
import net from 'node:net';
import path from 'node:path';
import readline from 'node:readline';

/** The builds to be tested: `native` unless PELL_BUILDS names others. */
export const builds = (process.env.PELL_BUILDS ?? 'native').split(' ');

export const brightness = '/pell/Monitors/TQ271-P/10000001/Brightness';

/** The command of a build's pellhost, and its name for a file of this machine. */
export function hostOf(build) {
    const program = path.resolve('build', build, 'full', 'pellhost');
    const command = build === 'windows' ? ['scripts/wine', `${program}.exe`] : [program];
    assert.ok(fs.existsSync(command.at(-1)), `${command.at(-1)} is not built: scripts/build ${build}`);
    // Under Wine, the system's root is a drive of its own.
    return { command, pathOf: (file) => (build === 'windows' ? 'Z:' : '') + path.resolve(file) };
}

/** A server among monitors of its own, which ends with the test. The arguments are those of `serve`. */
export const startServer = (t, build, ...args) => startHost(t, build, 'serve', '--port', '0', ...args);

/** The same with all arguments of pellhost, be it that of a build or another `{ command, pathOf }`. */
export async function startHost(t, build, ...args) {
    const {
        command: [program, ...others],
        pathOf,
    } = typeof build === 'string' ? hostOf(build) : build;
    const child = spawn(program, [...others, '--json', ...args], {
        stdio: ['ignore', 'pipe', 'pipe'],
    });
    let errors = '';
    child.stderr.on('data', (text) => (errors += text));
    const ended = new Promise((resolve) => child.on('close', (code, signal) => resolve({ code, signal, errors })));
    t.after(() => child.kill('SIGKILL'));
    const lines = readline.createInterface({ input: child.stdout });
    const first = await Promise.race([
        new Promise((resolve) => lines.once('line', (line) => line.startsWith('{"address"') && resolve(line))),
        ended.then((end) => assert.fail(`the server has ended: ${JSON.stringify(end)}`)),
    ]);
    const address = JSON.parse(first).address.slice(0, -1);
    const port = Number(new URL(address).port);
    return {
        address,
        port,
        pathOf,
        child,
        ended,
        errors: () => errors,
        /** Carries out an instruction of the simulator. */
        async simulate(instruction) {
            const response = await fetch(`${address}/lab/api/simulate`, {
                method: 'POST',
                body: JSON.stringify(instruction),
            });
            assert.deepEqual(await response.json(), { ok: true });
        },
        /** So many requests to the resource have begun. */
        async begun(resource, count = 1) {
            const response = await fetch(`${address}/lab/api/exchanges?since=0`);
            let text = '';
            for await (const chunk of response.body.pipeThrough(new TextDecoderStream()))
                if ((text += chunk).split(`"resource":"${resource}"`).length > count) return;
        },
        /** Still answers. */
        async assertAlive() {
            const response = await fetch(address + brightness);
            assert.equal(response.status, 200);
            await response.text();
        },
    };
}

/** A request with any method, body and fields: {status, text, headers}. */
export function ask(address, target, { method = 'GET', body, headers = {}, agent } = {}) {
    return new Promise((resolve, reject) => {
        const { hostname, port } = new URL(address);
        const length = body === undefined ? {} : { 'Content-Length': Buffer.byteLength(body) };
        const options = { host: hostname, port, path: target, method, headers: { ...length, ...headers }, agent };
        const request = http.request(options, (response) => {
            const chunks = [];
            response.on('data', (chunk) => chunks.push(chunk));
            response.on('end', () =>
                resolve({
                    status: response.statusCode,
                    headers: response.headers,
                    text: Buffer.concat(chunks).toString(),
                }),
            );
            response.on('error', reject);
        });
        request.on('error', reject);
        request.end(body);
    });
}

/** A bare connection. `answer` resolves with all that came when the server has closed it. */
export function connect(port) {
    const socket = net.connect(port, '127.0.0.1');
    const chunks = [];
    socket.on('data', (chunk) => chunks.push(chunk));
    const text = () => Buffer.concat(chunks).toString('latin1');
    const answer = new Promise((resolve) => {
        socket.on('error', () => {});
        socket.on('close', () => resolve(text()));
    });
    return { socket, text, answer };
}
