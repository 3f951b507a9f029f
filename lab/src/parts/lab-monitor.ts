import { LitElement, css, html, nothing } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import { keyed } from 'lit/directives/keyed.js';
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
    /** How often all has been put back to the beginning, the slowness included. */
    @property({ attribute: false }) resets = 0;

    render() {
        const { product, serial } = this.monitor;
        const name = monitorOf(this.monitor);
        return html`
            <article class=${this.isChosen ? 'chosen' : ''} aria-label=${name}>
                <label class="name"
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

    private simulated() {
        const { product, serial, connected, power, inputPort, brightness, firmware } = this.monitor;
        const address = { product, serial };
        const isOn = power === 1 || power === true;
        const simulate = connected ? 'unplug' : 'plug';
        return html`
            <dl>
                ${[
                    [
                        'Cable',
                        html`<span class=${connected ? 'good' : 'bad'}>${connected ? 'connected' : 'unplugged'}</span>`,
                    ],
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
            <label class="line small soft"
                >Answers
                ${keyed(
                    this.resets,
                    html`<select class="push" @change=${this.delay}>
                        ${delays.map(
                            (delay) =>
                                html`<option value=${delay}>
                                    ${delay ? `${delay < 1000 ? `${delay} ms` : `${delay / 1000} s`} late, each call` : 'at once'}
                                </option>`,
                        )}
                    </select>`,
                )}</label
            >
            <div class="line buttons">
                <button @click=${() => world.simulate({ simulate, ...address })}>
                    ${connected ? 'Unplug' : 'Plug in'}
                </button>
                <button ?disabled=${!connected} @click=${() => this.switchPower(!isOn)}>
                    ${isOn ? 'Switch off' : 'Switch on'}
                </button>
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

    private delay(event: Event): void {
        const { product, serial } = this.monitor;
        const milliseconds = Number((event.target as HTMLSelectElement).value);
        void world.simulate({ simulate: 'delay', milliseconds, product, serial });
    }

    static styles = [
        shared,
        css`
            article {
                display: flex;
                flex-direction: column;
                gap: 8px;
                padding: 8px 10px;
                background: var(--surface);
                border: 1px solid var(--line);
                border-radius: var(--radius);
            }
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
                gap: 2px 12px;
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
            button,
            select {
                font-size: 12px;
                padding: 2px 6px;
            }
        `,
    ];
}
