// Requests to a batch of pellhost, and their answers.
import assert from 'node:assert/strict';
import { Batch } from '../../pellhost.js';
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
    #turn = Promise.resolve();

    /** @param {{command: string[]}} host */
    constructor(host) {
        this.batch = new Batch(host);
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
        const all = await this.batch.send(
            ...lines.map((line) => (line.simulate ? line : { call: line.resource, texts: textsOf(line) })),
        );
        const answers = lines.flatMap((line, index) => (line.simulate ? [] : [readAnswer(line, all[index])]));
        const refused = lines.findIndex((line, index) => line.simulate && !all[index].ok);
        assert.equal(refused, -1, `${JSON.stringify(lines[refused])}: ${JSON.stringify(all[refused])}`);
        this.#count(lines, answers);
        return answers;
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
