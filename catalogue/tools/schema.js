// JSON Schemas (draft 2020-12) of the catalogue's types.
import ts from 'typescript';
import { isServed } from './match.js';
import { membersOf, prelude, withArguments } from './types.js';

/**
 * @param {import('./types.js').Type} type
 * @param {{isGiven: boolean}} use whether it is given in a request (then objects may have further members, and numbers
 * are converted) or answered
 */
export function toSchema(type, use) {
    const { node, scope } = type;
    const inner = (other) => toSchema({ node: other, scope }, use);
    if (ts.isParenthesizedTypeNode(node)) return inner(node.type);
    if (ts.isArrayTypeNode(node)) return { type: 'array', items: inner(node.elementType) };
    if (ts.isTupleTypeNode(node)) {
        const items = node.elements.map((element) => inner(ts.isNamedTupleMember(element) ? element.type : element));
        return { type: 'array', prefixItems: items, minItems: items.length, items: false };
    }
    if (ts.isUnionTypeNode(node)) {
        const options = node.types.map(inner);
        return options.every((option) => 'const' in option)
            ? { enum: options.map((option) => option.const) }
            : { anyOf: options };
    }
    if (ts.isLiteralTypeNode(node)) {
        const value = literalOf(type);
        return value === null ? { type: 'null' } : { const: value };
    }
    if (ts.isTypeLiteralNode(node)) {
        const members = membersOf(type);
        const required = members.filter((member) => !member.isOptional).map((member) => member.name);
        const properties = members.map(({ name, type, comment }) => [
            name,
            { ...toSchema(type, use), ...(comment && { description: comment }) },
        ]);
        return closed(
            { type: 'object', properties: Object.fromEntries(properties), ...(required.length && { required }) },
            use,
        );
    }
    if (ts.isTypeReferenceNode(node)) {
        const name = node.typeName.text;
        const home = scope.find(name);
        if (home?.bound.has(name)) return toSchema(home.bound.get(name), use);
        const args = (node.typeArguments ?? []).map((argument) => ({ node: argument, scope }));
        const known = home === prelude ? kinds[name] : !home && builtIn[name];
        return known ? known(args, use) : toSchema(withArguments(home, name, args), use);
    }
    return { ...keywords[node.kind] };
}

const keywords = {
    [ts.SyntaxKind.NumberKeyword]: { type: 'number' },
    [ts.SyntaxKind.StringKeyword]: { type: 'string' },
    [ts.SyntaxKind.BooleanKeyword]: { type: 'boolean' },
    [ts.SyntaxKind.UnknownKeyword]: {},
    [ts.SyntaxKind.NeverKeyword]: { not: {} },
};

/** What is answered has no further members; what is given may have. */
function closed(schema, { isGiven }) {
    return isGiven ? schema : { ...schema, additionalProperties: false };
}

/** The kinds of whole numbers. */
const integers = {
    UInt8: { format: 'uint8', minimum: 0, maximum: 0xff },
    UInt16: { format: 'uint16', minimum: 0, maximum: 0xffff },
    UInt32: { format: 'uint32', minimum: 0, maximum: 0xffffffff },
    LenientUInt32: { format: 'uint32', minimum: 0, maximum: 0xffffffff },
    Int32: { format: 'int32', minimum: -0x80000000, maximum: 0x7fffffff },
};

/** What becomes of the kinds of prelude.ts. */
const kinds = {
    ...Object.fromEntries(
        Object.entries(integers).map(([name, limits]) => [
            name,
            // Every number is taken and converted: what a body gives need not be whole.
            (_, { isGiven }) => (isGiven ? { type: 'number', format: limits.format } : { type: 'integer', ...limits }),
        ]),
    ),
    // Unlike other numbers, one that rounds to none of these is refused.
    Selector: (_, { isGiven }) =>
        isGiven
            ? {
                  anyOf: [
                      { type: 'number', format: 'uint32', exclusiveMinimum: -0.5, exclusiveMaximum: 0xffffffff + 0.5 },
                      { type: 'string', pattern: '^[0-9]{1,9}$' },
                  ],
              }
            : { type: 'integer', ...integers.UInt32 },
    // The schema counts characters, the monitor bytes: there are no fewer of these.
    Text: ([bytes]) => ({ type: 'string', maxLength: literalOf(bytes) }),
    List: ([element, length], use) => ({
        type: 'array',
        items: toSchema(element, use),
        minItems: literalOf(length),
        maxItems: literalOf(length),
    }),
    NonEmpty: ([element], use) => ({ type: 'array', items: toSchema(element, use), minItems: 1 }),
    AtLeastOne: ([object], use) => {
        const { required, ...schema } = toSchema(object, use);
        return { ...schema, anyOf: required.map((name) => ({ required: [name] })) };
    },
    LenientFlag: () => ({ type: 'boolean' }),
    LenientNumber: () => ({ type: 'number' }),
    Flag: () => ({}),
};

/** TypeScript's own types that the catalogue may use. */
const builtIn = {
    Partial: ([object], use) => {
        const { required, ...schema } = toSchema(object, use);
        return schema;
    },
    Omit: ([object, names], use) => {
        const { const: one, enum: omitted = [one] } = toSchema(names, use);
        const { properties, required = [], ...schema } = toSchema(object, use);
        const isKept = (name) => !omitted.includes(name);
        return {
            ...schema,
            properties: Object.fromEntries(Object.entries(properties).filter(([name]) => isKept(name))),
            required: required.filter(isKept),
        };
    },
    Record: ([key, value], use) => {
        const { enum: names } = toSchema(key, use);
        const each = toSchema(value, use);
        if (!names) return { type: 'object', additionalProperties: each };
        return closed(
            { type: 'object', properties: Object.fromEntries(names.map((name) => [name, each])), required: names },
            use,
        );
    },
};

function literalOf({ node }) {
    const literal = node.literal;
    if (ts.isStringLiteral(literal)) return literal.text;
    if (ts.isNumericLiteral(literal)) return Number(literal.text);
    if (ts.isPrefixUnaryExpression(literal)) return -Number(literal.operand.text);
    return {
        [ts.SyntaxKind.TrueKeyword]: true,
        [ts.SyntaxKind.FalseKeyword]: false,
        [ts.SyntaxKind.NullKeyword]: null,
    }[literal.kind];
}

/**
 * A row with schemas in the places of types, as in catalogue.json.
 * @param {import('./model.js').Row} row
 */
export function rowSchemas(row) {
    if (!isServed(row)) return row;
    const query = row.query.map(({ name, isOptional, type }) => [
        name,
        { ...(isOptional && { optional: true }), ...(type && { schema: toSchema(type, { isGiven: true }) }) },
    ]);
    return {
        ...(query.length && { query: Object.fromEntries(query) }),
        ...(row.body && { body: toSchema(row.body, { isGiven: true }) }),
        answer: row.answer ? toSchema(row.answer, { isGiven: false }) : { type: 'null' },
        ...(row.reasons.length && { reasons: row.reasons }),
        ...(row.needs && { needs: row.needs }),
        ...(row.unsupportedBy.length && { unsupportedBy: row.unsupportedBy }),
        ...(row.calls && { calls: row.calls }),
        ...(row.events.length && { events: row.events }),
        ...(row.lenient && { lenient: row.lenient }),
    };
}
