// The monitors, as the server tells of them, and what can be done to simulated ones.
import { Pell, httpTransport } from 'libpell-client';
import { Store } from './store.js';

export interface MonitorState {
    product: string;
    serial: string;
    connected: boolean;
    power?: unknown;
    inputPort?: unknown;
    brightness?: number;
    firmware?: string;
}

interface State {
    simulated: boolean;
    plugin: string;
    scenario?: string | null;
    scenarios?: string[];
    speed?: number;
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
    /** How often all has been put back to the beginning of a scenario. */
    resets = 0;
    /** The place in the list of the monitor that requests go to. */
    private chosenAt = 0;
    private isAsking = false;
    private isStale = false;

    get isSimulated(): boolean {
        return this.state?.simulated ?? true;
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
            else await this.list();
        } catch {
            this.isReachable = false;
        }
        this.changed();
    }

    /** Real monitors are listed once, and whenever the page asks: each time costs calls of the library. */
    async list(query: { update?: true } = {}, again = false): Promise<void> {
        if (this.monitors.length && !again) return;
        const monitors = await pell.monitors(query);
        this.monitors = monitors.map(({ product, serial }) => ({ product, serial, connected: true }));
        this.changed();
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
