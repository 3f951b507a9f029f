// Which of a method's rows decides a request: the first that fits.
import Ajv from 'ajv/dist/2020.js';

const ajv = new Ajv({
    strict: true,
    strictRequired: false,
    formats: { uint8: true, uint16: true, uint32: true, int32: true },
});
const compiled = new Map(); // by the texts of schemas, of which many are the same
const validators = new WeakMap(); // by the schemas

/** A row says how requests are served, refused or fail. */
export const isServed = (row) => row.refused === undefined && row.fails === undefined;

/** Whether a value is one of a schema. */
export function fits(schema, value) {
    if (!validators.has(schema)) {
        const key = JSON.stringify(schema);
        if (!compiled.has(key)) compiled.set(key, ajv.compile(schema));
        validators.set(schema, compiled.get(key));
    }
    return validators.get(schema)(value);
}

/** An object whose only member is "data" stands for that member. */
export function dataOf(body) {
    const isWrapper = body !== null && typeof body === 'object' && !Array.isArray(body) && 'data' in body;
    return isWrapper && Object.keys(body).length === 1 ? body.data : body;
}

/**
 * Decides a request as the plug-in does, as far as types can tell. A member of the body counts before one of the same
 * name in the query.
 * @param {object[]} rows those of catalogue.json of one method, in their order
 * @returns {{row?: object, refusals: string[]}} the row that serves it, the messages of which one refuses it, or both
 * where types alone cannot tell: a row that is "lenient" may serve what does not fit it, a refusal that is "beyondTypes"
 * may refuse what fits.
 */
export function decide(rows, query, body) {
    const data = dataOf(body);
    const refusals = rows.flatMap(({ refused }) => refused ?? []);
    const fitsBody = (row) => !row.body || fits(row.body, data);
    const fitsQuery = (row, name) => !row.query[name].schema || fits(row.query[name].schema, query[name]);
    const isInBody = (name) => data !== null && typeof data === 'object' && name in data;
    const isGiven = (name) => name in query && !isInBody(name);
    const isInvalid = (name) => isGiven(name) && !rows.some((row) => row.query?.[name] && fitsQuery(row, name));

    for (const row of rows) {
        // Whether the query or the body is looked at first, is not told.
        if (row.invalid && isInvalid(row.invalid))
            return { refusals: rows.filter(isServed).some(fitsBody) ? [row.refused] : refusals };
        if (!isServed(row)) continue;
        const members = Object.entries(row.query ?? {});
        if (!members.every(([name, member]) => member.optional || name in query)) continue;
        const unfit = members.filter(([name]) => isGiven(name) && !fitsQuery(row, name));
        if (unfit.some(([name]) => !row.lenient || rows.some(({ invalid }) => invalid === name))) continue;
        if (fitsBody(row))
            return { row, refusals: rows.flatMap(({ beyondTypes, refused }) => (beyondTypes ? refused : [])) };
        if (row.lenient) return { row, refusals };
    }
    return { refusals };
}
