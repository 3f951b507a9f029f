// What the catalogue says, proven against the builds that PELL_BUILDS names: `native` unless it is set.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import { test } from 'node:test';
import { openWorld } from './conformance/world.js';
import { Proof } from './conformance/proof.js';

const catalogue = JSON.parse(fs.readFileSync('catalogue/catalogue.json', 'utf8'));
const builds = (process.env.PELL_BUILDS ?? 'native').split(' ');

for (const build of builds)
    test(build, { concurrency: true }, async (t) => {
        const started = Date.now();
        const world = await openWorld(build);
        t.after(() => world.close());
        const names = Object.keys(catalogue.resources);
        await Promise.all(
            names.map((name) =>
                t.test(name, async () => {
                    const problems = await new Proof(name, catalogue, world).contradictions();
                    assert.ok(!problems.length, problems.join('\n'));
                }),
            ),
        );
        t.diagnostic(`${build}: ${world.requests()} requests in ${(Date.now() - started) / 1000} s`);
    });
