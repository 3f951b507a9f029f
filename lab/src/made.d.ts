// What the build takes out of the headers, the catalogue and docs/scenarios.md.
declare module 'functions.json' {
    const functions: string[];
    export default functions;
}
declare module 'topics.json' {
    const topics: string[];
    export default topics;
}
declare module 'scenarios.json' {
    /** By name: what the monitor does, and what a good page does. */
    const scenarios: Record<string, [string, string]>;
    export default scenarios;
}
