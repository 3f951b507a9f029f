// A GET of Brightness over HTTP beside the same in a batch, and the server's memory under load: scripts/bench http.
// Needs wrk, and pellhost of the native build.
import { execFile, spawn } from 'node:child_process';
import { once } from 'node:events';
import fs from 'node:fs';
import os from 'node:os';
import readline from 'node:readline';
import { promisify } from 'node:util';

const pellhost = 'build/native/full/pellhost';
const parameters = { product: 'TQ271-P', serial: '10000001' };
const target = `pell/Monitors/${parameters.product}/${parameters.serial}/Brightness`;
const line = `${JSON.stringify({ call: 'Brightness', texts: ['{"method":"GET"}', JSON.stringify(parameters), '', ''] })}\n`;

const run = promisify(execFile);
const seconds = (since) => Number(process.hrtime.bigint() - since) / 1e9;
const row = (...cells) => console.log(`| ${cells.join(' | ')} |`);
const milliseconds = (value) => `${value.toFixed(3)} ms`;

/** Requests for so many seconds over so many connections that are kept. */
async function load(address, connections, duration) {
    const { stdout } = await run('wrk', ['-t1', `-c${connections}`, `-d${duration}s`, '--latency', address + target]);
    const find = (pattern) => pattern.exec(stdout)?.slice(1);
    if (find(/(Non-2xx|Socket errors)/)) throw new Error(stdout);
    const percentile = (rank) => {
        const [number, unit] = find(new RegExp(`${rank}%\\s+([\\d.]+)(us|ms|s)`));
        return Number(number) * { us: 0.001, ms: 1, s: 1000 }[unit];
    };
    return {
        count: Number(find(/(\d+) requests in/)[0]),
        perSecond: Number(find(/Requests\/sec:\s+([\d.]+)/)[0]),
        half: percentile(50),
        most: percentile(99),
    };
}

/** The same in a batch, whose lines are sent one behind the other or all at once. */
async function batch(count, isInTurn) {
    const child = spawn(pellhost, ['batch'], { stdio: ['pipe', 'pipe', 'inherit'] });
    const answers = readline.createInterface({ input: child.stdout })[Symbol.asyncIterator]();
    const ask = async () => {
        const begun = process.hrtime.bigint();
        child.stdin.write(line);
        const { value } = await answers.next();
        if (JSON.parse(value).responses[0].status !== 200) throw new Error(value);
        return seconds(begun) * 1000;
    };
    await ask();
    const begun = process.hrtime.bigint();
    const times = [];
    if (isInTurn) while (times.length < count) times.push(await ask());
    else {
        child.stdin.write(line.repeat(count));
        for (let done = 0; done < count; ++done) await answers.next();
    }
    const perSecond = count / seconds(begun);
    child.stdin.end();
    await once(child, 'close');
    times.sort((a, b) => a - b);
    return { perSecond, half: times[Math.floor(count * 0.5)], most: times[Math.floor(count * 0.99)] };
}

console.log(
    `${os.cpus()[0].model}, ${os.cpus().length} cores, with the load generator; load ${os.loadavg()[0].toFixed(1)}\n`,
);
row('`Brightness` GET', 'requests/s', 'half within', '99 % within');
row('---', '---:', '---:', '---:');
const report = (name, { perSecond, half, most }) =>
    row(name, Math.round(perSecond), ...[half, most].map((time) => (time === undefined ? '' : milliseconds(time))));

const server = spawn(pellhost, ['--json', 'serve', '--port', '0'], { stdio: ['ignore', 'pipe', 'inherit'] });
process.on('exit', () => server.kill('SIGKILL'));
const [first] = await once(readline.createInterface({ input: server.stdout }), 'line');
const { address } = JSON.parse(first);
const memory = () => Number(/VmRSS:\s*(\d+)/.exec(fs.readFileSync(`/proc/${server.pid}/status`, 'utf8'))[1]) / 1024;

await load(address, 32, 3); // fills what the lab keeps
for (const connections of [1, 8, 32])
    report(`HTTP, ${connections} connection${connections > 1 ? 's' : ''}`, await load(address, connections, 5));
report('batch, line by line', await batch(20_000, true));
report('batch, all lines at once', await batch(50_000, false));

const before = memory();
let count = 0;
while (count < 300_000) count += (await load(address, 32, 5)).count;
console.log(
    `\nMemory before and after ${count} requests over 32 kept connections: ${before.toFixed(1)} and ${memory().toFixed(1)} MiB`,
);
process.exit(0);
