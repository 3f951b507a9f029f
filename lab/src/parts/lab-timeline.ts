import { LitElement, css, html, nothing, type PropertyValues } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { resultText } from '../model/catalogue.js';
import { readQuery, writeQuery } from '../model/request.js';
import { isFailure, matches, monitorOf, timeline, type Entry, type Filter } from '../model/timeline.js';
import './lab-exchange.js';
import { shared } from './style.js';
import { clockText, durationText } from './text.js';

/** Pixels. All lines are alike, so that only those in sight need be drawn; in a narrow place, each has two rows. */
const lineHeights = { wide: 26, narrow: 42 };
const narrowWidth = 600;

/** Every request of whatever page as a line, the newest last. */
@customElement('lab-timeline')
export class LabTimeline extends LitElement {
    private timeline = timeline.observedBy(this);
    @state() private filter: Filter = { text: '', monitor: '', failuresOnly: false, othersOnly: false };
    @state() private opened?: Entry;
    @state() private top = 0;
    @state() private redacts = false;
    @state() private lineHeight = lineHeights.wide;
    private shown: Entry[] = [];
    private height = 600;
    /** Whether the newest line is kept in sight. */
    private follows = true;
    private resized = new ResizeObserver(() => {
        const { clientHeight = 0, clientWidth = 0 } = this.list ?? {};
        this.lineHeight = clientWidth < narrowWidth ? lineHeights.narrow : lineHeights.wide;
        if (clientHeight === this.height) return;
        this.height = clientHeight;
        this.requestUpdate();
    });

    private get list(): HTMLElement | null {
        return this.renderRoot.querySelector('.lines');
    }

    protected firstUpdated(): void {
        this.resized.observe(this.list!);
    }

    protected willUpdate(): void {
        this.shown = this.timeline.entries.filter((entry) => matches(entry, this.filter));
    }

    protected updated(changes: PropertyValues): void {
        if (this.follows) this.list!.scrollTop = this.shown.length * this.lineHeight;
        // What is opened takes room from the lines.
        else if (this.opened && ['opened', 'lineHeight'].some((name) => changes.has(name)))
            this.reveal(this.shown.indexOf(this.opened));
    }

    render() {
        const { entries, recording, problem, hasLost, isConnected } = this.timeline;
        return html`
            <section aria-labelledby="title">
                <div class="line compact">
                    <h2 id="title">Timeline</h2>
                    <span class="soft small count"
                        >${
                            this.shown.length === entries.length
                                ? entries.length.toLocaleString('en')
                                : `${this.shown.length.toLocaleString('en')} of ${entries.length.toLocaleString('en')}`
                        }
                        lines</span
                    >
                    <button ?hidden=${!!recording} @click=${() => timeline.clear()}>Clear</button>
                    <div class="line push" role="group" aria-label="Recording">
                        <span class="soft small">Recording</span>
                        <button
                            aria-label="Open recording"
                            @click=${() => this.renderRoot.querySelector<HTMLInputElement>('[type=file]')!.click()}
                        >
                            Open
                        </button>
                        <input type="file" accept=".jsonl" hidden aria-label="Recording" @change=${this.load} />
                        <a
                            class="button"
                            aria-label="Save recording"
                            href="api/recording${this.redacts ? '?redact' : ''}"
                            download="recording.jsonl"
                            >Save</a
                        >
                        ${this.check('redact serials', (redacts) => (this.redacts = redacts))}
                    </div>
                </div>
                ${this.filters()} ${problem ? html`<p class="notice bad" role="alert">${problem}</p>` : nothing}
                ${
                    recording
                        ? html`<p class="notice line">
                              This is the recording ${recording}.
                              <button class="push" @click=${() => timeline.showLive()}>Back to what happens now</button>
                          </p>`
                        : nothing
                }
                ${
                    hasLost && !recording
                        ? html`<p class="soft small">The server no longer has what happened before.</p>`
                        : nothing
                }
                ${isConnected || recording ? nothing : html`<p class="notice">Waiting for the server…</p>`}
                ${this.lines()}
                ${
                    this.opened
                        ? html`<lab-exchange .entry=${this.opened} @close=${this.close}></lab-exchange>`
                        : nothing
                }
            </section>
        `;
    }

    private filters() {
        const set = (change: Partial<Filter>) => (this.filter = { ...this.filter, ...change });
        const known = [...this.timeline.entries.map(monitorOf), this.filter.monitor];
        const monitors = [...new Set(known)].filter(Boolean).sort();
        return html`
            <div class="line small compact">
                <input
                    type="search"
                    aria-label="Filter by resource"
                    placeholder="Resource"
                    size="10"
                    @input=${(event: Event) => set({ text: (event.target as HTMLInputElement).value })}
                />
                <select
                    aria-label="Filter by monitor"
                    @change=${(event: Event) => set({ monitor: (event.target as HTMLSelectElement).value })}
                >
                    <option value="">All monitors</option>
                    ${monitors.map(
                        (monitor) => html`<option ?selected=${monitor === this.filter.monitor}>${monitor}</option>`,
                    )}
                </select>
                ${this.check('Failures only', (failuresOnly) => set({ failuresOnly }))}
                ${this.check("Hide the lab's own", (othersOnly) => set({ othersOnly }))}
            </div>
        `;
    }

    private check(label: string, set: (isChecked: boolean) => void) {
        return html`<label class="small"
            ><input
                type="checkbox"
                @change=${(event: Event) => set((event.target as HTMLInputElement).checked)}
            />${label}</label
        >`;
    }

    private lines() {
        const { lineHeight } = this;
        const first = Math.max(0, Math.floor(this.top / lineHeight) - 8);
        const end = Math.min(this.shown.length, first + Math.ceil(this.height / lineHeight) + 16);
        const active = this.opened && this.shown.indexOf(this.opened);
        return html`
            ${this.shown.length ? nothing : this.hint()}
            <div
                class="lines ${lineHeight === lineHeights.narrow ? 'narrow' : ''}"
                style="--line-height: ${lineHeight}px"
                role="listbox"
                tabindex="0"
                aria-label="Requests"
                aria-activedescendant=${active !== undefined && active >= first && active < end ? `line-${active}` : nothing}
                @scroll=${this.scrolled}
                @keydown=${this.key}
            >
                <div role="presentation" style="height: ${this.shown.length * lineHeight}px">
                    <div role="presentation" style="transform: translateY(${first * lineHeight}px)">
                        ${this.shown.slice(first, end).map((entry, at) => this.line(entry, first + at))}
                    </div>
                </div>
            </div>
        `;
    }

    private hint() {
        return html`<p class="notice soft">
            ${
                this.timeline.entries.length
                    ? 'Nothing fits the filter.'
                    : html`Nothing yet. Press a button of a resource, or open <a href="/" target="_blank">your page</a>:
                          whatever it asks appears here, down to the calls of the companion libraries.`
            }
        </p>`;
    }

    private line(entry: Entry, at: number) {
        const { time, method, resource, simulate, status, milliseconds } = entry;
        const hasFailed = isFailure(entry);
        const given = givenText(entry);
        return html`<div
            id="line-${at}"
            role="option"
            class="entry ${hasFailed ? 'failed' : ''}"
            aria-selected=${entry === this.opened ? 'true' : 'false'}
            aria-setsize=${this.shown.length}
            aria-posinset=${at + 1}
            @click=${() => this.open(entry)}
        >
            <span class="time soft" title=${clockText(time)}>${clockText(time).slice(0, -4)}</span>
            ${
                simulate
                    ? html`<span class="what" title=${simulateText(simulate)}
                          >⚙ <b>${simulate.simulate}</b> <span>${simulateText(simulate)}</span></span
                      >`
                    : html`<span class="what" title="${method} ${resource} ${given}"
                          ><span class="method">${method}</span> <b>${resource}</b>
                          <span class="given">${given}</span></span
                      >`
            }
            <span class="monitor soft">${monitorOf(entry)}</span>
            <span class="status ${status === undefined ? 'soft' : hasFailed ? 'bad' : 'good'}"
                >${simulate ? '' : (status ?? 'runs…')}</span
            >
            <span class="duration">${milliseconds === undefined ? '' : durationText(milliseconds)}</span>
        </div>`;
    }

    private open(entry: Entry): void {
        this.opened = entry;
        this.follows = false;
    }

    private close(): void {
        this.follows = this.opened === this.shown.at(-1);
        this.opened = undefined;
        this.list!.focus();
    }

    private scrolled(event: Event): void {
        const { scrollTop, scrollHeight, clientHeight } = event.target as HTMLElement;
        this.follows = !this.opened && scrollTop + clientHeight >= scrollHeight - this.lineHeight;
        this.top = scrollTop;
    }

    private key(event: KeyboardEvent): void {
        const at = this.opened ? this.shown.indexOf(this.opened) : this.shown.length;
        const last = this.shown.length - 1;
        const page = Math.floor(this.height / this.lineHeight);
        const targets: Record<string, number> = {
            ArrowUp: at - 1,
            ArrowDown: at + 1,
            PageUp: at - page,
            PageDown: at + page,
            Home: 0,
            End: last,
        };
        if (event.key === 'Escape' && this.opened) this.close();
        if (!(event.key in targets) || last < 0) return;
        event.preventDefault();
        const target = Math.min(last, Math.max(0, targets[event.key]));
        this.open(this.shown[target]);
    }

    private reveal(at: number): void {
        const list = this.list!;
        const { lineHeight } = this;
        if (at * lineHeight < list.scrollTop) list.scrollTop = at * lineHeight;
        const bottom = (at + 1) * lineHeight - list.clientHeight;
        if (bottom > list.scrollTop) list.scrollTop = bottom;
    }

    private async load(event: Event): Promise<void> {
        const input = event.target as HTMLInputElement;
        const [file] = input.files ?? [];
        if (!file) return;
        this.opened = undefined;
        timeline.load(file.name, await file.text());
        input.value = '';
    }

    static styles = [
        shared,
        css`
            :host {
                display: flex;
                min-height: 0;
            }
            section {
                flex: 1;
                min-width: 0;
                display: flex;
                flex-direction: column;
                gap: 8px;
                padding-top: 12px;
            }
            section > :not(.lines, lab-exchange) {
                margin: 0 12px;
            }
            .lines {
                flex: 1 1 10rem;
                min-height: 6rem;
                overflow: auto;
                background: var(--surface);
                border-top: 1px solid var(--line);
                contain: strict;
            }
            .lines > div {
                overflow: hidden;
            }
            select {
                max-width: 8.5rem;
            }
            .entry {
                display: grid;
                grid-template: 'time what monitor status duration' 1fr / 54px minmax(0, 1fr) auto 36px 54px;
                column-gap: 8px;
                align-items: center;
                height: var(--line-height);
                padding: 0 12px;
                border-bottom: 1px solid var(--line);
                cursor: pointer;
                font-size: 13px;
                white-space: nowrap;
            }
            .entry:hover {
                background: var(--raised);
            }
            .entry.failed {
                background: var(--bad-soft);
            }
            .entry[aria-selected='true'] {
                background: var(--accent-soft);
                box-shadow: inset 3px 0 var(--accent);
            }
            .narrow .entry {
                grid-template: 'what what status' 1fr 'time monitor duration' 1fr / 54px minmax(0, 1fr) auto;
                padding-block: 3px;
            }
            .time,
            .monitor,
            .duration {
                font-size: 12px;
            }
            .time {
                grid-area: time;
            }
            .monitor {
                grid-area: monitor;
            }
            .status {
                grid-area: status;
                text-align: right;
            }
            .duration {
                grid-area: duration;
                text-align: right;
            }
            .what {
                grid-area: what;
                display: flex;
                gap: 5px;
                align-items: baseline;
                min-width: 0;
            }
            .what > * {
                overflow: hidden;
                text-overflow: ellipsis;
            }
            .method {
                flex: none;
            }
            /* Gives way to a long name, as far as a short query can still be read. */
            .given {
                flex-shrink: 1000;
                min-width: 5rem;
            }
            .method {
                font-size: 11px;
                letter-spacing: 0.02em;
            }
            lab-exchange {
                flex: 1 1 50%;
                min-height: 0;
                overflow: auto;
                border-top: 2px solid var(--accent);
            }
        `,
    ];
}

function simulateText({ simulate: _, ...rest }: Record<string, unknown>): string {
    return Object.entries(rest)
        .map(([name, value]) => (name === 'result' ? resultText(value) : String(value)))
        .join(' ');
}

/** The query as in a URL, and the body. */
function givenText({ texts }: Entry): string {
    const [query, body] = [texts?.[2] ?? '', texts?.[3] ?? ''];
    const written = writeQuery(readQuery(query));
    const asked = written || query.replace('{}', '');
    return [asked && `?${asked}`, body.slice(0, 80)].filter(Boolean).join(' ');
}
