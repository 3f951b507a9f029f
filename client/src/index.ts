export { DfwFile, Monitor, Pell, Transfer, type Step } from './client.js';
export { PellError, type Reason } from './errors.js';
export { httpTransport } from './http.js';
export type { CallOptions, PutOptions } from './call.js';
export type { AnswerOf, BodyOf, Method, Query, RequiredQuery } from './requests.js';
export type * from './resources.js';
export type { Transport, TransportAnswer, TransportRequest } from './transport.js';
