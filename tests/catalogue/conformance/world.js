// A build's pellhost in both folders, and what requests need to know of its simulated monitors.
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { firmwarePackage, hostOf } from '../../pellhost.js';
import { Host } from './host.js';

/** @returns {Promise<import('./subject.js').World>} */
export async function openWorld(build, { seed = 11, runs = 30 } = {}) {
    const [full, minimal] = ['full', 'minimal'].map((world) => hostOf(build, world)).map((one) => new Host(one));
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'pell-'));
    const file = hostOf(build).pathOf(firmwarePackage(path.join(folder, 'package.dfw'), '--size', '1024'));
    const open = { resource: 'FileSystemDfwFile', method: 'POST', parameters: {}, body: { path: file } };
    const [{ value: listed }, { value: opened }] = await full.run([
        { resource: 'Monitors', method: 'GET', parameters: {} },
        open,
    ]);
    return {
        full,
        minimal,
        monitors: listed.filter((one, at) => listed.findIndex(({ product }) => product === one.product) === at),
        known: { path: file, dfwFile: opened.id, checkDfwFile: opened.id },
        package: { path: file, id: opened.id },
        seed,
        runs,
        requests: () => full.requests + minimal.requests,
        async close() {
            await Promise.all([full.batch.close(), minimal.batch.close()]);
            fs.rmSync(folder, { recursive: true });
        },
    };
}
