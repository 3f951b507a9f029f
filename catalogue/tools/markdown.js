// The reference for page developers: docs/resources/. A page for each family, one with the contents, one with all paths
// and one on errors.
import fs from 'node:fs';
import { requestName } from './json.js';
import { isServed } from './match.js';
import { declarationText, definitionOf, documentationOf, namesIn, parametersText, prelude, toText } from './types.js';

/** @param {import('./model.js').Catalogue} catalogue @returns {[string, string][]} names of files, and their texts */
export function referencePages(catalogue) {
    const families = Object.entries(catalogue.families);
    return [
        ['README.md', firstPage(catalogue)],
        ...families.map(([family, one]) => [`${family}.md`, familyPage({ family, ...one }, catalogue)]),
        ['paths.md', pathsPage(catalogue)],
        ['errors.md', errorsPage(catalogue)],
    ];
}

const made = (what) => `<!-- Made by scripts/catalogue from ${what}. What is changed here is lost. -->`;
const table = (head, rows) =>
    [head, head.map(() => '---'), ...rows].map((cells) => `| ${cells.join(' | ')} |`.replace(/ {2,}/g, ' ')).join('\n');
const code = (text) => `\`${text.replaceAll('|', '\\|')}\``;
const list = (parts) => (parts.length > 1 ? `${parts.slice(0, -1).join(', ')} and ${parts.at(-1)}` : parts.join(''));
const page = (...parts) => parts.filter(Boolean).join('\n\n') + '\n';

function firstPage({ families, resources, events }) {
    const contents = Object.entries(families).map(
        ([family, { title, topics }]) => `**[${title}](${family}.md)**\n\n${topicList(family, topics, resources)}`,
    );
    const kinds = [...prelude.declarations].map(([name, declaration]) => [
        code(name + parametersText(declaration)),
        documentationOf(declaration),
    ]);
    const eventTexts = events.map(
        ({ name, about, value }) => `\`${name}\`: ${about}\n\n\`\`\`ts\n${value.node.getText()}\n\`\`\``,
    );
    const parts = {
        contents: contents.join('\n\n'),
        kinds: table(['kind', 'is'], kinds),
        events: eventTexts.join('\n\n'),
    };
    const text = fs.readFileSync('catalogue/reference.md', 'utf8').trimEnd();
    return page(
        made('catalogue/reference.md'),
        text.replace(/<!-- (\w+) -->/g, (_, name) => parts[name]),
    );
}

/** The resources of a family in the order of its topics. */
function ofTopic(family, topic, resources) {
    return resources.filter((resource) => resource.family === family && resource.topic === topic);
}

function topicList(family, topics, resources, file = `${family}.md`) {
    const lines = topics.map((topic) => {
        const links = ofTopic(family, topic, resources).map(({ name }) => `[${name}](${file}#${name.toLowerCase()})`);
        return links.length ? `- ${topic}: ${links.join(', ')}` : '';
    });
    return lines.filter(Boolean).join('\n');
}

function familyPage({ family, title, topics, about }, { resources, scope }) {
    return page(
        made(`catalogue/${family}/ and catalogue/families.yaml`),
        `# ${title}`,
        `How to read the sections is told on [the first page](README.md), how requests fail on [the page on errors](errors.md).`,
        topicList(family, topics, resources, ''),
        about?.trimEnd(),
        ...topics.flatMap((topic) => ofTopic(family, topic, resources)).map((resource) => section(resource, scope)),
    );
}

/** @param {import('./model.js').Resource} resource */
function section(resource, shared) {
    const { name, path, aliases, about, methods, notes, examples } = resource;
    const rows = Object.entries(methods).flatMap(([method, list]) => list.map((row) => ({ method, row })));
    const verbs = Object.keys(methods).map((method) => method.toUpperCase());
    const other = aliases.length ? `\n\nThe same as ${list(aliases.map(code))}.` : '';
    return page(
        `## ${name}`,
        `\`${path}\` · ${verbs.join(', ')}`,
        about + other,
        requestTable(rows, shared),
        typeBlock(rows, shared),
        notes,
        remarks(resource),
        `\`\`\`pell\n${examples.map(({ request, answer }) => `${request}\n${answer}`).join('\n')}\n\`\`\``,
    ).trimEnd();
}

/** What is asked, what is answered, and the reasons of failures: a line for each row. */
export function requestTable(rows, shared) {
    return table(
        ['request', 'answer', 'reason'],
        rows.map(({ method, row }) => tableRow(method, row, shared)),
    );
}

function tableRow(method, row, shared) {
    const verb = method.toUpperCase();
    const when = row.invalid ? `any other \`${row.invalid}\`` : (row.when ?? 'anything else');
    if (row.refused) return [`${verb}, ${when}`, `400 "${row.refused}"`, ''];
    if (row.fails) return [`${verb}, ${when}`, `500 InternalError "${row.fails}"`, ''];
    const reasons = row.reasons.map((reason) => reason || '(no reason)');
    return [servedRequest(verb, row, shared), commented(row.answer, shared), reasons.join(' ')];
}

/** Such as "GET `range`" or "PUT `List<number, 9>` with the query `index: UInt32`". */
function servedRequest(verb, { query, body }, shared) {
    const member = ({ name, type }) => code(type ? `${name}: ${shortText(type, shared)}` : name);
    const needed = query.filter(({ isOptional }) => !isOptional).map(member);
    const optional = query.filter(({ isOptional }) => isOptional).map(member);
    const isGet = verb === 'GET';
    const parts = [
        `${verb} ${commented(body, shared)}`.trim(),
        needed.length && (isGet ? needed.join(' with ') : `with the query ${list(needed)}`),
    ];
    const also = optional.length ? `, also with ${isGet ? '' : 'the query '}${list(optional)}` : '';
    return parts.filter(Boolean).join(' ') + also;
}

/** A type with what is said of it. */
function commented(type, shared) {
    if (!type) return '';
    return code(shortText(type, shared)) + (type.comment ? `: ${type.comment}` : '');
}

/** A type in one line; the short ones of types.ts are written out. */
function shortText(type, shared) {
    const separator = ', ';
    const definition = definitionOf(type);
    if (definition?.scope === shared) {
        const text = toText(definition, { separator });
        if (text.length <= 60) return text;
    }
    return toText(type, { separator });
}

/** The declarations of the names that the table uses. */
function typeBlock(rows, shared) {
    const names = new Map();
    const add = (type) => {
        const definition = definitionOf(type);
        const isWrittenOut = definition?.scope === shared && shortText(type, shared) !== toText(type);
        for (const name of namesIn(isWrittenOut ? definition : type)) names.set(name, type.scope.find(name));
    };
    for (const { row } of rows)
        [row.answer, row.body, ...row.query.map(({ type }) => type)].filter(Boolean).forEach(add);
    const declarations = [...names]
        .filter(([, home]) => home !== prelude)
        .map(([name, home]) => declarationText(home.declarations.get(name)));
    return declarations.length && `\`\`\`ts\n${declarations.join('\n')}\n\`\`\``;
}

/** What rows say about leniency, events and cost, and about older libraries and monitors. */
function remarks({ methods, putBack }) {
    const served = servedRows(methods);
    const having = (test) => served.filter(({ row }) => test(row));
    const names = (some) => list([...new Set(some.map(({ method, row }) => `\`${requestName(method, row)}\``))]);
    const whichOf = (some) => (some.length === served.length ? '' : `: ${names(some)}`);
    const lines = [];
    if (methods.get && !having(({ query }) => query.some(({ name }) => name === 'supports')).length)
        lines.push('There is no `supports`.');
    if (putBack) lines.push(`What a GET answers cannot be put back. ${putBack}`);
    for (const lenient of new Set(served.map(({ row }) => row.lenient).filter(Boolean)))
        lines.push(leniencyTexts[lenient] ?? lenient);
    for (const { method, row } of having(({ events }) => events.length)) {
        const links = row.events.map((event) => `[\`${event}\`](README.md#events)`);
        lines.push(`While a ${method.toUpperCase()} runs, the page receives ${list(links)}.`);
    }
    for (const one of having(({ calls }) => calls))
        lines.push(`${names([one])} takes ${one.row.calls} calls of the companion libraries.`);
    for (const [needs, text] of Object.entries({ 'newer libdmc': 'a newer libdmc', libfwupdate: 'libfwupdate' })) {
        const some = having((row) => row.needs === needs);
        if (some.length) lines.push(`Needs ${text}${whichOf(some)}.`);
    }
    for (const product of new Set(served.flatMap(({ row }) => row.unsupportedBy)))
        lines.push(`Unsupported by \`${product}\`${whichOf(having((row) => row.unsupportedBy.includes(product)))}.`);
    return lines.map((line) => `- ${line}`).join('\n');
}

const leniencyTexts = {
    true: 'Members of another kind count as left out.',
    types: 'What is taken for `Lenient` types is told on [the first page](README.md#kinds-of-values).',
};

function pathsPage({ resources }) {
    const state = (served, lacks) => {
        const lacking = served.filter(({ row }) => lacks(row));
        if (lacking.length === served.length) return 'no';
        const names = new Set(lacking.map(({ method, row }) => `\`${requestName(method, row)}\``));
        return lacking.length ? `without ${[...names].join(', ')}` : 'yes';
    };
    const lines = resources.flatMap(({ name, aliases, of, path, family, methods }) => {
        const served = servedRows(methods);
        const cells = [
            Object.keys(methods).join(', ').toUpperCase(),
            state(served, ({ needs }) => needs),
            state(served, ({ unsupportedBy }) => unsupportedBy.length),
        ];
        const shortPath = path.replace('Monitors/{product}/{serial}/', '');
        const link = `(${family}.md#${name.toLowerCase()})`;
        return [name, ...aliases].map((one) => ({ of, path: shortPath, cells: [`[${one}]${link}`, ...cells] }));
    });
    const head = ['path', 'export', 'methods', 'with older libraries', 'by an older monitor'];
    const pathTable = (some) => {
        const sorted = some.sort((a, b) => (a.path < b.path ? -1 : 1));
        return table(
            head,
            sorted.map(({ path, cells }) => [`\`${path}\``, ...cells]),
        );
    };
    return page(
        made('catalogue/ and src/exports/ResourceTable.inc'),
        '# All paths',
        'Which export serves a path, with which methods; whether it is served with an older libdmc and without libfwupdate; and whether an older monitor, the `TB240` of the simulator, supports it.',
        pathTable(lines.filter(({ of }) => of !== 'monitor')),
        '## Of a monitor',
        'These paths stand behind `Monitors/{product}/{serial}/`.',
        pathTable(lines.filter(({ of }) => of === 'monitor')),
    );
}

/** The rows that are served, with their methods. */
function servedRows(methods) {
    return Object.entries(methods).flatMap(([method, rows]) => rows.filter(isServed).map((row) => ({ method, row })));
}

function errorsPage({ results }) {
    const { advice, errors, codes, notConnected } = results;
    const hexadecimal = (value) => `0x${value.toString(16).toUpperCase().padStart(8, '0')}`;
    const oneLine = (text) => text.trim().replaceAll('\n', ' ');
    return page(
        made('catalogue/results.yaml'),
        '# Errors',
        'The answer of a request that fails has `"error"`, an object with `"name"` and `"message"`; a DmError has `"code"` and, with few exceptions, `"reason"` beside them. The texts stay as they are: a page may compare them.',
        table(
            ['advice', 'what a page can do'],
            Object.entries(advice).map(([name, text]) => [name, oneLine(text)]),
        ),
        '## Kinds of errors',
        table(
            ['status', '`name`', 'when', 'advice'],
            errors.map((error) => [error.status, error.name, oneLine(error.when), error.advice ?? 'as the code says']),
        ),
        '## Codes of a DmError',
        `A \`code\` is written as an unsigned number. A monitor that is not connected is a DmError with the code ${notConnected.code} and the reason "${notConnected.reason}"; its advice is ${notConnected.advice}. All codes from ${hexadecimal(0x80000000)} that are not told here are "Undefined error."; lower ones are no failures, and neither is 0x80000006.`,
        table(
            ['`code`', '', '`message`', 'advice'],
            Object.entries(codes).map(([value, { message, advice }]) => [
                value,
                hexadecimal(Number(value)),
                message,
                advice,
            ]),
        ),
    );
}
