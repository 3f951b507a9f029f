import type { Resources } from './resources.js';

/** The texts that tell which step of a request failed. */
export type Reason = Resources[keyof Resources]['reason'] | 'Monitor is not found.';

const unsupported = [0x80000007, 0x80000009, 0x80000014];
const unreachable = [0x80000008, 0x80010001, 0x80010002];
const libraryIsMissing = 0x80000010;

/** A call that failed. */
export class PellError extends Error {
    /** The status of the answer; 0 when there was none. */
    readonly status: number;
    /** The result of the monitor-control library, of a DmError. */
    readonly code?: number;
    /** Which step failed, of a DmError. */
    readonly reason?: Reason;
    /** What the transport threw, of a TransportError. */
    readonly cause?: unknown;
    /** The monitor lacks this: hide it. */
    readonly isUnsupported: boolean;
    /** The monitor cannot be reached: list the monitors again. */
    readonly isDisconnected: boolean;
    /** A library at hand is too old for this. */
    readonly isOutdatedLibrary: boolean;

    constructor(
        status: number,
        error: { name: string; message: string; code?: number; reason?: string },
        cause?: unknown,
    ) {
        super(error.message);
        // Compiled to ES5, the constructor of Error makes an object of its own. Old browsers lack Object.setPrototypeOf.
        (this as unknown as { __proto__: unknown }).__proto__ = PellError.prototype;
        const code = error.code as number;
        this.name = error.name;
        this.status = status;
        this.code = error.code;
        this.reason = error.reason as Reason | undefined;
        this.cause = cause;
        this.isUnsupported = unsupported.indexOf(code) >= 0;
        this.isDisconnected = unreachable.indexOf(code) >= 0 || error.reason === 'Monitor is not found.';
        this.isOutdatedLibrary = error.name === 'FunctionNotFoundError' || code === libraryIsMissing;
    }
}
