// The documentation as a site, in a browser, from the file system.
import assert from 'node:assert/strict';
import { spawnSync } from 'node:child_process';
import fs from 'node:fs';
import path from 'node:path';
import { after, before, test } from 'node:test';
import { fileURLToPath, pathToFileURL } from 'node:url';
import { openBrowser, seriousFindings } from '../lab/support.js';

const work = path.resolve('build/docs-test');
const site = `${work}/site`;
const copy = `${work}/another folder`;
let browser;

function build(root, target) {
    return spawnSync('node', [path.join(root, 'docs/site/build.js'), target], { encoding: 'utf8', cwd: work });
}
const filesOf = (folder) =>
    fs
        .readdirSync(folder, { recursive: true })
        .filter((name) => fs.statSync(path.join(folder, name)).isFile())
        .sort();

before(async () => {
    fs.rmSync(work, { recursive: true, force: true });
    fs.mkdirSync(copy, { recursive: true });
    const { status, stderr } = build(path.resolve('.'), site);
    assert.equal(stderr, '');
    assert.equal(status, 0);
    for (const name of fs.readdirSync('.'))
        if (!['.git', 'build', 'node_modules'].includes(name)) fs.cpSync(name, `${copy}/${name}`, { recursive: true });
    browser = await openBrowser();
});
after(() => browser?.close());

const addressOf = (name) => pathToFileURL(path.join(site, name)).href;

/** Opens pages of the site one after another. They ask nothing but files of the site, and run without an error. */
async function withPages(names, options, use) {
    const context = await browser.newContext({ viewport: { width: 1280, height: 800 }, ...options });
    const page = await context.newPage();
    const problems = [];
    page.setDefaultTimeout(30_000);
    page.on('pageerror', (error) => problems.push(`${page.url()}: ${error}`));
    page.on('requestfailed', (request) => problems.push(`${page.url()} lacks ${request.url()}`));
    page.on('request', (request) => {
        if (!request.url().startsWith(addressOf('.')) && !request.url().startsWith('data:'))
            problems.push(`${page.url()} asks ${request.url()}`);
    });
    for (const name of names) {
        await page.goto(addressOf(name));
        await use(page, name);
    }
    assert.deepEqual(problems, []);
    await context.close();
}
const pages = () => filesOf(site).filter((name) => name.endsWith('.html'));

test('links that lead nowhere, and pages that nothing links to, fail the build', () => {
    fs.appendFileSync(`${copy}/docs/json.md`, '[1](nowhere.md) [2](lab.md#nothing) [3](#nothing) ![4](nowhere.png)');
    fs.writeFileSync(`${copy}/docs/stranger.md`, '# A stranger');
    const { status, stderr } = build(copy, `${work}/broken`);
    assert.equal(status, 1);
    assert.deepEqual(stderr.trim().split('\n'), [
        'docs/index.md does not link to docs/stranger.md',
        'docs/json.md: there is no docs/nowhere.md',
        'docs/json.md: docs/lab.md has no heading #nothing',
        'docs/json.md: docs/json.md has no heading #nothing',
        'docs/json.md: there is no docs/nowhere.png',
    ]);
});

// These are long, and made of the same parts as the page on firmware.
const longPages = ['picture', 'device', 'selfcalibration'].map((family) => `resources/${family}.html`);

for (const [width, colorScheme] of [
    [1280, 'light'],
    [400, 'dark'],
])
    test(`every page is accessible, and its links lead somewhere, ${width} pixels wide, ${colorScheme}`, async () => {
        const findings = [];
        const ids = new Map();
        const links = [];
        await withPages(pages(), { viewport: { width, height: 800 }, colorScheme }, async (page, name) => {
            if (!longPages.includes(name))
                findings.push(...(await seriousFindings(page)).map((finding) => `${name}: ${finding}`));
            const found = await page.evaluate(() => ({
                width: document.documentElement.scrollWidth,
                ids: [...document.querySelectorAll('[id]')].map(({ id }) => id),
                links: [...document.links].map(({ href }) => href),
                broken: [...document.images].filter((image) => !image.naturalWidth).map(({ src }) => src),
            }));
            if (found.width > width) findings.push(`${name} is ${found.width} pixels wide`);
            findings.push(...found.broken);
            ids.set(path.join(site, name), new Set(found.ids));
            links.push(...found.links.map((link) => [name, new URL(link)]));
        });
        for (const [name, link] of links) {
            if (link.protocol !== 'file:') continue;
            const file = fileURLToPath(link);
            const isThere = file.startsWith(site) && fs.existsSync(file);
            if (!isThere || (link.hash && !ids.get(file).has(link.hash.slice(1)))) findings.push(`${name}: ${link}`);
        }
        assert.ok(links.length > 1000);
        assert.deepEqual(findings, []);
    });

test('the search finds resources, their members and messages, with the keyboard alone', async () => {
    const results = (page) => page.getByRole('option');
    for (const [text, heading] of [
        ['SelfQCCalibrationTarget', 'SelfQCCalibrationTarget'],
        ['recalibration', 'SelfQCRecalibrationForGrayScaleCheckError'],
        ['transferredBlock', 'Events'],
        ['Set brightness percentage.', 'Brightness'],
        ['0x8000000A', 'Codes of a DmError'],
        ['libdmc does not have a requested function', 'Kinds of errors'],
        ['brigthness', 'Brightness'],
        ['--redact', 'Recordings'],
    ])
        await withPages(['resources/errors.html'], {}, async (page) => {
            await page.keyboard.press('/');
            await page.keyboard.type(text);
            await results(page).first().waitFor();
            const headings = await results(page).locator('.heading').allInnerTexts();
            assert.ok(headings.slice(0, 3).includes(heading), `${text}: ${headings.slice(0, 3)}`);
            for (let step = headings.indexOf(heading); step > 0; --step) await page.keyboard.press('ArrowDown');
            await page.keyboard.press('Enter');
            const id = heading.toLowerCase().replaceAll(' ', '-');
            await page.waitForURL((url) => url.hash === `#${id}`);
            await page.locator(`article #${id}`).waitFor();
            assert.equal(await results(page).count(), 0);
        });
    await withPages(['index.html'], {}, async (page) => {
        await page.getByRole('combobox').fill('xylophone');
        await page.getByText('No section has this').waitFor();
        await page.keyboard.press('Escape');
        await page.getByText('No section has this').waitFor({ state: 'hidden' });
    });
});

test('the theme stays, code is copied, what scrolls takes the focus, the menu opens on a narrow screen', async () => {
    const narrow = { viewport: { width: 400, height: 800 }, permissions: ['clipboard-read', 'clipboard-write'] };
    await withPages(['client.html'], narrow, async (page) => {
        const background = () => page.evaluate(() => getComputedStyle(document.body).backgroundColor);
        const light = await background();
        await page.getByRole('button', { name: 'Auto colours' }).click();
        await page.getByRole('button', { name: 'Light colours' }).click();
        const dark = await background();
        assert.notEqual(dark, light);
        await page.getByRole('button', { name: 'Copy' }).first().click();
        const code = page.locator('pre').first();
        const [button, text] = await Promise.all([page.locator('.copy').first().boundingBox(), code.boundingBox()]);
        assert.ok(button.y + button.height <= text.y, 'the button covers the code');
        assert.equal(await page.evaluate(() => navigator.clipboard.readText()), await code.textContent());
        assert.equal(await code.getAttribute('tabindex'), '0');

        assert.equal(await page.getByRole('link', { name: 'Errors', exact: true }).isVisible(), false);
        await page.getByRole('button', { name: 'Pages' }).click();
        await page.getByRole('navigation').getByRole('link', { name: 'Errors', exact: true }).click();
        await page.getByRole('heading', { name: 'Errors', exact: true }).waitFor();
        assert.equal(await background(), dark);
    });
});
