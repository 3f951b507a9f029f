import { LitElement, css, html, nothing } from 'lit';
import { customElement, state } from 'lit/decorators.js';
import { byTopic, resources, type Resource } from '../model/catalogue.js';
import { selection } from '../model/selection.js';
import { monitorOf } from '../model/timeline.js';
import { world } from '../model/world.js';
import './lab-resource.js';
import { shared } from './style.js';

const count = resources.reduce((sum, { aliases }) => sum + 1 + aliases.length, 0);

/** All resources by topic, and the one that is chosen. */
@customElement('lab-resources')
export class LabResources extends LitElement {
    private selection = selection.observedBy(this);
    private world = world.observedBy(this);
    @state() private search = '';

    render() {
        const words = this.search.toLowerCase().split(/\s+/);
        const found = resources.filter(({ name, aliases, topic, about }) => {
            const text = [name, ...aliases, topic, about].join(' ').toLowerCase();
            return words.every((word) => text.includes(word));
        });
        const topics = byTopic(found);
        const listed = topics.flatMap(([, members]) => members);
        const reached = listed.includes(this.selection.resource) ? this.selection.resource : listed[0];
        const { toAsk, unreachable } = this.selection;
        const { chosen } = this.world;
        return html`
            <div class="list stack">
                <h2>Resources</h2>
                <input
                    type="search"
                    aria-label="Search resources"
                    placeholder="Search all ${count}"
                    @input=${(event: Event) => (this.search = (event.target as HTMLInputElement).value)}
                />
                <button
                    class="small"
                    title="Asks the chosen monitor, resource by resource"
                    ?disabled=${toAsk > 0 || !chosen}
                    @click=${() => selection.askAll()}
                >
                    ${toAsk ? `${toAsk} to ask` : 'Which does it support?'}
                </button>
                ${
                    chosen && unreachable === monitorOf(chosen)
                        ? html`<p class="small bad" role="alert">${unreachable} cannot be reached.</p>`
                        : nothing
                }
                <div class="topics" role="group" aria-label="Resources by topic" @keydown=${this.move}>
                    ${topics.map(
                        ([topic, members]) => html`
                            <h3>${topic}</h3>
                            ${members.map((resource) => this.item(resource, resource === reached))}
                        `,
                    )}
                    ${found.length ? nothing : html`<p class="soft">No resource has this in its name or description.</p>`}
                </div>
            </div>
            <lab-resource></lab-resource>
        `;
    }

    private item(resource: Resource, isReached: boolean) {
        const isChosen = resource === this.selection.resource;
        const supports = this.selection.supports(resource);
        const [mark, title] =
            supports === undefined ? ['', ''] : supports ? ['✓', 'supported'] : ['–', 'not supported'];
        return html`<button
            class="item ${supports === false ? 'lacking' : ''}"
            aria-current=${isChosen ? 'true' : 'false'}
            title=${resource.name}
            tabindex=${isReached ? 0 : -1}
            @click=${() => this.choose(resource)}
        >
            <span class="text">${resource.name}</span>
            ${
                mark
                    ? html`<span class="mark ${supports ? 'good' : ''}" aria-hidden="true">${mark}</span
                          ><span class="hidden">${title}</span>`
                    : nothing
            }
        </button>`;
    }

    /** The arrow keys walk through the list, so that it is one stop for the tabulator. */
    private move(event: KeyboardEvent): void {
        const items = [...this.renderRoot.querySelectorAll<HTMLElement>('.item')];
        const at = items.indexOf(event.target as HTMLElement);
        const targets: Record<string, number> = {
            ArrowUp: at - 1,
            ArrowDown: at + 1,
            Home: 0,
            End: items.length - 1,
        };
        if (!(event.key in targets)) return;
        event.preventDefault();
        items[targets[event.key]]?.focus();
    }

    private async choose(resource: Resource): Promise<void> {
        selection.choose(resource);
        await this.updateComplete;
        this.renderRoot.querySelector('lab-resource')!.scrollTop = 0;
        if (getComputedStyle(this).flexDirection === 'column')
            this.renderRoot.querySelector('lab-resource')!.scrollIntoView();
    }

    static styles = [
        shared,
        css`
            :host {
                display: flex;
                min-height: 0;
            }
            .list {
                width: 190px;
                flex: none;
                padding: 12px 0 0 12px;
                border-right: 1px solid var(--line);
            }
            .list > :not(.topics) {
                margin-right: 12px;
            }
            .topics {
                flex: 1;
                min-height: 0;
                overflow: auto;
                padding: 0 12px 12px 0;
            }
            h3 {
                margin: 10px 0 2px;
                font-size: 12px;
                color: var(--soft);
            }
            .item {
                display: flex;
                width: 100%;
                border: 0;
                min-height: 26px;
                padding: 1px 6px;
                background: none;
                text-align: left;
                font-size: 13px;
            }
            .item:focus-visible {
                outline-offset: -2px;
            }
            .item[aria-current='true'] {
                background: var(--accent-soft);
                color: var(--accent);
                font-weight: 600;
            }
            .item.lacking .text {
                color: var(--soft);
                text-decoration: line-through;
            }
            .text {
                overflow: hidden;
                text-overflow: ellipsis;
                flex: 1;
            }
            lab-resource {
                flex: 1;
                overflow: auto;
            }
            @media (max-width: 640px) {
                :host {
                    flex-direction: column;
                    overflow: auto;
                }
                .list {
                    width: auto;
                    border-right: 0;
                    border-bottom: 1px solid var(--line);
                }
                .topics {
                    max-height: 34vh;
                    flex: none;
                }
                lab-resource {
                    overflow: visible;
                    flex: none;
                }
            }
        `,
    ];
}
