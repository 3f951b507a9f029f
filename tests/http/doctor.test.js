// What `pellhost doctor` prints for programs, and what it refuses.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { test } from 'node:test';
import Ajv from 'ajv/dist/2020.js';
import { builds, hostOf, runHost } from '../pellhost.js';

const ajv = new Ajv({ allowUnionTypes: true });
const isExamination = ajv.compile(JSON.parse(fs.readFileSync('docs/doctor.schema.json', 'utf8')));

for (const build of builds)
    test(`${build}: the doctor's document has the form of its schema, and wrong usage is refused`, () => {
        const host = hostOf(build);
        const folder = host.pathOf(`build/${build}`);
        const library = build === 'windows' ? 'libpell.dll' : 'libpell.so';
        for (const [args, status] of [
            [['--plugin', `${folder}/full/${library}`], 0],
            [['--plugin', `${folder}/minimal/${library}`], 0],
            [['--plugin', `${folder}/no-such-folder/${library}`], 1],
            [['--program', `${folder}/full`], 0],
            [['--program', `${folder}/no-such-folder`], 2],
            [['--program', ''], 2],
            [['--plugin', ''], 2],
        ]) {
            const run = runHost(host, ['doctor', '--json', ...args]);
            assert.equal(run.status, status, `${args}: ${run.stderr}`);
            if (status === 2) continue;
            const examination = JSON.parse(run.stdout);
            assert.ok(isExamination(examination), ajv.errorsText(isExamination.errors));
            assert.equal(examination.ok, status === 0);
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
