// What is made from the catalogue: it is up to date, and tools that read it take it.
import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import fs from 'node:fs';
import { before, test } from 'node:test';
import { Validator } from '@seriousme/openapi-schema-validator';
import { readTable } from '../../catalogue/tools/source.js';
import { Batch, builds, hostOf } from '../pellhost.js';

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

// `call` as the first page of the reference wants it, played by the host.
test('the call on the first page answers as it says', async () => {
    const page = fs.readFileSync('docs/resources/README.md', 'utf8');
    const [, program] = /```js\n(.*?)```/s.exec(page);
    const [, expected] = /```json\n(.*?)```/s.exec(page);
    const batch = new Batch(hostOf(builds[0]));
    const answers = [];
    const call = async (resource, ...texts) => {
        const [{ responses }] = await batch.send({ call: resource, texts });
        answers.push(responses[0].text);
        return responses[0];
    };
    const run = new Function('call', `return (async () => { ${program} })()`);
    const error = { message: 'Out of range.', name: 'DmError', status: 500, reason: 'Set brightness.' };
    await assert.rejects(run(call), error);
    assert.equal(answers.join('\n') + '\n', expected);
    await batch.close();
});
