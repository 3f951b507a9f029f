// The package as it is published: the programs of the README, the script for old browsers, the size.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { setImmediate as turn } from 'node:timers/promises';
import vm from 'node:vm';
import zlib from 'node:zlib';
import { parse } from 'acorn';
import { firmwarePackage } from '../../tests/pellhost.js';
import { compile, Host, pages, place } from './support.js';

const script = fs.readFileSync('build/client/libpell-client.js', 'utf8');
const readme = fs.readFileSync('client/README.md', 'utf8');
const examples = [...readme.matchAll(/```(?:ts|js)\n\/\/ (\w+)\.(ts|js)\n(.*?)```(?:\n\n```text\n(.*?)```)?/gs)].map(
    ([, name, language, program, output]) => ({ name, language, program, output }),
);

let host;
let firmware;
before(() => {
    host = new Host();
    firmware = firmwarePackage(path.resolve(pages, 'new.dfw'));
    globalThis.host = host; // of the examples
    // What the README leaves out.
    const declarations = `declare const host: {
        call(name: string, texts: string[], answered: (status: number, text: string) => void): void;
        addListener(event: string, listener: (text: string) => void): void;
        removeListener(event: string, listener: (text: string) => void): void;
    };`;
    const programs = examples.filter(({ language }) => language === 'ts');
    const files = programs.map(({ name, program }) =>
        place(`${name}.ts`, program.replace('/path/of/new.dfw', firmware)),
    );
    assert.deepEqual(compile([place('host.d.ts', declarations), ...files], { emit: true }), []);
});
after(() => host.close());

test('the links of the README lead somewhere within the package', () => {
    const packaged = fs.readFileSync('build/client/README.md', 'utf8');
    assert.match(packaged, /what the reference says/);
    const links = [...packaged.matchAll(/\]\(([^)#]+)/g)].map(([, link]) => link);
    assert.deepEqual(
        links.filter((link) => !fs.existsSync(path.join('build/client', link))),
        [],
    );
});

test('the README has five examples', () => assert.equal(examples.filter(({ output }) => output).length, 5));

for (const { name, language, program, output } of examples.filter(({ output }) => output))
    test(`the example ${name} of the README`, { timeout: 60000 }, async (context) => {
        const lines = [];
        context.mock.method(console, 'log', (line) => lines.push(line));
        await host.send({ simulate: 'reset' });
        if (language === 'ts') await import(path.resolve(pages, `${name}.js`));
        else vm.runInContext(program, oldBrowser({ host, console }).context);
        while (lines.length < output.split('\n').length - 1) await turn();
        assert.equal(lines.join('\n') + '\n', output);
    });

// What came after ES5, save Promise. The objects come before what is global.
const newer = {
    Object: 'assign entries values fromEntries is setPrototypeOf getOwnPropertySymbols',
    Array: 'from of',
    'Array.prototype': 'find findIndex fill includes flat flatMap at keys values entries copyWithin findLast',
    'String.prototype':
        'includes startsWith endsWith repeat padStart padEnd at replaceAll matchAll codePointAt normalize',
    Number: 'isInteger isSafeInteger isFinite isNaN parseFloat',
    Math: 'trunc sign log2 hypot',
    Promise: 'allSettled any',
    'Promise.prototype': 'finally',
    globalThis: 'Symbol Map Set WeakMap WeakSet WeakRef Proxy Reflect BigInt Uint8Array ArrayBuffer globalThis',
};

/** A browser of those days, with the script, and what it has made global. */
function oldBrowser(globals = {}) {
    const context = vm.createContext(globals);
    for (const [object, names] of Object.entries(newer))
        for (const name of names.split(' ')) vm.runInContext(`delete ${object}.${name}`, context);
    vm.runInContext('var window = this', context);
    const before = Object.keys(context);
    vm.runInContext(script, context);
    return { context, made: Object.keys(context).filter((name) => !before.includes(name)) };
}

test('the script has the syntax of ES5, and makes nothing global but libpell', () => {
    parse(script, { ecmaVersion: 5 });
    assert.deepEqual(oldBrowser().made, ['libpell']);
});

test('an old browser follows a transfer, and tells errors from others', async () => {
    const failure = '{"error":{"name":"DmError","message":"Failed.","code":2147483655},"value":null}';
    const transport = () => Promise.resolve({ status: 500, text: failure });
    transport.on = (_, listener) => {
        listener('{"product":"P","serial":"S","transferredBlock":1}');
        return () => {};
    };
    const { context } = oldBrowser({ transport });
    const monitor = "new libpell.Monitor(transport, 'P', 'S')";
    const run = (program) => vm.runInContext(program, context);
    run(`var progress = ${monitor}.transfer({ id: 'package' }).progress();`);
    assert.equal((await run('progress.next()')).value.transferredBlock, 1);
    const error = await run('progress.next()').catch((error) => error);
    assert.ok(run('libpell.PellError').prototype.isPrototypeOf(error) && run('Error').prototype.isPrototypeOf(error));
    assert.deepEqual([String(error), error.isUnsupported], ['DmError: Failed.', true]);
    assert.equal(await run(`${monitor}.tryGet('Hue')`), undefined);
});

test('the script is below 3 KB', () => {
    assert.ok(zlib.gzipSync(script, { level: 9 }).length <= 3072);
});
