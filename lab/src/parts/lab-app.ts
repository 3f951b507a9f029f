import { LitElement, css, html } from 'lit';
import { customElement } from 'lit/decorators.js';
import { selection, type View } from '../model/selection.js';
import { timeline } from '../model/timeline.js';
import { transfers } from '../model/transfers.js';
import './lab-header.js';
import './lab-monitors.js';
import './lab-resources.js';
import './lab-timeline.js';
import './lab-transfers.js';
import { shared } from './style.js';

const views: [View, string][] = [
    ['monitors', 'Monitors'],
    ['resources', 'Resources'],
    ['timeline', 'Timeline'],
];

/** The page: three columns, or one of them at a time in a narrow window. */
@customElement('lab-app')
export class LabApp extends LitElement {
    private selection = selection.observedBy(this);

    connectedCallback(): void {
        super.connectedCallback();
        const listen = () => [timeline, transfers].forEach((store) => store.listen(!document.hidden));
        document.addEventListener('visibilitychange', listen);
        listen();
    }

    render() {
        const { view } = this.selection;
        return html`
            <lab-header></lab-header>
            <lab-transfers></lab-transfers>
            <nav aria-label="Parts of the lab">
                ${views.map(
                    ([name, title]) =>
                        html`<button
                            aria-current=${view === name ? 'true' : 'false'}
                            @click=${() => selection.show(name)}
                        >
                            ${title}
                        </button>`,
                )}
            </nav>
            <main data-view=${view}>
                <lab-monitors></lab-monitors>
                <lab-resources></lab-resources>
                <lab-timeline></lab-timeline>
            </main>
        `;
    }

    static styles = [
        shared,
        css`
            :host {
                height: 100dvh;
                display: flex;
                flex-direction: column;
            }
            main {
                flex: 1;
                min-height: 0;
                display: grid;
                grid-template-columns: 256px minmax(0, 1.05fr) minmax(0, 1fr);
                gap: 1px;
                background: var(--line);
            }
            main > * {
                background: var(--page);
                min-height: 0;
                min-width: 0;
            }
            nav {
                display: none;
            }
            @media (max-width: 1000px) {
                nav {
                    display: flex;
                    border-bottom: 1px solid var(--line);
                    background: var(--surface);
                }
                nav button {
                    flex: 1;
                    border: 0;
                    border-radius: 0;
                    min-height: 40px;
                    background: none;
                    border-bottom: 3px solid transparent;
                }
                nav button[aria-current='true'] {
                    border-bottom-color: var(--accent);
                    color: var(--accent);
                    font-weight: 600;
                }
                main {
                    grid-template-columns: minmax(0, 1fr);
                }
                main > * {
                    display: none;
                }
                main[data-view='monitors'] > lab-monitors,
                main[data-view='resources'] > lab-resources,
                main[data-view='timeline'] > lab-timeline {
                    display: flex;
                }
            }
        `,
    ];
}
