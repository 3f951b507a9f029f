// Requests of the lab's own, and the same as code.
import { PellError } from 'libpell-client';
import { resourceNamed, type Method } from './catalogue.js';

export interface Address {
    product?: string;
    serial?: string;
    id?: string;
}

/** The query is as in a URL, or a whole JSON object; the body is sent as it stands. */
export interface Request {
    resource: string;
    method: Method;
    address: Address;
    query: string;
    body: string;
}

export interface Answer {
    status: number;
    text: string;
    milliseconds: number;
}

export function urlOf({ resource, address, query }: Request): string {
    const path = resourceNamed(resource)!
        .path.replace('/{id}', address.id ? '/{id}' : '')
        .replace(/\{(\w+)\}/g, (_, name: keyof Address) => encodeURIComponent(address[name] ?? ''));
    // The brace tells that this is a whole object.
    const search = query.startsWith('{') ? `{${encodeURIComponent(query.slice(1))}` : query;
    return `/pell/${path}${search && `?${search}`}`;
}

export function send(request: Request): Promise<Answer> {
    const { method, body } = request;
    return ask(urlOf(request), { method, cache: 'no-store', body: body || undefined });
}

/** Hands these texts over as they are: options, parameters, query, body. */
export async function sendTexts(resource: string, texts: string[]): Promise<Answer> {
    const answer = await ask('/lab/api/call', { method: 'POST', body: batchLine(resource, texts) });
    const { error, responses } = (parse(answer.text) ?? {}) as { error?: string; responses?: Answer[] };
    if (responses?.length === 1) return { ...answer, ...responses[0] };
    return { ...answer, text: error ?? (responses ? `There were ${responses.length} answers.` : answer.text) };
}

async function ask(url: string, options: RequestInit): Promise<Answer> {
    const begin = performance.now();
    try {
        const response = await fetch(url, options);
        const text = await response.text();
        return { status: response.status, text, milliseconds: performance.now() - begin };
    } catch {
        return { status: 0, text: 'The server did not answer.', milliseconds: performance.now() - begin };
    }
}

/** What went wrong, if the plug-in says so. */
export function errorOf({ status, text }: Answer): PellError | undefined {
    const error = (parse(text) as { error?: { name: string; message: string } } | undefined)?.error;
    return error ? new PellError(status, error) : undefined;
}

/** A member that is true stands alone; a text stands as it is, unless it looks like JSON; all else is JSON. */
export function writeQuery(query: Record<string, unknown>): string {
    const encode = (text: string) => encodeURIComponent(text).replace(/%(2C|3A|5B|5D|22)/g, decodeURIComponent);
    return Object.entries(query)
        .map(([name, value]) => {
            if (value === true) return encode(name);
            const isPlain = typeof value === 'string' && parse(value) === undefined;
            return `${encode(name)}=${encode(isPlain ? value : JSON.stringify(value))}`;
        })
        .join('&');
}

export function readQuery(query: string): Record<string, unknown> {
    if (query.startsWith('{')) return (parse(query) as Record<string, unknown>) ?? {};
    return Object.fromEntries(
        query
            .split('&')
            .filter(Boolean)
            .map((part) => {
                const [name, value] = part.split(/=(.*)/s).map(decode);
                return [name, value === undefined ? true : (parse(value) ?? value)];
            }),
    );
}

function decode(text: string): string {
    try {
        return decodeURIComponent(text);
    } catch {
        return text;
    }
}

/** Undefined when the text is no JSON. */
export function parse(text: string): unknown {
    try {
        return JSON.parse(text);
    } catch {
        return undefined;
    }
}

/** JSON of one line, in the manner of JavaScript: names without quotes where they need none. */
function literal(value: unknown): string {
    if (Array.isArray(value)) return `[${value.map(literal).join(', ')}]`;
    if (value && typeof value === 'object') {
        const members = Object.entries(value).map(([name, member]) => {
            const key = /^[A-Za-z_$][\w$]*$/.test(name) ? name : text(name);
            return `${key}: ${literal(member)}`;
        });
        return members.length ? `{ ${members.join(', ')} }` : '{}';
    }
    return typeof value === 'string' ? text(value) : JSON.stringify(value);
}

function text(value: string): string {
    return `'${JSON.stringify(value).slice(1, -1).replace(/\\"/g, '"').replace(/'/g, "\\'")}'`;
}

/** The same request in other languages, by their names. */
export type Codes = Record<string, string>;

export function codesOf(request: Request): Codes {
    return { Client: clientCode(request), fetch: fetchCode(request), pellhost: pellhostCode(request) };
}

export function codesOfTexts(resource: string, texts: string[]): Codes {
    return { 'pellhost batch': `printf '%s\\n' ${quoted(batchLine(resource, texts))} | pellhost batch` };
}

function batchLine(resource: string, texts: string[]): string {
    return JSON.stringify({ call: resource, texts });
}

/** The program that asks the same by the client. */
function clientCode({ resource, method, address, query, body }: Request): string {
    const { product, serial, id } = address;
    const given = readQuery(query);
    const members = [text(resource)];
    const value = body ? literal(parse(body) ?? body) : '';
    const hasQuery = Object.keys(given).length > 0;
    if (method !== 'GET' && (value || hasQuery)) members.push(value || 'undefined');
    if (hasQuery) members.push(literal(given));
    const call = `${method.toLowerCase()}(${members.join(', ')})`;
    const [type, create] =
        product !== undefined
            ? ['Monitor', `new Monitor(transport, ${text(product)}, ${text(serial ?? '')})`]
            : id
              ? ['DfwFile', `new DfwFile(transport, ${text(id)})`]
              : ['Pell', 'new Pell(transport)'];
    const name = type[0].toLowerCase() + type.slice(1);
    const path = (parse(body) as { path?: string } | undefined)?.path;
    const opens = method === 'POST' && resource === 'FileSystemDfwFile' && typeof path === 'string';
    return [
        `import { ${type}, httpTransport } from 'libpell-client';`,
        '',
        `const transport = httpTransport('/pell');`,
        `const ${name} = ${create};`,
        `const ${method === 'GET' ? 'value' : opens ? 'file' : 'outcome'} = await ${name}.${opens ? `open(${text(path)})` : call};`,
    ].join('\n');
}

function fetchCode(request: Request): string {
    const { method, body } = request;
    const options = [method !== 'GET' && `method: '${method}'`, body && `body: ${text(body)}`].filter(Boolean);
    const address = text(location.origin + urlOf(request));
    return [
        `const response = await fetch(${address}${options.length ? `, { ${options.join(', ')} }` : ''});`,
        'const { error, value } = await response.json();',
    ].join('\n');
}

/** For a shell. */
function quoted(word: string): string {
    return /^[\w./:-]+$/.test(word) ? word : `'${word.replace(/'/g, `'\\''`)}'`;
}

function pellhostCode({ resource, method, address, query, body }: Request): string {
    const { product, serial, id } = address;
    return [
        'pellhost',
        method.toLowerCase(),
        resource,
        body && quoted(body),
        product !== undefined && `--monitor ${quoted(`${product}/${serial}`)}`,
        id && `--id ${quoted(id)}`,
        query && `--query ${quoted(query)}`,
    ]
        .filter(Boolean)
        .join(' ');
}
