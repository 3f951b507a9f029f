import { LitElement, css, html } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import type { Method, Resource } from '../model/catalogue.js';
import { urlOf, type Address, type Request } from '../model/request.js';
import { selection } from '../model/selection.js';
import './lab-answer.js';
import './lab-copy.js';
import { shared } from './style.js';

const methods: Method[] = ['GET', 'PUT', 'POST', 'DELETE'];

/** A request as it is written: nothing is checked or completed, so what is wrong can be tried, too. */
@customElement('lab-raw')
export class LabRaw extends LitElement {
    private selection = selection.observedBy(this);
    @property({ attribute: false }) resource!: Resource;
    @property({ attribute: false }) address: Address = {};
    @state() private method: Method = 'GET';
    @state() private query = '';
    @state() private body = '';

    render() {
        const request = this.request();
        return html`
            <form @submit=${this.submit}>
                <label
                    ><span class="small soft">Method</span>
                    <select
                        name="method"
                        @change=${(event: Event) => (this.method = (event.target as HTMLSelectElement).value as Method)}
                    >
                        ${methods.map((method) => html`<option>${method}</option>`)}
                    </select></label
                >
                <label
                    ><span class="small soft">Query, as in a URL or a JSON object</span>
                    <textarea
                        name="query"
                        rows="2"
                        placeholder="range"
                        .value=${this.query}
                        @input=${(event: Event) => (this.query = (event.target as HTMLTextAreaElement).value)}
                    ></textarea>
                </label>
                <label
                    ><span class="small soft">Body</span>
                    <textarea
                        name="body"
                        rows="4"
                        placeholder="60"
                        .value=${this.body}
                        @input=${(event: Event) => (this.body = (event.target as HTMLTextAreaElement).value)}
                    ></textarea>
                </label>
                <p class="mono soft url">${request.method} ${urlOf(request)}</p>
                <lab-copy .request=${request}><button class="primary">Send</button></lab-copy>
                <lab-answer .answer=${this.selection.answer(this.place)}></lab-answer>
            </form>
        `;
    }

    private get place(): string {
        return `${this.resource.name} raw`;
    }

    private request(): Request {
        const { resource, address, method, query, body } = this;
        return { resource: resource.name, address, method, query: query.trim(), body };
    }

    private submit(event: SubmitEvent): void {
        event.preventDefault();
        void selection.ask(this.place, this.request());
    }

    static styles = [
        shared,
        css`
            form {
                display: flex;
                flex-direction: column;
                gap: 8px;
                padding: 10px;
                background: var(--surface);
                border: 1px solid var(--line);
                border-radius: var(--radius);
            }
            label {
                display: grid;
                justify-items: start;
            }
            .url {
                overflow-wrap: anywhere;
            }
        `,
    ];
}
