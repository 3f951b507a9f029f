import { call, listen, type CallOptions, type PutOptions } from './call.js';
import type { ApplicationMethods, EventMethods, FileMethods, MonitorMethods } from './methods.js';
import type { Events, FileSystemDfwFile, MonitorAddress } from './resources.js';
import type { Transport, TransportRequest } from './transport.js';

export type Step = Events['transferFirmwareData'];

/** What monitors, files and the application have in common. methods.d.ts restricts each to its own resources. */
class Addressed {
    constructor(
        readonly transport: Transport,
        readonly parameters: TransportRequest['parameters'],
    ) {}

    get(resource: string, query?: object, options?: CallOptions): Promise<any> {
        return this.send('GET', resource, undefined, query, options);
    }

    tryGet(resource: string, query?: object, options?: CallOptions): Promise<any> {
        return this.get(resource, query, options).then(undefined, (error) => {
            if (!error.isUnsupported && !error.isOutdatedLibrary) throw error;
        });
    }

    put(resource: string, body?: unknown, query?: object, options?: PutOptions): Promise<any> {
        return this.send('PUT', resource, body, query, options);
    }

    post(resource: string, body?: unknown, query?: object, options?: CallOptions): Promise<any> {
        return this.send('POST', resource, body, query, options);
    }

    delete(resource: string, body?: unknown, query?: object, options?: CallOptions): Promise<any> {
        return this.send('DELETE', resource, body, query, options);
    }

    on(event: string, listener: (value: any) => void): () => void {
        return listen(this.transport, event, listener);
    }

    private send(
        method: TransportRequest['method'],
        resource: string,
        body: unknown,
        query: object = {},
        options?: PutOptions,
    ): Promise<any> {
        return call(this.transport, { resource, method, parameters: this.parameters, query, body }, options);
    }
}

// Hides the methods that take any name behind those of the interfaces.
const Base = Addressed as new (transport: Transport, parameters: TransportRequest['parameters']) => {};

export interface Pell extends ApplicationMethods, EventMethods {}
export interface DfwFile extends FileMethods {}
export interface Monitor extends MonitorMethods {}

/** The plug-in, behind a transport. */
export class Pell extends Base {
    constructor(readonly transport: Transport) {
        super(transport, {});
    }

    /** The connected monitors; with `{update: true}` after the library has looked for them afresh. */
    monitors(query?: { update?: true }, options?: CallOptions): Promise<Monitor[]> {
        return this.get('Monitors', query, options).then((addresses: MonitorAddress[]) =>
            addresses.map(({ product, serial }) => new Monitor(this.transport, product, serial)),
        );
    }

    /** Opens a firmware package, which is to be closed again. */
    open(path: string, options?: CallOptions): Promise<DfwFile> {
        const request = {
            resource: 'FileSystemDfwFile',
            method: 'POST' as const,
            parameters: {},
            query: {},
            body: { path },
        };
        return call(this.transport, request, options).then(
            (value) => new DfwFile(this.transport, (value as { id: string }).id),
        );
    }
}

/** A firmware package that is open. */
export class DfwFile extends Base {
    constructor(
        readonly transport: Transport,
        readonly id: string,
    ) {
        super(transport, { id });
    }

    /** Which product the package is for, and its version. */
    describe(options?: CallOptions): Promise<FileSystemDfwFile.Target> {
        return this.get('FileSystemDfwFile', {}, options);
    }

    close(options?: CallOptions): Promise<null> {
        return this.delete('FileSystemDfwFile', undefined, {}, options);
    }
}

/** A monitor, whether it is connected or not. Several objects may stand for the same one. */
export class Monitor extends Base {
    constructor(
        readonly transport: Transport,
        readonly product: string,
        readonly serial: string,
    ) {
        super(transport, { product, serial });
    }

    /** Begins to send a firmware package to the monitor. Once begun, nothing stops it. */
    transfer(file: { id: string }, options?: CallOptions): Transfer {
        return new Transfer(this, file.id, options);
    }
}

/** Events may come by another way than the answer, and later: for how many milliseconds the last step is waited for. */
const patience = 1000;

function isLast({ transferredBlock, blockCount }: Step): boolean {
    return transferredBlock === blockCount;
}

/** A firmware transfer. */
export class Transfer {
    /** Settles when the transfer is over. Its last step may come later. */
    readonly done: Promise<void>;
    private newest?: Step;
    private steps = 0;
    private isOver = false;
    private changed!: Promise<void>;
    private wake!: () => void;

    constructor(monitor: Monitor, id: string, options?: CallOptions) {
        const { transport, product, serial } = monitor;
        const receive = (step: Step) => {
            if (step.product !== product || step.serial !== serial) return;
            this.newest = step;
            ++this.steps;
            this.change();
            if (isAnswered && isLast(step)) end();
        };
        this.change();
        const stop = transport.on && listen(transport, 'transferFirmwareData', receive);
        let isAnswered = false;
        const end = () => {
            if (stop) stop();
            this.isOver = true;
            this.change();
        };
        const succeed = () => {
            isAnswered = true;
            if (!stop || (this.newest && isLast(this.newest))) end();
            else setTimeout(end, patience);
        };
        this.done = monitor.post('FirmwareUpdateTransfer', { dfwFile: id }, {}, options).then(succeed, (error) => {
            end();
            throw error;
        });
    }

    /**
     * The steps of the transfer. A loop that is slower than the monitor gets the newest step and skips those before. It
     * ends when the transfer is over and its last step was seen, or has not come for a second; it throws at once if the
     * transfer fails. Leaving it early does not stop the transfer: then `done` says how it ends.
     */
    progress(): AsyncIterableIterator<Step> {
        let seen = 0;
        let isLeft = false;
        const end: IteratorResult<Step, undefined> = { done: true, value: undefined };
        const next = (): Promise<IteratorResult<Step>> => {
            if (isLeft) return Promise.resolve(end);
            if (seen < this.steps) {
                seen = this.steps;
                return Promise.resolve({ done: false, value: this.newest as Step });
            }
            if (!this.isOver) return this.changed.then(next);
            isLeft = true;
            return this.done.then(() => end);
        };
        const leave = () => {
            isLeft = true;
            return Promise.resolve(end);
        };
        const iterator = { next, return: leave } as AsyncIterableIterator<Step>;
        // Old browsers have no symbols.
        if (typeof Symbol === 'function' && Symbol.asyncIterator) iterator[Symbol.asyncIterator] = () => iterator;
        // The loop throws the failure, so `done` must not report it as unhandled as well.
        this.done.then(undefined, () => {});
        return iterator;
    }

    private change(): void {
        if (this.wake) this.wake();
        this.changed = new Promise((resolve) => (this.wake = resolve));
    }
}
