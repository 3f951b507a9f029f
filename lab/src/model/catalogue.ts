// What the catalogue says, in the form in which the lab uses it.
import topics from 'topics.json';
import json from '../../../catalogue/catalogue.json';
import { parseExamples } from '../../../catalogue/tools/examples.js';

export interface Schema {
    type?: string;
    const?: unknown;
    enum?: unknown[];
    anyOf?: Schema[];
    properties?: Record<string, Schema>;
    required?: string[];
    description?: string;
}

/** One way to ask a resource, or one way in which it refuses. */
export interface Row {
    method: Method;
    query: Record<string, { schema?: Schema; optional?: boolean }>;
    body?: Schema;
    answer?: Schema;
    refused?: string;
    fails?: string;
    when?: string;
    needs?: string;
    unsupportedBy?: string[];
    example?: { query: Record<string, unknown>; body: unknown };
}

export type Method = 'GET' | 'PUT' | 'POST' | 'DELETE';

export interface Resource {
    name: string;
    about: string;
    topic: string;
    family: string;
    path: string;
    of: 'monitor' | 'file' | 'application';
    aliases: string[];
    served: Row[];
    refused: Row[];
}

type RawRow = Omit<Row, 'query' | 'method' | 'example'> & { query?: Row['query'] };
interface Raw {
    resources: Record<
        string,
        Omit<Resource, 'name' | 'served' | 'refused'> & {
            methods: Record<Method, RawRow[]>;
            examples: [string, string][];
        }
    >;
    results: { codes: Record<string, { message: string }> };
}
const raw = json as unknown as Raw;

export const resources: Resource[] = Object.entries(raw.resources).map(([name, resource]) => {
    const rows: Row[] = Object.entries(resource.methods).flatMap(([method, rows]) =>
        rows.map((row) => ({ ...row, method: method as Method, query: row.query ?? {} })),
    );
    const isServed = ({ refused, fails }: Row) => refused === undefined && fails === undefined;
    const served = rows.filter(isServed);
    const examples = parseExamples(resource.examples.flat().join('\n'), (_: number, message: string) => {
        throw new Error(`${name}: ${message}`);
    });
    for (const row of served) row.example = bestExample(row, examples);
    return {
        ...resource,
        name,
        aliases: resource.aliases ?? [],
        served,
        refused: rows.filter((row) => !isServed(row)),
    };
});

type Example = ReturnType<typeof parseExamples>[number];

function isExampleOf({ resource, method, status, query = {}, body }: Example, row: Row): boolean {
    if (resource || method !== row.method || status !== 200) return false;
    const isAsked = (name: string) => name in query;
    const mustBeAsked = Object.keys(row.query).filter((name) => !row.query[name].optional);
    if (!mustBeAsked.every(isAsked) || !Object.keys(query).every((name) => name in row.query)) return false;
    const isConstant = (name: string) => {
        const schema = row.query[name].schema;
        return schema?.const === undefined || schema.const === (query as Record<string, unknown>)[name];
    };
    return Object.keys(query).every(isConstant) && (!row.body || fitsKind(row.body, body));
}

/** Others show what the plug-in converts, such as texts in the place of numbers; then what a GET answers is better. */
function bestExample(row: Row, examples: Example[]): Row['example'] {
    const all = examples.filter((example) => isExampleOf(example, row));
    const good = all.find(({ body }) => !row.body || fits(row.body, body));
    if (good || !all.length) return (good ?? all[0]) as Row['example'];
    const query = all[0].query ?? {};
    const read = examples.find(
        (example) =>
            example.method === 'GET' &&
            example.status === 200 &&
            JSON.stringify(example.query ?? {}) === JSON.stringify(query) &&
            fits(row.body!, example.value),
    );
    return (read ? { query, body: read.value } : all[0]) as Row['example'];
}

/** The value, and the members that an object has. */
function fits(schema: Schema, value: unknown): boolean {
    const { properties } = schema;
    if (!fitsKind(schema, value)) return false;
    return (
        !properties || Object.entries(value as object).every(([name, member]) => fits(properties[name] ?? {}, member))
    );
}

function fitsKind(schema: Schema, value: unknown): boolean {
    const kind = Array.isArray(value) ? 'array' : typeof value;
    return !schema.type || schema.type === kind || (schema.type === 'integer' && kind === 'number');
}

const byName = new Map(resources.flatMap((resource) => [resource.name, ...resource.aliases].map((n) => [n, resource])));

/** Also by the name of an alias. */
export function resourceNamed(name: string): Resource | undefined {
    return byName.get(name);
}

/** The topics in the order of the reference, each with its resources. */
export function byTopic(filtered: Resource[]): [string, Resource[]][] {
    return topics
        .map((topic): [string, Resource[]] => [topic, filtered.filter((resource) => resource.topic === topic)])
        .filter(([, members]) => members.length);
}

/** The page of the reference that tells of a resource. */
export function referenceOf({ family, name }: Resource): string {
    return `reference/${family}.html#${name.toLowerCase()}`;
}

export const supportsRow = (resource: Resource) =>
    resource.served.find(
        ({ method, query }) =>
            method === 'GET' && query.supports && !query.supports.schema && Object.keys(query).length === 1,
    );

/** The failures of the monitor-control library, by their numbers. */
export const failures = Object.entries(raw.results.codes).map(([code, { message }]) => ({
    code: Number(code),
    message,
}));

export function hex(result: number): string {
    return `0x${result.toString(16).padStart(8, '0')}`;
}

/** A result of a companion call, with what it means if it is a failure. */
export function resultText(result: unknown): string {
    if (typeof result !== 'number' || result < 0x80000000) return JSON.stringify(result) ?? '';
    const known = failures.find(({ code }) => code === result);
    return hex(result) + (known ? ` ${known.message}` : '');
}
