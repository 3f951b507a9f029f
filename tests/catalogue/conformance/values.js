// Values of the catalogue's schemas, and values that nearly are.
export const isContainer = (value) => value !== null && typeof value === 'object';

/** Values of all kinds. */
const strangers = [null, true, false, 0, -1, 2.5, 4294967296, '', 'a\0b', '7', [], [1], {}, { x: 1 }];

/**
 * A few values of a schema, the fullest first: every option of it is among them.
 * @param {object} known values of members, by their name
 */
export function samplesOf(schema, known, name) {
    if (name in known) return [known[name]];
    if ('const' in schema) return [schema.const];
    if (schema.enum) return schema.enum;
    if (schema.type === 'object') return objectSamples(schema, known);
    if (schema.anyOf) return schema.anyOf.flatMap((option) => samplesOf(option, known, name));
    if (schema.prefixItems) return [schema.prefixItems.map((item) => samplesOf(item, known)[0])];
    if (schema.type === 'array') {
        const elements = samplesOf(schema.items, known);
        const length = schema.minItems ?? 2;
        return [Array.from({ length }, (_, at) => elements[at % elements.length])];
    }
    return { string: ['a'], number: [1, 0], integer: [1, 0], null: [null] }[schema.type] ?? [true, false];
}

function objectSamples({ properties = {}, required = [], anyOf }, known) {
    const members = Object.entries(properties)
        .filter(([, schema]) => !schema.not)
        .map(([name, schema]) => [name, samplesOf(schema, known, name)]);
    const count = Math.max(1, ...members.map(([, samples]) => samples.length));
    const choose = (chosen, at) =>
        Object.fromEntries(chosen.map(([name, samples]) => [name, samples[at % samples.length]]));
    const full = Array.from({ length: count }, (_, at) => choose(members, at));
    const needed = (anyOf ?? [{ required: [] }]).map((one) => [...required, ...one.required]);
    return [
        ...full,
        ...needed.map((names) =>
            choose(
                members.filter(([name]) => names.includes(name)),
                0,
            ),
        ),
    ];
}

/** The places in a value, as lists of names and indexes: the value itself first. Of long lists, only some elements. */
export function placesIn(value) {
    if (!isContainer(value)) return [[]];
    const names = Array.isArray(value)
        ? [...value.keys()].filter((at) => at < 3 || at === value.length - 1)
        : Object.keys(value);
    return [[], ...names.flatMap((name) => placesIn(value[name]).map((place) => [name, ...place]))];
}

export function valueAt(value, place) {
    return place.reduce((inner, name) => inner[name], value);
}

/** A copy with another value at a place; without the member, or the element, when that is undefined. */
export function replaceAt(value, [name, ...place], other) {
    if (name === undefined) return other;
    const inner = replaceAt(value[name], place, other);
    if (Array.isArray(value))
        return value.flatMap((one, at) => (at !== name ? [one] : inner === undefined ? [] : [inner]));
    const { [name]: _, ...others } = value;
    return inner === undefined ? others : { ...value, [name]: inner };
}

/** A value with another one, or with nothing, at each of its places. */
export function spoiltOf(value) {
    return placesIn(value).flatMap((place) => [undefined, ...strangers].map((other) => replaceAt(value, place, other)));
}

/** Whether a schema tells anything of a place, so that what stands there counts. */
export function covers(schema, [name, ...place]) {
    if (schema === undefined || schema.not) return false;
    if (schema.anyOf && schema.type !== 'object')
        return schema.anyOf.some((option) => covers(option, [name, ...place]));
    if (name === undefined) return true;
    if (typeof name === 'number') return covers(schema.prefixItems?.[name] ?? (schema.items || undefined), place);
    return covers(schema.properties?.[name], place);
}

/** The members of a row's query as those of an object. */
export function querySchema({ query = {} }) {
    const members = Object.entries(query);
    return {
        type: 'object',
        properties: Object.fromEntries(members.map(([name, { schema }]) => [name, schema ?? {}])),
        required: members.filter(([, { optional }]) => !optional).map(([name]) => name),
    };
}
