import { LitElement, css, html, nothing } from 'lit';
import { customElement } from 'lit/decorators.js';
import { restSeconds, transfers, type Progress } from '../model/transfers.js';
import { shared } from './style.js';

/** The firmware transfers, each as a bar. */
@customElement('lab-transfers')
export class LabTransfers extends LitElement {
    private transfers = transfers.observedBy(this);

    render() {
        return this.transfers.all.map((progress) => this.bar(progress));
    }

    private bar(progress: Progress) {
        const { monitor, step, outcome, hasFailed } = progress;
        const rest = restSeconds(progress);
        return html`
            <div class="transfer">
                <span>Firmware of <b>${monitor}</b></span>
                <progress
                    aria-label="Firmware transfer to ${monitor}"
                    max=${step.blockCount}
                    .value=${step.transferredBlock}
                ></progress>
                <span>block ${step.transferredBlock} of ${step.blockCount}</span>
                ${
                    outcome
                        ? html`<b role="status" class=${hasFailed ? 'bad' : 'good'}>${outcome}</b>
                              <button class="plain" @click=${() => transfers.dismiss(progress)}>Close</button>`
                        : rest === undefined
                          ? nothing
                          : html`<span class="soft">${rest < 1 ? 'almost done' : `about ${rest} s left`}</span>`
                }
            </div>
        `;
    }

    static styles = [
        shared,
        css`
            .transfer {
                display: flex;
                flex-wrap: wrap;
                gap: 4px 12px;
                align-items: center;
                padding: 4px 12px;
                background: var(--accent-soft);
                border-bottom: 1px solid var(--line);
            }
            progress {
                flex: 1;
                min-width: 8rem;
                accent-color: var(--accent);
            }
        `,
    ];
}
