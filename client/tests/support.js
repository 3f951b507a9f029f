// The plug-in, as the tests of the client reach it: played by the development host, directly and over HTTP.
import { execFileSync, spawn } from 'node:child_process';
import fs from 'node:fs';
import http from 'node:http';
import path from 'node:path';
import readline from 'node:readline';
import { setImmediate as turn, setTimeout as later } from 'node:timers/promises';
import ts from 'typescript';

/** Where a test places files. */
export const pages = `build/client-tests/${path.basename(process.argv[1], '.test.js')}`;

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

/** The transport that the README shows, in plain JavaScript. */
export function bridge(host) {
    const text = (part) => JSON.stringify(part) ?? '';
    const transport = ({ resource, method, parameters, query, body }) =>
        new Promise((resolve) => {
            const texts = [{ method }, parameters, query, body].map(text);
            host.call(resource, texts, (status, text) => resolve({ status, text }));
        });
    transport.on = (event, listener) => {
        host.addListener(event, listener);
        return () => host.removeListener(event, listener);
    };
    return transport;
}

/** Serves the resources of a host over HTTP, and resolves with the address. */
export async function serve(host) {
    let refusals = 0;
    let hasOpened = () => {};
    const server = http.createServer(async (request, response) => {
        const { pathname, search } = new URL(request.url, 'http://host');
        if (pathname === '/pell/events') {
            if (refusals-- > 0) return response.writeHead(502).end();
            await later(100); // What the page posts meanwhile is to wait.
            sendEvents(host, response);
            return hasOpened();
        }
        const { resource, parameters } = addressed(pathname.slice('/pell/'.length));
        if (!resource) return response.writeHead(404).end('nothing is here');
        let body = '';
        for await (const chunk of request.setEncoding('utf8')) body += chunk;
        const texts = [{ method: request.method }, parameters, queryOf(search)].map((part) => JSON.stringify(part));
        host.call(resource, [...texts, body], (status, text) => response.writeHead(status).end(text));
    });
    await new Promise((resolve) => server.listen(0, '127.0.0.1', resolve));
    return {
        address: `http://127.0.0.1:${server.address().port}/pell`,
        /** Refuses so many streams of events, and resolves when one is open. */
        refuseEvents(count) {
            refusals = count;
            return new Promise((resolve) => (hasOpened = resolve));
        },
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
    const template = templates.find(({ pattern }) => pattern.test(path));
    if (!template) return {};
    const entries = Object.entries(template.pattern.exec(path).groups ?? {}).filter(([, value]) => value !== undefined);
    const parameters = entries.map(([name, value]) => [name, decodeURIComponent(value)]);
    return { resource: template.resource, parameters: Object.fromEntries(parameters) };
}

/** A member alone is true, a value is JSON if it can be, else a text. */
function queryOf(search) {
    const parts = search.slice(1).split('&').filter(Boolean);
    return Object.fromEntries(
        parts.map((part) => {
            const [name, value = 'true'] = part.split('=').map(decodeURIComponent);
            try {
                return [name, JSON.parse(value)];
            } catch {
                return [name, value];
            }
        }),
    );
}

/** A firmware package for the first monitor. */
export function firmwarePackage() {
    const file = path.resolve(pages, 'new.dfw');
    fs.mkdirSync(path.dirname(file), { recursive: true });
    execFileSync('build/native/full/pellhost', [
        'firmware',
        'create',
        file,
        '--product',
        'TQ271-P',
        '--version',
        '2.1.0.3.7',
    ]);
    return file;
}

/** Writes a file of a page that has the package installed, and answers its name. */
export function place(name, text) {
    fs.mkdirSync(`${pages}/node_modules`, { recursive: true });
    fs.rmSync(`${pages}/node_modules/libpell-client`, { force: true });
    fs.symlinkSync('../../../client', `${pages}/node_modules/libpell-client`);
    fs.writeFileSync(`${pages}/package.json`, '{"type":"module"}');
    fs.writeFileSync(`${pages}/${name}`, text);
    return path.resolve(pages, name);
}

const options = {
    strict: true,
    target: ts.ScriptTarget.ES2022,
    module: ts.ModuleKind.NodeNext,
    moduleResolution: ts.ModuleResolutionKind.NodeNext,
    types: [],
};

/** Compiles files of a page, and answers what is wrong with them. */
export function compile(files, { emit = false } = {}) {
    const program = ts.createProgram(files, { ...options, noEmit: !emit });
    const diagnostics = [...ts.getPreEmitDiagnostics(program), ...program.emit().diagnostics];
    return diagnostics.map(({ file, start, messageText }) => {
        const line = file ? file.getLineAndCharacterOfPosition(start).line : 0;
        return `${file?.text.split('\n')[line]}: ${ts.flattenDiagnosticMessageText(messageText, ' ')}`;
    });
}

/** Files of a page, as an editor has them open. */
export function project(files) {
    const read = (file) => (ts.sys.fileExists(file) ? ts.ScriptSnapshot.fromString(ts.sys.readFile(file)) : undefined);
    return {
        getScriptFileNames: () => files,
        getScriptVersion: () => '1',
        getScriptSnapshot: read,
        getCurrentDirectory: () => pages,
        getCompilationSettings: () => options,
        getDefaultLibFileName: ts.getDefaultLibFilePath,
        fileExists: ts.sys.fileExists,
        readFile: ts.sys.readFile,
        directoryExists: ts.sys.directoryExists,
        realpath: ts.sys.realpath,
    };
}
