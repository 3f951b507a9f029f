import { LitElement, css, html, nothing } from 'lit';
import { customElement } from 'lit/decorators.js';
import { world } from '../model/world.js';
import './lab-faults.js';
import './lab-monitor.js';
import { shared } from './style.js';

/** The monitors, and what can be done to simulated ones. */
@customElement('lab-monitors')
export class LabMonitors extends LitElement {
    private world = world.observedBy(this);

    render() {
        const { monitors, chosen, isSimulated, state } = this.world;
        return html`
            <section class="stack" aria-labelledby="title">
                <div class="line compact">
                    <h2 id="title">Monitors</h2>
                    <button
                        class="push"
                        title="Monitors?update: the library finds those that have been plugged in"
                        @click=${() => world.find()}
                    >
                        Look for monitors
                    </button>
                </div>
                ${monitors.map(
                    (monitor) =>
                        html`<lab-monitor
                            .monitor=${monitor}
                            .isChosen=${monitor === chosen}
                            .isSimulated=${isSimulated}
                        ></lab-monitor>`,
                )}
                ${state && !monitors.length ? html`<p class="notice">No monitor is connected.</p>` : nothing}
                ${
                    isSimulated
                        ? html`<lab-faults></lab-faults>`
                        : html`<p class="notice">
                              The monitor-control library is a real one, so nothing can be simulated here: pull the
                              cable of a monitor to see what happens.
                          </p>`
                }
            </section>
        `;
    }

    static styles = [
        shared,
        css`
            :host {
                overflow: auto;
            }
            section {
                padding: 12px;
                width: 100%;
            }
        `,
    ];
}
