import { LitElement, css, html, nothing } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import { resourceNamed, resultText } from '../model/catalogue.js';
import { selection } from '../model/selection.js';
import { isFailure, monitorOf, type Entry } from '../model/timeline.js';
import { shared } from './style.js';
import { clockText, durationText, prettyText } from './text.js';

const sources: Record<string, string> = { http: 'a page', lab: 'the lab', batch: 'a batch' };
const names = ['Options', 'Parameters', 'Query', 'Body'];

/** All that came of a request, from its four texts to the answer. */
@customElement('lab-exchange')
export class LabExchange extends LitElement {
    @property({ attribute: false }) entry!: Entry;

    render() {
        const { entry } = this;
        const { method, resource, status, time, milliseconds, source, simulate, texts, calls = [] } = entry;
        const known = resource && resourceNamed(resource);
        return html`
            <section class="stack" aria-label="The request that is open">
                <div class="line">
                    <h2>${simulate ? simulate.simulate : `${method} ${resource}`}</h2>
                    ${simulate ? nothing : html`<b class=${isFailure(entry) ? 'bad' : 'good'}>${status ?? 'runs…'}</b>`}
                    <div class="push line compact">
                        ${known ? html`<button class="plain" @click=${() => selection.choose(known)}>Ask it</button>` : nothing}
                        <button @click=${() => this.dispatchEvent(new Event('close'))}>Close</button>
                    </div>
                </div>
                <p class="soft small">
                    ${monitorOf(entry)} at
                    ${clockText(time)}${milliseconds === undefined ? '' : `, took ${durationText(milliseconds)}`}${
                        source ? `, by ${sources[source] ?? source}` : ''
                    }
                </p>
                ${simulate ? html`<pre tabindex="0">${JSON.stringify(simulate, null, 2)}</pre>` : nothing}
                ${
                    texts
                        ? html`<h3>What the plug-in was given</h3>
                              <dl>
                                  ${texts.map(
                                      (text, at) =>
                                          html`<dt>${names[at]}</dt>
                                              <dd>
                                                  ${text ? html`<code>${prettyText(text)}</code>` : html`<i class="soft">${text === '' ? 'empty' : 'none'}</i>`}
                                              </dd>`,
                                  )}
                              </dl>`
                        : nothing
                }
                ${this.answers()} ${calls.length ? this.calls() : nothing}
                ${this.texts(
                    'Log',
                    entry.log?.map(({ name, level, line }) => `${name} ${level}: ${line}`),
                )}
                ${this.texts(
                    'Events',
                    entry.events?.map(({ name, text }) => `${name} ${text}`),
                )}
            </section>
        `;
    }

    private answers() {
        const { responses } = this.entry;
        if (!responses) return nothing;
        return html`
            <h3>Answer</h3>
            ${
                responses.length === 1
                    ? nothing
                    : html`<p class="bad">There are ${responses.length} answers; one is right.</p>`
            }
            ${responses.map(({ text }) => html`<pre tabindex="0">${prettyText(text)}</pre>`)}
        `;
    }

    private calls() {
        const calls = this.entry.calls!;
        return html`
            <h3>Calls of companion libraries (${calls.length})</h3>
            <div class="table" tabindex="0" role="region" aria-label="Calls of companion libraries">
                <table>
                    <thead>
                        <tr>
                            <th>Function</th>
                            <th>Arguments</th>
                            <th>Result</th>
                            <th class="number">ms</th>
                        </tr>
                    </thead>
                    <tbody>
                        ${calls.slice(0, 1000).map((call) => {
                            const isFailed = typeof call.result === 'number' && call.result >= 0x80000000;
                            return html`<tr>
                                <td>${call.function}</td>
                                <td>${(call.arguments ?? []).map((value) => JSON.stringify(value)).join(', ')}</td>
                                <td class=${isFailed ? 'bad' : ''}>${resultText(call.result)}</td>
                                <td class="number">${call.milliseconds?.toFixed(3)}</td>
                            </tr>`;
                        })}
                    </tbody>
                </table>
            </div>
            ${calls.length > 1000 ? html`<p class="soft">The first 1,000 are shown; the recording has all.</p>` : nothing}
        `;
    }

    private texts(title: string, lines: string[] = []) {
        if (!lines.length) return nothing;
        return html`<h3>${title}</h3>
            <pre tabindex="0">${lines.slice(0, 1000).join('\n')}</pre>`;
    }

    static styles = [
        shared,
        css`
            section {
                gap: 6px;
                padding: 10px 12px 12px;
            }
            h3 {
                font-size: 12px;
                color: var(--soft);
                margin-top: 4px;
            }
            dl {
                display: grid;
                grid-template-columns: max-content minmax(0, 1fr);
                gap: 2px 12px;
                align-items: baseline;
                margin: 0;
            }
            dt {
                color: var(--soft);
                font-size: 12px;
            }
            dd {
                margin: 0;
                overflow-wrap: anywhere;
            }
            dd code {
                white-space: pre-wrap;
            }
            .table {
                overflow: auto;
            }
            table {
                border-collapse: collapse;
                width: 100%;
                font-family: var(--mono);
                font-size: 12px;
            }
            th,
            td {
                text-align: left;
                padding: 2px 8px 2px 0;
                border-bottom: 1px solid var(--line);
                vertical-align: top;
            }
            @media (max-width: 1000px) {
                td {
                    overflow-wrap: anywhere;
                }
            }
            .number {
                overflow-wrap: normal;
                text-align: right;
                padding-right: 0;
            }
        `,
    ];
}
