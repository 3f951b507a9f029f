// What may be asked of a resource, and what it answers, as its rows tell.
import type { Resources } from './resources.js';

export type Name = keyof Resources;
export type Method = 'get' | 'put' | 'post' | 'delete';

type Row = { query: object; body?: unknown; answer: unknown };
type Rows<R extends Name, M extends Method> = Resources[R] extends Record<M, infer T extends Row[]> ? T : never;

type QueryOf<T extends Row[]> = T[number]['query'];
type NamesIn<Q> = Q extends unknown ? keyof Q : never;
type MemberIn<Q, K> = Q extends unknown ? (K extends keyof Q ? Q[K] : never) : never;
/** The members that any row of a method knows. */
export type Query<R extends Name, M extends Method> = {
    [K in NamesIn<QueryOf<Rows<R, M>>>]?: MemberIn<QueryOf<Rows<R, M>>, K>;
};

/** The same where no row goes without a member. */
export type RequiredQuery<R extends Name, M extends Method> = QueryOf<Rows<R, M>> & Query<R, M>;

/** A query without any other member. That it names those which it may have lets editors complete it. */
export type Only<R extends Name, M extends Method, Q> = Q &
    Flat<Query<R, M>> & { [K in Exclude<keyof Q, keyof Query<R, M>>]: never };
// Without this, TypeScript takes no query that is one of several.
type Flat<T> = { [K in keyof T]: T[K] };

type Required<Q> = { [K in keyof Q]-?: {} extends Pick<Q, K> ? never : K }[keyof Q];
type FitsMember<Q, Wanted, K extends keyof Wanted> = K extends keyof Q
    ? Q[K] extends Wanted[K]
        ? 'yes'
        : Extract<Q[K], Wanted[K]> extends never
          ? 'no'
          : 'perhaps'
    : 'no';
type Combine<Each> = 'no' extends Each ? 'no' : 'perhaps' extends Each ? 'perhaps' : 'yes';
/** Whether a query has the members of a row: "perhaps" where its type leaves open whether a member is there. */
type Fits<Q, Wanted> = Combine<FitsMember<Q, Wanted, Required<Wanted>>>;

/** The first row that fits decides. */
type Deciding<T, Q> = T extends [infer First extends Row, ...infer Rest]
    ? {
          yes: First;
          no: Deciding<Rest, Q>;
          perhaps: First | Deciding<Rest, Q>;
      }[Fits<Q, First['query']>]
    : never;
type EachDeciding<T, Q> = Q extends unknown ? Deciding<T, Q> : never;

/** The type of the answer. */
export type AnswerOf<R extends Name, M extends Method, Q> = EachDeciding<Rows<R, M>, Q>['answer'];

/** The types of the bodies; of several rows, the body decides. */
export type BodyOf<R extends Name, M extends Method, Q> = BodyIn<Rows<R, M>[number], Q>;
type BodyIn<T, Q> = T extends Row ? (Fits<Q, T['query']> extends 'no' ? never : BodyOfRow<T>) : never;
type BodyOfRow<T> = T extends { body: infer Body } ? Body : undefined;
