// Makes the documentation as a site that works from the file system: node docs/site/build.js [TARGET]
// The pages are those that docs/index.md links to; its headings and lists are the navigation. A link that leads nowhere
// fails the build, and so does a page that docs/index.md leaves out.
import fs from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { buildSync } from 'esbuild';
import Slugger from 'github-slugger';
import hljs from 'highlight.js';
import { Marked } from 'marked';

const own = path.dirname(fileURLToPath(import.meta.url));
const root = path.join(own, '../..');
const target = process.argv[2] ?? path.join(root, 'build/docs');
const landing = 'docs/index.md';
const problems = [];

const exists = (file) => fs.existsSync(path.join(root, file));
const read = (file) => fs.readFileSync(path.join(root, file), 'utf8');
function write(file, text) {
    fs.mkdirSync(path.dirname(path.join(target, file)), { recursive: true });
    fs.writeFileSync(path.join(target, file), text);
}
const escape = (text) =>
    text.replace(/[&<>"]/g, (one) => ({ '&': '&amp;', '<': '&lt;', '>': '&gt;', '"': '&quot;' })[one]);

/** A name such as SelfQCTarget, which may be broken before its words. */
const breakable = (name) => escape(name).replace(/(?<=[a-z])(?=[A-Z])/g, '<wbr>');

/** docs/lab.md is lab.html, client/README.md is client.html. */
const addressOf = (file) => file.replace(/^docs\//, '').replace(/(?:(?<=.)\/README)?\.md$/, '.html');
/** From the address of one page to that of another file of the site. */
const relative = (from, to) => path.posix.relative(path.posix.dirname(from), to);

// The reference's examples: pairs of lines, a request and its answer.
hljs.registerLanguage('pell', () => ({
    contains: [
        { className: 'keyword', begin: /^(GET|PUT|POST|DELETE)\b/ },
        { className: 'string', begin: /^2\d\d\b/ },
        { className: 'deletion', begin: /^[45]\d\d\b.*$/ },
    ],
}));

class Page {
    constructor(file) {
        this.file = file;
        this.address = addressOf(file);
        this.tokens = new Marked().lexer(read(file).replace(/^<!--.*?-->\n*/s, ''));
        const slugger = new Slugger();
        this.headings = this.tokens.filter(({ type }) => type === 'heading');
        for (const heading of this.headings) {
            heading.plain = plainText(heading.tokens);
            heading.id = slugger.slug(heading.plain);
        }
        this.ids = new Set(this.headings.map(({ id }) => id));
        this.title = this.headings[0]?.plain ?? file;
    }
}

/** The words of tokens, without marks. */
function plainText(tokens) {
    return tokens
        .map((token) => {
            if (token.type === 'table')
                return [token.header, ...token.rows]
                    .map((row) => row.map((cell) => plainText(cell.tokens)).join(' '))
                    .join('\n');
            if (token.type === 'list') return token.items.map((item) => plainText(item.tokens)).join('\n');
            if (token.type === 'br' || token.type === 'space') return ' ';
            return (
                (token.tokens ? plainText(token.tokens) : (token.text ?? '')) + (token.type === 'paragraph' ? '\n' : '')
            );
        })
        .join('')
        .replace(/&(amp|lt|gt|quot|#39);/g, (_, name) => ({ amp: '&', lt: '<', gt: '>', quot: '"', '#39': "'" })[name]);
}

// The navigation: headings with their entries, which may have entries below them.
const front = new Page(landing);
const pages = new Map([[landing, front]]);
function entriesOf(list) {
    return list.items.map((item) => {
        const link = item.tokens.flatMap(({ tokens }) => tokens ?? []).find(({ type }) => type === 'link');
        const file = path.posix.join('docs', link.href);
        if (!exists(file)) throw new Error(`${landing}: there is no ${file}`);
        if (!pages.has(file)) pages.set(file, new Page(file));
        const below = item.tokens.find(({ type }) => type === 'list');
        return { page: pages.get(file), label: plainText(link.tokens), below: below ? entriesOf(below) : [] };
    });
}
const navigation = [];
for (const token of front.tokens) {
    if (token.type === 'heading') navigation.push({ heading: token.plain, entries: [] });
    else if (token.type === 'list') navigation.at(-1).entries.push(...entriesOf(token));
}

const examples = fs.readdirSync(path.join(root, 'examples')).map((name) => `examples/${name}`);
for (const folder of ['.', 'docs', 'docs/resources', 'client', 'catalogue', ...examples])
    for (const name of fs.readdirSync(path.join(root, folder))) {
        const file = path.posix.join(folder, name);
        const isPage = (folder.startsWith('docs') ? /\.md$/ : /^(README|CHANGELOG)\.md$/).test(name);
        if (isPage && !pages.has(file)) problems.push(`${landing} does not link to ${file}`);
    }

// Where a link of a page leads to in the site: an address; null for a file that the site does not have, such as a source,
// which is named and not linked.
const assets = new Set();
function follow(page, href) {
    if (/^[a-z]+:/.test(href)) return href;
    const [name, anchor] = href.split('#');
    const file = name ? path.posix.join(path.posix.dirname(page.file), decodeURI(name)) : page.file;
    const to = pages.get(file);
    if (to) {
        if (anchor && !to.ids.has(anchor)) problems.push(`${page.file}: ${file} has no heading #${anchor}`);
        return relative(page.address, to.address) + (anchor ? `#${anchor}` : '');
    }
    if (!exists(file)) problems.push(`${page.file}: there is no ${file}`);
    else if (/^docs\/[^/]+\.(?!md$)\w+$/.test(file)) {
        assets.add(file);
        return relative(page.address, addressOf(file));
    }
    return null;
}

function render(page) {
    const marked = new Marked({
        renderer: {
            heading({ tokens, depth, id }) {
                const text = this.parser.parseInline(tokens);
                const link = depth > 1 ? ` <a class="anchor" href="#${id}" tabindex="-1" aria-hidden="true">#</a>` : '';
                return `<h${depth} id="${id}">${text}${link}</h${depth}>\n`;
            },
            link({ href, tokens }) {
                const text = this.parser.parseInline(tokens);
                const address = follow(page, href);
                return address === null ? text : `<a href="${escape(address)}">${text}</a>`;
            },
            image({ href, text }) {
                return `<img src="${escape(follow(page, href) ?? '')}" alt="${escape(text)}">`;
            },
            code({ text, lang }) {
                // What is indented and not fenced are commands.
                const language = lang ?? 'bash';
                const code = hljs.getLanguage(language) ? hljs.highlight(text, { language }).value : escape(text);
                return `<pre><code>${code}</code></pre>\n`;
            },
            table({ header, rows }) {
                const row = (cells, tagOf) => {
                    const texts = cells.map((cell) => [tagOf(cell), this.parser.parseInline(cell.tokens)]);
                    return `<tr>${texts.map(([tag, text]) => `<${tag}>${text}</${tag}>`).join('')}</tr>\n`;
                };
                const head = row(header, ({ text }) => (text ? 'th' : 'td')); // an empty heading is none
                const body = rows.map((cells) => row(cells, () => 'td')).join('');
                return `<div class="table"><table><thead>${head}</thead><tbody>${body}</tbody></table></div>\n`;
            },
        },
    });
    return marked.parser(page.tokens);
}

const inSections = (html) => html.replace(/<h2[^]*?(?=<h2|$)/g, '<section>$&</section>\n');

const version = /project\(libpell VERSION ([\d.]+)/.exec(read('CMakeLists.txt'))[1];
const order = navigation.flatMap(({ entries }) => entries.flatMap((entry) => [entry, ...entry.below]));

function layout(page) {
    const to = (address) => escape(relative(page.address, address));
    const current = (one) => (one === page ? ' aria-current="page"' : '');
    const list = (entries) =>
        `<ul>${entries
            .map(
                (entry) =>
                    `<li><a href="${to(entry.page.address)}"${current(entry.page)}>${escape(entry.label)}</a>` +
                    `${entry.below.length ? list(entry.below) : ''}</li>`,
            )
            .join('\n')}</ul>`;
    const groups = navigation
        .filter(({ entries }) => entries.length)
        .map(({ heading, entries }) => `<h2>${escape(heading)}</h2>\n${list(entries)}`);
    const contents = page.headings
        .filter(({ depth }) => depth === 2 || depth === 3)
        .map(({ id, plain, depth }) => `<li class="depth${depth}"><a href="#${id}">${breakable(plain)}</a></li>`);
    const at = order.findIndex((entry) => entry.page === page);
    const neighbour = (entry, rel, word) =>
        entry ? `<a rel="${rel}" href="${to(entry.page.address)}"><span>${word}</span> ${escape(entry.label)}</a>` : '';
    const title = page === front ? 'libpell' : `${page.title} · libpell`;
    return `<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<meta name="color-scheme" content="light dark">
<title>${escape(title)}</title>
<link rel="icon" href="data:,">
<link rel="stylesheet" href="${to('site.css')}">
<script src="${to('theme.js')}"></script>
<script src="${to('site.js')}" defer data-root="${to('.') || '.'}"></script>
</head>
<body${page === front ? ' class="landing"' : ''}>
<a class="skip" href="#content">Skip to the content</a>
<header>
<button type="button" class="menu" aria-expanded="false" aria-controls="pages">Pages</button>
<a class="brand" href="${to(front.address)}">libpell <span>${version}</span></a>
<div class="search" role="search">
<input type="search" placeholder="Search" aria-label="Search the documentation" autocomplete="off" spellcheck="false"
role="combobox" aria-expanded="false" aria-autocomplete="list" aria-controls="results">
<kbd aria-hidden="true">/</kbd>
<div class="found" hidden>
<p role="status"></p>
<div id="results" role="listbox" aria-label="Results"></div>
</div>
</div>
<button type="button" class="theme">Theme</button>
</header>
<div class="columns">
<nav id="pages" aria-label="Pages">
${groups.join('\n')}
</nav>
<main id="content" tabindex="-1">
${
    contents.length > 1 && page !== front
        ? `<details class="contents"><summary>On this page</summary><ul>\n${contents.join('\n')}\n</ul></details>`
        : ''
}
<article>
${page === front ? inSections(render(page)) : render(page)}</article>
<footer>
<nav class="neighbours" aria-label="Next and previous page">
${at > 0 ? neighbour(order[at - 1], 'prev', 'Previous') : ''}${neighbour(order[at + 1], 'next', 'Next')}
</nav>
<p>libpell ${version}. This page is made from <code>${page.file}</code>.</p>
</footer>
</main>
</div>
</body>
</html>
`;
}

// What the search looks through: each part of a page from one heading to the next.
function sectionsOf(page) {
    const sections = [];
    for (const token of page.tokens) {
        if (token.type === 'heading')
            sections.push({ address: `${page.address}#${token.id}`, heading: token.plain, page: page.title, text: [] });
        else sections.at(-1)?.text.push(plainText([token]));
    }
    for (const section of sections) section.text = section.text.join(' ').replace(/\s+/g, ' ').trim();
    return sections;
}

fs.rmSync(target, { recursive: true, force: true });
for (const page of pages.values()) write(page.address, layout(page));
for (const file of assets) write(addressOf(file), fs.readFileSync(path.join(root, file)));
const sections = [...pages.values()].filter((page) => page !== front).flatMap(sectionsOf);
write('sections.js', `globalThis.sections = ${JSON.stringify(sections)};\n`);
for (const name of ['site.css', 'theme.js']) write(name, fs.readFileSync(path.join(own, name)));
buildSync({
    entryPoints: [path.join(own, 'site.js')],
    bundle: true,
    minify: true,
    format: 'iife',
    target: 'es2020',
    legalComments: 'none',
    outfile: path.join(target, 'site.js'),
});

if (problems.length) {
    console.error(problems.join('\n'));
    process.exitCode = 1;
}
