// What the catalogue says of one resource, proven against the plug-in.
import { isDeepStrictEqual } from 'node:util';
import fc from 'fast-check';
import { parseExamples } from '../../../catalogue/tools/examples.js';
import { decide, fits, isServed } from '../../../catalogue/tools/match.js';
import { checkedFunctions, isCleanUp, isReading, isSupport } from './functions.js';
import { describe, outcome, returns } from './host.js';
import { covers, nearly, placesIn, replaceAt, samplesOf, spoiltOf, valueAt, valueOf } from './values.js';

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

const methods = ['GET', 'PUT', 'POST', 'DELETE'];
const stall = 0x80000008;

export class Proof {
    #problems = new Set();
    #asked = new Map(); // answers by their requests
    #met = new Set(); // the messages of errors
    #reads = []; // what GETs answer: {row, request, value}

    /** @param {object} catalogue catalogue.json @param {World} world */
    constructor(name, { resources, events, results }, world) {
        this.name = name;
        this.resource = resources[name];
        this.methods = this.resource.methods;
        this.world = world;
        this.shared = { resources, events, results };
        this.examples = this.resource.examples.map(
            (lines) => parseExamples(lines.join('\n'), (_, message) => this.#tell(message))[0],
        );
        // Nothing can be triggered before it is transferred.
        const body = { dfwFile: world.package.id };
        const transfer = { resource: 'FirmwareUpdateTransfer', method: 'POST', parameters: world.monitors[0], body };
        this.before = name === 'FirmwareUpdateTrigger' ? [transfer] : [];
    }

    /** @returns {Promise<string[]>} what is not as the catalogue says */
    async contradictions() {
        const listed = methods.filter((method) => method in this.methods);
        // What the GETs answer is what the PUTs are tried with.
        for (const method of listed)
            await Promise.all(this.methods[method].filter(isServed).map((row) => this.#proveRow(method, row)));
        await Promise.all([
            ...methods.filter((method) => !listed.includes(method)).map((method) => this.#proveNotAllowed(method)),
            ...listed.flatMap((method) => [this.#proveDecisions(method), this.#proveRandom(method)]),
            this.#provePutBack(),
            this.#proveExamples(),
        ]);
        for (const { refused, fails } of Object.values(this.methods).flat()) {
            const message = refused ?? fails;
            if (message && !this.#met.has(message)) this.#tell(`nothing tells "${message}"`);
        }
        return [...this.#problems];
    }

    #tell(problem) {
        this.#problems.add(`${this.name}: ${problem}`);
    }

    /** @returns {Request} */
    #request(method, query, body) {
        const parameters = {
            monitor: this.world.monitors[0],
            file: { id: method === 'DELETE' ? 'no-such-identifier' : this.world.package.id },
            application: {},
        };
        return { resource: this.name, method, parameters: parameters[this.resource.of], query, body };
    }

    /** @returns {Promise<Answer>} the answer of a request on fresh monitors, after these simulations */
    #ask(request, ...simulations) {
        const lines = [...this.before, ...simulations, request];
        const key = JSON.stringify(lines);
        if (!this.#asked.has(key))
            this.#asked.set(
                key,
                this.world.full.run(lines).then((answers) => this.#note(answers.at(-1))),
            );
        return this.#asked.get(key);
    }

    #note(answer) {
        if (answer.error) this.#met.add(answer.error.message);
        return answer;
    }

    #decide({ method, query = {}, body = null }) {
        return decide(this.methods[method], query, body);
    }

    // ---- A row that is served ---------------------------------------------------------------------------------------

    async #proveRow(method, row) {
        const tried = this.#candidatesOf(method, row);
        // One request for each way through the companion libraries is enough.
        const ways = new Map();
        const walk = async (...simulations) => {
            const answers = await Promise.all(tried.map((request) => this.#ask(request, ...simulations)));
            answers.forEach((answer, at) => {
                const way = answer.calls.map((call) => call.function).join();
                if (answer.status === 200 && !ways.has(way)) ways.set(way, { request: tried[at], answer, simulations });
            });
            return answers;
        };
        const answers = await walk();
        // Monitors of an older generation go other ways.
        const names = answers.flatMap(({ calls }) => calls.map((call) => call.function));
        for (const name of new Set(names.filter(isSupport))) await walk(returns(name, 0));

        const title = describe(this.#request(method, row.query, row.body));
        const outcomes = [...new Set(answers.map(outcome))];
        if (!ways.size) return this.#tell(`no request succeeds that is like ${title}: ${outcomes.join(', ')}`);

        const reasons = new Set();
        await Promise.all(
            [...ways.values()].map(async ({ request, answer, simulations }) => {
                this.#checkAnswer(row, request, answer);
                await this.#proveFailures(row, request, answer, simulations, reasons);
                if (simulations.length) return;
                this.#checkCalls(row, request, answer);
                if (method === 'GET') this.#reads.push({ row, request, value: answer.value });
                await Promise.all([
                    this.#proveMinimal(row, request, answer),
                    this.#proveProducts(row, request, answer),
                ]);
            }),
        );
        const unmet = (row.reasons ?? []).filter((reason) => !reasons.has(reason));
        if (unmet.length) this.#tell(`nothing tells the reasons ${unmet.join(' ')} of ${title}`);
    }

    /** Requests that the row decides, of which some should succeed. */
    #candidatesOf(method, row) {
        const { known } = this.world;
        const examples = this.examples.filter((one) => !one.resource && one.status === 200);
        const queries = [...samplesOf(querySchema(row), known), ...examples.map(({ query }) => query)];
        const values = [...this.#reads.map(({ value }) => value), ...examples.map(({ body }) => body)];
        const bodies = row.body
            ? [...values, ...samplesOf(row.body, known)].filter((body) => fits(row.body, body))
            : [undefined];
        return queries
            .flatMap((query) => bodies.map((body) => this.#request(method, query, body)))
            .filter((request) => this.#decide(request).row === row)
            .slice(0, 100);
    }

    #checkAnswer(row, request, answer) {
        const { value, events } = answer;
        if (!fits(row.answer, value)) this.#tell(`${describe(request)} answers ${outcome(answer)}, not its type`);

        const names = [...new Set(events.map(({ name }) => name))];
        if (!isDeepStrictEqual(names, row.events ?? [])) this.#tell(`${describe(request)} sends the events ${names}`);
        for (const { name, text } of events)
            if (!fits(this.shared.events[name].value, JSON.parse(text))) this.#tell(`the event ${name} is ${text}`);
    }

    #checkCalls(row, request, { calls: { length: count } }) {
        if (row.calls ? count !== row.calls : request.method === 'GET' && count >= 8)
            this.#tell(`${describe(request)} makes ${count} calls, not ${row.calls ?? 'fewer than 8'}`);
    }

    /** Each of the calls fails once: the request fails then, or what failed does not matter. */
    async #proveFailures(row, request, { calls }, simulations, reasons) {
        const prove = async (name, at) => {
            const isChecked = checkedFunctions.has(name);
            const earlier = calls.slice(0, at).filter((call) => call.function === name).length;
            if (earlier && !isChecked) return;
            const before = [...simulations, ...(earlier ? [returns(name, 0, earlier)] : [])];
            const failed = await this.#ask(request, ...before, returns(name, isChecked ? stall : 0, 1));
            if (failed.error) reasons.add(failed.error.reason ?? '');
            this.#checkFailed(row, request, failed, `when ${name} fails`);
            if (!isChecked) return;
            const later = failed.error && failed.calls.slice(at + 1).find((call) => !isCleanUp(call.function));
            if (later) this.#tell(`${describe(request)} calls ${later.function} although ${name} failed`);
            // What is done while events are sent cannot fail the request.
            const mustFail = row.reasons && !row.events;
            if (mustFail && !failed.error) this.#tell(`${describe(request)} succeeds although ${name} fails`);
            const empty = await this.#ask(request, ...simulations, { ...returns(name, 0), outputs: [] });
            if (empty.error) reasons.add(empty.error.reason ?? '');
            // What it makes of nothing need not be of its type.
            this.#checkFailed({ ...row, answer: {} }, request, empty, `when ${name} tells nothing`);
        };
        await Promise.all(calls.map((call, at) => prove(call.function, at)));
    }

    #checkFailed(row, request, answer, circumstance) {
        const problem = this.#problemOf(request, answer, { row, refusals: this.#decide(request).refusals });
        if (problem) this.#tell(`${problem} ${circumstance}`);
    }

    /** The older libraries lack what the row says, and are as good for all else. */
    async #proveMinimal({ needs }, request, { text, calls }) {
        const [answer] = await this.world.minimal.run([request]);
        const isNeeded = needs && calls.length > 0; // unless there is nothing to do
        const missing = `404 FunctionNotFoundError ${needs?.split(' ').at(-1)} does not have a requested function.`;
        if (isNeeded ? outcome(answer) === missing : answer.text === text) return;
        // No package can be open there.
        if (isNeeded && this.#isAboutPackage(request) && this.#failuresOf(request).includes(answer.error?.message))
            return;
        this.#tell(`${describe(request)} answers ${outcome(answer)} with the older libraries`);
    }

    /** Simulated products lack what the row says, and nothing else. */
    async #proveProducts({ unsupportedBy = [], query = {}, answer: { type } }, request, { calls }) {
        if (this.resource.of !== 'monitor' || this.#isAboutPackage(request) || !calls.length) return;
        const isFlag = ({ schema, optional }) => !schema && !optional;
        const asksForSupport = 'supports' in query || (type === 'boolean' && Object.values(query).some(isFlag));
        for (const parameters of this.world.monitors) {
            const answer = await this.#ask({ ...request, parameters });
            const isUnsupported = asksForSupport ? answer.value === false : answer.error?.message === 'Unsupported.';
            const isRight = unsupportedBy.includes(parameters.product)
                ? isUnsupported || answer.status === 400
                : !isUnsupported;
            if (!isRight) this.#tell(`${describe(request)} answers ${outcome(answer)} for ${parameters.product}`);
        }
    }

    /** What a GET answers can be put back, unless the catalogue says that it cannot. */
    async #provePutBack() {
        if (!this.methods.PUT || !this.methods.GET) return;
        const problems = (await Promise.all(this.#reads.map((read) => this.#problemsOfPuttingBack(read)))).flat();
        if (!this.resource.putBack) problems.forEach((problem) => this.#tell(problem));
        else if (!problems.length) this.#tell('what its GETs answer can be put back');
    }

    /** Another value can be put back as well, and then reads the same. */
    async #problemsOfPuttingBack({ row, request: get, value }) {
        const put = (body) => this.#request('PUT', get.query, body);
        const decision = await this.#problemOfDeciding(put(value));
        if (decision) this.#tell(decision);
        const selectors = this.methods.PUT.flatMap(({ query }) => Object.keys(query ?? {}));
        if (Object.keys(get.query).some((name) => !selectors.includes(name))) return [];
        const { row: putRow } = this.#decide(put(value));
        if (!putRow || !fits(putRow.body, value)) return [`no PUT takes what ${describe(get)} answers`];

        const effects = this.#reads.map(async ({ request }) => {
            const before = await this.#ask(request);
            const [taken, after] = await this.world.full.run([put(value), request]);
            if (taken.status === 200 && after.text === before.text) return [];
            return [
                `${describe(request)} answers ${outcome(after)} after ${describe(put(value))}, not ${outcome(before)}`,
            ];
        });
        const counts = (place) => place.length === 0 || covers(putRow.body, place);
        const places = placesIn(value);
        const untaken = places.filter((place) => !counts(place));
        const changes = places
            .filter(
                (place) => !isContainer(valueAt(value, place)) && counts(place) && !selectors.includes(place.at(-1)),
            )
            .map((place) => this.#problemsOfChanging(row, get, put, value, place, untaken));
        return (await Promise.all([...effects, ...changes])).flat();
    }

    /** Whether another value can be put at a place, and back. What a PUT does not take may change with it. */
    async #problemsOfChanging(row, get, put, value, place, untaken) {
        const numbers = this.#reads.flatMap((read) => placesIn(read.value).map((place) => valueAt(read.value, place)));
        const others = othersThan(valueAt(value, place), numbers).map((other) => replaceAt(value, place, other));
        const changes = others.filter((changed) => fits(row.answer, changed));
        if (!changes.length) return []; // some members depend on another one
        for (const changed of changes) {
            const [taken, first, , second] = await this.world.full.run([put(changed), get, put(value), get]);
            if (taken.status !== 200) continue;
            const expected = untaken.reduce((all, at) => replaceAt(all, at, valueAt(first.value, at)), changed);
            const readings = [
                [changed, first, expected],
                [value, second, value],
            ];
            return readings
                .filter(([, answer, wanted]) => !isDeepStrictEqual(answer.value, wanted))
                .map(([given, answer]) => `${describe(get)} answers ${outcome(answer)} after ${describe(put(given))}`);
        }
        return [`no PUT takes another value of ${place.join('.') || 'what'} than ${describe(get)} answers`];
    }

    // ---- Any request ------------------------------------------------------------------------------------------------

    async #proveNotAllowed(method) {
        const request = this.#request(method, {}, {});
        const answer = await this.#ask(request);
        const isNotAllowed = answer.status === 405 && answer.error.name === 'MethodError' && !answer.calls.length;
        if (!isNotAllowed) this.#tell(`${describe(request)} answers ${outcome(answer)}`);
    }

    #isAboutPackage(request) {
        return JSON.stringify(request).includes(this.world.package.id);
    }

    #failuresOf({ method }) {
        return this.methods[method].flatMap(({ fails }) => fails ?? []);
    }

    /** Why an answer is none of those that a decided request may have. */
    #problemOf(request, answer, { row, refusals }) {
        const { status, error, value, calls } = answer;
        const isListed = {
            200: () => row && fits(row.answer, value),
            '400 BadRequestError': () => refusals.includes(error.message),
            '500 DmError': () => row?.reasons?.includes(error.reason ?? ''),
            '500 InternalError': () => this.#failuresOf(request).includes(error.message),
        };
        const written = status === 400 && calls.find((call) => !isReading(call.function));
        if (written) return `${describe(request)} is refused after ${written.function}`;
        if (isListed[error ? `${status} ${error.name}` : status]?.()) return undefined;
        const expected = [...(row ? ['200', ...(row.reasons ?? [])] : []), ...refusals];
        return `${describe(request)} answers ${outcome(answer)}, not ${expected.join(' or ')}`;
    }

    /** Why a request is not decided as it should: not as if it had nothing but the members of its row. */
    async #problemOfDeciding(request) {
        const { row, refusals } = this.#decide(request);
        const answer = await this.#ask(request);
        const problem = this.#problemOf(request, answer, { row, refusals });
        if (problem || !row || answer.status === 400 || request.method === 'POST') return problem;
        const members = Object.entries(row.query ?? {}).filter(([name]) => name in request.query);
        const query = Object.fromEntries(members.map(([name, { schema }]) => [name, !schema || request.query[name]]));
        const alone = await this.#ask({ ...request, query });
        const isSame = alone.text === answer.text && isDeepStrictEqual(journal(alone), journal(answer));
        return isSame ? undefined : `${describe(request)} is not decided by ${JSON.stringify(query)}`;
    }

    /** The members of all queries, each with a value. */
    #vocabulary() {
        const rows = Object.values(this.shared.resources).flatMap((one) => Object.values(one.methods).flat());
        const members = rows.flatMap((row) => Object.entries(samplesOf(querySchema(row), this.world.known)[0]));
        return [...new Map(members)];
    }

    /** Of several members the first row's count; flags whatever their value, others when they are of their kind. */
    async #proveDecisions(method) {
        const rows = this.methods[method].filter(isServed);
        const queries = rows.map((row) => samplesOf(querySchema(row), this.world.known)[0]);
        const merged = queries.flatMap((one) => queries.map((other) => ({ ...one, ...other })));
        const spoilt = queries.flatMap(spoiltOf).filter((query) => isContainer(query) && !Array.isArray(query));
        const bodies = rows.flatMap(({ body }) => (body ? samplesOf(body, this.world.known) : []));
        // Members of other resources mean nothing here.
        const names = rows.flatMap(({ query }) => Object.keys(query ?? {}));
        const foreign = Object.fromEntries(this.#vocabulary().filter(([name]) => !names.includes(name)));
        const combined = [
            ...queries.flatMap((query) =>
                [undefined, ...bodies].map((body) => ({ query: { ...foreign, ...query }, body })),
            ),
            ...[...merged, ...spoilt].flatMap((query) => [undefined, ...bodies].map((body) => ({ query, body }))),
            ...bodies.flatMap(spoiltOf).flatMap((body) => queries.map((query) => ({ query, body }))),
            ...this.examples.filter((one) => one.method === method && !one.resource),
        ];
        const requests = combined.map(({ query, body }) => this.#request(method, query, body));
        const problems = await Promise.all(requests.map((request) => this.#problemOfDeciding(request)));
        problems.filter(Boolean).forEach((problem) => this.#tell(problem));
    }

    /** Bodies and queries that fit, nearly fit, or are anything. */
    async #proveRandom(method) {
        const { seed, runs, known } = this.world;
        const rows = this.methods[method].filter(isServed);
        const given = (schemas) => {
            const anything = fc.jsonValue({ maxDepth: 3 });
            if (!schemas.length) return anything;
            const fitting = fc.oneof(...schemas.map((schema) => valueOf(schema, known)));
            return fc.oneof(fitting, fitting, nearly(fitting), nearly(fitting), anything);
        };
        const queries = given(rows.map(querySchema)).map((query) => (isContainer(query) ? query : {}));
        const bodies = fc.option(given(rows.flatMap(({ body }) => body ?? [])), { nil: undefined, freq: 20 });
        const property = fc.asyncProperty(queries, bodies, async (query, body) => {
            const request = JSON.parse(JSON.stringify(this.#request(method, query, body)));
            const problem = await this.#problemOfDeciding(request);
            if (problem) throw new Error(problem);
        });
        const { failed, errorInstance, counterexamplePath } = await fc.check(property, { seed, numRuns: runs });
        if (failed) this.#tell(`${errorInstance.message} (seed ${seed}, path ${counterexamplePath})`);
    }

    // ---- Examples ---------------------------------------------------------------------------------------------------

    async #proveExamples() {
        const variables = { $package: this.world.package.path };
        const replace = (text) =>
            Object.entries(variables).reduce(
                (done, [name, value]) => done.replaceAll(name, JSON.stringify(value).slice(1, -1)),
                text,
            );
        await this.world.full.alone(async (ask) => {
            for (const [request, expected] of this.resource.examples) {
                const [example] = parseExamples(`${replace(request)}\n${expected}`, (_, message) =>
                    this.#tell(message),
                );
                const { resource = this.name, method, query, body, id } = example;
                const address = this.shared.resources[resource].of === 'monitor' ? this.world.monitors[0] : {};
                const parameters = { ...address, ...(id && { id }) };
                const answer = this.#note(await ask({ resource, method, parameters, query, body }));
                const isAsItSays = answer.error
                    ? outcome(answer) === expected
                    : expected.startsWith(`${answer.status} `) && isLike(valueIn(expected), answer.value, variables);
                if (!isAsItSays) this.#tell(`${request} answers ${outcome(answer)}, not ${expected}`);
            }
        });
    }
}

/** The calls of an answer; handles, which differ each time, are left out. */
const journal = ({ calls }) => calls.map((call) => (call.function.startsWith('FW') ? call.function : call));

const isContainer = (value) => value !== null && typeof value === 'object';

/** The members of a row's query as those of an object. */
function querySchema({ query = {} }) {
    const members = Object.entries(query);
    return {
        type: 'object',
        properties: Object.fromEntries(members.map(([name, { schema }]) => [name, schema ?? {}])),
        required: members.filter(([, { optional }]) => !optional).map(([name]) => name),
    };
}

/** Other values of the same kind, of which the monitor may take one. */
function othersThan(value, values) {
    if (typeof value === 'boolean') return [!value];
    if (typeof value === 'string') return [`${value.slice(1)}-`, ...values.filter((one) => typeof one === 'string')];
    const numbers = Number.isInteger(value) ? [value + 1, value - 1] : [value * 1.05, value / 1.05];
    return [...numbers, ...values.filter((one) => typeof one === 'number' && one !== value)];
}

/** The value that an example answers, with "..." for what it leaves out. */
function valueIn(answer) {
    return JSON.parse(answer.slice(4).replaceAll(', ...]', ', "..."]'));
}

/** Whether a value is as in an example; gives the variables there their values. */
function isLike(expected, value, variables) {
    if (typeof expected === 'string' && expected.startsWith('$') && typeof value === 'string') {
        variables[expected] = value;
        return true;
    }
    if (!isContainer(expected) || !isContainer(value)) return expected === value;
    const isAbridged = Array.isArray(expected) && expected.at(-1) === '...';
    const names = isAbridged ? Object.keys(expected).slice(0, -1) : Object.keys(expected);
    const isComplete = isAbridged || names.length === Object.keys(value).length;
    return isComplete && names.every((name) => name in value && isLike(expected[name], value[name], variables));
}
