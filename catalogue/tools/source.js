// Reads the sources of the catalogue, and remembers where everything stands, so that a mistake is told with file and
// line.
import fs from 'node:fs';
import path from 'node:path';
import Ajv from 'ajv';
import { isScalar, LineCounter, parseDocument } from 'yaml';

/** A mistake in a source. */
export class Mistake extends Error {}

/** A YAML file and its parsed `value`. */
export class Source {
    /** @param {string} file relative to the project's folder, which is the working directory */
    constructor(file) {
        this.file = file;
        this.name = path.basename(file, path.extname(file));
        this.lines = new LineCounter();
        this.document = parseDocument(fs.readFileSync(file, 'utf8'), { lineCounter: this.lines });
        const [error] = this.document.errors;
        if (error) throw new Mistake(`${file}:${error.linePos?.[0].line ?? 1}: ${error.message.split('\n')[0]}`);
        this.value = this.document.toJS();
    }

    /** @param {(string | number)[]} keys the way to a node, such as ['get', 0, 'answer'] */
    line(keys, offset = 0) {
        let node = this.document.getIn(keys, true);
        while (!node?.range && keys.length) node = this.document.getIn((keys = keys.slice(0, -1)), true);
        if (!node?.range) return 1;
        const isBlock = isScalar(node) && String(node.type).startsWith('BLOCK');
        return this.lines.linePos(node.range[0]).line + offset + (isBlock ? 1 : 0);
    }

    /** Throws a mistake that stands at these keys, or in the text there so many lines further down. */
    fail(keys, message, offset = 0) {
        throw new Mistake(`${this.file}:${this.line(keys, offset)}: ${message}`);
    }

    /** Throws every violation of a JSON Schema as one mistake, a line for each. */
    check(validate) {
        if (validate(this.value)) return;
        const lines = validate.errors
            .filter(({ keyword }) => !['if', 'anyOf', 'oneOf'].includes(keyword) || validate.errors.length === 1)
            .map(({ instancePath, message, params }) => {
                const keys = instancePath
                    .split('/')
                    .slice(1)
                    .map((key) => (/^\d+$/.test(key) ? Number(key) : key));
                const member = params.additionalProperty ? [params.additionalProperty] : [];
                const detail = params.additionalProperty ?? params.allowedValues?.join(', ') ?? '';
                return `${this.file}:${this.line([...keys, ...member])}: ${[...keys].join(' ')} ${message} ${detail}`.trim();
            });
        throw new Mistake([...new Set(lines)].join('\n'));
    }
}

/** Every resource of the catalogue, checked against the schema of the format. */
export function readResources() {
    const validate = new Ajv({ allErrors: true, strict: false }).compile(
        JSON.parse(fs.readFileSync('catalogue/format.schema.json', 'utf8')),
    );
    const families = fs.readdirSync('catalogue', { withFileTypes: true }).filter((entry) => entry.isDirectory());
    const files = families
        .flatMap(({ name }) => fs.readdirSync(`catalogue/${name}`).map((file) => `catalogue/${name}/${file}`))
        .filter((file) => file.endsWith('.yaml'));
    return attemptEach(files.sort(), (file) => {
        const source = new Source(file);
        source.check(validate);
        return source;
    });
}

/** What `work` makes of each item; the mistakes of all of them are thrown together. */
export function attemptEach(items, work) {
    const mistakes = [];
    const results = [];
    for (const item of items) {
        try {
            results.push(work(item));
        } catch (error) {
            if (!(error instanceof Mistake)) throw error;
            mistakes.push(error.message);
        }
    }
    if (mistakes.length) throw new Mistake(mistakes.join('\n'));
    return results;
}

/**
 * The table of exports: path (empty when the resource is not about one monitor) and methods of each name, and the
 * entry whose other name it is.
 * @returns {Map<string, {kind: 'RESOURCE' | 'ALIAS', name: string, entry: string, path: string, methods: string[]}>}
 */
export function readTable(file = 'src/exports/ResourceTable.inc') {
    const row = /^(RESOURCE|ALIAS)\s*\(\s*\d+,\s*(\w+),\s*(?:(\w+),\s*)?"([^"]*)",\s*([\w |]+)\)/gm;
    const table = new Map();
    const text = fs.readFileSync(file, 'utf8');
    for (const [, kind, name, entry = name, path, methods] of text.matchAll(row))
        table.set(name, {
            kind,
            name,
            entry,
            path,
            methods: methods.split('|').map((one) => one.trim().toLowerCase()),
        });
    if (!table.size || table.size !== text.match(/^[A-Z]+ *\(/gm).length)
        throw new Mistake(`${file}: its rows are not understood; see readTable in ${import.meta.url}`);
    return table;
}
