// What is made from the catalogue: it is up to date, and tools that read it take it.
import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import fs from 'node:fs';
import { before, test } from 'node:test';
import { Validator } from '@seriousme/openapi-schema-validator';
import ts from 'typescript';
import { readTable } from '../../catalogue/tools/source.js';

const json = (file) => JSON.parse(fs.readFileSync(file, 'utf8'));
const table = readTable();

test('the committed files are up to date', () => {
    const check = () => spawnSync('node', ['catalogue/tools/main.js', '--check'], { encoding: 'utf8' });
    assert.equal(check().stderr, '');
    fs.writeFileSync('docs/resources/Stranger.md', '');
    try {
        const { status, stderr } = check();
        assert.equal(stderr, 'docs/resources/Stranger.md is out of date: run scripts/catalogue\n');
        assert.equal(status, 1);
    } finally {
        fs.rmSync('docs/resources/Stranger.md');
    }
});

before(() => execFileSync('node', ['catalogue/tools/main.js']));

test('the OpenAPI document is valid, and has every method of the table', async () => {
    const document = json('build/catalogue/openapi.json');
    const { valid, errors } = await new Validator().validate(structuredClone(document));
    assert.ok(valid, JSON.stringify(errors));
    const operations = Object.values(document.paths).flatMap((path) =>
        Object.values(path).map((one) => one.operationId),
    );
    const expected = [...table.values()]
        .filter(({ kind }) => kind === 'RESOURCE')
        .flatMap(({ name, methods }) => methods.map((method) => method + name));
    assert.deepEqual(operations.filter(Boolean).sort(), expected.sort());
});

test('TypeScript takes the types', () => {
    const files = ['build/catalogue/resources.d.ts'];
    const program = ts.createProgram(files, { strict: true, noEmit: true, types: [], lib: ['lib.es2015.d.ts'] });
    const messages = ts
        .getPreEmitDiagnostics(program)
        .map((one) => ts.flattenDiagnosticMessageText(one.messageText, ' '));
    assert.deepEqual(messages, []);
});

// `call` as the first page of the reference wants it, played by the host.
const host = 'build/native/full/pellhost';
const answers = [];
async function call(resource, ...texts) {
    const input = JSON.stringify({ call: resource, texts });
    const { responses } = JSON.parse(execFileSync(host, ['batch'], { input, encoding: 'utf8' }));
    answers.push(responses[0].text);
    return responses[0];
}

test(
    'the call on the first page answers as it says',
    { skip: !fs.existsSync(host) && `${host} is not built` },
    async () => {
        const page = fs.readFileSync('docs/resources/README.md', 'utf8');
        const [, program] = /```js\n(.*?)```/s.exec(page);
        const [, expected] = /```json\n(.*?)```/s.exec(page);
        const run = new Function('call', `return (async () => { ${program} })()`);
        await assert.rejects(run(call), {
            message: 'Out of range.',
            name: 'DmError',
            status: 500,
            reason: 'Set brightness.',
        });
        assert.equal(answers.join('\n') + '\n', expected);
    },
);
