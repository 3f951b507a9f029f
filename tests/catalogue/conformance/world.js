// A build's pellhost in both folders, and what requests need to know of its simulated monitors.
import fs from 'node:fs';
import os from 'node:os';
import path from 'node:path';
import { Host } from './host.js';

/** @returns {Promise<import('./subject.js').World>} */
export async function openWorld(build, { root = '.', seed = 11, runs = 30, Full = Host } = {}) {
    const full = new Full(root, build, 'full');
    const minimal = new Host(root, build, 'minimal');
    await Promise.all([full.start(), minimal.start()]);
    const folder = fs.mkdtempSync(path.join(os.tmpdir(), 'pell-'));
    const file = full.pathOf(path.join(folder, 'package.dfw'));
    full.execute('firmware', 'create', file, '--product', 'TQ271-P', '--version', '2.1.0.3.7', '--size', '1024');
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
            await Promise.all([full.close(), minimal.close()]);
            fs.rmSync(folder, { recursive: true });
        },
    };
}
