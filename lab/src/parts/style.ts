// What the components share: controls, headings, the ways to place them.
import { css } from 'lit';

export const shared = css`
    :host {
        display: block;
        min-width: 0;
    }
    *,
    *::before {
        box-sizing: border-box;
    }
    h2,
    h3,
    p {
        margin: 0;
    }
    h2 {
        font-size: 0.95rem;
        font-weight: 650;
    }
    h3 {
        font-size: 0.875rem;
        font-weight: 650;
    }
    a {
        color: var(--accent);
    }
    button,
    .button,
    input,
    select,
    textarea {
        font: inherit;
        color: inherit;
        background: var(--surface);
        border: 1px solid var(--control-line);
        border-radius: var(--radius);
        padding: 2px 8px;
        min-height: 28px;
        max-width: 100%;
    }
    button,
    .button {
        cursor: pointer;
        white-space: nowrap;
        text-decoration: none;
    }
    .button {
        display: inline-flex;
        align-items: center;
    }
    button:hover:not(:disabled),
    .button:hover {
        background: var(--accent-soft);
    }
    button.primary {
        background: var(--accent);
        border-color: var(--accent);
        color: var(--on-accent);
        font-weight: 600;
    }
    button.primary:hover:not(:disabled) {
        filter: brightness(1.1);
        background: var(--accent);
    }
    button.plain {
        border-color: transparent;
        background: none;
        color: var(--accent);
    }
    button:disabled {
        cursor: default;
        opacity: 0.55;
    }
    input[type='checkbox'],
    input[type='radio'] {
        min-height: 0;
        margin: 0 4px 0 0;
        accent-color: var(--accent);
        vertical-align: -2px;
    }
    textarea {
        width: 100%;
        font-family: var(--mono);
        font-size: 12px;
        resize: vertical;
    }
    :focus-visible {
        outline: 2px solid var(--accent);
        outline-offset: 1px;
    }
    code,
    pre,
    .mono {
        font-family: var(--mono);
        font-size: 12px;
    }
    pre {
        margin: 0;
        padding: 6px 8px;
        background: var(--raised);
        border-radius: var(--radius);
        white-space: pre-wrap;
        overflow-wrap: anywhere;
        max-height: 20rem;
        overflow: auto;
    }
    .soft {
        color: var(--soft);
    }
    .small {
        font-size: 12px;
    }
    .good {
        color: var(--good);
    }
    .bad {
        color: var(--bad);
    }
    .compact button,
    .compact .button,
    .compact input:not([type='checkbox'], [type='radio']),
    .compact select,
    button.plain {
        font-size: 12px;
        min-height: 26px;
        padding: 2px 7px;
    }
    .stack {
        display: flex;
        flex-direction: column;
        gap: 8px;
    }
    .card {
        padding: 8px 10px;
        background: var(--surface);
        border: 1px solid var(--line);
        border-radius: var(--radius);
    }
    .line {
        display: flex;
        flex-wrap: wrap;
        gap: 6px;
        align-items: center;
    }
    .push {
        margin-left: auto;
    }
    .notice {
        padding: 6px 10px;
        border-radius: var(--radius);
        background: var(--raised);
    }
    .notice.bad {
        background: var(--bad-soft);
    }
    details > summary {
        cursor: pointer;
        color: var(--accent);
        width: fit-content;
    }
    .hidden {
        position: absolute;
        width: 1px;
        height: 1px;
        overflow: hidden;
        clip-path: inset(50%);
        white-space: nowrap;
    }
`;
