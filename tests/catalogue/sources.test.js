// A mistake in the sources of the catalogue is told with file and line.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { readCatalogue } from '../../catalogue/tools/model.js';
import { toSchema } from '../../catalogue/tools/schema.js';
import { parseMembers, parseType, prelude, Scope } from '../../catalogue/tools/types.js';

const project = process.cwd();
let copy;

// A few resources are enough: the table has no others there.
const gain = 'catalogue/picture/Gain.yaml';
const hue = 'catalogue/picture/Hue.yaml';
const transfer = 'catalogue/firmware/FirmwareUpdateTransfer.yaml';
const dfwFile = 'catalogue/firmware/FileSystemDfwFile.yaml';
const others = ['catalogue/firmware/FirmwareUpdate.yaml'];

before(() => {
    copy = fs.mkdtempSync(path.join(os.tmpdir(), 'catalogue-'));
    const shared = fs.readdirSync('catalogue').filter((name) => /\.(yaml|ts|json)$/.test(name));
    const files = [...shared.map((name) => `catalogue/${name}`), gain, hue, transfer, dfwFile, ...others];
    for (const part of [...files, 'src/exports', 'src/resources', 'simulator/core/scenario.json'])
        fs.cpSync(part, path.join(copy, part), { recursive: true });
    process.chdir(copy);
    const table = 'src/exports/ResourceTable.inc';
    const rows = fs
        .readFileSync(table, 'utf8')
        .replace(/^\w+ *\( *\d+, (\w+),.*\n/gm, (row, name) =>
            files.some((file) => path.basename(file, '.yaml') === name) ? row : '',
        );
    fs.writeFileSync(table, rows);
});

after(() => {
    process.chdir(project);
    fs.rmSync(copy, { recursive: true });
});

const mistakes = {
    'a member that the format does not know': [gain, 'lenient: true', 'lenent: true', /Gain.yaml:\d+: put 0 .*lenent/],
    'no topic': [gain, 'topic: Colour', 'topics: Colour', /Gain.yaml:2: .*'topic'/],
    'a topic that the family does not have': [
        gain,
        'topic: Colour',
        'topic: Color',
        /Gain.yaml:3: .* it has .*Colour,/,
    ],
    'YAML that is none': [gain, 'get:', 'get', /Gain.yaml:\d+: /],
    'a type that is none': [gain, 'answer: Range', 'answer: "{min"', /Gain.yaml:6: .*TypeScript/],
    'a type that nobody declares': [gain, 'answer: Range', 'answer: Rnage', /Gain.yaml:6: there is no type Rnage/],
    'a type with too few arguments': [
        gain,
        'answer: PerRGB<UInt32>',
        'answer: PerRGB',
        /Gain.yaml:9: PerRGB has 1 arg/,
    ],
    'an unknown type within a declaration': [
        dfwFile,
        'version: FirmwareVersions',
        'version: Versions',
        /DfwFile.yaml:8: .* Versions;/,
    ],
    'a declaration that nothing uses': [dfwFile, 'types: |', 'types: |\n  type Spare = number;', /Spare/],
    'a GET without an answer': [gain, 'answer: Range, ', '', /Gain.yaml:6: a GET has an answer/],
    'a method that the table does not have': [
        gain,
        'put:',
        'post:',
        /Gain.yaml:\d+: it serves get, post; .*says get, put/,
    ],
    'a path that the table has': [gain, 'topic: Colour', 'topic: Colour\npath: Gain', /Gain.yaml:4: .*has its path/],
    'a selector that no request has': [gain, 'invalid: color', 'invalid: colour', /Gain.yaml:8: .*colour/],
    'a row that never decides': [
        gain,
        '- {query: range',
        '- {query: "supports, all", answer: boolean}\n  - {query: range',
        /Gain.yaml:6: a row above/,
    ],
    'an event that nobody declares': [
        transfer,
        '[transferFirmwareData]',
        '[transferFirmware]',
        /Transfer.yaml:6: events.yaml has no transferFirmware/,
    ],
    'an example whose answer is of another type': [
        gain,
        '200 236',
        '200 "236"',
        /Gain.yaml:23: the answer is not of its/,
    ],
    'an example with an unknown member': [gain, '?{"range":true}', '?{"rang":true}', /Gain.yaml:21: .*member rang:/],
    'an example with an unknown reason': [
        gain,
        '(Set gain green.)',
        '(Set green.)',
        /Gain.yaml:\d+: .*reason Set green/,
    ],
    'an example with an unknown message': [
        gain,
        'DmError Out of range.',
        'DmError Out.',
        /Gain.yaml:\d+: .*message Out\./,
    ],
    'an example with an unknown refusal': [
        gain,
        '400 BadRequestError data must',
        '400 BadRequestError must',
        /refusal: must/,
    ],
    'a strict body that is refused but fits': [hue, 'PUT [120]', 'PUT 12', /Hue.yaml:\d+: a row fits/],
    'an example that is no JSON': [gain, 'PUT 250\n', 'PUT red\n', /Gain.yaml:\d+: red is no JSON/],
    'a request without an answer': [gain, 'examples: |\n', 'examples: |\n  GET\n', /Gain.yaml:/],
    'a shared type that is none': [
        'catalogue/types.ts',
        'max: UInt32 }',
        'max: Unt32 }',
        /types.ts:4: there is no type Unt32/,
    ],
};

for (const [name, [file, from, to, expected]] of Object.entries(mistakes))
    test(name, () => {
        const text = fs.readFileSync(file, 'utf8');
        assert.ok(text.includes(from), `${file} has no ${from}`);
        fs.writeFileSync(file, text.replace(from, to));
        try {
            if (expected)
                assert.throws(readCatalogue, (error) => expected.test(error.message) || assert.fail(error.message));
        } finally {
            fs.writeFileSync(file, text);
        }
    });

test('a resource without a file', () => {
    fs.renameSync(gain, `${gain}.away`);
    assert.throws(readCatalogue, /there is no file for Gain/);
    fs.renameSync(`${gain}.away`, gain);
});

test('types become schemas, exact in answers and open in what is given', () => {
    const scope = new Scope('type Pair<T> = {first: T; second?: T}; type Depth = 8 | 10;', prelude);
    const uint8 = { type: 'integer', format: 'uint8', minimum: 0, maximum: 255 };
    const pair = {
        type: 'object',
        properties: { first: { type: 'string' }, second: { type: 'string' } },
        required: ['first'],
    };
    const cases = {
        UInt8: [uint8, { type: 'number', format: 'uint8' }],
        'Pair<string>': [{ ...pair, additionalProperties: false }, pair],
        'Partial<Pair<string>>': [undefined, { type: 'object', properties: pair.properties }],
        'Omit<Pair<string>, "second">': [
            { ...pair, properties: { first: { type: 'string' } }, additionalProperties: false },
            { ...pair, properties: { first: { type: 'string' } } },
        ],
        'Omit<Pair<string>, "first" | "third">': [
            undefined,
            { ...pair, properties: { second: { type: 'string' } }, required: [] },
        ],
        'AtLeastOne<{a: null; b: unknown}>': [
            undefined,
            {
                type: 'object',
                properties: { a: { type: 'null' }, b: {} },
                anyOf: [{ required: ['a'] }, { required: ['b'] }],
            },
        ],
        'Depth[] | "all"': [{ anyOf: [{ type: 'array', items: { enum: [8, 10] } }, { const: 'all' }] }],
        'List<boolean, 2>': [{ type: 'array', items: { type: 'boolean' }, minItems: 2, maxItems: 2 }],
        'NonEmpty<-1>': [{ type: 'array', items: { const: -1 }, minItems: 1 }],
        '[x: number, y: UInt8]': [
            { type: 'array', prefixItems: [{ type: 'number' }, uint8], minItems: 2, items: false },
        ],
        'Record<"a" | "b", boolean>': [
            undefined,
            { type: 'object', properties: { a: { type: 'boolean' }, b: { type: 'boolean' } }, required: ['a', 'b'] },
        ],
        '{type: string, index?: never}': [
            undefined,
            { type: 'object', properties: { type: { type: 'string' }, index: { not: {} } }, required: ['type'] },
        ],
        'Text<16> // a name': [{ type: 'string', maxLength: 16 }],
    };
    for (const [text, [answered, given]] of Object.entries(cases)) {
        const type = parseType(text, scope);
        if (answered) assert.deepEqual(toSchema(type, { isGiven: false }), answered, text);
        if (given) assert.deepEqual(toSchema(type, { isGiven: true }), given, text);
    }
    assert.equal(parseType('UInt32 // the step', scope).comment, 'the step');
    assert.deepEqual(
        parseMembers('supports, depth?: Depth', scope).map(({ name, isOptional, type }) => [name, isOptional, !type]),
        [
            ['supports', false, true],
            ['depth', true, false],
        ],
    );
});
