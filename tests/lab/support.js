// A browser, and servers for it: `pellhost serve`, natively and under Wine.
import { execFileSync, spawn } from 'node:child_process';
import fs from 'node:fs';
import net from 'node:net';
import path from 'node:path';
import readline from 'node:readline';
import { chromium } from 'playwright-core';

export const screenshots = 'build/lab-screenshots';
fs.mkdirSync(screenshots, { recursive: true });

const programs = {
    native: ['build/native/full/pellhost'],
    windows: ['scripts/wine', 'build/windows/full/pellhost.exe'],
};

/** A path as the program of the build takes it. */
export function pathFor(build, file) {
    return build === 'windows' ? `Z:${path.resolve(file)}` : path.resolve(file);
}

/** Starts `pellhost serve` with these arguments, and resolves with its address when it is ready. */
export async function serve(build, ...args) {
    const [program, ...before] = programs[build];
    const server = spawn(
        program,
        [...before, '--json', 'serve', ...(args.includes('--port') ? [] : ['--port', '0']), ...args],
        {
            stdio: ['ignore', 'pipe', 'inherit'],
        },
    );
    const lines = readline.createInterface(server.stdout);
    const address = await new Promise((resolve, reject) => {
        lines.once('line', (line) => resolve(JSON.parse(line).address));
        server.once('exit', (code) => reject(new Error(`pellhost serve ended with ${code}`)));
    });
    return new Server(address.replace(/\/$/, ''), server);
}

class Server {
    constructor(address, process) {
        this.address = address;
        this.process = process;
    }

    async simulate(instruction) {
        const response = await fetch(`${this.address}/lab/api/simulate`, {
            method: 'POST',
            body: JSON.stringify(instruction),
        });
        const { ok, error } = await response.json();
        if (!ok) throw new Error(error);
    }

    /** The world as the scenario has it, at the speed of a test. */
    async choose(scenario, speed = 1) {
        await this.simulate({ simulate: 'scenario', name: scenario });
        await this.simulate({ simulate: 'speed', factor: speed });
    }

    ask(method, address, body) {
        return fetch(`${this.address}/pell/${address}`, { method, body }).then((response) => response.json());
    }

    /** Asks the same so many times over one connection, as fast as it answers. */
    askOften(address, count) {
        const { hostname, port, host } = new URL(this.address);
        return new Promise((resolve, reject) => {
            const socket = net.connect(Number(port), hostname);
            let answered = 0;
            socket.setEncoding('utf8').on('error', reject);
            readline.createInterface(socket).on('line', (line) => {
                if (!line.includes('HTTP/1.1 200')) return;
                if (++answered === count) resolve(socket.destroy());
                else if (answered % 100 === 0) ask(Math.min(100, count - answered));
            });
            const ask = (some) => socket.write(`GET /pell/${address} HTTP/1.1\r\nHost: ${host}\r\n\r\n`.repeat(some));
            ask(100);
        });
    }

    close() {
        this.process.kill('SIGTERM');
    }
}

export function openBrowser() {
    const args = process.getuid() === 0 ? ['--no-sandbox'] : [];
    return chromium.launch({ executablePath: '/usr/bin/chromium', args });
}

/**
 * A page at an address. Whatever goes wrong within it, or leads outside, is in `page.problems`. With `hasOwnTime`, the
 * test lets its time pass faster.
 */
export async function open(browser, address, { hasOwnTime, ...options } = {}) {
    const context = await browser.newContext({ viewport: { width: 1280, height: 800 }, ...options });
    const page = await context.newPage();
    page.setDefaultTimeout(30_000);
    page.problems = [];
    page.on('pageerror', (error) => page.problems.push(String(error)));
    page.on('request', (request) => {
        if (!request.url().startsWith(new URL(address).origin) && !/^(data|blob):/.test(request.url()))
            page.problems.push(`asks ${request.url()}`);
    });
    if (hasOwnTime) await page.clock.install();
    await page.goto(address);
    return page;
}

/** A firmware package for a product of the scenarios. */
export function firmwarePackage(product = 'TQ271-P') {
    const file = path.resolve(`build/${path.basename(process.argv[1], '.test.js')}-${product}.dfw`);
    const [program] = programs.native;
    execFileSync(program, ['firmware', 'create', file, '--product', product, '--version', '2.1.0.3.7']);
    return file;
}

const axe = fs.readFileSync('node_modules/axe-core/axe.min.js', 'utf8');

/** What axe finds serious on a page, in a line each. */
export async function seriousFindings(page) {
    await page.evaluate(axe);
    const options = { resultTypes: ['violations'], preload: false }; // quicker; no rule that counts needs the others
    const { violations } = await page.evaluate((options) => globalThis.axe.run(document, options), options);
    return violations
        .filter(({ impact }) => impact === 'serious' || impact === 'critical')
        .flatMap(({ id, nodes }) => nodes.map(({ target, failureSummary }) => `${id} ${target}: ${failureSummary}`));
}
