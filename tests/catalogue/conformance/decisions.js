// Which row decides a request, whatever the request is.
import fc from 'fast-check';
import { isServed } from '../../../catalogue/tools/match.js';
import { isContainer, nearly, querySchema, samplesOf, spoiltOf, valueOf } from './values.js';

/** The members of all queries, each with a value. */
function vocabulary(subject) {
    const rows = Object.values(subject.resources).flatMap((one) => Object.values(one.methods).flat());
    const members = rows.flatMap((row) => Object.entries(samplesOf(querySchema(row), subject.world.known)[0]));
    return [...new Map(members)];
}

/** Of several members the first row's count; flags whatever their value, others when they are of their kind. */
export async function proveDecisions(subject, method) {
    const rows = subject.methods[method].filter(isServed);
    const queries = rows.map((row) => samplesOf(querySchema(row), subject.world.known)[0]);
    const merged = queries.flatMap((one) => queries.map((other) => ({ ...one, ...other })));
    const spoilt = queries.flatMap(spoiltOf).filter((query) => isContainer(query) && !Array.isArray(query));
    const bodies = rows.flatMap(({ body }) => (body ? samplesOf(body, subject.world.known) : []));
    // Members of other resources mean nothing here.
    const names = rows.flatMap(({ query }) => Object.keys(query ?? {}));
    const foreign = Object.fromEntries(vocabulary(subject).filter(([name]) => !names.includes(name)));
    const combined = [
        ...queries.flatMap((query) =>
            [undefined, ...bodies].map((body) => ({ query: { ...foreign, ...query }, body })),
        ),
        ...[...merged, ...spoilt].flatMap((query) => [undefined, ...bodies].map((body) => ({ query, body }))),
        ...bodies.flatMap(spoiltOf).flatMap((body) => queries.map((query) => ({ query, body }))),
        ...subject.examples.filter((one) => one.method === method && !one.resource),
    ];
    const requests = combined.map(({ query, body }) => subject.request(method, query, body));
    const problems = await Promise.all(requests.map((request) => subject.problemOfDeciding(request)));
    problems.filter(Boolean).forEach((problem) => subject.report(problem));
}

/** Bodies and queries that fit, nearly fit, or are anything. */
export async function proveRandom(subject, method) {
    const { seed, runs, known } = subject.world;
    if (!runs) return;
    const rows = subject.methods[method].filter(isServed);
    const given = (schemas) => {
        const anything = fc.jsonValue({ maxDepth: 3 });
        if (!schemas.length) return anything;
        const fitting = fc.oneof(...schemas.map((schema) => valueOf(schema, known)));
        return fc.oneof(fitting, fitting, nearly(fitting), nearly(fitting), anything);
    };
    const queries = given(rows.map(querySchema)).map((query) => (isContainer(query) ? query : {}));
    const bodies = fc.option(given(rows.flatMap(({ body }) => body ?? [])), { nil: undefined, freq: 20 });
    const property = fc.asyncProperty(queries, bodies, async (query, body) => {
        const request = JSON.parse(JSON.stringify(subject.request(method, query, body)));
        const problem = await subject.problemOfDeciding(request);
        if (problem) throw new Error(problem);
    });
    const { failed, errorInstance, counterexamplePath } = await fc.check(property, { seed, numRuns: runs });
    if (failed) subject.report(`${errorInstance.message} (seed ${seed}, path ${counterexamplePath})`);
}
