// catalogue.json: everything that the catalogue says, with JSON Schemas in the places of types; and the schemas alone,
// for programs that check answers and bodies.
import stringify from 'json-stringify-pretty-compact';
import { isServed } from './match.js';
import { rowSchemas, toSchema } from './schema.js';

/** @typedef {ReturnType<typeof rowSchemas>} Row */

/** @param {import('./model.js').Catalogue} catalogue */
export function catalogueJson({ events, results, resources }) {
    return format({
        resources: Object.fromEntries(resources.map((resource) => [resource.name, describe(resource)])),
        events: Object.fromEntries(
            events.map(({ name, about, value }) => [name, { about, value: toSchema(value, { isGiven: false }) }]),
        ),
        results,
    });
}

/** @param {import('./model.js').Resource} resource */
function describe({ family, topic, about, path, of, aliases, methods, putBack, examples }) {
    return {
        about,
        family,
        topic,
        path,
        of,
        ...(aliases.length && { aliases }),
        methods: Object.fromEntries(
            Object.entries(methods).map(([method, rows]) => [method.toUpperCase(), rows.map(rowSchemas)]),
        ),
        ...(putBack && { putBack }),
        examples: examples.map(({ request, answer }) => [request, answer]),
    };
}

/** A JSON Schema with the answers and bodies of one resource as its definitions, such as "GET range" and "PUT body". */
export function resourceSchema({ name, about, methods }) {
    const definitions = {};
    for (const [method, rows] of Object.entries(methods)) {
        const served = rows.filter(isServed);
        for (const row of served) {
            const { answer } = rowSchemas(row);
            if (method === 'get')
                definitions[requestName(method, row)] = {
                    ...answer,
                    ...(row.answer.comment && { description: row.answer.comment }),
                };
        }
        const bodies = served.map(rowSchemas).flatMap(({ body }) => body ?? []);
        if (bodies.length)
            definitions[`${method.toUpperCase()} body`] = bodies.length > 1 ? { anyOf: bodies } : bodies[0];
    }
    return format({
        $schema: 'https://json-schema.org/draft/2020-12/schema',
        $id: name,
        description: about,
        $defs: definitions,
    });
}

/** Such as "GET range" or "GET supports dfwFile". */
export function requestName(method, row) {
    const members = row.query
        .filter((member) => !member.isOptional)
        .map(({ name, type }) =>
            type?.node.literal ? `${name}=${type.node.literal.text ?? type.node.getText()}` : name,
        );
    return [method.toUpperCase(), ...members].join(' ');
}

export function format(value) {
    return stringify(value, { maxLength: 120, indent: 2 }) + '\n';
}
