// Checks what one source says against the rest of the catalogue and against itself.
import { decide, fits, isServed } from './match.js';
import { rowSchemas, toSchema } from './schema.js';
import { namesIn, toText } from './types.js';

/** Events, products, selectors and types must be there; rows must be reachable. */
export function checkRows(source, resource, { events, products }) {
    for (const [method, rows] of Object.entries(resource.methods))
        rows.forEach((row, at) => {
            const fail = (member, message) => source.fail([method, at, member], message);
            for (const name of row.events)
                if (!events.some((event) => event.name === name)) fail('events', `events.yaml has no ${name}`);
            for (const name of row.unsupportedBy)
                if (!products.includes(name))
                    fail('unsupportedBy', `the simulator has no product ${name} that lacks anything`);
            if (row.invalid && !rows.some((other) => hasMember(other, row.invalid)))
                fail('invalid', `no ${method.toUpperCase()} has a member ${row.invalid}`);
            const before = rows
                .slice(0, at)
                .find((other) => isServed(row) && isServed(other) && decidesBefore(other, row));
            if (before) fail('query', 'a row above decides all that this one would');
        });
    const types = Object.values(resource.methods)
        .flat()
        .flatMap((row) => [row.body, row.answer, ...row.query.map(({ type }) => type)]);
    const used = types.filter(Boolean).reduce((found, type) => namesIn(type, found), new Set());
    const unused = [...resource.scope.declarations.keys()].filter((name) => !used.has(name));
    if (unused.length) source.fail(['types'], `nothing uses ${unused.join(', ')}`);
}

/** Whether the query or the body of a row has a member of this name. */
function hasMember({ query, body }, name) {
    const isInBody = body && JSON.stringify(toSchema(body, { isGiven: true })).includes(`"${name}"`);
    return isInBody || query.some((member) => member.name === name);
}

/** Whether every request that fits a row fits the other one, too, as far as their texts tell. */
function decidesBefore(other, row) {
    const isWider = other.query
        .filter(({ isOptional }) => !isOptional)
        .every(({ name, type }) =>
            row.query.some(
                (one) =>
                    one.name === name && !one.isOptional && (!type || (one.type && toText(type) === toText(one.type))),
            ),
        );
    return isWider && (!other.body || (row.body !== undefined && toText(other.body) === toText(row.body)));
}

/** Every example must be what the rows say. */
export function checkExamples(source, resources, results) {
    const resource = resources.find(({ name }) => name === source.name);
    resource.examples.forEach((example, index) => {
        const target = example.resource ? resources.find(({ name }) => name === example.resource) : resource;
        const message = target ? contradiction(example, target, results) : `there is no resource ${example.resource}`;
        if (message) source.fail(['examples'], `${message}: ${example.request}`, 2 * index);
    });
}

/** How an example contradicts the rows of its resource; nothing when it does not. */
function contradiction({ method, query, body, status, value, isAbridged, error }, resource, results) {
    const rows = resource.methods[method.toLowerCase()]?.map(rowSchemas);
    if (!rows) return status === 405 ? undefined : `${method} is not served`;
    const known = new Set(rows.flatMap((row) => Object.keys(row.query ?? {})));
    const stranger = Object.keys(query).find((name) => !known.has(name));
    if (stranger) return `no ${method} has a query member ${stranger}`;

    const { row, refusals } = decide(rows, query, body);
    if (status === 200) {
        if (!row) return `no ${method} fits it`;
        const schema = isAbridged ? withoutLengths(row.answer) : row.answer;
        return fits(schema, value) ? undefined : 'the answer is not of its type';
    }
    if (error.message === results.missingAddress) return undefined;
    switch (error.name) {
        case 'BadRequestError':
            if (row && !refusals.length) return 'a row fits it';
            return refusals.includes(error.message) ? undefined : `no such refusal: ${error.message}`;
        case 'InternalError':
            return rows.some(({ fails }) => fails === error.message) ? undefined : `no such failure: ${error.message}`;
        case 'DmError':
            if (!Object.values(results.codes).some(({ message }) => message === error.message))
                return `results.yaml has no message ${error.message}`;
            return row?.reasons?.includes(error.reason ?? '') ? undefined : `its row has no reason ${error.reason}`;
        case 'FunctionNotFoundError':
            return undefined;
        default:
            return `${method} does not fail like this`;
    }
}

/** A schema for lists of which only the beginning is told. */
function withoutLengths(schema) {
    const copy = structuredClone(schema);
    const visit = (part) => {
        if (part?.type === 'array' && !part.prefixItems) delete part.minItems;
        if (typeof part === 'object') Object.values(part ?? {}).forEach(visit);
    };
    visit(copy);
    return copy;
}
