declare module 'functions.json' {
    const functions: string[];
    export default functions;
}
