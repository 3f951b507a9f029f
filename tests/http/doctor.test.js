// The form of what `pellhost doctor --json` prints.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { test } from 'node:test';
import Ajv from 'ajv/dist/2020.js';
import { builds, hostOf } from './server.js';

const ajv = new Ajv({ allowUnionTypes: true });
const isExamination = ajv.compile(JSON.parse(fs.readFileSync('docs/doctor.schema.json', 'utf8')));

for (const build of builds)
    for (const [world, status] of [
        ['full', 0],
        ['minimal', 0],
        ['no-such-folder', 1],
    ])
        test(`${build}: the doctor's document of ${world} has the form of its schema`, () => {
            const { command, pathOf } = hostOf(build);
            const folder = pathOf(`build/${build}/${world}`);
            const plugin = `${folder}/libpell.${build === 'windows' ? 'dll' : 'so'}`;
            const args = ['doctor', '--json', '--plugin', plugin];
            const run = spawnSync(command[0], [...command.slice(1), ...args], { encoding: 'utf8' });
            assert.equal(run.status, status, run.stderr);
            const examination = JSON.parse(run.stdout);
            assert.ok(isExamination(examination), ajv.errorsText(isExamination.errors));
            assert.equal(examination.ok, status === 0);
        });

for (const build of builds)
    test(`${build}: the doctor refuses a plug-in without a name and a program in no folder`, () => {
        const { command, pathOf } = hostOf(build);
        const folder = pathOf(`build/${build}/full`);
        for (const [args, status] of [
            [['--program', folder], 0],
            [['--program', `${folder}/no-such-folder`], 2],
            [['--program', ''], 2],
            [['--plugin', ''], 2],
        ]) {
            const run = spawnSync(command[0], [...command.slice(1), 'doctor', ...args], { encoding: 'utf8' });
            assert.equal(run.status, status, `${args}: ${run.stderr}`);
        }
    });

test('native: the doctor tells a folder that it may not read from one without libpell', (t) => {
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'doctor-'));
    t.after(() => fs.rmSync(folder, { recursive: true }));
    fs.chmodSync(folder, 0);
    const [program] = hostOf('native').command;
    const nobody = process.getuid() === 0 ? { uid: 65534, gid: 65534 } : {}; // root may read everything
    const args = ['doctor', '--json', '--plugin', `${folder}/libpell.so`];
    const run = spawnSync(program, args, { encoding: 'utf8', ...nobody });
    if (run.error?.code === 'EACCES') return t.skip('other users may not run this pellhost');
    assert.equal(run.status, 1, run.stderr);
    const [problem] = JSON.parse(run.stdout).problems;
    assert.match(problem.text, /libpell\.so cannot be used: its folder cannot be read, for want of permissions/);
    assert.match(problem.remedy, /permission/);
});
