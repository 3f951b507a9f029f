// The plug-in, as the tests of the client reach it, and pages that have the client installed.
import fs from 'node:fs';
import path from 'node:path';
import { setImmediate as turn } from 'node:timers/promises';
import ts from 'typescript';
import { Batch, hostOf } from '../../tests/pellhost.js';

/** Where a test places files. */
export const pages = `build/client-tests/${path.basename(process.argv[1], '.test.js')}`;

export const catalogue = JSON.parse(fs.readFileSync('catalogue/catalogue.json', 'utf8'));

/** The bridge of a host with a plug-in among simulated monitors. */
export class Host extends Batch {
    listeners = [];

    constructor(world) {
        super(hostOf('native', world));
    }

    async call(resource, texts, answered) {
        const [{ responses, events }] = await this.send({ call: resource, texts });
        for (const { name, text } of events) {
            for (const one of this.listeners) if (one.event === name) one.listener(text);
            await turn(); // Each event is a message of its own.
        }
        answered(responses[0].status, responses[0].text);
    }

    addListener(event, listener) {
        this.listeners.push({ event, listener });
    }

    removeListener(event, listener) {
        this.listeners = this.listeners.filter((one) => one.event !== event || one.listener !== listener);
    }
}

/** Writes a file of a page that has the package installed, and answers its name. */
export function place(name, text) {
    fs.mkdirSync(`${pages}/node_modules`, { recursive: true });
    fs.rmSync(`${pages}/node_modules/libpell-client`, { force: true });
    fs.symlinkSync('../../../client', `${pages}/node_modules/libpell-client`);
    fs.writeFileSync(`${pages}/package.json`, '{"type":"module"}');
    fs.writeFileSync(`${pages}/${name}`, text);
    return path.resolve(pages, name);
}

const options = {
    strict: true,
    target: ts.ScriptTarget.ES2022,
    module: ts.ModuleKind.NodeNext,
    moduleResolution: ts.ModuleResolutionKind.NodeNext,
    types: [],
};

/** Compiles files of a page, and answers what is wrong with them. */
export function compile(files, { emit } = {}) {
    const program = ts.createProgram(files, { ...options, noEmit: !emit });
    const diagnostics = [...ts.getPreEmitDiagnostics(program), ...program.emit().diagnostics];
    return diagnostics.map(({ file, start, messageText }) => {
        const line = file ? file.getLineAndCharacterOfPosition(start).line : 0;
        return `${file?.text.split('\n')[line]}: ${ts.flattenDiagnosticMessageText(messageText, ' ')}`;
    });
}

/** Files of a page, as an editor has them open. */
export function project(files) {
    const read = (file) => (ts.sys.fileExists(file) ? ts.ScriptSnapshot.fromString(ts.sys.readFile(file)) : undefined);
    return {
        getScriptFileNames: () => files,
        getScriptVersion: () => '1',
        getScriptSnapshot: read,
        getCurrentDirectory: () => pages,
        getCompilationSettings: () => options,
        getDefaultLibFileName: ts.getDefaultLibFilePath,
        fileExists: ts.sys.fileExists,
        readFile: ts.sys.readFile,
        directoryExists: ts.sys.directoryExists,
        realpath: ts.sys.realpath,
    };
}
