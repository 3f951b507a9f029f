// Values of the catalogue's schemas, and values that nearly are.
import fc from 'fast-check';

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

/** Any value of a schema. */
export function valueOf(schema, known, name) {
    if (name in known) return fc.oneof({ weight: 3, arbitrary: fc.constant(known[name]) }, fc.string({ minLength: 1 }));
    if ('const' in schema) return fc.constant(schema.const);
    if (schema.enum) return fc.constantFrom(...schema.enum);
    if (schema.type === 'object') return objectOf(schema, known);
    if (schema.anyOf) return fc.oneof(...schema.anyOf.map((option) => valueOf(option, known, name)));
    if (schema.prefixItems) return fc.tuple(...schema.prefixItems.map((item) => valueOf(item, known)));
    if (schema.type === 'array')
        return fc.array(valueOf(schema.items, known), {
            minLength: schema.minItems ?? 0,
            maxLength: schema.maxItems ?? 4,
        });
    const kinds = {
        string: fc.string({ maxLength: schema.maxLength }),
        boolean: fc.boolean(),
        null: fc.constant(null),
    };
    return (
        kinds[schema.type] ?? (['number', 'integer'].includes(schema.type) ? numbers : fc.jsonValue({ maxDepth: 1 }))
    );
}

const numbers = fc.oneof(
    fc.integer({ min: 0, max: 255 }),
    fc.double({ noNaN: true, min: -1e4, max: 1e4 }),
    fc.constantFrom(0, 4294967295, 4294967296, -2147483649, 1e300),
);

function objectOf({ properties = {}, required = [], anyOf }, known) {
    const members = Object.fromEntries(
        Object.entries(properties)
            .filter(([, schema]) => !schema.not)
            .map(([name, schema]) => [name, valueOf(schema, known, name)]),
    );
    const needed = (anyOf ?? [{ required: [] }]).map((one) => [...required, ...one.required]);
    const object = fc.oneof(...needed.map((requiredKeys) => fc.record(members, { requiredKeys })));
    return fc.tuple(object, fc.boolean()).map(([value, more]) => (more ? { ...value, other: [7] } : value));
}

/** Values of which a part is of another kind, or is not there. */
export function nearly(values) {
    const replacement = fc.oneof(fc.constantFrom(undefined, ...strangers), fc.jsonValue({ maxDepth: 1 }));
    return fc.tuple(values, fc.nat(), replacement).map(([value, at, other]) => {
        const places = placesIn(value);
        return replaceAt(value, places[at % places.length], other);
    });
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
