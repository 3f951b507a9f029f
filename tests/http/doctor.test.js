// The form of what `pellhost doctor --json` prints.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import fs from 'node:fs';
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
