// Every request of whatever page, and what came of it: live from the server, or out of a recording.
import { parse } from './request.js';
import { Store } from './store.js';
import { world, type Instruction } from './world.js';

export interface Call {
    function: string;
    arguments: unknown[];
    result: unknown;
    milliseconds?: number;
}

/** A line of a recording. */
export interface Entry {
    id: number;
    time: number;
    source?: string;
    resource?: string;
    method?: string;
    product?: string;
    serial?: string;
    texts?: (string | null)[];
    /** What follows is missing while the request runs. */
    status?: number;
    milliseconds?: number;
    calls?: Call[];
    log?: { name: string; level: number; line: string }[];
    events?: { name: string; text: string }[];
    responses?: { promise: number; status: number; text: string }[];
    /** What was done to the simulated monitors; then nothing but the number and the time stand beside it. */
    simulate?: Instruction;
}

export interface Filter {
    text: string;
    monitor: string;
    failuresOnly: boolean;
    /** Without the requests of the lab itself. */
    othersOnly: boolean;
}

export const maximumEntries = 10_000;

export function isFailure({ status, responses }: Entry): boolean {
    return (status !== undefined && (status < 200 || status > 299)) || (!!responses && responses.length !== 1);
}

export function monitorOf({ product, serial }: { product?: string; serial?: string }): string {
    return product === undefined ? '' : `${product}/${serial ?? ''}`;
}

/**
 * In a recording, the members of an instruction stand beside the number and the time, and beside those a scenario as a
 * document.
 */
function entryOf(line: Record<string, unknown>): Entry {
    if (typeof line.simulate !== 'string') return line as unknown as Entry;
    const { id, time, scenario: _, ...simulate } = line;
    return { id: id as number, time: time as number, simulate: simulate as Instruction };
}

function mayChangeMonitors(entry: Entry): boolean {
    const { simulate, status, method, resource } = entry;
    if (simulate || status === undefined) return !!simulate;
    return method !== 'GET' || resource === 'Monitors' || isFailure(entry) || world.hasLimitedScripts;
}

class Timeline extends Store {
    entries: Entry[] = [];
    /** The name of the recording that is shown instead of what happens. */
    recording = '';
    /** What is wrong with the file that was to be shown. */
    problem = '';
    /** Whether the server no longer had all that happened. */
    hasLost = false;
    isConnected = false;
    private live: Entry[] = [];
    private byId = new Map<number, Entry>();
    private source?: EventSource;
    private lastId = '0';
    private isDrawn = true;
    private listeners: ((entry: Entry) => void)[] = [];

    /**
     * Goes on where it stopped. A browser has six connections to a server, whatever the number of its tabs, so one that
     * nobody sees must not keep any.
     */
    listen(isVisible: boolean): void {
        this.source?.close();
        this.source = undefined;
        if (!isVisible) return;
        const source = (this.source = new EventSource(`/lab/api/exchanges?since=${this.lastId}`));
        source.onopen = () => {
            this.isConnected = true;
            void world.refresh();
            this.draw();
        };
        source.onerror = () => {
            this.isConnected = false;
            void world.refresh();
            this.draw();
            // Browsers do not come back by themselves after a refusal, such as of one stream too many.
            const isRefused = source.readyState === EventSource.CLOSED;
            if (isRefused) setTimeout(() => this.source === source && this.listen(true), 1000);
        };
        const receive = ({ data, lastEventId }: MessageEvent<string>) => {
            this.lastId = lastEventId;
            this.add(entryOf(JSON.parse(data)));
        };
        for (const name of ['opened', 'exchange', 'simulation']) source.addEventListener(name, receive);
        source.addEventListener('lost', () => {
            // After a restart of the server its numbers begin anew, so what is shown does, too.
            if (this.lastId === '0') this.hasLost = true;
            else this.restart();
        });
        this.draw();
    }

    private restart(): void {
        this.live = [];
        this.byId.clear();
        this.lastId = '0';
        this.listen(true);
    }

    /** Calls the listener for each request that ends, live ones only. */
    onEnd(listener: (entry: Entry) => void): void {
        this.listeners.push(listener);
    }

    clear(): void {
        this.live = this.live.filter(({ status, simulate }) => status === undefined && !simulate);
        this.draw();
    }

    private add(entry: Entry): void {
        const known = this.byId.get(entry.id);
        if (known) Object.assign(known, entry);
        else {
            this.live.push(entry);
            if (entry.resource) this.byId.set(entry.id, entry);
        }
        // Seldom, as it moves all that is kept.
        if (this.live.length > maximumEntries * 1.1)
            for (const old of this.live.splice(0, this.live.length - maximumEntries)) this.byId.delete(old.id);
        if (mayChangeMonitors(entry)) void world.refresh();
        if (entry.status !== undefined) for (const listener of this.listeners) listener(entry);
        this.draw();
    }

    /** At most once a frame, however many requests there are. */
    private draw(): void {
        if (!this.isDrawn) return;
        this.isDrawn = false;
        requestAnimationFrame(() => {
            this.isDrawn = true;
            if (!this.recording) this.entries = this.live.slice(-maximumEntries);
            this.changed();
        });
    }

    /** Shows a recording until showLive(). */
    load(name: string, text: string): void {
        const lines = text
            .split('\n')
            .filter((line) => line.trim())
            .map((line) => parse(line) as Record<string, unknown> | undefined);
        const isRecording = lines[0]?.format === 'pell-recording';
        this.problem = isRecording ? '' : `${name} is no recording.`;
        if (isRecording) {
            this.recording = name;
            this.entries = lines
                .slice(1)
                .filter((line) => line !== undefined)
                .map(entryOf);
        }
        this.changed();
    }

    showLive(): void {
        this.recording = this.problem = '';
        this.draw();
    }
}

export const timeline = new Timeline();

export function matches(entry: Entry, { text, monitor, failuresOnly, othersOnly }: Filter): boolean {
    if (failuresOnly && !isFailure(entry)) return false;
    if (othersOnly && entry.source === 'lab') return false;
    if (monitor && monitorOf(entry) !== monitor) return false;
    const name = entry.resource ?? entry.simulate?.simulate ?? '';
    return !text || name.toLowerCase().includes(text.toLowerCase());
}
