// The package as it is published: the programs of the README, the script for old browsers, the size.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { setImmediate as turn } from 'node:timers/promises';
import vm from 'node:vm';
import zlib from 'node:zlib';
import { parse } from 'acorn';
import { build } from 'esbuild';
import { compile, firmwarePackage, Host, pages, place } from './support.js';

const script = fs.readFileSync('build/client/libpell-client.js', 'utf8');
const readme = fs.readFileSync('client/README.md', 'utf8');
const examples = [...readme.matchAll(/```(?:ts|js)\n\/\/ (\w+)\.(ts|js)\n(.*?)```(?:\n\n```text\n(.*?)```)?/gs)].map(
    ([, name, language, program, output]) => ({ name, language, program, output }),
);

let host;
let firmware;
before(() => {
    host = new Host();
    firmware = firmwarePackage();
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
        await host.line({ simulate: 'reset' });
        if (language === 'ts') await import(path.resolve(pages, `${name}.js`));
        else vm.runInContext(program, oldBrowser({ host, console }).context);
        while (lines.length < output.split('\n').length - 1) await turn();
        assert.equal(lines.join('\n') + '\n', output);
    });

// What ES5 has; all else is taken away, save Promise.
const es5 = {
    globalThis: `Object Function Array String Boolean Number Date RegExp Error EvalError RangeError ReferenceError SyntaxError
        TypeError URIError Math JSON NaN Infinity undefined parseInt parseFloat isNaN isFinite decodeURI decodeURIComponent
        encodeURI encodeURIComponent eval Promise window`,
    Object: `getPrototypeOf getOwnPropertyDescriptor getOwnPropertyNames create defineProperty defineProperties seal freeze
        preventExtensions isSealed isFrozen isExtensible keys`,
    'Object.prototype': `toString toLocaleString valueOf hasOwnProperty isPrototypeOf propertyIsEnumerable __proto__`,
    'Function.prototype': 'toString apply call bind',
    Array: 'isArray',
    'Array.prototype': `toString toLocaleString concat join pop push reverse shift slice sort splice unshift indexOf
        lastIndexOf every some forEach map filter reduce reduceRight`,
    String: 'fromCharCode',
    'String.prototype': `toString valueOf charAt charCodeAt concat indexOf lastIndexOf localeCompare match replace search slice
        split substr substring toLowerCase toLocaleLowerCase toUpperCase toLocaleUpperCase trim`,
    Error: '',
    Promise: 'all race resolve reject',
    'Promise.prototype': 'then catch',
};

/** A browser of those days, with the script, and what it has made global. */
function oldBrowser(globals = {}) {
    const context = vm.createContext(globals);
    const always = [...Object.keys(globals), 'length', 'name', 'prototype', 'constructor'];
    const lists = Object.entries(es5).map(([object, names]) => [object, names.split(/\s+/).concat(always)]);
    vm.runInContext(
        `var window = this; (function () {
            const lists = ${JSON.stringify(lists)};
            for (const [object, names] of lists.map(([name, names]) => [eval(name), names]).reverse())
                for (const name of Object.getOwnPropertyNames(object))
                    if (names.indexOf(name) < 0) delete object[name];
        })();`,
        context,
    );
    const before = Object.keys(context);
    vm.runInContext(script, context);
    return { context, made: Object.keys(context).filter((name) => !before.includes(name)) };
}

test('the script has the syntax of ES5, and makes nothing global but libpell', () => {
    parse(script, { ecmaVersion: 5 });
    const { context, made } = oldBrowser();
    assert.deepEqual(made, ['libpell']);
    assert.equal(
        vm.runInContext('typeof Symbol + typeof Object.assign + typeof [].find', context),
        'undefined'.repeat(3),
    );
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

test('both forms are small', async () => {
    const bundle = await build({
        entryPoints: ['build/client/index.js'],
        bundle: true,
        minify: true,
        format: 'esm',
        write: false,
    });
    const sizes = [script, bundle.outputFiles[0].text].map((text) => zlib.gzipSync(text, { level: 9 }).length);
    assert.ok(Math.max(...sizes) <= 3072, `${sizes} bytes`);
});
