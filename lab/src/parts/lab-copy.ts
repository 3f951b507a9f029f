import { LitElement, css, html, nothing } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import type { Codes } from '../model/request.js';
import { shared } from './style.js';

/** A line with a button that shows a request as code, to be copied. What stands within the element begins the line. */
@customElement('lab-copy')
export class LabCopy extends LitElement {
    @property({ attribute: false }) codes!: Codes;
    @state() private isOpen = false;
    @state() private kind = '';
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
        const kinds = Object.keys(this.codes);
        const kind = this.kind || kinds[0];
        const code = this.codes[kind];
        return html`
            <div class="line kinds" role="group" aria-label="Copy as">
                ${kinds.map(
                    (name) =>
                        html`<button
                            type="button"
                            class="plain"
                            aria-pressed=${name === kind ? 'true' : 'false'}
                            @click=${() => this.choose(name)}
                        >
                            ${name}
                        </button>`,
                )}
                <span role="status" class="small good push">${this.isCopied ? 'Copied' : ''}</span>
                <button type="button" class="plain" @click=${() => this.copy(code)}>Copy</button>
            </div>
            <pre tabindex="0">${code}</pre>
        `;
    }

    private choose(kind: string): void {
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
            }
            .head > .line {
                flex: 1;
                min-width: 0;
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
