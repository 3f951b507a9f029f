// What the catalogue says, proven against the builds that PELL_BUILDS names: `native` unless it is set.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import { test } from 'node:test';
import { isReading } from './conformance/functions.js';
import { outcome, returns } from './conformance/host.js';
import { contradictionsOf } from './conformance/proof.js';
import { openWorld } from './conformance/world.js';
import { builds } from '../pellhost.js';

const catalogue = JSON.parse(fs.readFileSync('catalogue/catalogue.json', 'utf8'));
const { resources, results } = catalogue;

for (const build of builds)
    test(build, { concurrency: true }, async (t) => {
        const started = Date.now();
        const world = await openWorld(build);
        t.after(() => world.close());
        const proofs = Object.keys(resources).map((name) =>
            t.test(name, async () => {
                const problems = await contradictionsOf(name, catalogue, world);
                assert.ok(!problems.length, problems.join('\n'));
            }),
        );
        const others = Object.entries({ proveResults, proveAddresses, proveAliases }).map(([name, prove]) =>
            t.test(name, () => prove(world)),
        );
        await Promise.all([...proofs, ...others]);
        await t.test('proveWriters', () => proveWriters(world));
        t.diagnostic(`${build}: ${world.requests()} requests in ${(Date.now() - started) / 1000} s`);
    });

/** What the codes of the library become. */
async function proveResults({ full, monitors: [parameters] }) {
    const request = { resource: 'Brightness', method: 'GET', parameters };
    const expected = { 0: '200 50', 0x7fffffff: '200 50', 0x80000006: '200 0' };
    for (const code of [0x80000020, 0x80010000, 0x8001000b, 0xffffffff]) expected[code] = 'Undefined error.';
    for (const [code, { message }] of Object.entries(results.codes)) expected[code] = message;
    await Promise.all(
        Object.entries(expected).map(async ([code, text]) => {
            const [answer] = await full.run([returns('DmCtrlGetBrightnessForStep', Number(code)), request]);
            if (text.startsWith('200')) return assert.equal(outcome(answer), text, code);
            assert.equal(outcome(answer), `500 DmError ${text} (Get brightness.)`, code);
            assert.equal(answer.error.code, Number(code));
        }),
    );
}

/** Requests that name no monitor, or one that is not connected; and under which URI they are logged. */
async function proveAddresses({ full }) {
    const absent = { product: 'TQ271-P', serial: '99999999' };
    const { code, reason } = results.notConnected;
    for (const [resource, { of, path, methods }] of Object.entries(resources)) {
        const ask = (parameters) => full.run([{ resource, method: Object.keys(methods)[0], parameters }]);
        if (of === 'application') continue;
        if (!methods.POST || of === 'monitor') {
            const [answer] = await ask({});
            assert.equal(outcome(answer), `400 BadRequestError ${results.missingAddress}`, resource);
        }
        if (of !== 'monitor') continue;
        const [{ error, log }] = await ask(absent);
        assert.deepEqual([error.code, error.reason], [code, reason], resource);
        const uri = `/pell/${path.replace('{product}', absent.product).replace('{serial}', absent.serial)}`;
        assert.ok(log[0].line.split('\t').includes(`uri:${uri}`), `${resource}: ${log[0].line}`);
    }
}

/** Other names of a resource are as good. */
async function proveAliases({ full, monitors: [parameters] }) {
    for (const [name, { aliases = [] }] of Object.entries(resources))
        for (const resource of aliases) {
            const request = { method: 'GET', parameters };
            const [one, other] = await full.run([name, resource].map((each) => ({ ...request, resource: each })));
            assert.deepEqual(other, one, resource);
        }
}

/** A setting is written by one resource; whatever else has written it, has taken the wrong function. */
async function proveWriters({ full: { callers } }) {
    const shared = /CriticalSection|^DmCtrlSetSelf(CalibrationState|TargetPairing)$/;
    const several = [...callers].filter(
        ([name, resources]) => resources.size > 1 && !isReading(name) && !shared.test(name),
    );
    assert.deepEqual(several, []);
}
