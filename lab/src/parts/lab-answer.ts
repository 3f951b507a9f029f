import { LitElement, css, html, nothing } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import { parse, type Answer } from '../model/request.js';
import { shared } from './style.js';
import { pretty } from './text.js';

interface Envelope {
    error: { name: string; message: string; reason?: string } | null;
    value: unknown;
}

/** An answer: the value of a success, what went wrong otherwise. */
@customElement('lab-answer')
export class LabAnswer extends LitElement {
    @property({ attribute: false }) answer?: Answer;

    render() {
        if (!this.answer) return nothing;
        const { status, text, milliseconds } = this.answer;
        const envelope = parse(text) as Envelope | undefined;
        const error = envelope?.error;
        return html`<div role="status" class=${status === 200 ? '' : 'failure'}>
            <span class="line small">
                <b class=${status === 200 ? 'good' : 'bad'}>${status || 'no answer'}</b>
                <span class="soft">${milliseconds.toFixed(milliseconds < 10 ? 1 : 0)} ms</span>
            </span>
            ${
                envelope && !error
                    ? html`<pre tabindex="0">${pretty(envelope.value)}</pre>`
                    : html`<span class="bad"
                          >${error ? `${error.name}: ${error.message}${error.reason ? ` (${error.reason})` : ''}` : text}</span
                      >`
            }
        </div>`;
    }

    static styles = [
        shared,
        css`
            div {
                display: grid;
                grid-template-columns: auto minmax(0, 1fr);
                gap: 8px;
                align-items: start;
                margin-top: 6px;
                padding-left: 8px;
                border-left: 3px solid var(--good);
            }
            .failure {
                border-left-color: var(--bad);
            }
        `,
    ];
}
