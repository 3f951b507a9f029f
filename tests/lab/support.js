// A browser, and pages in it.
import fs from 'node:fs';
import { chromium } from 'playwright-core';

export const screenshots = 'build/lab-screenshots';
fs.mkdirSync(screenshots, { recursive: true });

export function openBrowser() {
    const args = process.getuid() === 0 ? ['--no-sandbox'] : [];
    return chromium.launch({ executablePath: '/usr/bin/chromium', args });
}

/**
 * A page at an address. Whatever goes wrong within it, or leads outside, is in `page.problems`. With `hasOwnTime`, the
 * test lets its time pass faster.
 */
export async function open(browser, address, { hasOwnTime, ...options } = {}) {
    const context = await browser.newContext({ viewport: { width: 1280, height: 800 }, ...options });
    const page = await context.newPage();
    page.setDefaultTimeout(30_000);
    page.problems = [];
    page.on('pageerror', (error) => page.problems.push(String(error)));
    page.on('request', (request) => {
        if (!request.url().startsWith(new URL(address).origin) && !/^(data|blob):/.test(request.url()))
            page.problems.push(`asks ${request.url()}`);
    });
    if (hasOwnTime) await page.clock.install();
    await page.goto(address);
    return page;
}

const axe = fs.readFileSync('node_modules/axe-core/axe.min.js', 'utf8');

/** What axe finds serious on a page, in a line each. */
export async function seriousFindings(page) {
    await page.evaluate(axe);
    const options = { resultTypes: ['violations'], preload: false }; // quicker; no rule that counts needs the others
    const { violations } = await page.evaluate((options) => globalThis.axe.run(document, options), options);
    return violations
        .filter(({ impact }) => impact === 'serious' || impact === 'critical')
        .flatMap(({ id, nodes }) => nodes.map(({ target, failureSummary }) => `${id} ${target}: ${failureSummary}`));
}
