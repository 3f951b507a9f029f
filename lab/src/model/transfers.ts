// The firmware transfers of whatever page, as the events and the requests tell of them.
import type { Step } from 'libpell-client';
import { Store } from './store.js';
import { monitorOf, timeline, type Entry } from './timeline.js';
import { pell } from './world.js';

export interface Progress {
    monitor: string;
    step: Step;
    /** When its first step came, and how far it was by then. */
    since: number;
    sinceBlock: number;
    /** Undefined while it runs. */
    outcome?: string;
    hasFailed?: boolean;
}

class Transfers extends Store {
    private stop?: () => void;
    private running = new Map<string, Progress>();

    get all(): Progress[] {
        return [...this.running.values()];
    }

    constructor() {
        super();
        timeline.onEnd((entry) => this.end(entry));
    }

    listen(isVisible: boolean): void {
        this.stop?.();
        this.stop = isVisible ? pell.on('transferFirmwareData', (step) => this.add(step)) : undefined;
    }

    dismiss({ monitor }: Progress): void {
        this.running.delete(monitor);
        this.changed();
    }

    private add(step: Step): void {
        const monitor = monitorOf(step);
        const known = this.running.get(monitor);
        // The last step may come after the answer. Another transfer begins with the first block again.
        if (known && step.transferredBlock > known.step.transferredBlock) known.step = step;
        else this.running.set(monitor, { monitor, step, since: performance.now(), sinceBlock: step.transferredBlock });
        this.changed();
    }

    private end(entry: Entry): void {
        const progress = this.running.get(monitorOf(entry));
        if (!progress || entry.resource !== 'FirmwareUpdateTransfer') return;
        progress.hasFailed = entry.status !== 200;
        const error =
            entry.responses?.[0] && (JSON.parse(entry.responses[0].text) as { error?: { message: string } }).error;
        progress.outcome = progress.hasFailed ? `failed: ${error?.message ?? entry.status}` : 'transferred';
        this.changed();
    }
}

export const transfers = new Transfers();

/** In whole seconds; undefined while nothing can be said. */
export function restSeconds({ step, since, sinceBlock }: Progress): number | undefined {
    const done = step.transferredBlock - sinceBlock;
    if (done <= 0) return undefined;
    const perBlock = (performance.now() - since) / done;
    return Math.ceil((perBlock * (step.blockCount - step.transferredBlock)) / 1000);
}
