import { LitElement, css, html, nothing } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import type { Resource, Row, Schema } from '../model/catalogue.js';
import { codesOf, parse, writeQuery, type Address, type Request } from '../model/request.js';
import { selection } from '../model/selection.js';
import './lab-answer.js';
import './lab-copy.js';
import './lab-field.js';
import { kindOf } from './lab-field.js';
import { shared } from './style.js';

/** One way to ask a resource: its fields, the button that sends it, and the last answer. */
@customElement('lab-row')
export class LabRow extends LitElement {
    private selection = selection.observedBy(this);
    @property({ attribute: false }) resource!: Resource;
    @property({ attribute: false }) row!: Row;
    @property({ attribute: false }) place = '';
    @property({ attribute: false }) address: Address = {};
    /** What stands in the fields of the query and of the body, as text. */
    @state() private query: Record<string, string> = {};
    @state() private body: Record<string, string> = {};
    @state() private isSending = false;

    connectedCallback(): void {
        super.connectedCallback();
        const { query, body } = this.row;
        const example = filled(this.row.example);
        for (const [name, { schema, optional }] of Object.entries(query)) {
            const value = example?.query[name] ?? schema?.const ?? schema?.enum?.[0];
            if (schema && !optional) this.query[name] = value === undefined ? '' : fieldText(value, schema);
        }
        const sample = example?.body;
        if (body && !members(body)) this.body[''] = sample == null ? '' : fieldText(sample, body);
        for (const [name, schema] of Object.entries((body && members(body)) ?? {})) {
            const value = (sample as Record<string, unknown> | undefined)?.[name];
            this.body[name] = value === undefined ? '' : fieldText(value, schema);
        }
    }

    render() {
        const { method, query, body, answer, needs } = this.row;
        const fields = Object.entries(query).filter(([, { schema }]) => schema && schema.const === undefined);
        const inBody = body && members(body);
        const what = this.what();
        return html`
            <form class="card" @submit=${this.submit}>
                ${
                    fields.length || body
                        ? html`<div class="fields">
                              ${fields.map(([name, { schema, optional }]) =>
                                  this.field(this.query, name, name, schema!, optional),
                              )}
                              ${
                                  inBody
                                      ? Object.entries(inBody).map(([name, schema]) =>
                                            this.field(this.body, name, name, schema, !body.required?.includes(name)),
                                        )
                                      : body
                                        ? this.field(this.body, '', 'value', body)
                                        : nothing
                              }
                          </div>`
                        : nothing
                }
                <lab-copy .codes=${codesOf(this.request())}>
                    <button class="send" ?disabled=${this.isSending}>${method}</button>
                    ${what ? html`<span class="mono what">${what}</span>` : nothing}
                    ${needs ? html`<span class="small soft">needs ${needs}</span>` : nothing}
                    <span class="small soft">${answer && answer.type !== 'null' ? `→ ${kindOf(answer)}` : ''}</span>
                </lab-copy>
                <lab-answer .answer=${this.selection.answer(this.place)}></lab-answer>
            </form>
        `;
    }

    private what() {
        const flags = Object.entries(this.row.query)
            .filter(([, { optional }]) => !optional)
            .map(([name, { schema }]) => (schema ? `${name}=${schema.const ?? '…'}` : name));
        return flags.length ? `?${flags.join('&')}` : '';
    }

    private field(into: Record<string, string>, name: string, label: string, schema: Schema, isOptional = false) {
        return html`<lab-field
            .label=${label}
            .schema=${schema}
            .isOptional=${isOptional}
            .text=${into[name] ?? ''}
            @edit=${(event: CustomEvent<string>) => {
                into[name] = event.detail;
                this.requestUpdate();
            }}
        ></lab-field>`;
    }

    private request(): Request {
        const { method, query, body } = this.row;
        const asked = Object.entries(query).flatMap(([name, { schema, optional }]): [string, unknown][] => {
            if (!schema) return optional ? [] : [[name, true]];
            const text = this.query[name] ?? '';
            return text === '' && optional ? [] : [[name, fieldValue(text, schema)]];
        });
        return {
            resource: this.resource.name,
            method,
            address: this.address,
            query: writeQuery(Object.fromEntries(asked)),
            body: body ? this.bodyText(body) : '',
        };
    }

    private bodyText(body: Schema): string {
        const inner = members(body);
        if (!inner)
            return this.body[''] === '' && body.type !== 'string'
                ? ''
                : JSON.stringify(fieldValue(this.body[''], body));
        const given = Object.entries(inner)
            .filter(([name]) => this.body[name] !== '')
            .map(([name, schema]) => [name, fieldValue(this.body[name], schema)]);
        return JSON.stringify(Object.fromEntries(given));
    }

    private async submit(event: SubmitEvent): Promise<void> {
        event.preventDefault();
        this.isSending = true;
        await selection.ask(this.place, this.request());
        this.isSending = false;
    }

    static styles = [
        shared,
        css`
            .send {
                min-width: 3.6rem;
                border-color: var(--accent);
                color: var(--accent);
                font-weight: 600;
            }
            .what {
                font-weight: 600;
                overflow-wrap: anywhere;
            }
            .fields {
                margin-bottom: 6px;
                display: grid;
                grid-template-columns: repeat(auto-fill, minmax(120px, 1fr));
                align-items: end;
                gap: 6px 10px;
            }
        `,
    ];
}

/** With a package and what was opened in the place of the example's own. */
function filled(example: Row['example']): Row['example'] {
    if (!example) return undefined;
    const text = JSON.stringify(example).replace(/"\$(\w+)"/g, (_, name) =>
        JSON.stringify(name === 'package' ? 'new.dfw' : selection.fileId),
    );
    return JSON.parse(text) as Row['example'];
}

/** The members of an object that are fields of their own; undefined where one field takes the whole value. */
function members({ type, properties }: Schema): Record<string, Schema> | undefined {
    return type === 'object' && properties && Object.keys(properties).length ? properties : undefined;
}

function fieldText(value: unknown, schema: Schema): string {
    return schema.type === 'string' && typeof value === 'string' ? value : JSON.stringify(value);
}

/** What is no JSON is taken as a text, so that wrong values can be tried as well. */
function fieldValue(text: string, schema: Schema): unknown {
    return schema.type === 'string' ? text : (parse(text) ?? text);
}
