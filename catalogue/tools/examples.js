// The examples of a resource: pairs of lines, a request "METHOD [RESOURCE] [/ID] [?QUERY] [BODY]" and its answer: the
// status, and either the value as JSON or an error's "Name Message [(reason)]". In a value, "..." as the last element of
// a list stands for further ones. "$package" is the path of a firmware package, another text with "$" what was answered.

/**
 * @typedef {object} Example
 * @property {string} request @property {string} answer the two lines
 * @property {string} method @property {string} [resource] when it is another one @property {string} [id]
 * @property {object} [query] @property {unknown} [body]
 * @property {number} status @property {unknown} [value] @property {boolean} [isAbridged] the value has a "..."
 * @property {{name: string, message: string, reason?: string}} [error]
 */

/** @param {(offset: number, message: string) => never} fail @returns {Example[]} */
export function parseExamples(text, fail) {
    const lines = text.trimEnd().split('\n');
    if (lines.length % 2) fail(lines.length - 1, 'a request without an answer');
    const examples = [];
    for (let at = 0; at < lines.length; at += 2)
        examples.push({
            request: lines[at],
            answer: lines[at + 1],
            ...parseRequest(lines[at], (message) => fail(at, message)),
            ...parseAnswer(lines[at + 1], (message) => fail(at + 1, message)),
        });
    return examples;
}

function parseRequest(line, fail) {
    const parts = /^(GET|PUT|POST|DELETE)(?: ([A-Z]\w*))?(?: \/(\S+))?(?: \?(\{.*))?(?: (.+))?$/.exec(line);
    if (!parts) fail('no request: METHOD [RESOURCE] [/ID] [?QUERY] [BODY]');
    const [, method, resource, id, rest, body] = parts;
    if (!rest) return { method, resource, id, query: {}, body: body === undefined ? null : parseJson(body, fail) };
    // The query ends where its text is an object, the body is what follows.
    for (let end = rest.indexOf('}'); end >= 0; end = rest.indexOf('}', end + 1)) {
        const query = tryJson(rest.slice(0, end + 1));
        const behind = rest.slice(end + 1).trim();
        if (query) return { method, resource, id, query, body: behind ? parseJson(behind, fail) : null };
    }
    return fail('the query is no JSON object');
}

function parseAnswer(line, fail) {
    const [, status, rest] =
        /^(\d{3}) (.+)$/.exec(line) ?? fail('no answer: STATUS VALUE, or STATUS NAME MESSAGE (REASON)');
    if (status === '200') {
        const isAbridged = rest.includes(', ...]');
        return { status: 200, value: parseJson(rest.replaceAll(', ...]', ']'), fail), isAbridged };
    }
    const [, name, message, reason] =
        /^(\w+) (.*?)(?: \((.*)\))?$/.exec(rest) ?? fail('no error: NAME MESSAGE (REASON)');
    return { status: Number(status), error: { name, message, ...(reason && { reason }) } };
}

function tryJson(text) {
    try {
        return JSON.parse(text);
    } catch {
        return undefined;
    }
}

function parseJson(text, fail) {
    const value = tryJson(text);
    return value === undefined ? fail(`${text.slice(0, 40)} is no JSON`) : value;
}
