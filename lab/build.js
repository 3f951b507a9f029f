// Builds the lab in build/lab: one page, its script with the catalogue and the client inside, and the reference as pages.
import fs from 'node:fs';
import path from 'node:path';
import { build } from 'esbuild';
import { marked } from 'marked';
import { parse } from 'yaml';

const target = 'build/lab';
fs.rmSync(target, { recursive: true, force: true });
fs.mkdirSync(`${target}/reference`, { recursive: true });

const made = (name, value) => fs.writeFileSync(`build/lab-made/${name}.json`, JSON.stringify(value));
fs.mkdirSync('build/lab-made', { recursive: true });

// The functions of the companion libraries, of which the lab makes one fail.
const headers = fs
    .readdirSync('companions', { recursive: true })
    .filter((name) => /^(libdmc|libfwupdate|libcolour|libPlugin)\b.*\.(def|h)$/.test(name));
const texts = headers.map((name) => fs.readFileSync(`companions/${name}`, 'utf8')).join('\n');
const functions = [...new Set(texts.match(/\b(?:DmCtrl|FW|Plg_|Colour_)\w+(?=\s*(?:\(|$))/gm))].sort();
made('functions', functions);

const families = parse(fs.readFileSync('catalogue/families.yaml', 'utf8'));
made(
    'topics',
    Object.values(families).flatMap(({ topics }) => topics),
);

const rows = fs.readFileSync('docs/scenarios.md', 'utf8').matchAll(/^\| `([\w-]+)` \| (.+?) \| (.+?) \|$/gm);
made('scenarios', Object.fromEntries([...rows].map(([, name, ...texts]) => [name, texts])));

await build({
    entryPoints: { lab: 'lab/src/parts/lab-app.ts' },
    tsconfig: 'lab/tsconfig.json',
    bundle: true,
    minify: true,
    format: 'esm',
    target: 'es2022',
    legalComments: 'none',
    outdir: target,
});
fs.copyFileSync('lab/index.html', `${target}/index.html`);
fs.copyFileSync('lab/src/lab.css', `${target}/lab.css`);

// The headings of the reference have the identifiers that links within it name.
const idOf = (text) =>
    text
        .toLowerCase()
        .replace(/<[^>]+>|[^\w\s-]/g, '')
        .replace(/\s/g, '-');
marked.use({
    renderer: {
        heading({ tokens, depth }) {
            const text = this.parser.parseInline(tokens);
            return `<h${depth} id="${idOf(text)}">${text}</h${depth}>\n`;
        },
    },
});
const referencePages = fs.readdirSync('docs/resources').map((name) => `docs/resources/${name}`);
for (const file of [...referencePages, 'docs/json.md']) {
    const name = path.basename(file);
    const text = fs.readFileSync(file, 'utf8');
    const title = /^# (.+)$/m.exec(text)?.[1] ?? name;
    const body = marked
        .parse(text)
        .replace(
            /href="(?:\.\.\/)?([\w-]+)\.md(#[^"]*)?"/g,
            (_, page, anchor = '') => `href="${page === 'README' ? 'index' : page}.html${anchor}"`,
        );
    fs.writeFileSync(
        `${target}/reference/${name.replace('README', 'index').replace('.md', '.html')}`,
        `<!doctype html><html lang="en"><head><meta charset="utf-8"><meta name="viewport" content="width=device-width, initial-scale=1"><title>${title}</title><link rel="icon" href="data:,"><link rel="stylesheet" href="../reference.css"></head><body><main>${body}</main></body></html>\n`,
    );
}
fs.copyFileSync('lab/src/reference.css', `${target}/reference.css`);

// The client's modules stand beside the lab, for pages that have no build of their own.
fs.cpSync('build/client', `${target}/client`, { recursive: true, filter: (file) => !file.endsWith('.d.ts') });
