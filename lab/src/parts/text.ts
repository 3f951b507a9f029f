/** JSON for a reader: short values on one line. */
export function pretty(value: unknown): string {
    const short = JSON.stringify(value) ?? '';
    return short.length <= 60 ? short : JSON.stringify(value, null, 2);
}

/** A JSON text for a reader; any other text as it is. */
export function prettyText(text: string): string {
    try {
        return pretty(JSON.parse(text));
    } catch {
        return text;
    }
}

const clock = new Intl.DateTimeFormat('en-GB', {
    hour: '2-digit',
    minute: '2-digit',
    second: '2-digit',
    fractionalSecondDigits: 3,
});

export function clockText(time: number): string {
    return clock.format(time);
}

export function durationText(milliseconds: number): string {
    if (milliseconds >= 10_000) return `${(milliseconds / 1000).toFixed(1)} s`;
    return `${milliseconds.toFixed(milliseconds < 10 ? 2 : 0)} ms`;
}
