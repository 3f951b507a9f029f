// What the page shows at the moment, and the answers that it has got.
import { resources, supportsRow, type Resource } from './catalogue.js';
import { errorOf, send, sendTexts, type Answer, type Request } from './request.js';
import { Store } from './store.js';
import { monitorOf } from './timeline.js';
import { world } from './world.js';

export type View = 'monitors' | 'resources' | 'timeline';

/** A resource that tells more than whether it is there, such as KVMSetting, answers an object. */
function saysYes(supports: unknown): boolean {
    return supports === true || (supports as { supports?: unknown } | null)?.supports === true;
}

class Selection extends Store {
    /** Of a narrow window, which has room for one. */
    view: View = 'resources';
    resource: Resource = resources.find(({ name }) => name === 'Brightness')!;
    /** The package that was opened last. */
    fileId = '';
    /** How many resources have still to be asked whether the monitor supports them. */
    toAsk = 0;
    /** The monitor that could not be reached when it was to be asked about all. */
    unreachable = '';
    private answers = new Map<string, Answer>();
    private marks = new Map<string, boolean | undefined>();

    show(view: View): void {
        this.view = view;
        this.changed();
    }

    choose(resource: Resource): void {
        this.resource = resource;
        this.view = 'resources';
        this.changed();
    }

    /** The last answer to a request of this place, such as a row, for the chosen monitor. */
    answer(place: string): Answer | undefined {
        return this.answers.get(`${monitorOf(world.chosen ?? {})} ${place}`);
    }

    async ask(place: string, request: Request): Promise<void> {
        const monitor = monitorOf(world.chosen ?? {});
        const answer = await this.keep(place, send(request));
        if (request.query === 'supports') this.mark(monitor, request.resource, answer);
        if (request.resource === 'FileSystemDfwFile' && request.method === 'POST' && answer.status === 200)
            this.fileId = (JSON.parse(answer.text) as { value: { id: string } }).value.id;
        this.changed();
    }

    async askRaw(place: string, resource: string, texts: string[]): Promise<void> {
        await this.keep(place, sendTexts(resource, texts));
        this.changed();
    }

    private async keep(place: string, sent: Promise<Answer>): Promise<Answer> {
        const monitor = monitorOf(world.chosen ?? {});
        const answer = await sent;
        this.answers.set(`${monitor} ${place}`, answer);
        return answer;
    }

    /** Whether the chosen monitor says that it supports the resource; undefined while it has not been asked. */
    supports({ name }: Resource): boolean | undefined {
        return this.marks.get(`${monitorOf(world.chosen ?? {})} ${name}`);
    }

    /** Asks the chosen monitor about all resources that can be asked, as long as it can be reached. */
    async askAll(): Promise<void> {
        const { chosen } = world;
        if (!chosen || this.toAsk) return;
        const waiting = resources.filter((resource) => resource.of === 'monitor' && supportsRow(resource));
        this.toAsk = waiting.length;
        this.unreachable = '';
        const monitor = monitorOf(chosen);
        const address = { product: chosen.product, serial: chosen.serial };
        const worker = async () => {
            for (let next = waiting.shift(); next; next = waiting.shift()) {
                const request = { resource: next.name, method: 'GET' as const, address, query: 'supports', body: '' };
                const answer = await send(request);
                if (answer.status === 0 || errorOf(answer)?.isDisconnected) {
                    waiting.length = 0;
                    this.unreachable = monitor;
                } else this.mark(monitor, next.name, answer);
                this.toAsk = waiting.length;
                this.changed();
            }
        };
        await Promise.all([worker(), worker(), worker(), worker()]);
    }

    private mark(monitor: string, resource: string, { status, text }: Answer): void {
        const supports = status === 200 ? saysYes((JSON.parse(text) as { value: unknown }).value) : undefined;
        this.marks.set(`${monitor} ${resource}`, status === 404 ? false : supports);
    }
}

export const selection = new Selection();
