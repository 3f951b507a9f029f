import functions from 'functions.json';
import { LitElement, css, html, nothing } from 'lit';
import { customElement } from 'lit/decorators.js';
import { failures, hex, resultText } from '../model/catalogue.js';
import { monitorOf } from '../model/timeline.js';
import { world } from '../model/world.js';
import { shared } from './style.js';

/** "This function fails with that result": a form, and what was asked for so far. */
@customElement('lab-faults')
export class LabFaults extends LitElement {
    private world = world.observedBy(this);

    render() {
        const { scripts = [] } = this.world.state ?? {};
        return html`
            <form class="stack compact" @submit=${this.submit}>
                <h3>Let a function fail</h3>
                <label
                    >Function of a library
                    <input
                        name="function"
                        required
                        list="functions"
                        autocomplete="off"
                        placeholder="DmCtrlGetBrightnessForStep"
                /></label>
                <datalist id="functions">${functions.map((name) => html`<option value=${name}></option>`)}</datalist>
                <label
                    >Result
                    <select name="result">
                        ${failures.map(
                            ({ code, message }) => html`<option value=${code}>${message} ${hex(code)}</option>`,
                        )}
                    </select></label
                >
                <label
                    >Monitor
                    <select name="monitor">
                        <option value="">all</option>
                        ${this.world.monitors.map(
                            (monitor, at) => html`<option value=${at}>${monitorOf(monitor)}</option>`,
                        )}
                    </select></label
                >
                <fieldset class="line small">
                    <legend class="hidden">How often</legend>
                    <label><input type="radio" name="often" value="once" checked />once</label>
                    <label><input type="radio" name="often" value="always" />always</label>
                    <button class="push">Let it fail</button>
                </fieldset>
            </form>
            ${
                scripts.length
                    ? html`<h3>What fails, until the reset</h3>
                          <ul class="small">
                              ${scripts.map((script) => html`<li>${describe(script)}</li>`)}
                          </ul>`
                    : nothing
            }
        `;
    }

    private async submit(event: SubmitEvent): Promise<void> {
        event.preventDefault();
        const data = new FormData(event.target as HTMLFormElement);
        const monitor = data.get('monitor') === '' ? undefined : world.monitors[Number(data.get('monitor'))];
        await world.simulate({
            simulate: 'return',
            function: String(data.get('function')).trim(),
            result: Number(data.get('result')),
            ...(data.get('often') === 'once' && { times: 1 }),
            ...(monitor && { product: monitor.product, serial: monitor.serial }),
        });
    }

    static styles = [
        shared,
        css`
            form {
                padding-top: 8px;
                border-top: 1px solid var(--line);
            }
            form > label {
                display: grid;
                font-size: 12px;
                color: var(--soft);
            }
            form > label > * {
                width: 100%;
                color: var(--text);
            }
            fieldset {
                border: 0;
                padding: 0;
                margin: 0;
            }
            h3 {
                margin-top: 8px;
            }
            form > h3 {
                margin: 0;
            }
            ul {
                margin: 4px 0 0;
                padding-left: 18px;
                overflow-wrap: anywhere;
            }
        `,
    ];
}

function describe(simulate: Record<string, unknown>): string {
    const monitor = simulate.product === undefined ? '' : ` of ${simulate.product}/${simulate.serial}`;
    const { times } = simulate;
    const often = times === undefined ? 'always' : times === 1 ? 'once' : `${times} times`;
    return `${simulate.function}${monitor}: ${outcome(simulate)}, ${often}`;
}

function outcome({ simulate, result, as }: Record<string, unknown>): string {
    return simulate === 'return' ? resultText(result) : simulate === 'throw' ? 'throws' : `lies ${JSON.stringify(as)}`;
}
