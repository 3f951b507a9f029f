import { LitElement, css, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { keyed } from 'lit/directives/keyed.js';
import { referenceOf, type Resource } from '../model/catalogue.js';
import type { Address } from '../model/request.js';
import { selection } from '../model/selection.js';
import { monitorOf } from '../model/timeline.js';
import { world } from '../model/world.js';
import './lab-raw.js';
import './lab-row.js';
import { shared } from './style.js';

/** A resource: what it is, and every way to ask it. */
@customElement('lab-resource')
export class LabResource extends LitElement {
    private selection = selection.observedBy(this);
    private world = world.observedBy(this);
    @state() private isRaw = false;

    render() {
        const { resource } = this.selection;
        const { chosen } = this.world;
        const supports = this.selection.supports(resource);
        return html`
            <section class="stack" aria-labelledby="title">
                <div class="line">
                    <h2 id="title">${resource.name}</h2>
                    ${
                        supports === undefined
                            ? nothing
                            : html`<span class="small ${supports ? 'good' : 'bad'}"
                                  >${supports ? '✓ supported' : '– not supported'}</span
                              >`
                    }
                    <a class="push small" href=${referenceOf(resource)} target="_blank">Reference</a>
                </div>
                <p>${resource.about}</p>
                ${
                    resource.aliases.length
                        ? html`<p class="soft small">Also named ${resource.aliases.join(', ')}.</p>`
                        : nothing
                }
                <div class="line">
                    <span class="small soft">${this.target(resource)}</span>
                    <div class="push switch" role="group" aria-label="How requests are written">
                        <button aria-pressed=${!this.isRaw} @click=${() => (this.isRaw = false)}>Form</button
                        ><button aria-pressed=${this.isRaw} @click=${() => (this.isRaw = true)}>Raw texts</button>
                    </div>
                </div>
                ${resource.of === 'file' ? this.idField() : nothing}
                ${keyed(
                    `${resource.name} ${monitorOf(chosen ?? {})}`,
                    this.isRaw
                        ? html`<lab-raw .resource=${resource} .address=${this.address(resource)}></lab-raw>`
                        : resource.served.map(
                              (row, at) =>
                                  html`<lab-row
                                      .resource=${resource}
                                      .row=${row}
                                      .place=${`${resource.name} ${at}`}
                                      .address=${this.address(resource, row.method === 'POST')}
                                  ></lab-row>`,
                          ),
                )}
                ${
                    resource.refused.length
                        ? html`<details>
                              <summary>What is refused</summary>
                              <ul class="small">
                                  ${resource.refused.map(
                                      ({ method, refused, fails, when }) =>
                                          html`<li>
                                              <code>${method}</code> ${when ?? 'any other'}: “${refused ?? fails}”
                                          </li>`,
                                  )}
                              </ul>
                          </details>`
                        : nothing
                }
            </section>
        `;
    }

    private target({ of }: Resource) {
        const { chosen } = this.world;
        if (of !== 'monitor')
            return of === 'file' ? 'Goes to the application.' : 'Goes to the application, not to one monitor.';
        return chosen ? html`Goes to <b>${monitorOf(chosen)}</b>` : 'There is no monitor to ask.';
    }

    private idField() {
        return html`<label class="line small"
            >Identifier of the opened package
            <input
                .value=${this.selection.fileId}
                placeholder="what POST answered"
                @input=${(event: Event) => {
                    selection.fileId = (event.target as HTMLInputElement).value;
                    this.requestUpdate();
                }}
        /></label>`;
    }

    private address({ of }: Resource, opens = false): Address {
        const { chosen } = this.world;
        if (of === 'monitor') return { product: chosen?.product ?? '', serial: chosen?.serial ?? '' };
        return of === 'file' && !opens ? { id: this.selection.fileId } : {};
    }

    static styles = [
        shared,
        css`
            section {
                padding: 12px;
            }
            h2 {
                font-size: 1.1rem;
                overflow-wrap: anywhere;
            }
            .switch button {
                min-height: 24px;
                font-size: 12px;
                border-radius: 0;
            }
            .switch button:first-child {
                border-radius: var(--radius) 0 0 var(--radius);
                border-right: 0;
            }
            .switch button:last-child {
                border-radius: 0 var(--radius) var(--radius) 0;
            }
            .switch button[aria-pressed='true'] {
                background: var(--accent);
                color: var(--on-accent);
            }
            ul {
                margin: 4px 0;
                padding-left: 18px;
            }
        `,
    ];
}
