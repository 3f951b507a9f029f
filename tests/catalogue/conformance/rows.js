// What a row says of the requests that it serves.
import { isDeepStrictEqual } from 'node:util';
import { fits } from '../../../catalogue/tools/match.js';
import { checkedFunctions, isCleanUp, isSupport } from './functions.js';
import { describe, outcome, returns } from './host.js';
import { querySchema, samplesOf } from './values.js';

const stall = 0x80000008;

/** @param {import('./subject.js').Subject} subject */
export async function proveRow(subject, method, row) {
    const tried = candidatesOf(subject, method, row);
    // One request for each way through the companion libraries is enough.
    const ways = new Map();
    const walk = async (...simulations) => {
        const answers = await Promise.all(tried.map((request) => subject.ask(request, ...simulations)));
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

    const title = describe(subject.request(method, row.query, row.body));
    const outcomes = [...new Set(answers.map(outcome))];
    if (!ways.size) return subject.report(`no request succeeds that is like ${title}: ${outcomes.join(', ')}`);

    const reasons = new Set();
    await Promise.all(
        [...ways.values()].map(async ({ request, answer, simulations }) => {
            checkAnswer(subject, row, request, answer);
            await proveFailures(subject, row, request, answer, simulations, reasons);
            if (simulations.length) return;
            checkCalls(subject, row, request, answer);
            if (method === 'GET') subject.reads.push({ row, request, value: answer.value });
            await Promise.all([
                proveMinimal(subject, row, request, answer),
                proveProducts(subject, row, request, answer),
            ]);
        }),
    );
    const unmet = (row.reasons ?? []).filter((reason) => !reasons.has(reason));
    if (unmet.length) subject.report(`nothing tells the reasons ${unmet.join(' ')} of ${title}`);
}

/** Requests that the row decides, of which some should succeed. */
function candidatesOf(subject, method, row) {
    const { known } = subject.world;
    const examples = subject.examples.filter((one) => !one.resource && one.status === 200);
    const queries = [...samplesOf(querySchema(row), known), ...examples.map(({ query }) => query)];
    const values = [...subject.reads.map(({ value }) => value), ...examples.map(({ body }) => body)];
    const bodies = row.body
        ? [...values, ...samplesOf(row.body, known)].filter((body) => fits(row.body, body))
        : [undefined];
    return queries
        .flatMap((query) => bodies.map((body) => subject.request(method, query, body)))
        .filter((request) => subject.decide(request).row === row)
        .slice(0, 100);
}

function checkAnswer(subject, row, request, answer) {
    const { value, events } = answer;
    if (!fits(row.answer, value)) subject.report(`${describe(request)} answers ${outcome(answer)}, not its type`);

    const names = [...new Set(events.map(({ name }) => name))];
    if (!isDeepStrictEqual(names, row.events ?? [])) subject.report(`${describe(request)} sends the events ${names}`);
    for (const { name, text } of events)
        if (!fits(subject.events[name].value, JSON.parse(text))) subject.report(`the event ${name} is ${text}`);
}

function checkCalls(subject, row, request, { calls: { length: count } }) {
    if (row.calls ? count !== row.calls : request.method === 'GET' && count >= 8)
        subject.report(`${describe(request)} makes ${count} calls, not ${row.calls ?? 'fewer than 8'}`);
}

/** Each of the calls fails once: the request fails then, or what failed does not matter. */
async function proveFailures(subject, row, request, { calls }, simulations, reasons) {
    const prove = async (name, at) => {
        const isChecked = checkedFunctions.has(name);
        const earlier = calls.slice(0, at).filter((call) => call.function === name).length;
        if (earlier && !isChecked) return;
        const before = [...simulations, ...(earlier ? [returns(name, 0, earlier)] : [])];
        const failed = await subject.ask(request, ...before, returns(name, isChecked ? stall : 0, 1));
        if (failed.error) reasons.add(failed.error.reason ?? '');
        checkFailed(subject, row, request, failed, `when ${name} fails`);
        if (!isChecked) return;
        const later = failed.error && failed.calls.slice(at + 1).find((call) => !isCleanUp(call.function));
        if (later) subject.report(`${describe(request)} calls ${later.function} although ${name} failed`);
        // What is done while events are sent cannot fail the request.
        const mustFail = row.reasons && !row.events;
        if (mustFail && !failed.error) subject.report(`${describe(request)} succeeds although ${name} fails`);
        const empty = await subject.ask(request, ...simulations, { ...returns(name, 0), outputs: [] });
        if (empty.error) reasons.add(empty.error.reason ?? '');
        // What it makes of nothing need not be of its type.
        checkFailed(subject, { ...row, answer: {} }, request, empty, `when ${name} tells nothing`);
    };
    await Promise.all(calls.map((call, at) => prove(call.function, at)));
}

function checkFailed(subject, row, request, answer, circumstance) {
    const problem = subject.problemOf(request, answer, { row, refusals: subject.decide(request).refusals });
    if (problem) subject.report(`${problem} ${circumstance}`);
}

/** The older libraries lack what the row says, and are as good for all else. */
async function proveMinimal(subject, { needs }, request, { text, calls }) {
    const [answer] = await subject.world.minimal.run([request]);
    const isNeeded = needs && calls.length > 0; // unless there is nothing to do
    const missing = `404 FunctionNotFoundError ${needs?.split(' ').at(-1)} does not have a requested function.`;
    if (isNeeded ? outcome(answer) === missing : answer.text === text) return;
    // No package can be open there.
    if (isNeeded && subject.isAboutPackage(request) && subject.failuresOf(request).includes(answer.error?.message))
        return;
    subject.report(`${describe(request)} answers ${outcome(answer)} with the older libraries`);
}

/** Simulated products lack what the row says, and nothing else. */
async function proveProducts(subject, { unsupportedBy = [], query = {}, answer: { type } }, request, { calls }) {
    if (subject.resource.of !== 'monitor' || subject.isAboutPackage(request) || !calls.length) return;
    const isFlag = ({ schema, optional }) => !schema && !optional;
    const asksForSupport = 'supports' in query || (type === 'boolean' && Object.values(query).some(isFlag));
    for (const parameters of subject.world.monitors) {
        const answer = await subject.ask({ ...request, parameters });
        const isUnsupported = asksForSupport ? answer.value === false : answer.error?.message === 'Unsupported.';
        const isRight = unsupportedBy.includes(parameters.product)
            ? isUnsupported || answer.status === 400
            : !isUnsupported;
        if (!isRight) subject.report(`${describe(request)} answers ${outcome(answer)} for ${parameters.product}`);
    }
}
