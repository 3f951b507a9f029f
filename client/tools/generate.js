// Makes the parts of the client that follow from the catalogue: methods.d.ts, with an overload of each method for each
// resource, as editors show the documentation of the overload that is called; and paths.js.
import fs from 'node:fs';
import ts from 'typescript';
import { readTable } from '../../catalogue/tools/source.js';

const directory = 'build/client-made';
fs.mkdirSync(directory, { recursive: true });
const source = ts.createSourceFile(
    'resources.d.ts',
    fs.readFileSync('build/catalogue/resources.d.ts', 'utf8'),
    ts.ScriptTarget.Latest,
    true,
);

const documentation = (node) => ts.getJSDocCommentsAndTags(node).map(({ comment }) => comment)[0] ?? '';
const membersOf = (node) => Object.fromEntries(node.members.map((member) => [member.name.getText(), member]));
const interfaceNamed = (name) =>
    source.statements.find((one) => ts.isInterfaceDeclaration(one) && one.name.text === name);

const resources = interfaceNamed('Resources').members.map((resource) => {
    const { of, get, put, post, delete: remove } = membersOf(resource.type);
    const methods = Object.entries({ get, put, post, delete: remove })
        .filter(([, member]) => member)
        .map(([method, member]) => [method, member.type.elements.map((row) => membersOf(row))]);
    return {
        name: resource.name.getText(),
        about: documentation(resource),
        of: of.type.literal.text,
        methods: Object.fromEntries(methods),
    };
});

/** What the catalogue says about a resource, and the rows of a method as a table, as documentation. */
function comment(about, rows) {
    const lines = [about];
    const cells = rows.map(({ query, body, answer }) => [
        query.type.members.map((one) => code(one.getText().replace(/[;,]$/, '').replace(': Flag', ''))).join(', '),
        body ? code(body.type.getText()) : '',
        [answer.type.getText() === 'null' ? '' : code(answer.type.getText()), documentation(answer)]
            .filter(Boolean)
            .join(': '),
    ]);
    const columns = [0, 1, 2].filter((column) => cells.some((row) => row[column]));
    if (columns.length) {
        const line = (row) => `| ${columns.map((column) => row[column]).join(' | ')} |`;
        lines.push('', ...[['query', 'body', 'answer'], ['---', '---', '---'], ...cells].map(line));
    }
    return `    /**\n${lines.map((line) => `     * ${line}`.trimEnd() + '\n').join('')}     */\n`;
}

const code = (text) => `\`${text.replace(/\|/g, '\\|')}\``;
const hasOnlyOptionals = ({ query }) => query.type.members.every(({ questionToken }) => questionToken);

/**
 * The overloads of a method: one for each resource, and one for a name that may be one of several. Before them stands one
 * that no call fits, as its last argument is not to be given. TypeScript takes the first overload for a call that fits
 * none, as one that is still being written, and so completes the query and the body of the resource that is named. The
 * first of those that have a literal type counts; that is why the type of this argument is one.
 */
function overloads(kind, of) {
    const method = kind === 'tryGet' ? 'get' : kind;
    const hasBody = method !== 'get';
    const options = method === 'put' ? 'PutOptions' : 'CallOptions';
    const signature = (names, R, needs) => {
        const answer = `AnswerOf<${R}, '${method}', Q>`;
        const result = { tryGet: `${answer} | undefined`, put: "'done' | 'superseded'" }[kind] ?? answer;
        const parameters = [
            `resource: ${R}`,
            hasBody && `body${needs.body ? '' : '?'}: BodyOf<${R}, '${method}', Q>`,
            `query${needs.query ? '' : '?'}: Only<${R}, '${method}', Q>`,
            `options?: ${options}`,
        ].filter(Boolean);
        const constraint = `${needs.query ? 'RequiredQuery' : 'Query'}<${R}, '${method}'>`;
        const variables = `${R === 'R' ? `R extends ${names}, ` : ''}const Q extends ${constraint}${needs.query ? '' : ' = {}'}`;
        const all = needs.unfinished
            ? [...parameters.map((one) => one.replace('?:', ':')), "unfinished: 'not to be given'"]
            : parameters;
        return `    ${kind}<${variables}>(${all.join(', ')}): Promise<${result}>;\n`;
    };
    const union = (several) => several.map(({ name }) => `'${name}'`).join(' | ');

    const serving = resources.filter((resource) => resource.of === of && resource.methods[method]);
    const simple = serving.filter(({ methods }) => methods[method].some(hasOnlyOptionals));
    return [
        serving.length ? signature(union(serving), 'R', { unfinished: true }) : '',
        ...serving.map(({ name, about, methods }) => {
            const rows = methods[method];
            const query = !rows.some(hasOnlyOptionals);
            const needs = { query, body: query || rows.every(({ body }) => body) };
            return comment(about, rows) + signature(`'${name}'`, `'${name}'`, needs);
        }),
        simple.length ? signature(union(simple), 'R', { body: true }) : '',
    ].join('');
}

const kinds = ['get', 'tryGet', 'put', 'post', 'delete'];
const methods = { MonitorMethods: 'monitor', FileMethods: 'file', ApplicationMethods: 'application' };
const events = interfaceNamed('Events').members;
const eventMethods = events.map((event) => {
    const name = event.name.getText();
    return `    /** ${documentation(event)} The function that is returned removes the listener. */\n    on(event: '${name}', listener: (value: Events['${name}']) => void): () => void;\n`;
});
fs.writeFileSync(
    `${directory}/methods.d.ts`,
    [
        "import type { CallOptions, PutOptions } from './call.js';\n",
        "import type { AnswerOf, BodyOf, Only, Query, RequiredQuery } from './requests.js';\n",
        "import type { Events } from './resources.js';\n",
        ...Object.entries(methods).map(
            ([name, of]) => `\nexport interface ${name} {\n${kinds.map((kind) => overloads(kind, of)).join('')}}\n`,
        ),
        `\nexport interface EventMethods {\n${eventMethods.join('')}}\n`,
    ].join(''),
);

// Most paths are the name of the resource, perhaps with a slash behind its first words: FineContrastName stands at
// FineContrast/Name. So paths.js has a pattern of these words for each depth of slashes, and the exceptions.
const catalogue = JSON.parse(fs.readFileSync('catalogue/catalogue.json', 'utf8'));
const places = [...readTable().values()]
    .filter(({ kind }) => kind !== 'ALIAS')
    .map(({ name, path }) => [name, path || catalogue.resources[name].path.replace('/{id}', '')]);
const rules = [];
for (const [name, path] of places)
    path.split('/')
        .slice(0, -1)
        .forEach((_, depth, parts) => {
            if (path.replaceAll('/', '') !== name) return;
            (rules[depth] ??= new Set()).add(parts.slice(0, depth + 1).join('\\/'));
        });
const patterns = rules.map((starts) => `/^(?:${[...starts].join('|')})(?=.)/`);
const byRules = (name) =>
    patterns.reduce((path, pattern) => path.replace(new RegExp(pattern.slice(1, -1)), '$&/'), name);
const exceptions = places.filter(([name, path]) => byRules(name) !== path);
fs.writeFileSync(
    `${directory}/paths.js`,
    `var exceptions = ${JSON.stringify(Object.fromEntries(exceptions))};
export function pathOf(name) {
    return exceptions[name] || name${patterns.map((pattern) => `.replace(${pattern}, '$&/')`).join('')};
}
`,
);
fs.writeFileSync(`${directory}/paths.d.ts`, 'export declare function pathOf(name: string): string;\n');
