// pellhost as a process that carries out batches: a JSON line in, a JSON line out.
import assert from 'node:assert/strict';
import { execFileSync, spawn } from 'node:child_process';
import fs from 'node:fs';
import path from 'node:path';
import readline from 'node:readline';
import { isLookUp } from './functions.js';

/**
 * @typedef {object} Request
 * @property {string} resource @property {'GET' | 'PUT' | 'POST' | 'DELETE'} method
 * @property {object} [query] @property {unknown} [body] undefined: an empty text
 * @property {object} parameters {product, serial} of a monitor, {id} of a file
 *
 * @typedef {object} Answer
 * @property {number} status @property {unknown} value @property {object | null} error
 * @property {string} text the answer as it came
 * @property {{function: string, arguments: unknown[], result: number}[]} calls those of companion libraries, without the
 * look-up of the monitor
 * @property {{name: string, text: string}[]} events @property {{line: string}[]} log
 */

export const reset = { simulate: 'reset' };

/** A simulation: the function returns this result, the next time or the next times. */
export const returns = (name, result, times) => ({ simulate: 'return', function: name, result, times });

export class Host {
    requests = 0;
    callers = new Map(); // functions, and the resources that have called them
    #waiting = [];
    #turn = Promise.resolve();

    /** @param {string} root the project's folder @param {string} preset @param {'full' | 'minimal'} folder of its build */
    constructor(root, preset, folder) {
        const program = path.join(root, 'build', preset, folder, 'pellhost');
        this.command = preset === 'windows' ? ['scripts/wine', `${program}.exe`] : [program];
        assert.ok(fs.existsSync(this.command.at(-1)), `${this.command.at(-1)} is not built: scripts/build ${preset}`);
        // Under Wine, the system's root is a drive of its own.
        this.pathOf = (file) => (preset === 'windows' ? 'Z:' : '') + path.resolve(file);
    }

    start() {
        const [program, ...others] = this.command;
        const child = spawn(program, [...others, 'batch'], { stdio: ['pipe', 'pipe', 'pipe'] });
        let errors = '';
        child.stderr.on('data', (text) => (errors += text));
        child.stdin.on('error', () => {}); // told by its end
        this.ended = new Promise((resolve) => {
            child.on('close', (code, signal) => {
                for (const { reject } of this.#waiting)
                    reject(new Error(`pellhost has ended: ${signal ?? code} ${errors}`));
                resolve({ code, signal, errors });
            });
        });
        readline
            .createInterface({ input: child.stdout })
            .on('line', (line) => this.#waiting.shift().resolve(JSON.parse(line)));
        this.child = child;
    }

    /** Lets pellhost come to its end, which is to be a good one. */
    async close() {
        this.child.stdin.end();
        assert.deepEqual(await this.ended, { code: 0, signal: null, errors: '' });
    }

    /** Runs the program with other arguments. */
    execute(...args) {
        const [program, ...others] = this.command;
        return execFileSync(program, [...others, ...args], { stdio: ['ignore', 'pipe', 'inherit'] });
    }

    /**
     * Asks requests one after the other on fresh monitors, with no other request between them.
     * @param {(Request | {simulate: string})[]} lines requests, and simulations between them
     * @returns {Promise<Answer[]>} the answers of the requests
     */
    run(lines) {
        return this.#turn.then(() => this.#send([reset, ...lines]));
    }

    /**
     * The same for requests that depend on answers.
     * @param {(ask: (request: Request) => Promise<Answer>) => Promise<T>} work @returns {Promise<T>} @template T
     */
    alone(work) {
        const result = this.#turn.then(async () => {
            await this.#send([reset]);
            return work(async (request) => (await this.#send([request]))[0]);
        });
        this.#turn = result.then(
            () => {},
            () => {},
        );
        return result;
    }

    async #send(lines) {
        const all = await this.repliesTo(lines);
        const answers = lines.flatMap((line, index) => (line.simulate ? [] : [readAnswer(line, all[index])]));
        const refused = lines.findIndex((line, index) => line.simulate && !all[index].ok);
        assert.equal(refused, -1, `${JSON.stringify(lines[refused])}: ${JSON.stringify(all[refused])}`);
        this.#count(lines, answers);
        return answers;
    }

    /** What a batch answers to these lines; no other line comes between them. */
    repliesTo(lines) {
        const texts = lines.map((line) =>
            JSON.stringify(line.simulate ? line : { call: line.resource, texts: textsOf(line) }),
        );
        const replies = lines.map(() => new Promise((resolve, reject) => this.#waiting.push({ resolve, reject })));
        this.child.stdin.write(texts.join('\n') + '\n');
        return Promise.all(replies);
    }

    #count(lines, answers) {
        this.requests += answers.length;
        const requests = lines.filter((line) => !line.simulate);
        for (const [at, { calls }] of answers.entries())
            for (const { function: name } of calls) {
                if (!this.callers.has(name)) this.callers.set(name, new Set());
                this.callers.get(name).add(requests[at].resource);
            }
    }
}

export function textsOf({ method, parameters, query = {}, body }) {
    return [
        JSON.stringify({ method }),
        JSON.stringify(parameters),
        Object.keys(query).length ? JSON.stringify(query) : '',
        body === undefined ? '' : JSON.stringify(body),
    ];
}

/** Whatever a request is, it is answered once, in JSON, and logged once at most. */
function readAnswer(request, { returned, responses, events, log, calls, error }) {
    const fail = (problem) => assert.fail(`${describe(request)} ${problem}`);
    if (!responses) fail(error);
    if (responses.length !== 1) fail(`is answered ${responses.length} times`);
    if (responses[0].promise !== returned) fail('answers another promise');
    if (log.length > 1) fail(`is logged ${log.length} times`);
    const { status, text } = responses[0];
    const answer = JSON.parse(text);
    if (Object.keys(answer).sort().join() !== 'error,value') fail(`answers ${text}`);
    return { status, text, ...answer, events, log, calls: calls.filter((call) => !isLookUp(call.function)) };
}

/** A request as in an example. */
export function describe({ resource, method, query = {}, body, parameters }) {
    const parts = [
        parameters.id !== undefined && `/${parameters.id}`,
        Object.keys(query).length > 0 && `?${JSON.stringify(query)}`,
        body !== undefined && shorten(JSON.stringify(body)),
    ];
    return [method, resource, ...parts.filter(Boolean)].join(' ');
}

/** An answer as in an example. */
export function outcome({ status, value, error }) {
    if (!error) return `${status} ${shorten(JSON.stringify(value))}`;
    return `${status} ${error.name} ${error.message}${error.reason === undefined ? '' : ` (${error.reason})`}`;
}

const shorten = (text) => (text.length > 300 ? `${text.slice(0, 300)}...` : text);
