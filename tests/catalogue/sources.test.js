// A mistake in the sources of the catalogue is told with file and line.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { readCatalogue } from '../../catalogue/tools/model.js';

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

/** What is replaced in a file, by what, and what is told. */
const mistakes = [
    [gain, 'lenient: true', 'lenent: true', /Gain.yaml:\d+: put 0 .*lenent/],
    [gain, 'topic: Colour', 'topics: Colour', /Gain.yaml:2: .*'topic'/],
    [gain, 'topic: Colour', 'topic: Color', /Gain.yaml:3: .* it has .*Colour,/],
    [gain, 'get:', 'get', /Gain.yaml:\d+: /],
    [gain, 'answer: Range', 'answer: "{min"', /Gain.yaml:6: .*TypeScript/],
    [gain, 'answer: Range', 'answer: Rnage', /Gain.yaml:6: there is no type Rnage/],
    [gain, 'answer: PerRGB<UInt32>', 'answer: PerRGB', /Gain.yaml:9: PerRGB has 1 arg/],
    [dfwFile, 'version: FirmwareVersions', 'version: Versions', /DfwFile.yaml:8: .* Versions;/],
    [dfwFile, 'types: |', 'types: |\n  type Spare = number;', /Spare/], // which nothing uses
    ['catalogue/types.ts', 'max: UInt32 }', 'max: Unt32 }', /types.ts:4: there is no type Unt32/],
    [gain, 'answer: Range, ', '', /Gain.yaml:6: a GET has an answer/],
    [gain, 'put:', 'post:', /Gain.yaml:\d+: it serves get, post; .*says get, put/],
    [gain, 'topic: Colour', 'topic: Colour\npath: Gain', /Gain.yaml:4: .*has its path/],
    [gain, 'invalid: color', 'invalid: colour', /Gain.yaml:8: .*colour/],
    [
        gain,
        '- {query: range',
        '- {query: "supports, all", answer: boolean}\n  - {query: range',
        /Gain.yaml:6: a row above/,
    ],
    [transfer, '[transferFirmwareData]', '[transfer]', /Transfer.yaml:6: events.yaml has no transfer/],
    [gain, '200 236', '200 "236"', /Gain.yaml:23: the answer is not of its/],
    [gain, '?{"range":true}', '?{"rang":true}', /Gain.yaml:21: .*member rang:/],
    [gain, '(Set gain green.)', '(Set green.)', /Gain.yaml:\d+: .*reason Set green/],
    [gain, 'DmError Out of range.', 'DmError Out.', /Gain.yaml:\d+: .*message Out\./],
    [gain, '400 BadRequestError data must', '400 BadRequestError must', /refusal: must/],
    [hue, 'PUT [120]', 'PUT 12', /Hue.yaml:\d+: a row fits/],
    [gain, 'PUT 250\n', 'PUT red\n', /Gain.yaml:\d+: red is no JSON/],
    [gain, 'examples: |\n', 'examples: |\n  GET\n', /Gain.yaml:/],
];

for (const [file, from, to, expected] of mistakes)
    test(`${path.basename(file)}: ${JSON.stringify(to)} for ${JSON.stringify(from)}`, () => {
        const text = fs.readFileSync(file, 'utf8');
        assert.ok(text.includes(from), `${file} has no ${from}`);
        fs.writeFileSync(file, text.replace(from, to));
        try {
            assert.throws(readCatalogue, expected);
        } finally {
            fs.writeFileSync(file, text);
        }
    });

test('a resource without a file', () => {
    fs.renameSync(gain, `${gain}.away`);
    assert.throws(readCatalogue, /there is no file for Gain/);
    fs.renameSync(`${gain}.away`, gain);
});
