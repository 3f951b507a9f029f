import { LitElement, css, html, nothing } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import { clientCode, fetchCode, pellhostCode, type Request } from '../model/request.js';
import { shared } from './style.js';

const kinds: [string, (request: Request) => string][] = [
    ['Client', clientCode],
    ['fetch', fetchCode],
    ['pellhost', pellhostCode],
];

/** The request as code, to be copied. */
@customElement('lab-copy')
export class LabCopy extends LitElement {
    @property({ attribute: false }) request!: Request;
    @state() private shown?: string;
    @state() private isCopied = false;

    render() {
        const write = kinds.find(([name]) => name === this.shown)?.[1];
        return html`
            <div class="line small" role="group" aria-label="Copy as">
                <span class="soft">Copy as</span>
                ${kinds.map(
                    ([name, write]) =>
                        html`<button
                            type="button"
                            class="plain"
                            aria-expanded=${this.shown === name ? 'true' : 'false'}
                            @click=${() => this.show(name, write(this.request))}
                        >
                            ${name}
                        </button>`,
                )}
                <span role="status" class="good">${this.isCopied ? 'Copied' : ''}</span>
            </div>
            ${write ? html`<pre tabindex="0">${write(this.request)}</pre>` : nothing}
        `;
    }

    private async show(name: string, code: string): Promise<void> {
        this.isCopied = false;
        this.shown = this.shown === name ? undefined : name;
        if (!this.shown) return;
        // A browser may refuse; the code can be read and marked all the same.
        await navigator.clipboard?.writeText(code).then(
            () => (this.isCopied = true),
            () => {},
        );
    }

    static styles = [
        shared,
        css`
            .line {
                gap: 2px;
            }
            button {
                min-height: 24px;
                font-size: 12px;
                padding: 0 6px;
            }
            [role='status'] {
                margin-left: 6px;
            }
        `,
    ];
}
