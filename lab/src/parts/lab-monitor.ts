import { LitElement, css, html, nothing } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import { send, type Request } from '../model/request.js';
import { monitorOf } from '../model/timeline.js';
import { world, type MonitorState } from '../model/world.js';
import { shared } from './style.js';

const delays = [0, 50, 500, 2000, 10_000];

/** One monitor with the settings that matter, its cable, its power and its slowness. */
@customElement('lab-monitor')
export class LabMonitor extends LitElement {
    @property({ attribute: false }) monitor!: MonitorState;
    @property({ attribute: false }) isChosen = false;
    @property({ attribute: false }) isSimulated = true;

    render() {
        const { product, serial } = this.monitor;
        const name = monitorOf(this.monitor);
        return html`
            <article class="card stack ${this.isChosen ? 'chosen' : ''}" aria-label=${name}>
                <label class="name" title="Requests of this page go to the monitor that is chosen"
                    ><input
                        type="radio"
                        name="monitor"
                        .checked=${this.isChosen}
                        @change=${() => world.choose(this.monitor)}
                    /><b>${product}</b> ${serial || html`<i>no serial</i>`}</label
                >
                ${this.isSimulated ? this.simulated() : nothing}
            </article>
        `;
    }

    private connection() {
        const { connected, found } = this.monitor;
        if (!connected) return html`<span class="bad">unplugged</span>`;
        if (found) return html`<span class="good">connected</span>`;
        return html`<span class="bad" title="The library has to look for monitors before it knows this one"
            >not found</span
        >`;
    }

    private simulated() {
        const { product, serial, connected, power, inputPort, brightness, firmware, delay = 0 } = this.monitor;
        const address = { product, serial };
        const isOn = power === 1 || power === true;
        const simulate = connected ? 'unplug' : 'plug';
        return html`
            <dl>
                ${[
                    ['Cable', this.connection()],
                    ['Power', power === undefined ? undefined : isOn ? 'on' : 'off'],
                    ['Input', Array.isArray(inputPort) ? inputPort.join(', ') : inputPort],
                    ['Brightness', brightness],
                    ['Firmware', firmware],
                ].map(([term, value]) =>
                    value === undefined
                        ? nothing
                        : html`<div>
                              <dt>${term}</dt>
                              <dd>${value}</dd>
                          </div>`,
                )}
            </dl>
            <div class="stack compact">
                <label class="line small soft"
                    >Answers
                    <select class="push" @change=${this.slowDown}>
                        ${[...new Set([...delays, delay])].map(
                            (one) => html`<option value=${one} ?selected=${one === delay}>${lateness(one)}</option>`,
                        )}
                    </select></label
                >
                <div class="line buttons">
                    <button @click=${() => world.simulate({ simulate, ...address })}>
                        ${connected ? 'Unplug' : 'Plug in'}
                    </button>
                    <button ?disabled=${!connected} @click=${() => this.switchPower(!isOn)}>
                        ${isOn ? 'Switch off' : 'Switch on'}
                    </button>
                </div>
            </div>
        `;
    }

    private async switchPower(power: boolean): Promise<void> {
        const { product, serial } = this.monitor;
        const request: Request = {
            resource: 'Power',
            method: 'PUT',
            address: { product, serial },
            query: '',
            body: String(power),
        };
        await send(request);
        await world.refresh();
    }

    private slowDown(event: Event): void {
        const { product, serial } = this.monitor;
        const milliseconds = Number((event.target as HTMLSelectElement).value);
        void world.simulate({ simulate: 'delay', milliseconds, product, serial });
    }

    static styles = [
        shared,
        css`
            article.chosen {
                border-color: var(--accent);
                box-shadow: inset 3px 0 var(--accent);
            }
            .name {
                overflow-wrap: anywhere;
            }
            dl {
                margin: 0;
                display: grid;
                grid-template-columns: 1fr 1fr;
                gap: 2px 14px;
                font-size: 12px;
            }
            dl div {
                display: flex;
                justify-content: space-between;
                gap: 4px;
            }
            dt {
                color: var(--soft);
            }
            dd {
                margin: 0;
            }
            label.line {
                flex-wrap: nowrap;
            }
            select {
                min-width: 0;
            }
            .buttons button {
                flex: 1;
            }
        `,
    ];
}

function lateness(milliseconds: number): string {
    if (milliseconds === 0) return 'at once';
    return `${milliseconds < 1000 ? `${milliseconds} ms` : `${milliseconds / 1000} s`} late, each call`;
}
