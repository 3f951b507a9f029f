// pellhost as a process, and ways to talk to its server that browsers do not have.
import assert from 'node:assert/strict';
import { execFileSync, spawn, spawnSync } from 'node:child_process';
import fs from 'node:fs';
import http from 'node:http';
import net from 'node:net';
import path from 'node:path';
import readline from 'node:readline';

/** The builds to be tested: `native` unless PELL_BUILDS names others. */
export const builds = (process.env.PELL_BUILDS ?? 'native').split(' ');

export const brightness = '/pell/Monitors/TQ271-P/10000001/Brightness';

/** A build's pellhost: its command, and the name of a file of this machine for it. */
export function hostOf(build, world = 'full') {
    const program = path.resolve('build', build, world, 'pellhost');
    const command = build === 'windows' ? ['scripts/wine', `${program}.exe`] : [program];
    assert.ok(fs.existsSync(command.at(-1)), `${command.at(-1)} is not built: scripts/build ${build}`);
    // Under Wine, the system's root is a drive of its own.
    return { command, pathOf: (file) => (build === 'windows' ? 'Z:' : '') + path.resolve(file) };
}

/** Runs pellhost to its end: {status, stdout, stderr}. */
export function runHost({ command: [program, ...others] }, args, input = '') {
    const { status, stdout, stderr } = spawnSync(program, [...others, ...args], { input, encoding: 'utf8' });
    return { status, stdout, stderr };
}

/** A pellhost that carries out a batch: a JSON line in, a JSON line out. */
export class Batch {
    #waiting = [];

    constructor({ command: [program, ...others] }) {
        this.child = spawn(program, [...others, 'batch']);
        let errors = '';
        this.child.stderr.on('data', (text) => (errors += text));
        this.child.stdin.on('error', () => {}); // told by its end
        this.ended = new Promise((resolve) => {
            this.child.on('close', (code, signal) => {
                for (const { reject } of this.#waiting)
                    reject(new Error(`pellhost has ended: ${signal ?? code} ${errors}`));
                resolve({ code, signal, errors });
            });
        });
        readline
            .createInterface({ input: this.child.stdout })
            .on('line', (line) => this.#waiting.shift().resolve(JSON.parse(line)));
    }

    /** What it answers to these lines; no other line comes between them. */
    send(...lines) {
        const replies = lines.map(() => new Promise((resolve, reject) => this.#waiting.push({ resolve, reject })));
        this.child.stdin.write(lines.map((line) => JSON.stringify(line) + '\n').join(''));
        return Promise.all(replies);
    }

    /** Lets it come to its end, which is to be a good one. */
    async close() {
        this.child.stdin.end();
        assert.deepEqual(await this.ended, { code: 0, signal: null, errors: '' });
    }
}

/** Creates a firmware package for the first monitor, and answers its file. */
export function firmwarePackage(file, ...options) {
    const args = ['--product', 'TQ271-P', '--version', '2.1.0.3.7', ...options];
    const { command, pathOf } = hostOf(builds[0]);
    fs.mkdirSync(path.dirname(file), { recursive: true });
    execFileSync(command[0], [...command.slice(1), 'firmware', 'create', pathOf(file), ...args]);
    return file;
}

/** A server among monitors of its own, which ends with the test. The arguments are those of `serve`. */
export const startServer = (t, build, ...args) => startHost(t, build, 'serve', '--port', '0', ...args);

/** The same with all arguments of pellhost, be it that of a build or another `{ command }`. Without `t`, close it. */
export async function startHost(t, build, ...args) {
    const { command, pathOf } = typeof build === 'string' ? hostOf(build) : build;
    const child = spawn(command[0], [...command.slice(1), '--json', ...args], { stdio: ['ignore', 'pipe', 'pipe'] });
    let errors = '';
    child.stderr.on('data', (text) => (errors += text));
    const ended = new Promise((resolve) => child.on('close', (code, signal) => resolve({ code, signal, errors })));
    const close = () => child.kill('SIGKILL');
    t?.after(close);
    const lines = readline.createInterface({ input: child.stdout });
    const first = await Promise.race([
        new Promise((resolve) => lines.once('line', (line) => line.startsWith('{"address"') && resolve(line))),
        ended.then((end) => assert.fail(`the server has ended: ${JSON.stringify(end)}`)),
    ]);
    const address = JSON.parse(first).address.slice(0, -1);
    const simulate = async (instruction) => {
        const { text } = await ask(address, '/lab/api/simulate', { method: 'POST', body: JSON.stringify(instruction) });
        assert.equal(text, '{"ok":true}');
    };
    return {
        address,
        port: Number(new URL(address).port),
        pathOf,
        child,
        ended,
        close,
        errors: () => errors,
        /** Carries out an instruction of the simulator. */
        simulate,
        /** The monitors as a scenario has them, at a speed. */
        async choose(name, factor = 1) {
            await simulate({ simulate: 'scenario', name });
            await simulate({ simulate: 'speed', factor });
        },
        /** Asks a resource, and resolves with what is in the answer. */
        async pell(method, target, body) {
            return JSON.parse((await ask(address, `/pell/${target}`, { method, body })).text);
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
            assert.equal((await ask(address, brightness)).status, 200);
        },
    };
}

/** A request with any method, body and fields: {status, text, headers}. */
export function ask(address, target, { method = 'GET', body, headers = {}, agent = false } = {}) {
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
