// The monitors, as the server tells of them, and what can be done to simulated ones.
import { Pell, httpTransport } from 'libpell-client';
import { Store } from './store.js';

export interface MonitorState {
    product: string;
    serial: string;
    connected: boolean;
    /** Whether the library knows it; one that is plugged in again is found when the page looks for monitors. */
    found?: boolean;
    /** Of each call about it, in milliseconds. */
    delay?: number;
    power?: unknown;
    inputPort?: unknown;
    brightness?: number;
    firmware?: string;
}

interface State {
    simulated: boolean;
    plugin: string;
    scenario?: string;
    scenarios?: string[];
    speed?: number;
    /** The functions that are to fail. */
    scripts?: Instruction[];
    monitors?: MonitorState[];
}

export type Instruction = { simulate: string } & Record<string, unknown>;

const transport = httpTransport('/pell');
export const pell = new Pell(transport);

class World extends Store {
    state?: State;
    monitors: MonitorState[] = [];
    isReachable = true;
    /** What went wrong with the newest instruction. */
    problem = '';
    /** The place in the list of the monitor that requests go to. */
    private chosenAt = 0;
    private isAsking = false;
    private isStale = false;

    get isSimulated(): boolean {
        return this.state?.simulated ?? true;
    }

    /** Whether a request may use up what was to fail. */
    get hasLimitedScripts(): boolean {
        return this.state?.scripts?.some(({ times }) => times !== undefined) ?? false;
    }

    get chosen(): MonitorState | undefined {
        return this.monitors[this.chosenAt] ?? this.monitors[0];
    }

    choose(monitor: MonitorState): void {
        this.chosenAt = this.monitors.indexOf(monitor);
        this.changed();
    }

    /** Several calls while an answer is awaited become one. */
    async refresh(): Promise<void> {
        this.isStale = true;
        if (this.isAsking) return;
        this.isAsking = true;
        while (this.isStale) {
            this.isStale = false;
            await this.ask();
            await new Promise((resolve) => setTimeout(resolve, 100));
        }
        this.isAsking = false;
    }

    private async ask(): Promise<void> {
        try {
            const response = await fetch('/lab/api/state', { cache: 'no-store' });
            this.state = (await response.json()) as State;
            this.isReachable = true;
            if (this.state.monitors) this.monitors = this.state.monitors;
            else if (!this.monitors.length) await this.list();
        } catch {
            this.isReachable = false;
        }
        this.changed();
    }

    /** Lets the library look for monitors afresh. */
    async find(): Promise<void> {
        await this.list({ update: true }).catch(({ message }: Error) => (this.problem = message));
        this.changed();
    }

    /** Real monitors are listed once, and whenever the user asks: each time costs calls of the library. */
    private async list(query: { update?: true } = {}): Promise<void> {
        const monitors = await pell.monitors(query);
        if (this.state?.monitors) await this.refresh();
        else this.monitors = monitors.map(({ product, serial }) => ({ product, serial, connected: true }));
    }

    async simulate(instruction: Instruction): Promise<boolean> {
        try {
            const response = await fetch('/lab/api/simulate', { method: 'POST', body: JSON.stringify(instruction) });
            const { ok, error } = (await response.json()) as { ok: boolean; error?: string };
            this.problem = ok ? '' : (error ?? 'The server refused this.');
        } catch {
            this.problem = 'The server did not answer.';
        }
        await this.refresh();
        this.changed();
        return !this.problem;
    }
}

export const world = new World();
