import { LitElement, css, html, nothing } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import { clientCode, fetchCode, pellhostCode, type Request } from '../model/request.js';
import { shared } from './style.js';

const kinds = { Client: clientCode, fetch: fetchCode, pellhost: pellhostCode };

/** A line with a button that shows a request as code, to be copied. What stands within the element begins the line. */
@customElement('lab-copy')
export class LabCopy extends LitElement {
    @property({ attribute: false }) request!: Request;
    @state() private isOpen = false;
    @state() private kind: keyof typeof kinds = 'Client';
    @state() private isCopied = false;

    render() {
        return html`
            <div class="line head">
                <div class="line"><slot></slot></div>
                <button
                    type="button"
                    class="plain push"
                    aria-expanded=${this.isOpen ? 'true' : 'false'}
                    @click=${() => (this.isOpen = !this.isOpen)}
                >
                    Copy as
                </button>
            </div>
            ${this.isOpen ? this.code() : nothing}
        `;
    }

    private code() {
        const code = kinds[this.kind](this.request);
        return html`
            <div class="line kinds" role="group" aria-label="Copy as">
                ${(Object.keys(kinds) as (keyof typeof kinds)[]).map(
                    (kind) =>
                        html`<button
                            type="button"
                            class="plain"
                            aria-pressed=${this.kind === kind ? 'true' : 'false'}
                            @click=${() => this.choose(kind)}
                        >
                            ${kind}
                        </button>`,
                )}
                <span role="status" class="small good push">${this.isCopied ? 'Copied' : ''}</span>
                <button type="button" @click=${() => this.copy(code)}>Copy</button>
            </div>
            <pre tabindex="0">${code}</pre>
        `;
    }

    private choose(kind: keyof typeof kinds): void {
        this.kind = kind;
        this.isCopied = false;
    }

    private async copy(code: string): Promise<void> {
        // A browser may refuse; the code can be read and marked all the same.
        await navigator.clipboard?.writeText(code).then(
            () => (this.isCopied = true),
            () => {},
        );
    }

    static styles = [
        shared,
        css`
            .kinds {
                gap: 2px;
                margin-top: 6px;
            }
            .head {
                flex-wrap: nowrap;
                align-items: start;
            }
            .head > .line {
                flex: 1;
                min-width: 0;
            }
            button {
                min-height: 24px;
                font-size: 12px;
                padding: 0 6px;
            }
            button[aria-pressed='true'] {
                background: var(--accent-soft);
            }
            pre {
                margin-top: 4px;
            }
        `,
    ];
}
