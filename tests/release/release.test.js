// The archives of a release, unpacked in a folder of their own and used under Wine.
import assert from 'node:assert/strict';
import { execFileSync, spawnSync } from 'node:child_process';
import crypto from 'node:crypto';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { after, test } from 'node:test';
import { ask, brightness, startServer } from '../pellhost.js';

const { version } = JSON.parse(fs.readFileSync('client/package.json', 'utf8'));
const name = `libpell-${version}-windows-x64`;
const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'Größe 1 '));
after(() => fs.rmSync(folder, { recursive: true }));
execFileSync('unzip', ['-q', path.resolve(`dist/${name}.zip`), '-d', folder], { env: { ...process.env, LC_ALL: 'C' } });
const root = path.join(folder, name);
const files = fs
    .readdirSync(root, { recursive: true })
    .filter((file) => fs.statSync(path.join(root, file)).isFile())
    .sort();
const read = (file) => fs.readFileSync(path.join(root, file));
const sumOf = (file) => crypto.createHash('sha256').update(read(file)).digest('hex');
const wine = path.resolve('scripts/wine');
const pellhost = (...args) => [wine, [path.join(root, 'pellhost/pellhost.exe'), ...args]];
const run = (command, args, options) => execFileSync(command, args, { encoding: 'utf8', cwd: root, ...options });

const programs =
    'pellhost.exe libpell.dll pell_simulator.dll libdmc_x64.dll libcolour_x64.dll QtWebKitBridgeHelper.dll ' +
    'libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll';
const expected = {
    '': 'README.txt CHANGELOG.md BUILD.txt SHA256SUMS sbom.json',
    bin: 'libpell.dll libpell.dll.debug',
    include: 'libpell.h',
    lib: 'libpell.def libpell.lib libpell.dll.a',
    'lib/cmake/libpell': 'libpellConfig.cmake libpellConfigVersion.cmake',
    catalogue: 'catalogue.json openapi.json',
    pellhost: `${programs} libfwupdate_x64.dll libPlugin_x64.dll`,
    'pellhost/exports': 'libscrivo2_x64.dll',
    'pellhost-minimal': programs,
};
/** Folders whose files are all of some kinds. */
const kinds = {
    'catalogue/schemas': /\.json$/,
    docs: /\.(html|css|js|png|json)$/,
    examples: /\.(html|css|js|c|h|txt|md)$/,
    licenses: /\.txt$/,
    'pellhost/lab': /\.(html|css|js)$|^client\//,
    'pellhost/scenarios': /\.json$/,
};

test('it has what it should have, and nothing else', () => {
    const known = new Set(
        Object.entries(expected).flatMap(([at, names]) => names.split(' ').map((one) => path.join(at, one))),
    );
    const others = files.filter((file) => !known.delete(file));
    assert.deepEqual([...known], []);
    for (const [at, kind] of Object.entries(kinds)) {
        const own = others.filter((file) => file.startsWith(`${at}/`)).map((file) => file.slice(at.length + 1));
        assert.ok(own.length > 0, `${at} is empty`);
        assert.deepEqual(
            own.filter((file) => !kind.test(file)),
            [],
            at,
        );
    }
    assert.deepEqual(
        others.filter((file) => !Object.keys(kinds).some((at) => file.startsWith(`${at}/`))),
        [],
    );
    for (const page of ['docs/index.html', 'pellhost/lab/index.html', 'pellhost/lab/reference/index.html'])
        assert.ok(files.includes(page), page);
});

test('the sums are those of all files', () => {
    const sums = new Set(read('SHA256SUMS').toString().trimEnd().split('\n'));
    const others = files.filter((file) => file !== 'SHA256SUMS' && !sums.delete(`${sumOf(file)}  ${file}`));
    assert.deepEqual({ withoutSum: others, withoutFile: [...sums] }, { withoutSum: [], withoutFile: [] });
});

test('nothing tells where it was built', () => {
    const places = [process.cwd(), os.homedir() + path.sep, os.tmpdir() + path.sep, fs.realpathSync('build')];
    const ours = files.filter((file) => !file.startsWith('licenses/'));
    const found = ours.flatMap((file) =>
        places.filter((place) => read(file).includes(place)).map((one) => [file, one]),
    );
    assert.deepEqual(found, []);
});

test('the links of its texts lead to what is in it', () => {
    const texts = files.filter((file) => file.endsWith('.md'));
    const links = texts.flatMap((file) =>
        [
            ...read(file)
                .toString()
                .matchAll(/\]\((?!https?:)([^)#]*)#?([^)]*)\)/g),
        ].map(([, link, anchor]) => {
            return { file, link, to: link ? path.join(path.dirname(file), link) : file, anchor };
        }),
    );
    const isDead = ({ to, anchor }) =>
        !files.includes(to) || (anchor && to.endsWith('.html') && !read(to).includes(`id="${anchor}"`));
    assert.ok(links.length > 1);
    assert.deepEqual(links.filter(isDead), []);
    assert.doesNotMatch(read('include/libpell.h').toString(), /\w\.md\b/);
});

test('it tells how to build it again', () => {
    const text = read('BUILD.txt').toString();
    const commit = execFileSync('git', ['rev-parse', 'HEAD'], { encoding: 'utf8' }).trim();
    assert.ok(text.includes(`\n    git checkout ${commit}\n`), text);
    for (const tool of ['gcc-mingw-w64-x86-64-posix', 'cmake', 'node', 'npm'])
        assert.match(text, new RegExp(`^    ${tool} \\d`, 'm'));
    assert.doesNotMatch(text, /@[A-Z]+@/);
});

test('it is of one version', () => {
    const texts = { 'README.txt': version, 'BUILD.txt': version, 'CHANGELOG.md': `## ${version},` };
    for (const [file, text] of Object.entries(texts)) assert.ok(read(file).includes(text), file);
    const inResource = Buffer.from(`ProductVersion\0${version}\0`, 'utf16le');
    const resource = read('bin/libpell.dll').toString('utf16le').replace(/\0+/g, '\0');
    assert.ok(Buffer.from(resource, 'utf16le').includes(inResource), 'the version of the DLL');
    assert.equal(JSON.parse(read('catalogue/openapi.json')).info.version, version);
    assert.deepEqual(read('catalogue/catalogue.json'), fs.readFileSync('catalogue/catalogue.json'));
    assert.deepEqual(read('pellhost/libpell.dll'), read('bin/libpell.dll'));
});

test('pellhost runs as it is', () => {
    const monitors = JSON.parse(run(...pellhost('list', '--json')));
    assert.ok(JSON.stringify(monitors).includes('TQ271-P'), JSON.stringify(monitors));
    const fromFile = run(...pellhost('--scenario', 'pellhost/scenarios/built-in.json', 'list', '--json'));
    assert.deepEqual(JSON.parse(fromFile), monitors);
    assert.match(run(wine, [path.join(root, 'pellhost-minimal/pellhost.exe'), 'get', 'Brightness']), /50/);
    const output = run(...pellhost('shell'), {
        cwd: folder,
        input: [
            'get Brightness',
            'put Brightness 61',
            'get Brightness',
            'firmware create "new ü.dfw" --product TQ271-P --version 2.1.0.3.7',
            'firmware update "new ü.dfw"',
            'get FirmwareUpdateVersion --json',
        ].join('\n'),
    });
    assert.match(output, /50[^]*61[^]*100[^]*2\.1\.0\.3\.7/);
    assert.ok(fs.existsSync(path.join(folder, 'new ü.dfw')));
});

test('pellhost serves the example page, the lab and the reference', async (t) => {
    const host = { command: [wine, path.join(root, 'pellhost/pellhost.exe')] };
    const { address } = await startServer(t, host, '--page', path.join(root, 'examples/desk'));
    for (const [target, text] of [
        ['/', 'Monitors on the desk'],
        ['/desk.js', 'libpell-client'],
        ['/lab/', 'lab.js'],
        ['/lab/reference/picture.html', 'Brightness'],
        ['/lab/client/index.js', 'Pell'],
        [brightness, '{"error":null,"value":50}'],
    ]) {
        const answer = await ask(address, target);
        assert.equal(answer.status, 200, target);
        assert.ok(answer.text.includes(text), target);
    }
});

test('find_package gives what GCC and clang, for the MSVC ABI, link a host with', () => {
    const source = path.join(folder, 'A host');
    fs.mkdirSync(source);
    fs.writeFileSync(
        path.join(source, 'CMakeLists.txt'),
        `cmake_minimum_required(VERSION 3.20)
project(host LANGUAGES C)
find_package(libpell ${version.replace(/\.\d+$/, '')} REQUIRED)
add_executable(host host.c)
target_link_libraries(host PRIVATE libpell::libpell)
`,
    );
    fs.writeFileSync(
        path.join(source, 'host.c'),
        `#define LIBPELL_DECLARE_EXPORTS
#include <libpell.h>
int main(void) {
    return Setup("", "", "", "") == 0 && Brightness("", "", "", "") != 0 ? 7 : 1;
}
`,
    );
    const compilers = {
        gcc: ['-DCMAKE_C_COMPILER=x86_64-w64-mingw32-gcc-posix'],
        // Without a C runtime, as there is none of the MSVC ABI here.
        clang: [
            '-DCMAKE_C_COMPILER=clang',
            '-DCMAKE_C_COMPILER_TARGET=x86_64-pc-windows-msvc',
            '-DCMAKE_TRY_COMPILE_TARGET_TYPE=STATIC_LIBRARY',
            '-DCMAKE_MSVC_RUNTIME_LIBRARY=',
            '-DCMAKE_C_STANDARD_LIBRARIES=',
            '-DCMAKE_EXE_LINKER_FLAGS=-nostdlib -Wl,/entry:main',
        ],
    };
    for (const [compiler, options] of Object.entries(compilers)) {
        const build = path.join(folder, `Built by ${compiler}`);
        const settings = ['-DCMAKE_SYSTEM_NAME=Windows', '-DCMAKE_BUILD_TYPE=Release', `-Dlibpell_ROOT=${root}`];
        run('cmake', ['-G', 'Ninja', '-S', source, '-B', build, ...settings, ...options]);
        run('cmake', ['--build', build]);
        const host = path.join(root, 'pellhost', `${compiler}.exe`);
        fs.copyFileSync(path.join(build, 'host.exe'), host);
        assert.throws(() => run(wine, [host], { stdio: 'pipe' }), { status: 7 }, compiler);
        fs.rmSync(host);
    }
});

test('the example host builds and runs as its README says', () => {
    const { status, stdout, stderr } = spawnSync('scripts/check-host', [root], { encoding: 'utf8' });
    assert.equal(status, 0, stdout + stderr);
});

test('the bill of materials names all binaries and what is linked in, with versions and licences', () => {
    const { components, dependencies } = JSON.parse(read('sbom.json'));
    assert.deepEqual(
        components.map((component) => component.name).filter((one) => /\.(exe|dll)$/.test(one)),
        files.filter((file) => /\.(exe|dll)$/.test(file)),
    );
    const byReference = new Map(components.map((component) => [component['bom-ref'], component]));
    const linkedIn = (program) =>
        dependencies
            .find(({ ref }) => ref === program)
            .dependsOn.map((reference) => byReference.get(reference).name)
            .sort();
    const compiler = ['g++-mingw-w64-x86-64-posix', 'gcc-mingw-w64-x86-64-posix'];
    assert.deepEqual(linkedIn('bin/libpell.dll'), [...compiler, 'mingw-w64-common', 'mingw-w64-x86-64-dev']);
    const known = {
        'pellhost/pellhost.exe': ['libboost1.81-dev', 'libcli11-dev', 'nlohmann-json3-dev', 'pellhost/libstdc++-6.dll'],
        'pellhost/libpell.dll': ['pellhost/QtWebKitBridgeHelper.dll', 'pellhost/libdmc_x64.dll'],
        'pellhost/exports/libscrivo2_x64.dll': ['pellhost/pell_simulator.dll'],
        'pellhost-minimal/libdmc_x64.dll': ['pellhost-minimal/pell_simulator.dll', 'pellhost-minimal/libstdc++-6.dll'],
        'pellhost/lab/lab.js': ['lit', 'lit-html'],
    };
    for (const [binary, names] of Object.entries(known))
        for (const one of names) assert.ok(linkedIn(binary).includes(one), `${binary}: ${one}`);
    assert.ok(!linkedIn('pellhost/libdmc_x64.dll').includes('libcli11-dev'));
    for (const { type, name, hashes, version, supplier, licenses, externalReferences } of components) {
        if (type === 'file') {
            assert.equal(hashes[0].content, sumOf(name));
            continue;
        }
        assert.ok(version && supplier.name && licenses.length > 0, name);
        for (const { license } of licenses) assert.ok(license.id ?? license.name, name);
        assert.ok(read(externalReferences[0].url).length > 100, name);
    }
});

test('the client installs from its archive', () => {
    const page = fs.mkdtempSync(path.join(folder, 'page '));
    const archive = path.resolve(`dist/libpell-client-${version}.tgz`);
    fs.writeFileSync(path.join(page, 'package.json'), '{"type": "module"}');
    run('npm', ['install', '--offline', '--no-audit', '--no-fund', archive], { cwd: page, stdio: 'pipe' });
    fs.writeFileSync(
        path.join(page, 'page.js'),
        `import { Pell } from 'libpell-client';
const pell = new Pell(async ({ resource }) => ({ status: 200, text: '{"error":null,"value":[]}' }));
console.log(await pell.monitors());
`,
    );
    assert.equal(run('node', ['page.js'], { cwd: page }), '[]\n');
    const installed = JSON.parse(fs.readFileSync(path.join(page, 'node_modules/libpell-client/package.json')));
    assert.equal(installed.version, version);
});
