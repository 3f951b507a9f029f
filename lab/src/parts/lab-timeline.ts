import { LitElement, css, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { isFailure, matches, monitorOf, timeline, type Entry, type Filter } from '../model/timeline.js';
import './lab-exchange.js';
import { shared } from './style.js';
import { clockText, durationText } from './text.js';

/** Pixels. All lines are alike, so that only those in sight need be drawn. */
const lineHeight = 26;

/** Every request of whatever page as a line, the newest last. */
@customElement('lab-timeline')
export class LabTimeline extends LitElement {
    private timeline = timeline.observedBy(this);
    @state() private filter: Filter = { text: '', monitor: '', failuresOnly: false, othersOnly: false };
    @state() private opened?: Entry;
    @state() private top = 0;
    private shown: Entry[] = [];
    private height = 600;
    /** Whether the newest line is kept in sight. */
    private follows = true;
    private resized = new ResizeObserver(() => {
        const height = this.list?.clientHeight ?? 0;
        if (height === this.height) return;
        this.height = height;
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

    protected updated(): void {
        if (this.follows && this.list) this.list.scrollTop = this.shown.length * lineHeight;
    }

    render() {
        const { entries, recording, problem, hasLost, isConnected } = this.timeline;
        return html`
            <section aria-labelledby="title">
                <div class="line">
                    <h2 id="title">Timeline</h2>
                    <span class="soft small count"
                        >${
                            this.shown.length === entries.length
                                ? entries.length.toLocaleString('en')
                                : `${this.shown.length.toLocaleString('en')} of ${entries.length.toLocaleString('en')}`
                        }
                        lines</span
                    >
                    <div class="line push">
                        <button ?hidden=${!!recording} @click=${() => timeline.clear()}>Clear</button>
                        <a class="button" href="api/recording" download="recording.jsonl">Save recording</a>
                        <button @click=${() => this.renderRoot.querySelector<HTMLInputElement>('[type=file]')!.click()}>
                            Open recording
                        </button>
                        <input type="file" accept=".jsonl" hidden aria-label="Recording" @change=${this.load} />
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
        const monitors = [...new Set(this.timeline.entries.map(monitorOf))].filter(Boolean).sort();
        return html`
            <div class="line small">
                <input
                    type="search"
                    aria-label="Filter by resource"
                    placeholder="Resource"
                    size="14"
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
                ${this.check("Without the lab's own", (othersOnly) => set({ othersOnly }))}
            </div>
        `;
    }

    private check(label: string, set: (isChecked: boolean) => void) {
        return html`<label
            ><input
                type="checkbox"
                @change=${(event: Event) => set((event.target as HTMLInputElement).checked)}
            />${label}</label
        >`;
    }

    private lines() {
        const first = Math.max(0, Math.floor(this.top / lineHeight) - 8);
        const end = Math.min(this.shown.length, first + Math.ceil(this.height / lineHeight) + 16);
        const active = this.opened && this.shown.indexOf(this.opened);
        return html`
            <div
                class="lines"
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
            ${
                this.shown.length
                    ? nothing
                    : html`<p class="soft empty">
                          ${
                              this.timeline.entries.length
                                  ? 'Nothing fits the filter.'
                                  : 'Nothing yet. Whatever a page asks appears here: press a button of a resource.'
                          }
                      </p>`
            }
        `;
    }

    private line(entry: Entry, at: number) {
        const { time, method, resource, simulate, status, milliseconds } = entry;
        const hasFailed = isFailure(entry);
        return html`<div
            id="line-${at}"
            role="option"
            class="entry ${hasFailed ? 'failed' : ''}"
            aria-selected=${entry === this.opened ? 'true' : 'false'}
            aria-setsize=${this.shown.length}
            aria-posinset=${at + 1}
            @click=${() => this.open(entry)}
        >
            <span class="time soft">${clockText(time)}</span>
            ${
                simulate
                    ? html`<span class="what">⚙ <b>${simulate.simulate}</b> ${simulateText(simulate)}</span>`
                    : html`<span class="what"
                          ><span class="method">${method}</span> <b>${resource}</b>
                          <span class="soft">${monitorOf(entry)} ${givenText(entry)}</span></span
                      >`
            }
            <span class=${hasFailed ? 'bad' : 'good'}>${simulate ? '' : (status ?? '…')}${hasFailed ? ' ✗' : ''}</span>
            <span class="time duration">${milliseconds === undefined ? '' : durationText(milliseconds)}</span>
        </div>`;
    }

    private open(entry: Entry): void {
        this.opened = entry;
        this.follows = false;
    }

    private close(): void {
        this.opened = undefined;
        this.list!.focus();
    }

    private scrolled(event: Event): void {
        const { scrollTop, scrollHeight, clientHeight } = event.target as HTMLElement;
        this.follows = scrollTop + clientHeight >= scrollHeight - lineHeight;
        this.top = scrollTop;
    }

    private key(event: KeyboardEvent): void {
        const at = this.opened ? this.shown.indexOf(this.opened) : this.shown.length;
        const last = this.shown.length - 1;
        const page = Math.floor(this.height / lineHeight);
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
        const list = this.list!;
        if (target * lineHeight < list.scrollTop) list.scrollTop = target * lineHeight;
        const bottom = (target + 1) * lineHeight - list.clientHeight;
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
            .line button,
            .button {
                font-size: 12px;
                min-height: 26px;
                padding: 2px 8px;
            }
            .button {
                border: 1px solid var(--control-line);
                border-radius: var(--radius);
                background: var(--surface);
                color: inherit;
                text-decoration: none;
                cursor: pointer;
                line-height: 20px;
            }
            .button:hover {
                background: var(--accent-soft);
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
            .empty {
                padding-bottom: 12px;
            }
            .entry {
                display: grid;
                grid-template-columns: 86px minmax(0, 1fr) auto 62px;
                gap: 8px;
                align-items: center;
                height: ${lineHeight}px;
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
            .time {
                font-size: 12px;
            }
            .duration {
                text-align: right;
            }
            .what {
                overflow: hidden;
                text-overflow: ellipsis;
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
    return Object.values(rest).map(String).join(' ');
}

/** The query and the body, as far as there is room. */
function givenText({ texts }: Entry): string {
    const given = [texts?.[2], texts?.[3]].filter((text) => text && text !== '{}');
    return given.join(' ').slice(0, 80);
}
