// The reference for page developers: docs/resources/. A page for each family, one with the contents, one with all paths
// and one on errors.
import fs from 'node:fs';
import { requestName } from './json.js';
import { declarationText, definitionOf, namesIn, prelude, toText } from './types.js';

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
const table = (head, rows) => [`| ${head.join(' | ')} |`, `|${head.map(() => '---|').join('')}`, ...rows.map((row) => `| ${row.join(' | ')} |`.replaceAll('|  |', '| |'))].join('\n');
const code = (text) => `\`${text.replaceAll('|', '\\|')}\``;
const list = (parts, last = 'and') => (parts.length > 1 ? `${parts.slice(0, -1).join(', ')} ${last} ${parts.at(-1)}` : parts.join(''));
const page = (...parts) => parts.filter(Boolean).join('\n\n') + '\n';

function firstPage({ families, resources }) {
    const contents = Object.entries(families).map(([family, { title, topics }]) => `**[${title}](${family}.md)**\n\n${topicList(family, topics, resources)}`);
    const text = fs.readFileSync('catalogue/reference.md', 'utf8').trimEnd();
    return page(made('catalogue/reference.md'), text.replace('<!-- contents -->', contents.join('\n\n')));
}

/** The resources of a family in the order of its topics. */
function ofTopic(family, topic, resources) {
    return resources.filter((resource) => resource.family === family && resource.topic === topic);
}

function topicList(family, topics, resources, file = `${family}.md`) {
    const lines = topics.map((topic) => {
        const links = ofTopic(family, topic, resources).map(({ name }) => `[${name}](${file}#${name.toLowerCase()})`);
        return `- ${topic}: ${links.join(', ')}`;
    });
    return lines.join('\n');
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
        remarks(rows),
        `\`\`\`pell\n${examples.map(({ request, answer }) => `${request}\n${answer}`).join('\n')}\n\`\`\``,
    ).trimEnd();
}

/** What is asked, what is answered, and the reasons of failures: a line for each row. */
export function requestTable(rows, shared) {
    return table(['request', 'answer', 'reason'], rows.map(({ method, row }) => tableRow(method, row, shared)));
}

function tableRow(method, row, shared) {
    const verb = method.toUpperCase();
    if (row.refused) return [`${verb}${row.invalid ? `, any other \`${row.invalid}\`` : row.when ? `, ${row.when}` : ', anything else'}`, `400 "${row.refused}"`, ''];
    if (row.fails) return [`${verb}, ${row.when}`, `500 InternalError "${row.fails}"`, ''];
    const answer = row.answer ? typeText(row.answer, shared) + (row.answer.comment ? `: ${row.answer.comment}` : '') : '';
    return [request(verb, row, shared), answer, row.reasons.map((reason) => reason || '(none)').join(' ')];
}

/** Such as "GET `range`" or "PUT `List<number, 9>` with the query `index: UInt32`". */
function request(verb, { query, body }, shared) {
    const member = ({ name, type }) => code(type ? `${name}: ${shortText(type, shared)}` : name);
    const needed = query.filter(({ isOptional }) => !isOptional).map(member);
    const optional = query.filter(({ isOptional }) => isOptional).map(member);
    const also = optional.length ? `, also with ${body ? 'the query ' : ''}${list(optional)}` : '';
    if (verb === 'GET') return `GET${needed.length ? ` ${needed.join(' with ')}` : ''}${also}`;
    const comment = body?.comment ? `: ${body.comment}` : '';
    return `${verb}${body ? ` ${typeText(body, shared)}${comment}` : ''}${needed.length ? ` with the query ${list(needed)}` : ''}${also}`;
}

const typeText = (type, shared) => code(shortText(type, shared));

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
    for (const { row } of rows) [row.answer, row.body, ...row.query.map(({ type }) => type)].filter(Boolean).forEach(add);
    const declarations = [...names].filter(([, home]) => home !== prelude).map(([name, home]) => declarationText(home.declarations.get(name)));
    return declarations.length && `\`\`\`ts\n${declarations.join('\n')}\n\`\`\``;
}

/** What rows say about leniency, cost, and about older libraries and monitors. */
function remarks(rows) {
    const served = rows.filter(({ row }) => !row.refused && !row.fails);
    const names = (some) => (some.length === served.length ? '' : `: ${[...new Set(some.map(({ method, row }) => requestName(method, row)))].map((name) => `\`${name}\``).join(', ')}`);
    const having = (test) => served.filter(({ row }) => test(row));
    const lines = [];
    for (const text of new Set(served.map(({ row }) => row.lenient)))
        if (text && text !== 'types') lines.push(text === true ? 'Members of another kind count as left out.' : text);
    if (served.some(({ row }) => row.lenient === 'types')) lines.push('How the `Lenient` members of a body are read is told on [the first page](README.md#kinds-of-values).');
    for (const { method, row } of having(({ calls }) => calls)) lines.push(`\`${requestName(method, row)}\` takes ${row.calls} calls of the companion libraries, on the simulated monitor.`);
    for (const { method, row } of having(({ events }) => events.length)) lines.push(`While a ${method.toUpperCase()} runs, the page receives ${list(row.events.map((event) => `[\`${event}\`](README.md#events)`))}.`);
    for (const library of ['newer libdmc', 'libfwupdate']) {
        const some = having(({ needs }) => needs === library);
        if (some.length) lines.push(`Needs ${library === 'libfwupdate' ? library : `a ${library}`}${names(some)}.`);
    }
    for (const product of new Set(served.flatMap(({ row }) => row.unsupportedBy))) lines.push(`Unsupported by \`${product}\`${names(having(({ unsupportedBy }) => unsupportedBy.includes(product)))}.`);
    return lines.map((line) => `- ${line}`).join('\n');
}

function pathsPage({ resources }) {
    const state = (served, lacks) => {
        const lacking = served.filter(({ row }) => lacks(row));
        if (!lacking.length) return 'yes';
        return lacking.length === served.length ? 'no' : `without ${[...new Set(lacking.map(({ method, row }) => `\`${requestName(method, row)}\``))].join(', ')}`;
    };
    const rows = resources.flatMap((resource) => {
        const served = Object.entries(resource.methods).flatMap(([method, list]) => list.filter((row) => !row.refused && !row.fails).map((row) => ({ method, row })));
        const columns = [Object.keys(resource.methods).map((method) => method.toUpperCase()).join(', '), state(served, ({ needs }) => needs), state(served, ({ unsupportedBy }) => unsupportedBy.length)];
        const link = `(${resource.family}.md#${resource.name.toLowerCase()})`;
        return [resource.name, ...resource.aliases].map((name) => [`\`${resource.path}\``, `[${name}]${link}`, ...columns]);
    });
    const byPath = (a, b) => (a[0] < b[0] ? -1 : 1);
    return page(
        made('catalogue/ and src/exports/ResourceTable.inc'),
        '# All paths',
        'Which export serves a path, with which methods; whether it works with an older libdmc and without libfwupdate; and whether an older monitor, the `TB240` of the simulator, supports it.',
        table(['path', 'export', 'methods', 'older libraries', 'older monitor'], rows.sort(byPath)),
    );
}

function errorsPage({ results }) {
    const { advice, errors, codes, notConnected } = results;
    const hexadecimal = (value) => `0x${value.toString(16).toUpperCase().padStart(8, '0')}`;
    const oneLine = (text) => text.trim().replaceAll('\n', ' ');
    return page(
        made('catalogue/results.yaml'),
        '# Errors',
        'The answer of a request that fails has `"error"`, an object with `"name"` and `"message"`; a DmError has `"code"` and, with few exceptions, `"reason"` beside them. The texts stay as they are: a page may compare them.',
        table(['advice', 'what a page can do'], Object.entries(advice).map(([name, text]) => [name, oneLine(text)])),
        '## Kinds of errors',
        table(['status', '`name`', 'when', 'advice'], errors.map((error) => [error.status, error.name, oneLine(error.when), error.advice ?? 'as the code says'])),
        '## Codes of a DmError',
        `A \`code\` is written as an unsigned number. A monitor that is not connected is a DmError with the code ${notConnected.code} and the reason "${notConnected.reason}"; its advice is ${notConnected.advice}. All codes from ${hexadecimal(0x80000000)} that are not told here are "Undefined error."; lower ones are no failures, and neither is 0x80000006.`,
        table(['`code`', '', '`message`', 'advice'], Object.entries(codes).map(([value, { message, advice }]) => [value, hexadecimal(Number(value)), message, advice])),
    );
}
