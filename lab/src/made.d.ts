// What the build takes out of the headers and the catalogue.
declare module 'functions.json' {
    const functions: string[];
    export default functions;
}
declare module 'topics.json' {
    const topics: string[];
    export default topics;
}
