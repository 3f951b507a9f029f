/** What is asked of a resource. */
export interface TransportRequest {
    /** the name of the export, such as "Brightness" */
    resource: string;
    method: 'GET' | 'PUT' | 'POST' | 'DELETE';
    /** a monitor's product and serial, a file's id, or nothing */
    parameters: { product?: string; serial?: string; id?: string };
    query: object;
    /** undefined when there is none */
    body?: unknown;
}

/** What came back: the status and the text `{"error": ..., "value": ...}`. */
export interface TransportAnswer {
    status: number;
    text: string;
}

/** Hands a request to the plug-in and resolves with its answer. It may reject or throw when the plug-in is unreachable. */
export interface Transport {
    (request: TransportRequest): PromiseLike<TransportAnswer>;
    /**
     * Calls the listener with the text of each event of this name, until the function that is returned is called. A host
     * without events leaves it out.
     */
    on?(event: string, listener: (text: string) => void): () => void;
    /**
     * Resolves when a POST may be sent, as the events that it causes will be heard. Until then it can be aborted. A
     * transport that is always ready leaves it out.
     */
    ready?(): PromiseLike<unknown>;
}
