// openapi.json: the same resources as an HTTP interface. A query follows one convention: `name` alone is true,
// `name=value` is JSON if it parses as JSON, and a text if it does not.
import fs from 'node:fs';
import { format, requestName } from './json.js';
import { requestTable } from './markdown.js';
import { isServed } from './match.js';
import { rowSchemas, toSchema } from './schema.js';

const convention = `A query member that stands alone (\`?range\`) is true; \`name=value\` is JSON if it parses as JSON,
else a text; a text that looks like JSON is quoted. Both are percent-encoded; a percent sign without two hexadecimal
digits, and every plus sign, stands for itself. A query whose first character is \`{\` is the whole object, as it stands or
percent-encoded. The first row of an operation that fits decides. A body that is an object with the sole member "data"
stands for that member.`;

/** @param {import('./model.js').Catalogue} catalogue */
export function openApi(catalogue) {
    const { families, resources, events, results, scope } = catalogue;
    const document = {
        openapi: '3.1.0',
        info: {
            title: 'libpell',
            version: projectVersion(),
            summary: 'The resources of the connected monitors.',
            description: convention,
        },
        servers: [{ url: '/pell' }],
        tags: Object.values(families).map(({ title }) => ({ name: title })),
        paths: {},
        webhooks: Object.fromEntries(events.map((event) => [event.name, { post: webhook(event) }])),
        components: { schemas: { ...errorSchemas(results) }, parameters: addressParameters },
    };
    for (const resource of resources)
        for (const [method, rows] of Object.entries(resource.methods)) {
            const path = `/${method === 'post' ? resource.path.replace('/{id}', '') : resource.path}`;
            document.paths[path] ??= { parameters: parametersOf(path) };
            document.paths[path][method] = operation(resource, method, rows, families[resource.family].title, scope);
            const bodies = rows.filter(({ body }) => body).map(({ body }) => toSchema(body, { isGiven: true }));
            if (bodies.length) document.components.schemas[bodyName(resource, method)] = anyOf(bodies);
        }
    return format(document);
}

function projectVersion() {
    return /^project\(libpell VERSION ([\d.]+)/m.exec(fs.readFileSync('CMakeLists.txt', 'utf8'))[1];
}

const addressParameters = Object.fromEntries(
    Object.entries({
        product: 'The product of the monitor, as Monitors tells it.',
        serial: 'The serial of the monitor, as Monitors tells it.',
        id: 'The identifier that POST answered.',
    }).map(([name, description]) => [
        name,
        { name, in: 'path', required: true, description, schema: { type: 'string' } },
    ]),
);

function parametersOf(path) {
    return [...path.matchAll(/\{(\w+)\}/g)].map(([, name]) => ({ $ref: `#/components/parameters/${name}` }));
}

function bodyName({ name }, method) {
    return `${method[0].toUpperCase()}${method.slice(1)}${name}Body`;
}

function operation(resource, method, rows, tag, scope) {
    const served = rows.filter(isServed);
    const examples = resource.examples.filter(
        (example) => example.method.toLowerCase() === method && !example.resource,
    );
    return {
        operationId: method + resource.name,
        tags: [tag],
        summary: resource.name,
        description: [
            resource.about,
            requestTable(
                rows.map((row) => ({ method, row })),
                scope,
            ),
            resource.notes,
        ]
            .filter(Boolean)
            .join('\n\n'),
        parameters: queryParameters(served),
        ...(rows.some(({ body }) => body) && { requestBody: requestBody(resource, method, examples) }),
        responses: responses(rows, served, examples),
    };
}

/** Each member once; one that is a flag in a row and has values in another may be anything. */
function queryParameters(served) {
    const members = new Map();
    for (const member of served.flatMap(({ query }) => query))
        members.set(member.name, [...(members.get(member.name) ?? []), member]);
    return [...members].map(([name, uses]) => {
        const isFlag = uses.some(({ type }) => !type);
        const values = uses.filter(({ type }) => type).map(({ type }) => toSchema(type, { isGiven: true }));
        const schema = isFlag ? (values.length ? {} : { const: true }) : anyOf(values);
        return {
            name,
            in: 'query',
            schema,
            ...(isFlag && { allowEmptyValue: true, description: 'Counts when it is there, whatever its value.' }),
        };
    });
}

function requestBody(resource, method, examples) {
    const schema = { $ref: `#/components/schemas/${bodyName(resource, method)}` };
    const wrapped = { type: 'object', properties: { data: schema }, required: ['data'], maxProperties: 1 };
    const named = examples
        .filter(({ status }) => status === 200)
        .map(({ request, body }) => [request, { value: body }]);
    return {
        content: {
            'application/json': {
                schema: { anyOf: [schema, wrapped] },
                ...(named.length && { examples: Object.fromEntries(named) }),
            },
        },
    };
}

function responses(rows, served, examples) {
    const answers = served.map((row) => ({
        title: requestName('', row).trim() || 'otherwise',
        ...rowSchemas(row).answer,
    }));
    const distinct = answers.filter(
        (one, at) => answers.findIndex((other) => isDeepEqual(untitled(one), untitled(other))) === at,
    );
    const succeeded = examples.filter(({ status, isAbridged }) => status === 200 && !isAbridged);
    const messages = rows.map(({ refused }) => refused).filter(Boolean);
    const reasons = served.flatMap((row) => row.reasons).filter(Boolean);
    return {
        200: {
            description: 'Done.',
            content: {
                'application/json': {
                    schema: envelope({ error: { type: 'null' }, value: anyOf(distinct) }),
                    ...(succeeded.length && {
                        examples: Object.fromEntries(
                            succeeded.map(({ request, value }) => [request, { value: { error: null, value } }]),
                        ),
                    }),
                },
            },
        },
        400: failure(
            'BadRequestError',
            messages.length ? { message: { enum: [...new Set([...messages, 'URI is invalid.'])] } } : {},
        ),
        ...(served.some(({ needs }) => needs) && { 404: failure('FunctionNotFoundError') }),
        500: failure('DmError', reasons.length ? { reason: { enum: [...new Set(reasons)] } } : {}),
    };
}

function failure(kind, properties = {}) {
    const error = {
        anyOf: [{ $ref: `#/components/schemas/${kind}` }],
        ...(Object.keys(properties).length && { properties }),
    };
    const other = kind === 'DmError' ? ', InternalError or UnknownError' : '';
    if (other)
        error.anyOf.push({ $ref: '#/components/schemas/InternalError' }, { $ref: '#/components/schemas/UnknownError' });
    return { description: kind + other + '.', content: { 'application/json': { schema: envelope({ error }) } } };
}

function errorSchemas({ errors }) {
    return Object.fromEntries(
        errors.map(({ name, when }) => {
            const ofMonitor = name === 'DmError' ? { code: { type: 'integer' }, reason: { type: 'string' } } : {};
            return [
                name,
                {
                    description: when.trim(),
                    type: 'object',
                    properties: { name: { const: name }, message: { type: 'string' }, ...ofMonitor },
                    required: ['name', 'message', ...(ofMonitor.code ? ['code'] : [])],
                },
            ];
        }),
    );
}

function webhook({ name, about, value }) {
    return {
        operationId: name,
        summary: name,
        description: about,
        requestBody: { content: { 'application/json': { schema: toSchema(value, { isGiven: false }) } } },
        responses: { 200: { description: 'Heard.' } },
    };
}

const envelope = (properties) => ({ type: 'object', properties, required: Object.keys(properties) });
const anyOf = (schemas) => (schemas.length > 1 ? { anyOf: schemas } : schemas[0]);
const untitled = ({ title, ...rest }) => rest;
const isDeepEqual = (a, b) => JSON.stringify(a) === JSON.stringify(b);
