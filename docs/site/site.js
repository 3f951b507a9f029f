// The parts of a page that move: the menu, the theme, copying of code, what scrolls, and the search.
import MiniSearch from 'minisearch';

const root = document.currentScript.dataset.root;
const find = (selector) => document.querySelector(selector);
function element(tag, properties, ...children) {
    const made = Object.assign(document.createElement(tag), properties);
    made.append(...children);
    return made;
}

// On a narrow screen the pages are behind a button.
const menu = find('button.menu');
function showMenu(isShown) {
    document.documentElement.classList.toggle('menu-shown', isShown);
    menu.setAttribute('aria-expanded', String(isShown));
}
menu.addEventListener('click', () => showMenu(menu.getAttribute('aria-expanded') !== 'true'));
find('#pages [aria-current]')?.scrollIntoView({ block: 'nearest' });

const wide = matchMedia('(min-width: 75rem)');
const contents = find('details.contents');
const openContents = () => contents && (contents.open = wide.matches);
wide.addEventListener('change', openContents);
openContents();

const themes = ['system', 'light', 'dark'];
const themeButton = find('button.theme');
function showTheme(theme) {
    document.documentElement.dataset.theme = theme;
    themeButton.textContent = { system: 'Auto', light: 'Light', dark: 'Dark' }[theme];
    themeButton.setAttribute('aria-label', `${themeButton.textContent} colours`);
}
showTheme(document.documentElement.dataset.theme);
themeButton.addEventListener('click', () => {
    const next = themes[(themes.indexOf(document.documentElement.dataset.theme) + 1) % themes.length];
    showTheme(next);
    try {
        localStorage.setItem('theme', next);
    } catch {
        // Then it lasts as long as the page.
    }
});

for (const code of document.querySelectorAll('pre')) {
    const button = element('button', { type: 'button', className: 'copy', textContent: 'Copy' });
    button.addEventListener('click', async () => {
        await navigator.clipboard.writeText(code.textContent);
        button.textContent = 'Copied';
        setTimeout(() => (button.textContent = 'Copy'), 1500);
    });
    const frame = element('div', { className: 'code' });
    code.replaceWith(frame);
    frame.append(code, button);
}

// What is wider than the page scrolls in itself, and can be reached with the keyboard then.
const scrollers = document.querySelectorAll('.table, pre');
const widths = new ResizeObserver(() => {
    for (const one of scrollers) {
        if (one.scrollWidth > one.clientWidth) one.tabIndex = 0;
        else one.removeAttribute('tabindex');
    }
});
widths.observe(find('article'));

// The heading that is read is marked among the contents.
const entries = new Map([...document.querySelectorAll('.contents a')].map((link) => [link.hash.slice(1), link]));
const headings = [...document.querySelectorAll('article :is(h2, h3)')].filter(({ id }) => entries.has(id));
let marked;
function markHeading() {
    const current = headings.findLast((heading) => heading.getBoundingClientRect().top < 120);
    if (current === marked) return;
    if (marked) entries.get(marked.id).classList.remove('current');
    marked = current;
    if (!current) return;
    const link = entries.get(current.id);
    link.classList.add('current');
    if (wide.matches) {
        const { top, bottom } = link.getBoundingClientRect();
        const frame = contents.getBoundingClientRect();
        if (top < frame.top || bottom > frame.bottom) contents.scrollTop += top - frame.top - frame.height / 2;
    }
}
addEventListener('scroll', markHeading, { passive: true });
markHeading();

// The search. Its sections come as a script, since a page of the file system may not fetch.
const input = find('.search input');
const list = find('#results');
const found = find('.search .found');
const status = find('.search [role=status]');
let sections;
let index;

/** `SelfQCTarget` is found by `target`, too. */
const wordsOf = (term) => [
    ...new Set([term, ...(term.match(/[A-Z]+(?![a-z])|[A-Z]?[a-z]+|\d+/g) ?? [])].map((word) => word.toLowerCase())),
];

function prepare() {
    if (sections) return;
    sections = element('script', { src: `${root}/sections.js` });
    sections.addEventListener('load', () => {
        index = new MiniSearch({
            idField: 'address',
            fields: ['heading', 'page', 'text'],
            storeFields: ['heading', 'page', 'text'],
            processTerm: wordsOf,
            searchOptions: { processTerm: (term) => term.toLowerCase(), boost: { heading: 4, page: 2 }, prefix: true },
        });
        index.addAll(globalThis.sections);
        search();
    });
    document.head.append(sections);
}

/** The sections that have all of the words, those with the very text first; else those that have something like them. */
function resultsFor(text) {
    const wanted = text.toLowerCase();
    const boostDocument = (address, term, { heading, text }) =>
        heading.toLowerCase() === wanted ? 20 : `${heading} ${text}`.toLowerCase().includes(wanted) ? 5 : 1;
    const exact = index.search(text, { combineWith: 'AND', boostDocument });
    return exact.length ? exact : index.search(text, { fuzzy: 0.2 });
}

/** The text around the first word that was found, with the words marked. */
function excerpt({ text, terms }, wanted) {
    const words = [wanted, ...terms].map((word) => word.replace(/[.*+?^${}()|[\]\\]/g, '\\$&'));
    const pattern = new RegExp(words.sort((a, b) => b.length - a.length).join('|'), 'gi');
    const first = Math.max(text.toLowerCase().indexOf(wanted.toLowerCase()), 0) || Math.max(text.search(pattern), 0);
    const start = first < 40 ? 0 : text.lastIndexOf(' ', first - 30) + 1;
    const part = text.slice(start, start + 160);
    const made = element('span', { className: 'excerpt' }, start > 0 ? '… ' : '');
    let end = 0;
    for (const match of part.matchAll(pattern)) {
        made.append(part.slice(end, match.index), element('mark', { textContent: match[0] }));
        end = match.index + match[0].length;
    }
    made.append(part.slice(end), start + 160 < text.length ? ' …' : '');
    return made;
}

function search() {
    const text = input.value.trim();
    if (!index || !text) return close();
    const results = resultsFor(text);
    list.replaceChildren(
        ...results.slice(0, 30).map((result, number) => {
            const option = element(
                'a',
                { href: `${root}/${result.id}`, id: `result${number}`, tabIndex: -1 },
                element('span', { className: 'heading', textContent: result.heading }),
                ' ',
                element('span', { className: 'page', textContent: result.heading === result.page ? '' : result.page }),
                excerpt(result, text),
            );
            option.setAttribute('role', 'option');
            option.addEventListener('click', close);
            return option;
        }),
    );
    const count = results.length > 30 ? `30 of ${results.length} sections` : `${results.length} sections`;
    status.textContent = results.length === 1 ? '1 section' : results.length ? count : 'No section has this';
    found.hidden = false;
    input.setAttribute('aria-expanded', String(results.length > 0));
    choose(list.firstElementChild);
}

let chosen;
function choose(option) {
    chosen?.setAttribute('aria-selected', 'false');
    chosen = option;
    if (!option) return input.removeAttribute('aria-activedescendant');
    option.setAttribute('aria-selected', 'true');
    input.setAttribute('aria-activedescendant', option.id);
    option.scrollIntoView({ block: 'nearest' });
}

function close() {
    found.hidden = true;
    input.setAttribute('aria-expanded', 'false');
    choose(undefined);
}

input.addEventListener('focus', () => {
    prepare();
    search();
});
input.addEventListener('input', search);
input.addEventListener('keydown', (event) => {
    if (event.key === 'ArrowDown') choose(chosen?.nextElementSibling ?? list.firstElementChild);
    else if (event.key === 'ArrowUp') choose(chosen?.previousElementSibling ?? list.lastElementChild);
    else if (event.key === 'Enter') chosen?.click();
    else if (event.key === 'Escape') close();
    else return;
    event.preventDefault();
});
addEventListener('keydown', (event) => {
    if (event.key === 'Escape') showMenu(false);
    if (event.key !== '/' || event.target.matches('input, textarea') || event.ctrlKey || event.metaKey) return;
    event.preventDefault();
    input.select();
});
addEventListener('pointerdown', (event) => {
    if (!event.target.closest('.search')) close();
});
