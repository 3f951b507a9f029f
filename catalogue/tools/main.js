// Makes everything that is made from the catalogue; see scripts/catalogue.
import fs from 'node:fs';
import path from 'node:path';
import { fileURLToPath } from 'node:url';
import { catalogueJson, resourceSchema } from './json.js';
import { referencePages } from './markdown.js';
import { readCatalogue } from './model.js';
import { openApi } from './openapi.js';
import { Mistake } from './source.js';
import { typeDeclarations } from './typescript.js';

process.chdir(fileURLToPath(new URL('../..', import.meta.url)));
try {
    const isCheck = process.argv[2] === '--check';
    process.exitCode = isCheck ? check(committedFiles(readCatalogue())) : make(readCatalogue());
} catch (error) {
    if (!(error instanceof Mistake)) throw error;
    console.error(error.message);
    process.exitCode = 1;
}

/** The files that are committed, by their path. */
function committedFiles(catalogue) {
    const pages = referencePages(catalogue).map(([name, text]) => [`docs/resources/${name}`, text]);
    return new Map([['catalogue/catalogue.json', catalogueJson(catalogue)], ...pages]);
}

function builtFiles(catalogue) {
    return new Map([
        ['build/catalogue/resources.d.ts', typeDeclarations(catalogue)],
        ['build/catalogue/openapi.json', openApi(catalogue)],
        ...catalogue.resources.map((resource) => [
            `build/catalogue/schemas/${resource.name}.json`,
            resourceSchema(resource),
        ]),
    ]);
}

function make(catalogue) {
    const committed = committedFiles(catalogue);
    for (const file of strangers(committed)) fs.rmSync(file);
    for (const [file, text] of [...committed, ...builtFiles(catalogue)]) {
        fs.mkdirSync(path.dirname(file), { recursive: true });
        if (read(file) !== text) fs.writeFileSync(file, text);
    }
    return 0;
}

/** Tells the committed files that are not as they would be made. */
function check(committed) {
    const stale = [...committed].filter(([file, text]) => read(file) !== text).map(([file]) => file);
    stale.push(...strangers(committed));
    for (const file of stale) console.error(`${file} is out of date: run scripts/catalogue`);
    return stale.length ? 1 : 0;
}

/** Pages of the reference that nothing makes. */
function strangers(committed) {
    return fs
        .readdirSync('docs/resources')
        .map((name) => `docs/resources/${name}`)
        .filter((file) => !committed.has(file));
}

function read(file) {
    return fs.existsSync(file) ? fs.readFileSync(file, 'utf8') : undefined;
}
