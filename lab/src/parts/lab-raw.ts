import { LitElement, css, html } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import type { Resource } from '../model/catalogue.js';
import { codesOfTexts, type Address } from '../model/request.js';
import { selection } from '../model/selection.js';
import './lab-answer.js';
import './lab-copy.js';
import { shared } from './style.js';

const names = ['Options', 'Parameters', 'Query', 'Body'];
const hints = ['', '', '{"range":true}', '60'];

/** The four texts that the plug-in gets: nothing is checked or completed, so what is wrong can be tried, too. */
@customElement('lab-raw')
export class LabRaw extends LitElement {
    private selection = selection.observedBy(this);
    @property({ attribute: false }) resource!: Resource;
    @property({ attribute: false }) address: Address = {};
    @state() private texts: string[] = [];
    @state() private isSending = false;

    connectedCallback(): void {
        super.connectedCallback();
        this.texts = ['{"method":"GET"}', JSON.stringify(this.address), '', ''];
    }

    render() {
        return html`
            <form class="card stack" @submit=${this.submit}>
                ${names.map((name, at) => this.field(name, at))}
                <lab-copy .codes=${codesOfTexts(this.resource.name, this.texts)}
                    ><button class="primary" ?disabled=${this.isSending}>Send</button></lab-copy
                >
                <lab-answer .answer=${this.selection.answer(this.place)}></lab-answer>
            </form>
        `;
    }

    private field(name: string, at: number) {
        return html`<label
            ><span class="small soft">${name}</span>
            <textarea
                rows=${name === 'Body' ? 4 : 2}
                spellcheck="false"
                placeholder=${hints[at]}
                .value=${this.texts[at]}
                @input=${({ target }: Event) =>
                    (this.texts = this.texts.with(at, (target as HTMLTextAreaElement).value))}
            ></textarea>
        </label>`;
    }

    private get place(): string {
        return `${this.resource.name} raw`;
    }

    private async submit(event: SubmitEvent): Promise<void> {
        event.preventDefault();
        this.isSending = true;
        await selection.askRaw(this.place, this.resource.name, this.texts);
        this.isSending = false;
    }

    static styles = [
        shared,
        css`
            label {
                display: grid;
            }
        `,
    ];
}
