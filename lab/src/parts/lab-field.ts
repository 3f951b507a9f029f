import { LitElement, css, html, nothing } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import type { Schema } from '../model/catalogue.js';
import { shared } from './style.js';

/** One value of a request, as text. Sends "edit" with the new text. */
@customElement('lab-field')
export class LabField extends LitElement {
    @property({ attribute: false }) label = '';
    @property({ attribute: false }) schema!: Schema;
    @property({ attribute: false }) text = '';
    @property({ attribute: false }) isOptional = false;
    /** Decided once: the control stays the same while somebody types. */
    @property({ reflect: true, type: Boolean }) long = false;

    connectedCallback(): void {
        super.connectedCallback();
        this.long = this.schema.type === 'array' || this.schema.type === 'object' || this.text.length > 20;
    }

    render() {
        const { label, schema, isOptional } = this;
        return html`<label>
            <span class="small soft">${label}${schema.description ? `, ${schema.description}` : ''}</span>
            ${this.control(schema, isOptional)}
        </label>`;
    }

    private control(schema: Schema, isOptional: boolean) {
        const choices = schema.type === 'boolean' ? [true, false] : schema.enum;
        if (choices) {
            const texts = choices.map((choice) =>
                schema.type === 'boolean' || typeof choice !== 'string' ? JSON.stringify(choice) : choice,
            );
            return html`<select @change=${this.edit}>
                ${isOptional || this.text === '' ? html`<option value="">left out</option>` : nothing}
                ${texts.map((text) => html`<option ?selected=${text === this.text}>${text}</option>`)}
            </select>`;
        }
        const hint = isOptional ? 'left out' : kindOf(schema);
        return this.long
            ? html`<textarea
                  rows=${Math.min(8, 1 + Math.floor(this.text.length / 48))}
                  placeholder=${hint}
                  .value=${this.text}
                  @input=${this.edit}
              ></textarea>`
            : html`<input placeholder=${hint} .value=${this.text} @input=${this.edit} />`;
    }

    private edit(event: Event): void {
        const { value } = event.target as HTMLInputElement;
        this.dispatchEvent(new CustomEvent('edit', { detail: value }));
    }

    static styles = [
        shared,
        css`
            :host([long]) {
                grid-column: 1 / -1;
            }
            label {
                display: grid;
            }
            label > * {
                width: 100%;
                min-width: 0;
            }
        `,
    ];
}

/** What a value is, in a word or two. */
export function kindOf({ type, anyOf, properties, enum: choices }: Schema): string {
    if (choices) return choices.map(String).join(' or ');
    if (anyOf && !properties) return [...new Set(anyOf.map(kindOf))].join(' or ');
    switch (type) {
        case 'array':
            return 'a list';
        case 'boolean':
            return 'true or false';
        case 'integer':
        case 'number':
            return 'a number';
        case 'string':
            return 'a text';
        case 'object':
            return properties ? `{${Object.keys(properties).join(', ')}}` : 'an object';
        default:
            return 'a value';
    }
}
