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

/** The files that each object of the build was compiled from. */
const sources = new Map();
let object;
for (const line of run('ninja', '-C', built, '-t', 'deps').split('\n'))
    if (/^\S/.test(line)) sources.set((object = line.replace(/: #deps.*/, '')), []);
    else if (line) sources.get(object).push(line.trim());

/** The objects that a file of the build is linked of, those of its static libraries included. */
function objectsOf(target) {
    const [, inputs] = /^ {2}input: .*\n((?: {4}.*\n)*)/m.exec(run('ninja', '-C', built, '-t', 'query', target)) ?? [];
    const names = (inputs ?? '').split('\n').map((line) => line.trim().replace(/^\| /, ''));
    return names.flatMap((name) => {
        if (name.endsWith('.obj')) return name;
        return /^[^|].*(?<!\.dll)\.a$/.test(name) ? objectsOf(name) : [];
    });
}

/** The files of other projects that the objects of a file of the build were compiled from. */
function headersOf(target) {
    const objects = objectsOf(target);
    if (!objects.length) throw new Error(`${target} has no objects`);
    const files = new Set(objects.flatMap((name) => sources.get(name) ?? []));
    const headers = new Set([...files].map((file) => fs.realpathSync(path.resolve(built, file))));
    return [...headers].filter((header) => !header.startsWith(`${process.cwd()}/`));
}

/** Files of the compiler by their names. */
const ofCompiler = (...names) =>
    names.map((name) => fs.realpathSync(run('x86_64-w64-mingw32-g++-posix', `-print-file-name=${name}`).trim()));

/** Debian's names of licences that SPDX has as well. */
const spdx = {
    'Apache-2.0': 'Apache-2.0',
    'BSD-3-clause': 'BSD-3-Clause',
    'BSL-1.0': 'BSL-1.0',
    Expat: 'MIT',
    'GPL-2+': 'GPL-2.0-or-later',
    'GPL-3+': 'GPL-3.0-or-later',
    ISC: 'ISC',
    'LGPL-2+': 'LGPL-2.0-or-later',
    'LGPL-2.1+': 'LGPL-2.1-or-later',
    MIT: 'MIT',
    'ZPL-2.1': 'ZPL-2.1',
    Zlib: 'Zlib',
    expat: 'MIT',
};

/** The licences that a copyright file of Debian's machine-readable form names; none where it is plain text. */
function debianLicences(file) {
    const text = fs.readFileSync(file, 'utf8');
    if (!text.startsWith('Format:')) return [];
    const names = [...text.matchAll(/^License: *(\S.*)$/gm)].flatMap(([, one]) => one.trim().split(/,? (?:and|or) /));
    return [...new Set(names.map((name) => spdx[name] ?? name))].sort();
}

/** The Debian packages of files, as components. */
function debianPackages(files) {
    const packages = run('dpkg', '-S', ...files).matchAll(/^([^\s:,]+)(?::\w+)?: /gm);
    return [...new Set([...packages].map(([, name]) => name))].map((name) => {
        const found = run('dpkg-query', '-W', '-f', '${Version}', name);
        return {
            name,
            version: found,
            purl: `pkg:deb/debian/${name}@${encodeURIComponent(found)}?distro=debian-12`,
            supplier: 'Debian',
            licence: `/usr/share/doc/${name}/copyright`,
            licences: debianLicences(`/usr/share/doc/${name}/copyright`),
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
            supplier: found.author?.name ?? found.author,
            licence: `${folder}/${licence}`,
            licences: [found.license],
        };
    });
}

const runtime = ['libstdc++-6.dll', 'libgcc_s_seh-1.dll', 'libwinpthread-1.dll'];
const sumOf = (file) =>
    crypto
        .createHash('sha256')
        .update(fs.readFileSync(`${root}/${file}`))
        .digest('hex');
const binaries = fs
    .readdirSync(root, { recursive: true })
    .filter((file) => /\.(exe|dll)$/.test(file))
    .sort();

/** The Debian packages that are linked into a binary of the archive. */
function linkedInto(binary) {
    const name = path.basename(binary);
    if (runtime.includes(name)) return debianPackages(ofCompiler(name));
    const inFull = binary.replace(/^pellhost-minimal/, 'pellhost');
    const isCopy = fs.existsSync(`${root}/${inFull}`) && sumOf(inFull) === sumOf(binary);
    const target = (isCopy ? inFull : binary)
        .replace(/^pellhost-minimal/, 'minimal')
        .replace(/^(bin|pellhost)\//, 'full/');
    const ofItsKind = name.endsWith('.exe') ? ['crt2.o'] : ['dllcrt2.o'];
    if (name === 'libpell.dll') ofItsKind.push('libstdc++.a');
    return debianPackages([...headersOf(target), ...ofCompiler('libgcc.a', ...ofItsKind)]);
}

/** The binaries of the archive that one of them imports, in its folder or the one above. */
function importedBy(binary) {
    const imports = run('x86_64-w64-mingw32-objdump', '-p', `${root}/${binary}`).matchAll(/DLL Name: (\S+)/g);
    const folder = path.dirname(binary);
    return [...imports]
        .map(([, name]) =>
            [path.join(folder, name), path.join(folder, '..', name)].find((one) => binaries.includes(one)),
        )
        .filter(Boolean);
}

const linkedIn = {
    ...Object.fromEntries(binaries.map((binary) => [binary, linkedInto(binary)])),
    'pellhost/lab/lab.js': npmPackages('lab/src/parts/lab-app.ts'),
    'docs/site.js': npmPackages('docs/site/site.js'),
};

const licenceOf = ({ name }) => `licenses/${name.replace('/', '-')}.txt`;
/** Ids of SPDX, names that it does not have, or where the licences are told. */
const licencesOf = ({ licences, ...component }) =>
    (licences.length ? licences : [`told in ${licenceOf(component)}`]).map((one) => ({
        license: Object.values(spdx).includes(one) ? { id: one } : { name: one },
    }));
const packages = new Map();
for (const component of Object.values(linkedIn).flat()) packages.set(component.purl, component);
const sorted = [...packages.values()].sort((a, b) => (a.purl < b.purl ? -1 : 1));
fs.mkdirSync(`${root}/licenses`, { recursive: true });
for (const component of sorted) fs.copyFileSync(component.licence, `${root}/${licenceOf(component)}`);

const programs = Object.keys(linkedIn);
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
            hashes: [{ alg: 'SHA-256', content: sumOf(name) }],
        })),
        ...sorted.map((component) => ({
            type: 'library',
            'bom-ref': component.purl,
            name: component.name,
            version: component.version,
            purl: component.purl,
            ...(component.supplier && { supplier: { name: component.supplier } }),
            licenses: licencesOf(component),
            externalReferences: [{ type: 'license', url: licenceOf(component) }],
        })),
    ],
    dependencies: [
        { ref: 'libpell', dependsOn: programs },
        ...programs.map((ref) => ({
            ref,
            dependsOn: [
                ...linkedIn[ref].map(({ purl }) => purl),
                ...(binaries.includes(ref) ? importedBy(ref) : []),
            ].sort(),
        })),
    ],
};
// The serial number is of the contents: a UUID of version 8, RFC 9562.
const digest = crypto.createHash('sha256').update(JSON.stringify(document)).digest('hex');
const uuid = [digest.slice(0, 8), digest.slice(8, 12), `8${digest.slice(13, 16)}`, `a${digest.slice(17, 20)}`];
document.serialNumber = `urn:uuid:${[...uuid, digest.slice(20, 32)].join('-')}`;
fs.writeFileSync(`${root}/sbom.json`, `${JSON.stringify(document, null, 2)}\n`);
