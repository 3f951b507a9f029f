// The packages of package-lock.json.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import { test } from 'node:test';

test('they run with the Node of Debian 12', () => {
    const { packages } = JSON.parse(fs.readFileSync('package-lock.json', 'utf8'));
    const tooNew = Object.entries(packages).filter(([, { engines }]) => /^\W*(19|[2-9]\d)/.test(engines?.node ?? ''));
    assert.deepEqual(
        tooNew.map(([name, { engines }]) => `${name}: ${engines.node}`),
        [],
    );
});
