// The examples answer as they say.
import { parseExamples } from '../../../catalogue/tools/examples.js';
import { outcome } from './host.js';
import { isContainer } from './values.js';

/** Asks them one after the other, on monitors fresh from the scenario. */
export async function proveExamples(subject) {
    const variables = { $package: subject.world.package.path };
    const replace = (text) =>
        Object.entries(variables).reduce(
            (done, [name, value]) => done.replaceAll(name, JSON.stringify(value).slice(1, -1)),
            text,
        );
    await subject.world.full.alone(async (ask) => {
        for (const [request, expected] of subject.resource.examples) {
            const [example] = parseExamples(`${replace(request)}\n${expected}`, (_, message) =>
                subject.report(message),
            );
            const { resource = subject.name, method, query, body, id } = example;
            const address = subject.resources[resource].of === 'monitor' ? subject.world.monitors[0] : {};
            const parameters = { ...address, ...(id && { id }) };
            const answer = subject.note(await ask({ resource, method, parameters, query, body }));
            const isAsItSays = answer.error
                ? outcome(answer) === expected
                : expected.startsWith(`${answer.status} `) && isLike(valueIn(expected), answer.value, variables);
            if (!isAsItSays) subject.report(`${request} answers ${outcome(answer)}, not ${expected}`);
        }
    });
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
