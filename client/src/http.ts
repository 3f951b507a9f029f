import { pathOf } from './paths.js';
import type { Transport, TransportAnswer, TransportRequest } from './transport.js';

/** Asks a plug-in that is served under an address, such as "/pell" or "http://127.0.0.1:8080/pell". */
export function httpTransport(address: string): Transport {
    const listeners: { event: string; handler: (event: MessageEvent) => void }[] = [];
    let source: EventSource | undefined;
    let opened: Promise<unknown> = Promise.resolve();
    let waitNoLonger: (value?: unknown) => void;

    const open = () => {
        const own = (source = new EventSource(address + '/events'));
        listeners.forEach(({ event, handler }) => own.addEventListener(event, handler));
        opened = new Promise((resolve) => {
            own.onopen = waitNoLonger = resolve;
            own.onerror = (error) => {
                resolve(error);
                // It reconnects by itself, unless it got another answer than a stream, as a proxy gives meanwhile.
                if (own.readyState === EventSource.CLOSED) setTimeout(() => own === source && open(), 1000);
            };
        });
    };

    const transport: Transport = (request) => send(address, request);
    // A POST may cause events at once, so the stream that is to bring them must be open by then.
    transport.ready = () => opened;
    transport.on = (event, listener) => {
        const entry = { event, handler: ({ data }: MessageEvent) => listener(data) };
        listeners.push(entry);
        if (source) source.addEventListener(event, entry.handler);
        else open();
        return () => {
            const at = listeners.indexOf(entry);
            if (at < 0) return;
            listeners.splice(at, 1);
            source!.removeEventListener(event, entry.handler);
            if (listeners.length) return;
            source!.close();
            source = undefined;
            waitNoLonger();
        };
    };
    return transport;
}

function send(
    address: string,
    { resource, method, parameters, query, body }: TransportRequest,
): Promise<TransportAnswer> {
    const { product, serial, id } = parameters;
    const parts =
        product === undefined
            ? [pathOf(resource)]
            : ['Monitors', encodeURIComponent(product), encodeURIComponent(serial!), pathOf(resource)];
    if (id !== undefined) parts.push(encodeURIComponent(id));
    const init: RequestInit = { method, cache: 'no-store' };
    if (body !== undefined) {
        init.body = JSON.stringify(body);
        init.headers = { 'Content-Type': 'application/json' };
    }
    return fetch([address].concat(parts).join('/') + search(query), init).then((response) =>
        response.text().then((text) => ({ status: response.status, text })),
    );
}

/** A member that is true stands alone; a text stands as it is, unless it looks like JSON; all else is JSON. */
function search(query: object): string {
    const parts = Object.keys(query)
        .map((name) => [name, (query as Record<string, unknown>)[name]] as const)
        .filter(([, value]) => value !== undefined)
        .map(
            ([name, value]) =>
                encodeURIComponent(name) + (value === true ? '' : '=' + encodeURIComponent(textOf(value))),
        );
    return parts.length ? '?' + parts.join('&') : '';
}

function textOf(value: unknown): string {
    try {
        if (typeof value === 'string') JSON.parse(value);
    } catch (error) {
        return value as string;
    }
    return JSON.stringify(value);
}
