import { PellError } from './errors.js';
import type { Transport, TransportAnswer, TransportRequest } from './transport.js';

export interface CallOptions {
    /** Cancels the call if it has not been sent yet. Later it does nothing: what a monitor has begun cannot be stopped. */
    signal?: AbortSignal;
}

export interface PutOptions extends CallOptions {
    /**
     * Whether a later PUT of the same resource, monitor and query replaces this one while it waits. By default it does if
     * there is no body or it is a number, a text or a boolean, which set the whole resource, and does not if it is an
     * object or a list, as each of these may set another part.
     */
    latest?: boolean;
}

interface Write {
    transport: Transport;
    /** The resource and its monitor or file, as JSON. */
    target: string;
    /** The query as JSON, if a later PUT may replace this one. */
    replaceable?: string;
    /** Its turn has come: sends it as soon as the transport is ready. */
    start(): void;
    supersede(): void;
}

/** The writes that are under way or wait, oldest first. Those of one target are sent one after another. */
const writes: Write[] = [];

/** Resolves with the value of the answer; for a PUT with "done", or "superseded" if a later one replaced it. */
export function call(transport: Transport, request: TransportRequest, options: PutOptions = {}): Promise<unknown> {
    const { signal } = options;
    const isPut = request.method === 'PUT';
    return new Promise((resolve, reject) => {
        if (signal && signal.aborted) return reject(abortReason(signal));
        if (request.method === 'GET') return resolve(exchange(transport, request));

        // The page may change its objects while the call waits.
        request.query = copy(request.query);
        request.body = copy(request.body);
        const leave = () => {
            if (signal) signal.removeEventListener('abort', abort);
        };
        const abort = () => {
            leave();
            reject(abortReason(signal as AbortSignal));
            end();
        };
        const end = () => {
            const isFirst = sameTarget(write)[0] === write;
            remove(write);
            const [next] = sameTarget(write);
            if (isFirst && next) next.start();
        };
        const send = () => {
            if (writes.indexOf(write) < 0) return; // It was aborted.
            leave();
            const done = exchange(transport, request);
            resolve(isPut ? done.then(() => 'done') : done);
            done.then(end, end);
        };
        const write: Write = {
            transport,
            target: JSON.stringify([request.resource, request.parameters]),
            start() {
                if (request.method !== 'POST' || !transport.ready) return send();
                new Promise((settle) => settle(transport.ready!())).then(send, send);
            },
            supersede() {
                leave();
                remove(write);
                resolve('superseded');
            },
        };
        const isLatest = options.latest === undefined ? typeof request.body !== 'object' : options.latest;
        if (isPut && isLatest) write.replaceable = JSON.stringify(request.query);

        const earlier = sameTarget(write);
        const last = earlier[earlier.length - 1];
        writes.push(write);
        if (signal) signal.addEventListener('abort', abort);
        if (!last) return write.start();
        // The first of a target is under way, all others wait.
        if (earlier.length > 1 && last.replaceable && last.replaceable === write.replaceable) last.supersede();
    });
}

function copy<T>(value: T): T {
    return value === undefined ? value : JSON.parse(JSON.stringify(value));
}

function sameTarget({ transport, target }: Write): Write[] {
    return writes.filter((other) => other.transport === transport && other.target === target);
}

function remove(write: Write): void {
    writes.splice(writes.indexOf(write), 1);
}

function abortReason({ reason }: AbortSignal): unknown {
    if (reason) return reason;
    const error = new Error('The call was aborted.');
    error.name = 'AbortError';
    return error;
}

function exchange(transport: Transport, request: TransportRequest): Promise<unknown> {
    return new Promise<TransportAnswer>((resolve) => resolve(transport(request))).then(valueOf, (cause) => {
        throw transportError(0, 'The plug-in cannot be reached: ' + ((cause && cause.message) || cause), cause);
    });
}

function valueOf(answer: TransportAnswer): unknown {
    const { status, text } = answer || {};
    let envelope;
    try {
        envelope = JSON.parse(text);
    } catch (cause) {
        // It is reported below.
    }
    const error = envelope && envelope.error;
    if (envelope && error === null && 'value' in envelope) return envelope.value;
    const known = typeof status === 'number' ? status : 0;
    if (isError(error)) throw new PellError(known, error);
    const shown = typeof text === 'string' ? text : typeof text;
    throw transportError(known, 'The answer is not one of the plug-in: ' + shown);
}

/** Whether it is an error of the plug-in: others, such as a proxy, answer objects with an "error" as well. */
function isError(error: any): boolean {
    const kinds = error && [error.name, error.message, error.code, error.reason].map((part) => typeof part).join();
    return /^string,string,(number|undefined),(string|undefined)$/.test(kinds);
}

function transportError(status: number, message: string, cause?: unknown): PellError {
    return new PellError(status, { name: 'TransportError', message: message.slice(0, 200) }, cause);
}

/** Calls the listener with the value of each event, until the function that is returned is called. */
export function listen(transport: Transport, event: string, listener: (value: any) => void): () => void {
    if (!transport.on) throw new Error('The transport has no events.');
    let isActive = true;
    const stop = transport.on(event, (text) => {
        if (!isActive) return;
        try {
            listener(JSON.parse(text));
        } catch (error) {
            // The page's console shows it; the transport goes on with the other listeners.
            setTimeout(() => {
                throw error;
            });
        }
    });
    return () => {
        if (isActive) stop();
        isActive = false;
    };
}
