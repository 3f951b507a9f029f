import { LitElement, css, html, nothing } from 'lit';
import { customElement } from 'lit/decorators.js';
import scenarios from 'scenarios.json';
import { world } from '../model/world.js';
import { shared } from './style.js';

const speeds = [1, 10, 100, 1000];

/** Which plug-in this is, and the world that it is in: the scenario and its clock. */
@customElement('lab-header')
export class LabHeader extends LitElement {
    private world = world.observedBy(this);

    render() {
        const { state, isReachable, isSimulated } = this.world;
        return html`
            <header>
                <h1>libpell <span>lab</span></h1>
                <span class="plugin soft small" title=${state?.plugin ?? ''}
                    >${state?.plugin?.split(/[\\/]/).pop()}</span
                >
                <span role="status" class=${isReachable ? 'good' : 'bad'}>
                    ${isReachable ? (state ? 'connected' : '') : 'The server does not answer. Is it running?'}
                </span>
                ${state && isSimulated ? this.controls() : nothing}
            </header>
            ${this.about(state?.scenario)}
            ${this.world.problem ? html`<p class="notice bad" role="alert">${this.world.problem}</p>` : nothing}
        `;
    }

    /** What is bad in this scenario, and what to do about it. */
    private about(scenario = '') {
        const [monitor, page] = scenarios[scenario] ?? [];
        const plain = (text: string) => text.replace(/`/g, '');
        return monitor
            ? html`<p class="about small">
                  <b>${scenario}:</b> ${plain(monitor)}. <b>A good page:</b> ${plain(page)}.
              </p>`
            : nothing;
    }

    private controls() {
        const { scenario, scenarios = [], speed = 1 } = this.world.state!;
        const chosen = (event: Event) => (event.target as HTMLSelectElement).value;
        return html`
            <div class="line push compact">
                <label
                    >Scenario
                    <select @change=${(event: Event) => world.simulate({ simulate: 'scenario', name: chosen(event) })}>
                        ${scenarios.map((name) => html`<option ?selected=${name === scenario}>${name}</option>`)}
                    </select></label
                >
                <label
                    >Clock
                    <select
                        @change=${(event: Event) => world.simulate({ simulate: 'speed', factor: Number(chosen(event)) })}
                    >
                        ${[...new Set([...speeds, speed])].map(
                            (factor) =>
                                html`<option value=${factor} ?selected=${factor === speed}>
                                    ${factor === 1 ? 'normal' : `${factor} times as fast`}
                                </option>`,
                        )}
                    </select></label
                >
                <button
                    title="All monitors as at the beginning of the scenario, nothing fails any more, and the clock is normal"
                    @click=${() => this.reset()}
                >
                    Reset
                </button>
            </div>
        `;
    }

    private async reset() {
        if (await world.simulate({ simulate: 'reset' })) await world.simulate({ simulate: 'speed', factor: 1 });
    }

    static styles = [
        shared,
        css`
            header {
                display: flex;
                flex-wrap: wrap;
                gap: 4px 12px;
                align-items: center;
                padding: 8px 12px;
                background: var(--surface);
                border-bottom: 1px solid var(--line);
            }
            h1 {
                margin: 0;
                font-size: 1.05rem;
            }
            h1 span {
                color: var(--accent);
            }
            p {
                border-radius: 0;
            }
            .about {
                padding: 6px 12px;
                background: var(--accent-soft);
                border-bottom: 1px solid var(--line);
            }
            @media (max-width: 1000px) {
                .plugin {
                    display: none;
                }
                .push {
                    margin-left: 0;
                }
                select {
                    max-width: 6.5rem;
                }
            }
        `,
    ];
}
