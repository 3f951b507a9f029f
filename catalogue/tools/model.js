// The catalogue as a whole: what the sources say, checked against the table of exports, the shared types and itself.
import fs from 'node:fs';
import { checkExamples, checkRows } from './checks.js';
import { parseExamples } from './examples.js';
import { isServed } from './match.js';
import { attemptEach, Mistake, readResources, readTable, Source } from './source.js';
import { hasMemberComments, namesIn, parseMembers, parseType, prelude, Scope, TypeMistake } from './types.js';

export const methods = ['get', 'put', 'post', 'delete'];

/**
 * @typedef {import('./types.js').Type} Type
 * @typedef {import('./types.js').Member} Member
 *
 * @typedef {object} Row a request that is served, refused or fails; the members of its source, with the types parsed
 * @property {Member[]} query @property {Type} [body] @property {Type} [answer]
 * @property {string[]} reasons @property {string} [needs] @property {string[]} unsupportedBy
 * @property {string[]} events @property {number} [calls] @property {string | true} [lenient]
 * @property {string} [refused] @property {string} [fails] @property {string} [when] @property {string} [invalid]
 *
 * @typedef {object} Resource
 * @property {string} name @property {string} family @property {string} topic @property {string} about
 * @property {string} path @property {'monitor' | 'file' | 'application'} of what it is one of
 * @property {string[]} aliases its other names
 * @property {Scope} scope its own types, those of types.ts and the prelude
 * @property {Object<string, Row[]>} methods by "get", "put", "post", "delete"
 * @property {string} [putBack] @property {string} notes @property {import('./examples.js').Example[]} examples
 */

/** @typedef {{families: object, scope: Scope, events: object[], results: object, resources: Resource[]}} Catalogue */

/** @returns {Catalogue} */
export function readCatalogue() {
    const scope = inFile('catalogue/types.ts', () => new Scope(fs.readFileSync('catalogue/types.ts', 'utf8'), prelude));
    const families = new Source('catalogue/families.yaml').value;
    const results = new Source('catalogue/results.yaml').value;
    const events = readEvents(scope);
    const products = Object.keys(JSON.parse(fs.readFileSync('simulator/core/scenario.json', 'utf8')).products);
    const table = readTable();

    const sources = readResources();
    const shared = { scope, families, events, products, table };
    const resources = attemptEach(sources, (source) => readResource(source, shared));
    const missing = [...table.values()].filter(
        ({ kind, name }) => kind === 'RESOURCE' && !resources.some((one) => one.name === name),
    );
    if (missing.length)
        throw new Mistake(`catalogue: there is no file for ${missing.map(({ name }) => name).join(', ')}`);

    attemptEach(sources, (source) => checkExamples(source, resources, results));
    return { families, scope, events, results, resources };
}

function readEvents(scope) {
    const source = new Source('catalogue/events.yaml');
    return Object.entries(source.value).map(([name, { about, value }]) => ({
        name,
        about,
        value: located(source, [name, 'value'], () => parseType(value, scope)),
    }));
}

/** @returns {Resource} */
function readResource(source, { scope: sharedScope, families, events, products, table }) {
    const { name, value, file } = source;
    const family = file.split('/')[1];
    const row = table.get(name);
    if (row?.kind !== 'RESOURCE') source.fail([], `ResourceTable.inc has no RESOURCE row named ${name}`);
    if (!fs.existsSync(`src/resources/${family}/${name}.cpp`))
        source.fail([], `there is no src/resources/${family}/${name}.cpp`);
    const topics = families[family]?.topics ?? [];
    if (!topics.includes(value.topic))
        source.fail(['topic'], `families.yaml has no such topic in ${family}; it has ${topics.join(', ')}`);

    const written = Object.keys(value).filter((key) => methods.includes(key));
    if (String([...written].sort()) !== String([...row.methods].sort()))
        source.fail([written[0]], `it serves ${written.join(', ')}; ResourceTable.inc says ${row.methods.join(', ')}`);
    if (row.path && value.path) source.fail(['path'], 'ResourceTable.inc has its path');
    if (!row.path && !value.path) source.fail([], 'it has no path, neither here nor in ResourceTable.inc');

    const scope = located(source, ['types'], () => new Scope(value.types ?? '', sharedScope));
    const resource = {
        name,
        family,
        topic: value.topic,
        about: value.about,
        path: value.path ?? `Monitors/{product}/{serial}/${row.path}`,
        of: row.path ? 'monitor' : value.path.includes('{id}') ? 'file' : 'application',
        aliases: [...table.values()].filter((one) => one.kind === 'ALIAS' && one.entry === name).map((one) => one.name),
        scope,
        methods: Object.fromEntries(
            written.map((method) => [method, value[method].map((_, at) => readRow(source, [method, at], scope))]),
        ),
        putBack: value.putBack,
        notes: value.notes?.trimEnd() ?? '',
        examples: parseExamples(value.examples, (offset, message) => source.fail(['examples'], message, offset)),
    };
    checkRows(source, resource, { events, products });
    return resource;
}

/** @returns {Row} */
function readRow(source, keys, scope) {
    const row = source.document.getIn(keys).toJS(source.document);
    const resource = source.value;
    const parse = (member, how) => row[member] && located(source, [...keys, member], () => how(row[member], scope));
    const parseShown = (member) => {
        const type = parse(member, parseType);
        if (type && hasMemberComments(type)) source.fail([...keys, member], 'members with comments belong in "types"');
        return type;
    };
    if (!isServed(row)) return { ...row, query: [], reasons: [], events: [], unsupportedBy: [] };
    if (keys[0] === 'get' && !row.answer) source.fail(keys, 'a GET has an answer');
    const body = parseShown('body');
    const query = parse('query', parseMembers) ?? [];
    const given = [body, ...query.map(({ type }) => type)].filter(Boolean);
    const usesLenientTypes = given.some((type) => [...namesIn(type)].some((name) => name.startsWith('Lenient')));
    return {
        query,
        body,
        answer: parseShown('answer'),
        reasons: row.reason === undefined ? [] : [row.reason].flat(),
        needs: row.needs ?? resource.needs,
        unsupportedBy: row.unsupportedBy ?? resource.unsupportedBy ?? [],
        calls: row.calls,
        events: row.events ?? [],
        lenient: row.lenient ?? (usesLenientTypes ? 'types' : undefined),
    };
}

/** Tells a mistake in a type with its place in the source. */
function located(source, keys, work) {
    try {
        return work();
    } catch (error) {
        if (error instanceof TypeMistake) source.fail(keys, error.message, error.line);
        throw error;
    }
}

function inFile(file, work) {
    try {
        return work();
    } catch (error) {
        if (error instanceof TypeMistake) throw new Mistake(`${file}:${error.line + 1}: ${error.message}`);
        throw error;
    }
}
