// What TypeScript makes of the package: types, the examples of the catalogue as calls, and what an editor shows.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import { test } from 'node:test';
import ts from 'typescript';
import { parseExamples } from '../../catalogue/tools/examples.js';
import { decide, fits } from '../../catalogue/tools/match.js';
import { catalogue, compile, place, project } from './support.js';

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

const page = `
import { httpTransport, Monitor, Pell } from 'libpell-client';
const pell = new Pell(httpTransport('/pell'));
const monitor = new Monitor(httpTransport('/pell'), 'P', 'S');
monitor.get('Brightness');
monitor.tryGet('ModeName', { mode: 3 });
monitor.put('Gain', { red: 1 });
monitor.get('');
monitor.get('Brightness', { });
monitor.put('Brightness', { });
monitor.put('ColorMatrix', [], { });
monitor.get('ColorMatrix', { });
pell.on('transferFirmwareData', (step) => step.transferredBlock);
monitor.get('ProfileData').then((profile) => profile.luminance);
`;

test('an editor shows what the catalogue says', () => {
    const file = place('page.ts', page);
    const service = ts.createLanguageService(project([file]));
    const hover = (text, within = text) => {
        const info = service.getQuickInfoAtPosition(file, page.indexOf(text) + text.indexOf(within));
        return ts.displayPartsToString(info.documentation);
    };
    const completions = (text, offset) =>
        service.getCompletionsAtPosition(file, page.indexOf(text) + offset, {}).entries.map(({ name }) => name);
    const { Brightness, ModeName, Gain } = catalogue.resources;

    assert.ok(hover("get('Brightness')").startsWith(Brightness.about));
    assert.match(hover("get('Brightness')"), /\| `range` \| `Range` \|\n.*\n\|  \| `UInt32`: the step \|/);
    assert.ok(hover("tryGet('ModeName'").startsWith(ModeName.about));
    assert.ok(hover("put('Gain'").startsWith(Gain.about));
    assert.ok(hover("on('transferFirmwareData'").startsWith(catalogue.events.transferFirmwareData.about));
    assert.equal(hover('step.transferredBlock', 'transferredBlock'), 'the blocks that the monitor has');
    assert.equal(hover('profile.luminance', 'luminance'), 'cd/m2');
    const served = Object.entries(catalogue.resources).filter(([, { of, methods }]) => of === 'monitor' && methods.GET);
    assert.deepEqual(completions("get('');", 5).sort(), served.map(([name]) => name).sort());
    for (const [call, members] of Object.entries({
        "get('Brightness', {": ['percentage', 'range', 'supports'],
        "put('Brightness', {": ['percentage'],
        "put('ColorMatrix', [], {": ['index'],
        "get('ColorMatrix', {": ['count', 'index', 'supports'],
    }))
        assert.deepEqual(completions(call, call.length).sort(), members, call);
});
