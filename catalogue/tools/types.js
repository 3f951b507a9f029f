// The types of the catalogue are TypeScript, read with TypeScript's own parser. Here they are read and checked, and become
// text again: with its comments for resources.d.ts, in one line for the reference. schema.js makes JSON Schemas of them.
import fs from 'node:fs';
import ts from 'typescript';

/** A mistake in a type; `line` counts from 0 within its text. */
export class TypeMistake extends Error {
    constructor(message, line = 0) {
        super(message);
        this.line = line;
    }
}

/**
 * A type in the names that it may use.
 * @typedef {{node: ts.TypeNode, scope: Scope, comment?: string}} Type
 */

/** The names that types may use: its own, then those of the scope around it. */
export class Scope {
    /** @param {string} source declarations such as "type Range = {...};" */
    constructor(source = '', outer = undefined) {
        this.source = source;
        this.outer = outer;
        /** @type {Map<string, ts.TypeAliasDeclaration>} */
        this.declarations = new Map();
        /** @type {Map<string, Type>} what the parameters of a declaration stand for */
        this.bound = new Map();
        for (const statement of parse(source).statements) {
            if (!ts.isTypeAliasDeclaration(statement))
                throw mistakeAt(statement, 'only "type Name = ..." can stand here');
            this.declarations.set(statement.name.text, statement);
        }
        if (!outer) return; // the prelude may use all of TypeScript
        for (const { type, typeParameters = [] } of this.declarations.values())
            checkNames(
                type,
                this,
                typeParameters.map((parameter) => parameter.name.text),
            );
    }

    /** The nearest scope that has a name. */
    find(name) {
        return this.declarations.has(name) || this.bound.has(name) ? this : this.outer?.find(name);
    }

    names() {
        return [...this.declarations.keys(), ...(this.outer?.names() ?? [])];
    }
}

/** The kinds of tools/prelude.ts. */
export const prelude = new Scope(fs.readFileSync(new URL('prelude.ts', import.meta.url), 'utf8'));

/** @returns {Type} the type that a text of the catalogue tells, with the comment behind it */
export function parseType(text, scope) {
    const [declaration] = parse(`type T = ${text}\n`).statements;
    checkNames(declaration.type, scope);
    return { node: declaration.type, scope, comment: commentBehind(declaration.type) };
}

/** The members of a query, written without the braces around them. */
export function parseMembers(text, scope) {
    return membersOf(parseType(`{ ${text}\n}`, scope));
}

/** @typedef {{name: string, isOptional: boolean, type?: Type, comment?: string}} Member one without a type is a flag */

/** @returns {Member[]} */
export function membersOf({ node, scope }) {
    return node.members.map((member) => ({
        name: member.name.text,
        isOptional: member.questionToken !== undefined,
        type: member.type && { node: member.type, scope },
        comment: commentBehind(member),
    }));
}

/**
 * A type as TypeScript in one line.
 * @param {(name: string) => string} rename what becomes of names
 * @param {boolean} withComments keeps the comments of members, as documentation
 */
export function toText({ node }, { rename = (name) => name, withComments = false, separator = '; ' } = {}) {
    const text = (other) => {
        if (ts.isParenthesizedTypeNode(other)) return `(${text(other.type)})`;
        if (ts.isArrayTypeNode(other)) return `${text(other.elementType)}[]`;
        if (ts.isTupleTypeNode(other)) return `[${other.elements.map(text).join(', ')}]`;
        if (ts.isNamedTupleMember(other)) return `${other.name.text}: ${text(other.type)}`;
        if (ts.isUnionTypeNode(other)) return other.types.map(text).join(' | ');
        if (ts.isTypeLiteralNode(other))
            return other.members.length ? `{${other.members.map(member).join(separator)}}` : '{}';
        if (ts.isTypeReferenceNode(other)) {
            const args = other.typeArguments ? `<${other.typeArguments.map(text).join(', ')}>` : '';
            return rename(other.typeName.text) + args;
        }
        return other.getText();
    };
    const member = (other) => {
        const comment = withComments && commentBehind(other);
        const type = other.type ? text(other.type) : 'Flag';
        return `${comment ? `\n/** ${comment} */ ` : ''}${other.name.getText()}${other.questionToken ? '?' : ''}: ${type}`;
    };
    return text(node);
}

/** The declared names that a type uses, directly or through others. */
export function namesIn({ node, scope }, found = new Set()) {
    const visit = (other) => {
        if (ts.isTypeReferenceNode(other)) {
            const name = other.typeName.text;
            const home = scope.find(name);
            if (home && !found.has(name)) {
                found.add(name);
                namesIn({ node: home.declarations.get(name).type, scope: home }, found);
            }
        }
        ts.forEachChild(other, visit);
    };
    visit(node);
    return found;
}

/** What a name of a scope stands for when it has these arguments. */
export function withArguments(home, name, args) {
    const declaration = home.declarations.get(name);
    const scope = new Scope('', home);
    declaration.typeParameters?.forEach((parameter, index) => scope.bound.set(parameter.name.text, args[index]));
    return { node: declaration.type, scope };
}

/** What a type stands for that is only a name without parameters, and the scope that declares it. */
export function definitionOf({ node, scope }) {
    if (!ts.isTypeReferenceNode(node)) return undefined;
    const home = scope.find(node.typeName.text);
    const declaration = home?.declarations.get(node.typeName.text);
    return declaration && !declaration.typeParameters ? { node: declaration.type, scope: home } : undefined;
}

/** The documentation in front of a declaration. */
export function documentationOf(declaration) {
    return ts
        .getJSDocCommentsAndTags(declaration)
        .map(({ comment }) => comment)
        .join(' ');
}

/** Such as "<Element, Length>". */
export function parametersText({ typeParameters = [] }) {
    return typeParameters.length ? `<${typeParameters.map(({ name }) => name.text).join(', ')}>` : '';
}

/** A declaration as it stands in its source, without "export", and with what is said of it behind it. */
export function declarationText(declaration) {
    const comment = commentBehind(declaration) ?? documentationOf(declaration);
    return declaration.getText().replace(/^export /, '') + (comment ? ` // ${comment}` : '');
}

/** Whether members have comments: not of the types that are named, but of those written out. */
export function hasMemberComments({ node }) {
    const visit = (other) =>
        (ts.isPropertySignature(other) && commentBehind(other) !== undefined) || ts.forEachChild(other, visit) || false;
    return visit(node);
}

/** @returns {ts.SourceFile} */
function parse(source) {
    const file = ts.createSourceFile('types.ts', source, ts.ScriptTarget.Latest, true);
    const [error] = file.parseDiagnostics;
    if (error)
        throw new TypeMistake(
            `${ts.flattenDiagnosticMessageText(error.messageText, ' ')} (TypeScript)`,
            // The end of a text is told where its last line is.
            file.getLineAndCharacterOfPosition(Math.min(error.start, source.trimEnd().length)).line,
        );
    return file;
}

function mistakeAt(node, message) {
    const file = node.getSourceFile();
    return new TypeMistake(message, file.getLineAndCharacterOfPosition(node.getStart()).line);
}

/** The text of a comment that begins on the line where the node ends. */
function commentBehind(node) {
    const text = node.getSourceFile().text;
    const range = ts.getTrailingCommentRanges(text, node.end)?.[0];
    return (
        range &&
        text
            .slice(range.pos + 2, range.end)
            .replace(/\*\/$/, '')
            .trim()
    );
}

/** TypeScript's own types that the catalogue may use, with the number of their arguments. */
const builtIn = { Partial: 1, Record: 2 };

/** Throws a mistake unless every name is known and has its arguments, and every kind of type is one that is. */
function checkNames(node, scope, parameters = []) {
    const visit = (other) => {
        if (ts.isTypeReferenceNode(other)) {
            const name = other.typeName.getText();
            if (parameters.includes(name)) return;
            const declaration = scope.find(name)?.declarations.get(name);
            if (!declaration && !(name in builtIn))
                throw mistakeAt(other, `there is no type ${name}; there are ${scope.names().join(', ')}`);
            const expected = declaration ? (declaration.typeParameters?.length ?? 0) : builtIn[name];
            const given = other.typeArguments?.length ?? 0;
            if (given !== expected) throw mistakeAt(other, `${name} has ${expected} arguments, not ${given}`);
        } else if (ts.isTypeNode(other) && !isKnownKind(other)) {
            throw mistakeAt(other, `the catalogue has no use for a type like ${other.getText()}`);
        }
        ts.forEachChild(other, visit);
    };
    visit(node);
}

const { NumberKeyword, StringKeyword, BooleanKeyword, UnknownKeyword } = ts.SyntaxKind;
const keywords = [NumberKeyword, StringKeyword, BooleanKeyword, UnknownKeyword];

function isKnownKind(node) {
    return (
        keywords.includes(node.kind) ||
        [
            ts.isTypeLiteralNode,
            ts.isUnionTypeNode,
            ts.isArrayTypeNode,
            ts.isTupleTypeNode,
            ts.isNamedTupleMember,
            ts.isLiteralTypeNode,
            ts.isParenthesizedTypeNode,
        ].some((is) => is(node))
    );
}
