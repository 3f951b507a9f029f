// The plug-in, as the tests of the client reach it: played by the development host, directly and over HTTP.
import assert from 'node:assert/strict';
import { spawn } from 'node:child_process';
import fs from 'node:fs';
import http from 'node:http';
import readline from 'node:readline';
import { setImmediate as turn } from 'node:timers/promises';

export const catalogue = JSON.parse(fs.readFileSync('catalogue/catalogue.json', 'utf8'));

/** The bridge of a host with a plug-in among simulated monitors. */
export class Host {
    constructor(world = 'full') {
        this.process = spawn(`build/native/${world}/pellhost`, ['batch'], { stdio: ['pipe', 'pipe', 'inherit'] });
        this.waiting = [];
        this.listeners = [];
        readline.createInterface(this.process.stdout).on('line', (line) => this.waiting.shift()(JSON.parse(line)));
    }

    /** Sends a line of a batch, and resolves with what it answers. */
    line(object) {
        return new Promise((resolve) => {
            this.waiting.push(resolve);
            this.process.stdin.write(JSON.stringify(object) + '\n');
        });
    }

    async call(resource, texts, answered) {
        const { responses, events } = await this.line({ call: resource, texts });
        for (const { name, text } of events) {
            for (const one of this.listeners) if (one.event === name) one.listener(text);
            await turn(); // Each event is a message of its own.
        }
        answered(responses[0].status, responses[0].text);
    }

    addListener(event, listener) {
        this.listeners.push({ event, listener });
    }

    removeListener(event, listener) {
        this.listeners = this.listeners.filter((one) => one.event !== event || one.listener !== listener);
    }

    close() {
        this.process.stdin.end();
    }
}

/** Serves the resources of a host over HTTP, and resolves with the address and a function that ends it. */
export async function serve(host) {
    const server = http.createServer(async (request, response) => {
        const { pathname, search } = new URL(request.url, 'http://host');
        if (pathname === '/pell/events') return sendEvents(host, response);
        const { resource, parameters } = addressed(pathname.slice('/pell/'.length));
        let body = '';
        for await (const chunk of request.setEncoding('utf8')) body += chunk;
        const texts = [{ method: request.method }, parameters, queryOf(search)].map((part) => JSON.stringify(part));
        host.call(resource, [...texts, body], (status, text) => response.writeHead(status).end(text));
    });
    await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
    return {
        address: `http://127.0.0.1:${server.address().port}/pell`,
        close: () => server.close() && server.closeAllConnections(),
    };
}

function sendEvents(host, response) {
    response.writeHead(200, { 'Content-Type': 'text/event-stream' }).flushHeaders();
    for (const event of Object.keys(catalogue.events)) {
        const listener = (text) => response.write(`event: ${event}\ndata: ${text}\n\n`);
        host.addListener(event, listener);
        response.on('close', () => host.removeListener(event, listener));
    }
}

const templates = Object.entries(catalogue.resources).map(([resource, { path }]) => ({
    resource,
    pattern: new RegExp(`^${path.replace('/{id}', '(?:/(?<id>[^/]+))?').replace(/\{(\w+)\}/g, '(?<$1>[^/]+)')}$`),
}));

function addressed(path) {
    const { resource, pattern } = templates.find((one) => one.pattern.test(path)) ?? assert.fail(`nothing is at ${path}`);
    const entries = Object.entries(pattern.exec(path).groups ?? {}).filter(([, value]) => value !== undefined);
    return { resource, parameters: Object.fromEntries(entries.map(([name, value]) => [name, decodeURIComponent(value)])) };
}

/** A member alone is true, a value is JSON if it can be, else a text. */
function queryOf(search) {
    const parts = search.slice(1).split('&').filter(Boolean);
    return Object.fromEntries(
        parts.map((part) => {
            const [, name, value = 'true'] = /^([^=]+)=?(.+)?$/.exec(part).map((one) => one && decodeURIComponent(one));
            try {
                return [name, JSON.parse(value)];
            } catch {
                return [name, value];
            }
        }),
    );
}
