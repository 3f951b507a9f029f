// Whether conformance finds mistakes: plants some of every kind, one at a time, and tells which are found. To be run by
// hand in the project's folder:
//     node tests/catalogue/mutations.js [catalogue|handlers] [--all]
// Mistakes in the catalogue are planted at a few places, or with --all at every one, and proven against build/native.
// Those in handlers are built in a copy of the project, in build/mutations; its first build takes minutes.
import { execFileSync } from 'node:child_process';
import fs from 'node:fs';
import { isServed } from '../../catalogue/tools/match.js';
import { contradictionsOf } from './conformance/proof.js';
import { openWorld } from './conformance/world.js';

const catalogue = JSON.parse(fs.readFileSync('catalogue/catalogue.json', 'utf8'));

// ---- Mistakes in the catalogue --------------------------------------------------------------------------------------
// Each kind is a function of what the mistake is made in. It gives the function that makes it, or nothing where there is
// no place for it.

const otherType = ({ type }) => ({ type: type === 'string' ? 'number' : 'string' });
const memberOf = ({ query = {} }, test) => Object.values(query).find(test);

const ofRows = {
    'an answer of another type': (row) => () => (row.answer = otherType(row.answer)),
    'an answer that lacks a member': ({ answer: { properties } }) =>
        properties && (() => delete properties[Object.keys(properties).at(-1)]),
    'a body of another type': (row) => row.body && (() => (row.body = otherType(row.body))),
    'a flag declared as a valued member': (row) => {
        const flag = memberOf(row, ({ schema }) => !schema);
        return flag && (() => (flag.schema = { type: 'number' }));
    },
    'a valued member declared as a flag': (row) => {
        const valued = memberOf(row, ({ schema }) => schema);
        return valued && (() => delete valued.schema);
    },
    'a member of the query too many': (row) => () => (row.query = { ...row.query, more: {} }),
    'a reason too few': ({ reasons }) => reasons && (() => reasons.pop()),
    'a reason too many': (row) => () => (row.reasons = [...(row.reasons ?? []), 'Get nothing.']),
    'needs nothing': (row) => row.needs && (() => delete row.needs),
    'needs a newer libdmc': (row) => !row.needs && (() => (row.needs = 'newer libdmc')),
    'supported by all': (row) => row.unsupportedBy && (() => delete row.unsupportedBy),
    'unsupported by an older monitor': (row, { of }) =>
        of === 'monitor' && !row.unsupportedBy && (() => (row.unsupportedBy = ['TB240'])),
    'a call too many': (row) => row.calls && (() => row.calls++),
    'an event too few': (row) => row.events && (() => delete row.events),
};

const ofLists = {
    'rows in another order': (rows, at) => {
        const [first, second] = [rows[at], rows[at + 1]];
        const isOrdered = second?.query && isServed(first) && isServed(second) && first.query;
        return isOrdered && (() => rows.splice(at, 2, second, first));
    },
    'a row too few': (rows, at) => isServed(rows[at]) && rows.length > 1 && (() => rows.splice(at, 1)),
    'another refusal': (rows, at) => rows[at].refused && (() => (rows[at].refused += '.')),
    'a refusal too few': (rows, at) => rows[at].refused && (() => rows.splice(at, 1)),
    'another failure': (rows, at) => rows[at].fails && (() => (rows[at].fails += '.')),
};

const ofResources = {
    'a method that is not served': ({ methods }) =>
        !methods.DELETE && (() => (methods.DELETE = [{ answer: { type: 'null' } }])),
    'a method too few': ({ methods }) =>
        Object.keys(methods).length > 1 && (() => delete methods[Object.keys(methods).at(-1)]),
    'another example': ({ examples }) => examples.length > 0 && (() => (examples[0][1] += '0')),
    'said that it cannot be put back': (one) =>
        one.methods.GET && one.methods.PUT && !one.putBack && (() => (one.putBack = 'Why not.')),
    'not said that it cannot be put back': (one) => one.putBack && (() => delete one.putBack),
};

/** By kind: the mistakes that can be made in a resource. */
const kinds = new Map();
for (const [kind, plant] of Object.entries(ofLists))
    kinds.set(kind, ({ methods }) => Object.values(methods).flatMap((rows) => rows.map((_, at) => plant(rows, at))));
for (const [kind, plant] of Object.entries(ofRows))
    kinds.set(kind, (resource) =>
        Object.values(resource.methods)
            .flat()
            .map((row) => isServed(row) && plant(row, resource)),
    );
for (const [kind, plant] of Object.entries(ofResources)) kinds.set(kind, (resource) => [plant(resource)]);

/** @returns {Promise<boolean>} whether conformance tells anything of the resource */
async function isFound(name, mutated, world) {
    const problems = contradictionsOf(name, mutated, world);
    return problems.then(
        ({ length }) => length > 0,
        () => true,
    );
}

async function mutateCatalogue(perKind) {
    const world = await openWorld('native');
    for (const [kind, plant] of kinds) {
        const mistakesIn = (resource) => plant(resource).filter(Boolean);
        const places = Object.entries(catalogue.resources).flatMap(([name, resource]) =>
            mistakesIn(resource).map((_, at) => ({ name, at })),
        );
        const step = Math.max(1, Math.floor(places.length / perKind));
        const missed = [];
        const chosen = places.filter((_, index) => index % step === 0);
        for (const { name, at } of chosen) {
            const resource = structuredClone(catalogue.resources[name]);
            mistakesIn(resource)[at]();
            const resources = { ...catalogue.resources, [name]: resource };
            if (!(await isFound(name, { ...catalogue, resources }, world))) missed.push(`${name} (${at + 1})`);
        }
        report(kind, chosen.length, missed);
    }
    const events = structuredClone(catalogue.events);
    events.transferFirmwareData.value = otherType(events.transferFirmwareData.value);
    const isCaught = await isFound('FirmwareUpdateTransfer', { ...catalogue, events }, world);
    report('an event of another type', 1, isCaught ? [] : ['transferFirmwareData']);
    await world.close();
}

// ---- Mistakes in handlers -------------------------------------------------------------------------------------------

/** The resource, its file, what stands there, and the mistake. */
const handlers = {
    'an answer of another type': [
        'ModeSkip',
        'shapes/PerMode.h',
        'Resource::get.action, mode) != 0',
        'Resource::get.action, mode)',
    ],
    'another answer': ['FineContrastFeature', 'picture/FineContrastFeature.cpp', '{"reset", 15}', '{"reset", 16}'],
    'another reason': ['Gamma', 'picture/Gamma.cpp', '"Set gamma index."', '"Set gamma."'],
    'another function': ['PanelType', 'picture/PanelType.cpp', 'NAMED(DmCtrlGetPanelType)', 'DmCtrlGetPanelRevision'],
    'a result that nobody looks at': [
        'Candela',
        'picture/Candela.cpp',
        'write(DmCtrlSetCandela, "Set candela.",',
        'call(DmCtrlSetCandela,',
    ],
    'steps after one that failed': [
        'HLGSystemGamma',
        'picture/HLGSystemGamma.cpp',
        /write\(NAMED\(DmCtrlSetHLGSystemGammaEnable\), "[^"]*",/,
        'call(NAMED(DmCtrlSetHLGSystemGammaEnable),',
    ],
    'queries in another order': ['Contrast', 'picture/Contrast.cpp', /( +Range\{.*\n)( +Read\{.*\n)/, '$2$1'],
    'a flag that counts when it is true': [
        'LUTA',
        'picture/LUTA.cpp',
        'query.has("supports")',
        'query.get("supports").asBool()',
    ],
    'a selector that is not checked': [
        'ColorMatrix',
        'picture/ColorMatrix.cpp',
        'index = indexSelector.in(query)',
        'index = std::optional(query.get("index").asUInt())',
    ],
    'a selector of another kind': [
        'Gain',
        'picture/Gain.cpp',
        'colorSelectorRGB.in(query)',
        'colorSelectorRGBW.in(query)',
    ],
    'a method that is not listed': [
        'PanelRevision',
        'picture/PanelRevision.cpp',
        /(using [\w:]+;\n)/,
        '$1    void Delete(BridgeResult&, const Monitor&, const RequestRecord&) override {}\n',
    ],
    'a body that is not checked': ['DUETC', 'picture/DUETC.cpp', '{isNumber, "data must', '{isPresent, "data must'],
    'another refusal': ['Mode', 'picture/Mode.cpp', '"data is empty."', '"data must be present."'],
    'a refusal after a write': [
        'LUT3D',
        'picture/LUT3D.cpp',
        /( +checkRequest\(!data\.has\("selection"\).*\n)( +if \(data\.has\("enable"\)\).*\n)/,
        '$2$1',
    ],
    'a write to another place': [
        'SixColorsSaturation',
        'picture/SixColorsSaturation.cpp',
        'DmCtrlSetGreenSaturation2',
        'DmCtrlSetBlueSaturation2',
    ],
    'an event of another type': [
        'FirmwareUpdateTransfer',
        'firmware/FirmwareUpdateTransfer.cpp',
        '{"blockCount", progress.blockCount}',
        '{"blockCount", "many"}',
    ],
};

async function mutateHandlers() {
    const copy = 'build/mutations';
    fs.mkdirSync(copy, { recursive: true });
    const parts = fs.readdirSync('.').filter((name) => !['.git', 'build', 'node_modules'].includes(name));
    execFileSync('cp', ['-ru', ...parts, copy]);
    for (const [, file, from, to] of Object.values(handlers)) {
        const source = fs.readFileSync(`src/resources/${file}`, 'utf8');
        const mutated = source.replace(from, to);
        if (mutated === source) throw new Error(`src/resources/${file} has no ${from}`);
        const target = `${copy}/src/resources/${file}`;
        if (fs.readFileSync(target, 'utf8') !== mutated) fs.writeFileSync(target, mutated);
    }
    const options = { cwd: copy, stdio: ['ignore', 'ignore', 'inherit'] };
    execFileSync('cmake', ['--preset', 'native'], options);
    const targets = ['pellhost', 'pellhost_in_minimal', 'libpell_in_minimal'];
    execFileSync('cmake', ['--build', '--preset', 'native', '--target', ...targets], options);

    const world = await openWorld('native', { root: copy });
    for (const [kind, [name]] of Object.entries(handlers))
        report(`${kind} (${name})`, 1, (await isFound(name, catalogue, world)) ? [] : [name]);
    await world.close();
}

// ---- What comes of it -----------------------------------------------------------------------------------------------

function report(kind, count, missed) {
    console.log(`${count - missed.length}/${count} ${kind}${missed.length ? `; not in ${missed.join(', ')}` : ''}`);
    if (missed.length) process.exitCode = 1;
}

const perKind = process.argv.includes('--all') ? Infinity : 6;
const parts = { catalogue: () => mutateCatalogue(perKind), handlers: mutateHandlers };
const named = Object.keys(parts).filter((name) => process.argv.includes(name));
for (const name of named.length ? named : Object.keys(parts)) {
    console.log(`Mistakes in ${name === 'catalogue' ? 'the catalogue' : 'handlers'} that are found:`);
    await parts[name]();
}
