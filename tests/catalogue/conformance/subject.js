// A resource that is proven: asks it, and compares what it answers with its rows in the catalogue.
import { isDeepStrictEqual } from 'node:util';
import { parseExamples } from '../../../catalogue/tools/examples.js';
import { decide, fits } from '../../../catalogue/tools/match.js';
import { isSupport } from './functions.js';
import { describe, outcome } from './host.js';

/**
 * @typedef {import('./host.js').Request} Request
 * @typedef {import('./host.js').Answer} Answer
 *
 * @typedef {object} World
 * @property {import('./host.js').Host} full @property {import('./host.js').Host} minimal
 * @property {{product: string, serial: string}[]} monitors one of each product; the first supports everything
 * @property {object} known the values of members that cannot be guessed, by their names
 * @property {{path: string, id: string}} package an open firmware package, for the first monitor
 * @property {number} seed @property {number} runs of the random requests, and how many there are for each method
 */

export class Subject {
    #asked = new Map(); // answers by their requests

    problems = new Set();
    met = new Set(); // the messages of errors
    reads = []; // what GETs answer: {row, request, value}

    /** @param {object} catalogue catalogue.json @param {World} world */
    constructor(name, { resources, events }, world) {
        Object.assign(this, { name, resources, events, world, resource: resources[name] });
        this.methods = this.resource.methods;
        this.examples = this.resource.examples.map(
            (lines) => parseExamples(lines.join('\n'), (_, message) => this.report(message))[0],
        );
        // Nothing can be triggered before it is transferred.
        const body = { dfwFile: world.package.id };
        const transfer = { resource: 'FirmwareUpdateTransfer', method: 'POST', parameters: world.monitors[0], body };
        this.before = name === 'FirmwareUpdateTrigger' ? [transfer] : [];
    }

    /** Something is not as the catalogue says. */
    report(problem) {
        this.problems.add(`${this.name}: ${problem}`);
    }

    /** @returns {Request} */
    request(method, query, body) {
        const parameters = {
            monitor: this.world.monitors[0],
            file: { id: method === 'DELETE' ? 'no-such-identifier' : this.world.package.id },
            application: {},
        };
        return { resource: this.name, method, parameters: parameters[this.resource.of], query, body };
    }

    /** @returns {Promise<Answer>} the answer of a request on fresh monitors, after these simulations */
    ask(request, ...simulations) {
        const lines = [...this.before, ...simulations, request];
        const key = JSON.stringify(lines);
        if (!this.#asked.has(key))
            this.#asked.set(
                key,
                this.world.full.run(lines).then((answers) => this.note(answers.at(-1))),
            );
        return this.#asked.get(key);
    }

    /** Remembers what an error was, and passes its answer on. */
    note(answer) {
        if (answer.error) this.met.add(answer.error.message);
        return answer;
    }

    /** Which row serves a request, and which messages may refuse it; see tools/match.js. */
    decide({ method, query = {}, body = null }) {
        return decide(this.methods[method], query, body);
    }

    isAboutPackage(request) {
        return JSON.stringify(request).includes(this.world.package.id);
    }

    /** The messages of the internal errors that a request may have. */
    failuresOf({ method }) {
        return this.methods[method].flatMap(({ fails }) => fails ?? []);
    }

    /** Why an answer is none of those that a decided request may have. */
    problemOf(request, answer, { row, refusals }) {
        const { status, error, value, calls } = answer;
        const isListed = {
            200: () => row && fits(row.answer, value),
            '400 BadRequestError': () => refusals.includes(error.message),
            '500 DmError': () => row?.reasons?.includes(error.reason ?? ''),
            '500 InternalError': () => this.failuresOf(request).includes(error.message),
        };
        const asked = status === 400 && calls.find((call) => !isSupport(call.function));
        if (asked) return `${describe(request)} is refused after ${asked.function}`;
        if (isListed[error ? `${status} ${error.name}` : status]?.()) return undefined;
        const expected = [...(row ? ['200', ...(row.reasons ?? [])] : []), ...refusals];
        return `${describe(request)} answers ${outcome(answer)}, not ${expected.join(' or ')}`;
    }

    /** Why a request is not decided as it should: not as if it had nothing but the members of its row. */
    async problemOfDeciding(request) {
        const { row, refusals } = this.decide(request);
        const answer = await this.ask(request);
        const problem = this.problemOf(request, answer, { row, refusals });
        if (problem || !row || answer.status === 400 || request.method === 'POST') return problem;
        const members = Object.entries(row.query ?? {}).filter(([name]) => name in request.query);
        const query = Object.fromEntries(members.map(([name, { schema }]) => [name, !schema || request.query[name]]));
        const alone = await this.ask({ ...request, query });
        const isSame = alone.text === answer.text && isDeepStrictEqual(journal(alone), journal(answer));
        return isSame ? undefined : `${describe(request)} is not decided by ${JSON.stringify(query)}`;
    }
}

/** The calls of an answer; handles, which differ each time, are left out. */
const journal = ({ calls }) => calls.map((call) => (call.function.startsWith('FW') ? call.function : call));
