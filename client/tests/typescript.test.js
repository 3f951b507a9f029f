// What TypeScript makes of the package: types, the examples of the catalogue as calls, and what an editor shows.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import { test } from 'node:test';
import ts from 'typescript';
import { parseExamples } from '../../catalogue/tools/examples.js';
import { decide, fits } from '../../catalogue/tools/match.js';
import { catalogue, compile, place, programOf } from './support.js';

test('what fits compiles, with the right types, and what does not does not', () => {
    assert.deepEqual(compile([place('types.ts', fs.readFileSync('client/tests/types.ts', 'utf8'))]), []);
});

/** The example as a call, and whether it compiles; nothing where types do not decide that. */
function callOf(name, methods, { method, resource = name, query, body, value, error, status }) {
    if (resource !== name || status === 500) return [];
    const rows = methods[method] ?? [];
    const hasBody = method !== 'GET';
    const bodyText = body === null ? 'undefined' : JSON.stringify(body);
    const call = (text) =>
        `monitor.${method.toLowerCase()}(${[`'${name}'`, ...(hasBody ? [text] : []), JSON.stringify(query)].join(', ')})`;
    if (status === 200) {
        const { row } = decide(rows, query, body);
        // The plug-in takes more than the types say.
        if (row.lenient === 'types' || (row.body && !fits(row.body, body))) return [];
        // A variable may have more members than the type, as what a GET has answered may.
        const answered = method === 'PUT' ? "'done'" : JSON.stringify(value);
        return [`answers(${call(`variable(${bodyText})`)}, ${answered});`];
    }
    const refusal = rows.find(({ refused }) => refused === error.message);
    const isOfLength = Array.isArray(body);
    return refusal?.beyondTypes || isOfLength ? [] : ['// @ts-expect-error', `${call(bodyText)};`];
}

test('the examples that are answered compile, and those that are refused for their types do not', () => {
    const monitors = Object.entries(catalogue.resources).filter(([, { of }]) => of === 'monitor');
    const calls = monitors.flatMap(([name, { examples, methods }]) =>
        parseExamples(examples.flat().join('\n'), assert.fail).flatMap((example) => callOf(name, methods, example)),
    );
    assert.ok(calls.length > 3 * monitors.length);
    const program = [
        "import type { Monitor } from 'libpell-client';",
        'declare const monitor: Monitor;',
        'declare function answers<T>(answer: Promise<T>, value: NoInfer<T>): void;',
        'type Mutable<T> = T extends object ? { -readonly [K in keyof T]: Mutable<T[K]> } : T;',
        'declare function variable<const T>(value: T): Mutable<T>;',
        ...calls,
    ];
    assert.deepEqual(compile([place('examples.ts', program.join('\n'))]), []);
});

test('an editor shows what the catalogue says', () => {
    const { resources, events } = catalogue;
    const range = /\| `range` \| `Range` \|\n.*\n\|  \| `UInt32`: the step \|/;
    const calls = [
        ["monitor.get('Brightness')", resources.Brightness.about, range],
        ["monitor.tryGet('ModeName', { mode: 3 })", resources.ModeName.about],
        ["monitor.put('Gain', { red: 1 })", resources.Gain.about],
        ["pell.on('transferFirmwareData', (step) => step.transferredBlock)", events.transferFirmwareData.about],
    ];
    const declared = "import { Monitor, Pell } from 'libpell-client'; declare const monitor: Monitor, pell: Pell;";
    const file = place('page.ts', [declared, ...calls.map(([call]) => call)].join('\n'));
    const program = programOf([file]);
    const checker = program.getTypeChecker();
    const shown = (thing) => ts.displayPartsToString(thing.getDocumentationComment(checker));
    const statements = program.getSourceFile(file).statements.slice(-calls.length);
    for (const [at, [, about, more = /./]] of calls.entries()) {
        const text = shown(checker.getResolvedSignature(statements[at].expression));
        assert.ok(text.startsWith(about), text);
        assert.match(text, more);
    }
    const member = statements.at(-1).expression.arguments[1].body.name;
    assert.equal(shown(checker.getSymbolAtLocation(member)), 'the blocks that the monitor has');
});
