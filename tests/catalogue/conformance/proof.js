// What the catalogue says of one resource, proven against the plug-in.
import { isServed } from '../../../catalogue/tools/match.js';
import { proveDecisions, proveRandom } from './decisions.js';
import { proveExamples } from './examples.js';
import { describe, outcome } from './host.js';
import { provePutBack } from './putBack.js';
import { proveRow } from './rows.js';
import { Subject } from './subject.js';

const methods = ['GET', 'PUT', 'POST', 'DELETE'];

/**
 * @param {object} catalogue catalogue.json @param {import('./subject.js').World} world
 * @returns {Promise<string[]>} what is not as the catalogue says
 */
export async function contradictionsOf(name, catalogue, world) {
    const subject = new Subject(name, catalogue, world);
    const listed = methods.filter((method) => method in subject.methods);
    // What the GETs answer is what the PUTs are tried with.
    for (const method of listed)
        await Promise.all(subject.methods[method].filter(isServed).map((row) => proveRow(subject, method, row)));
    await Promise.all([
        ...methods.filter((method) => !listed.includes(method)).map((method) => proveNotAllowed(subject, method)),
        ...listed.flatMap((method) => [proveDecisions(subject, method), proveRandom(subject, method)]),
        provePutBack(subject),
        proveExamples(subject),
    ]);
    proveMessages(subject);
    return [...subject.problems];
}

async function proveNotAllowed(subject, method) {
    const request = subject.request(method, {}, {});
    const answer = await subject.ask(request);
    const isNotAllowed = answer.status === 405 && answer.error.name === 'MethodError' && !answer.calls.length;
    if (!isNotAllowed) subject.report(`${describe(request)} answers ${outcome(answer)}`);
}

/** Every refusal and failure has been told by now. */
function proveMessages(subject) {
    for (const { refused, fails } of Object.values(subject.methods).flat()) {
        const message = refused ?? fails;
        if (message && !subject.met.has(message)) subject.report(`nothing tells "${message}"`);
    }
}
