// resources.d.ts: the resources as TypeScript sees them. Each method is a tuple of its rows, in the order in which they
// are decided; what the catalogue says about a resource or a member is its documentation.
import fs from 'node:fs';
import { isServed } from './match.js';
import { toText } from './types.js';

/** @param {import('./model.js').Catalogue} catalogue */
export function typeDeclarations({ events, resources }) {
    const prelude = fs.readFileSync('catalogue/tools/prelude.ts', 'utf8');
    const shared = fs
        .readFileSync('catalogue/types.ts', 'utf8')
        .replace(/^\/\/.*\n/gm, '')
        .trim();
    return (
        [
            '// Made by scripts/catalogue from catalogue/. What is changed here is lost.',
            prelude.trim(),
            shared,
            resourcesInterface(resources),
            eventsInterface(events),
            ...resources.filter(({ scope }) => scope.declarations.size).map(namespace),
        ].join('\n\n') + '\n'
    );
}

/** @param {import('./model.js').Resource[]} resources */
function resourcesInterface(resources) {
    const lines = resources.flatMap((resource) => [
        `    /** ${resource.about} */`,
        `    ${resource.name}: {`,
        `        of: "${resource.of}";`,
        ...Object.entries(resource.methods).flatMap(([method, rows]) => [
            `        ${method}: [`,
            ...rows.filter(isServed).map((row) => `            ${rowType(row, resource)},`),
            '        ];',
        ]),
        `        reason: ${union(resource, ({ reasons }) => reasons)};`,
        `        refused: ${union(resource, ({ refused }) => refused ?? [])};`,
        '    };',
    ]);
    return [
        '/** The rows of each resource; the first that fits decides. */',
        'export interface Resources {',
        ...lines,
        '}',
    ].join('\n');
}

function rowType({ query, body, answer }, resource) {
    const text = (type) =>
        toText(type, {
            withComments: true,
            rename: (name) => (resource.scope.declarations.has(name) ? `${resource.name}.${name}` : name),
        });
    const members = query.map(
        ({ name, isOptional, type }) => `${name}${isOptional ? '?' : ''}: ${type ? text(type) : 'Flag'}`,
    );
    const comment = answer?.comment ? `\n/** ${answer.comment} */ ` : '';
    const parts = [`query: {${members.join('; ')}}`, `${comment}answer: ${answer ? text(answer) : 'null'}`];
    if (body) parts.splice(1, 0, `body: ${text(body)}`);
    return `{${parts.join('; ')}}`;
}

/** The texts that the rows of a resource tell, as a type. */
function union({ methods }, textsOf) {
    const texts = new Set(Object.values(methods).flat().flatMap(textsOf).filter(Boolean));
    return [...texts].map((text) => JSON.stringify(text)).join(' | ') || 'never';
}

function eventsInterface(events) {
    const lines = events.flatMap(({ name, about, value }) => [
        `    /** ${about} */`,
        `    ${name}: ${toText(value, { withComments: true })};`,
    ]);
    return ['/** The values of the events. */', 'export interface Events {', ...lines, '}'].join('\n');
}

function namespace({ name, scope }) {
    const declarations = documented(scope.source.trimEnd()).replace(/^type /gm, 'export type ');
    return `export namespace ${name} {\n${declarations.replace(/^/gm, '    ')}\n}`;
}

/** Puts the comments behind members in front of them, where editors look for documentation. */
function documented(text) {
    return text.replace(/^( *)(.*?) *\/\/ (.*)$/gm, '$1/** $3 */\n$1$2');
}
