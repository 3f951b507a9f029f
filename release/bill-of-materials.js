// Writes sbom.json (CycloneDX) and licenses/ of an archive: what is linked into each of its programs, as it was found in
// the build. node release/bill-of-materials.js ROOT VERSION TIME, with the time of the commit in seconds.
import { execFileSync } from 'node:child_process';
import crypto from 'node:crypto';
import fs from 'node:fs';
import path from 'node:path';
import { buildSync } from 'esbuild';

const [root, version, time] = process.argv.slice(2);
const built = 'build/windows';
const run = (...command) => execFileSync(command[0], command.slice(1), { encoding: 'utf8', maxBuffer: 1 << 28 });

/** The files of other projects that the objects of a folder of the build were compiled from. */
function headersOf(folder) {
    const headers = new Set();
    let isAsked = false;
    for (const line of run('ninja', '-C', built, '-t', 'deps').split('\n'))
        if (/^\S/.test(line)) isAsked = line.startsWith(`${folder}/`);
        else if (isAsked && line) headers.add(fs.realpathSync(path.resolve(built, line.trim())));
    return [...headers].filter((header) => !header.startsWith(`${process.cwd()}/`));
}

/** Files of the compiler by their names. */
const ofCompiler = (...names) =>
    names.map((name) => fs.realpathSync(run('x86_64-w64-mingw32-g++-posix', `-print-file-name=${name}`).trim()));

/** The Debian packages of files, as components. */
function debianPackages(files) {
    const packages = run('dpkg', '-S', ...files).matchAll(/^([^\s:,]+)(?::\w+)?: /gm);
    return [...new Set([...packages].map(([, name]) => name))].map((name) => {
        const found = run('dpkg-query', '-W', '-f', '${Version}', name);
        return {
            name,
            version: found,
            purl: `pkg:deb/debian/${name}@${encodeURIComponent(found)}?distro=debian-12`,
            licence: `/usr/share/doc/${name}/copyright`,
        };
    });
}

/** The npm packages that a page's script is bundled of, as components. */
function npmPackages(script) {
    const { metafile } = buildSync({ entryPoints: [script], bundle: true, write: false, outdir: '.', metafile: true });
    const used = Object.keys(metafile.inputs);
    const names = used.map((file) => /node_modules\/((?:@[^/]+\/)?[^/]+)\//.exec(file)?.[1]).filter(Boolean);
    return [...new Set(names)].map((name) => {
        const folder = `node_modules/${name}`;
        const found = JSON.parse(fs.readFileSync(`${folder}/package.json`, 'utf8'));
        const licence = fs.readdirSync(folder).find((file) => /^licen[cs]e/i.test(file));
        return {
            name,
            version: found.version,
            purl: `pkg:npm/${name.replace('@', '%40')}@${found.version}`,
            licence: `${folder}/${licence}`,
        };
    });
}

const runtime = ['libstdc++-6.dll', 'libgcc_s_seh-1.dll', 'libwinpthread-1.dll'];
const linkedIn = {
    'bin/libpell.dll': debianPackages([...headersOf('src'), ...ofCompiler('libstdc++.a', 'libgcc.a', 'dllcrt2.o')]),
    'pellhost/pellhost.exe': debianPackages([...headersOf('host'), ...ofCompiler('libgcc.a', 'crt2.o')]),
    'pellhost/pell_simulator.dll': debianPackages([...headersOf('simulator'), ...ofCompiler('libgcc.a', 'dllcrt2.o')]),
    ...Object.fromEntries(runtime.map((name) => [`pellhost/${name}`, debianPackages(ofCompiler(name))])),
    'pellhost/lab/lab.js': npmPackages('lab/src/parts/lab-app.ts'),
    'docs/site.js': npmPackages('docs/site/site.js'),
};

const licenceOf = ({ name }) => `licenses/${name.replace('/', '-')}.txt`;
const packages = new Map();
for (const component of Object.values(linkedIn).flat()) packages.set(component.purl, component);
const sorted = [...packages.values()].sort((a, b) => (a.purl < b.purl ? -1 : 1));
fs.mkdirSync(`${root}/licenses`, { recursive: true });
for (const component of sorted) fs.copyFileSync(component.licence, `${root}/${licenceOf(component)}`);

const programs = Object.keys(linkedIn);
const sumOf = (file) => crypto.createHash('sha256').update(fs.readFileSync(file)).digest('hex');
const document = {
    bomFormat: 'CycloneDX',
    specVersion: '1.5',
    version: 1,
    metadata: {
        timestamp: new Date(time * 1000).toISOString(),
        component: { type: 'library', 'bom-ref': 'libpell', name: 'libpell', version },
    },
    components: [
        ...programs.map((name) => ({
            type: 'file',
            'bom-ref': name,
            name,
            hashes: [{ alg: 'SHA-256', content: sumOf(`${root}/${name}`) }],
        })),
        ...sorted.map((component) => ({
            type: 'library',
            'bom-ref': component.purl,
            name: component.name,
            version: component.version,
            purl: component.purl,
            externalReferences: [{ type: 'license', url: licenceOf(component) }],
        })),
    ],
    dependencies: [
        { ref: 'libpell', dependsOn: programs },
        ...programs.map((ref) => ({ ref, dependsOn: linkedIn[ref].map(({ purl }) => purl).sort() })),
    ],
};
fs.writeFileSync(`${root}/sbom.json`, `${JSON.stringify(document, null, 2)}\n`);
