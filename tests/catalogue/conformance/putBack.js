// What a GET answers, a PUT of the same resource takes, and the next GET answers it again.
import { isDeepStrictEqual } from 'node:util';
import { fits } from '../../../catalogue/tools/match.js';
import { describe, outcome } from './host.js';
import { covers, isContainer, placesIn, replaceAt, valueAt } from './values.js';

/** What a GET answers can be put back, unless the catalogue says that it cannot. */
export async function provePutBack(subject) {
    if (!subject.methods.PUT || !subject.methods.GET) return;
    const problems = (await Promise.all(subject.reads.map((read) => problemsOfPuttingBack(subject, read)))).flat();
    if (!subject.resource.putBack) problems.forEach((problem) => subject.report(problem));
    else if (!problems.length) subject.report('what its GETs answer can be put back');
}

/** Another value can be put back as well, and then reads the same. */
async function problemsOfPuttingBack(subject, { row, request: get, value }) {
    const put = (body) => subject.request('PUT', get.query, body);
    const decision = await subject.problemOfDeciding(put(value));
    if (decision) subject.report(decision);
    const selectors = subject.methods.PUT.flatMap(({ query }) => Object.keys(query ?? {}));
    if (Object.keys(get.query).some((name) => !selectors.includes(name))) return [];
    const { row: putRow } = subject.decide(put(value));
    if (!putRow || !fits(putRow.body, value)) return [`no PUT takes what ${describe(get)} answers`];

    const effects = subject.reads.map(async ({ request }) => {
        const before = await subject.ask(request);
        const [taken, after] = await subject.world.full.run([put(value), request]);
        if (taken.status === 200 && after.text === before.text) return [];
        return [`${describe(request)} answers ${outcome(after)} after ${describe(put(value))}, not ${outcome(before)}`];
    });
    const counts = (place) => place.length === 0 || covers(putRow.body, place);
    const places = placesIn(value);
    const untaken = places.filter((place) => !counts(place));
    const changes = places
        .filter((place) => !isContainer(valueAt(value, place)) && counts(place) && !selectors.includes(place.at(-1)))
        .map((place) => problemsOfChanging(subject, row, get, put, value, place, untaken));
    return (await Promise.all([...effects, ...changes])).flat();
}

/** Whether another value can be put at a place, and back. What a PUT does not take may change with it. */
async function problemsOfChanging(subject, row, get, put, value, place, untaken) {
    const numbers = subject.reads.flatMap((read) => placesIn(read.value).map((place) => valueAt(read.value, place)));
    const others = othersThan(valueAt(value, place), numbers).map((other) => replaceAt(value, place, other));
    const changes = others.filter((changed) => fits(row.answer, changed));
    if (!changes.length) return []; // some members depend on another one
    for (const changed of changes) {
        const [taken, first, , second] = await subject.world.full.run([put(changed), get, put(value), get]);
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

/** Other values of the same kind, of which the monitor may take one. */
function othersThan(value, values) {
    if (typeof value === 'boolean') return [!value];
    if (typeof value === 'string') return [`${value.slice(1)}-`, ...values.filter((one) => typeof one === 'string')];
    const numbers = Number.isInteger(value) ? [value + 1, value - 1] : [value * 1.05, value / 1.05];
    return [...numbers, ...values.filter((one) => typeof one === 'number' && one !== value)];
}
