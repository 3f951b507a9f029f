// All monitors: their brightness, their input, and updates of their firmware.
import { Pell } from 'libpell-client';
import { transport } from './transport.js';

const pell = new Pell(transport);
const $ = (selector, within = document) => within.querySelector(selector);
const wait = (milliseconds) => new Promise((resolve) => setTimeout(resolve, milliseconds));
const versionText = ({ system, controller, frontEnd, osd, fpga }) =>
    [system, controller, frontEnd, osd, fpga].join('.');

/** A monitor and its part of the page. */
class Card {
    constructor(monitor) {
        this.monitor = monitor;
        this.name = `${monitor.product} ${monitor.serial || 'without a serial'}`;
        this.element = $('template').content.firstElementChild.cloneNode(true);
        this.isGone = this.isUpdating = false;
        this.find('h2').textContent = this.name;
        this.find('select').append(...[1, 2, 3, 4].map((input) => new Option(input)));
        this.find('.brightness input').oninput = () => this.attempt(() => this.setBrightness());
        this.find('select').onchange = () => this.attempt(() => this.setInput());
        this.find('.update').onclick = () => enqueue(this);
        this.find('.cancel').onclick = () => cancel(this);
    }

    find(selector) {
        return $(selector, this.element);
    }

    say(text, isProblem = false) {
        const message = this.find('p');
        message.textContent = text;
        message.className = isProblem ? 'problem' : '';
    }

    /** Does something that may fail, and then says why in words that help. */
    async attempt(work) {
        try {
            await work();
        } catch (error) {
            if (error.isDisconnected)
                this.leave('It cannot be reached: check its cable and power, then look for monitors.');
            else if (error.name === 'TransportError') this.say('The application does not answer.', true);
            else this.say(`That did not work: ${error.message}`, true);
        }
    }

    leave(reason) {
        this.isGone = this.find('fieldset').disabled = true;
        this.say(reason, true);
    }

    /** One request after another: a monitor that is slow to answer gets slower by several at once. */
    async load() {
        const { monitor } = this;
        this.isGone = false;
        if (!monitor.serial) return this.leave('It tells no serial number, so it cannot be controlled.');
        this.say('Asking the monitor…');
        const range = await monitor.tryGet('Brightness', { range: true });
        this.find('.brightness').hidden = !range;
        if (range) {
            Object.assign(this.find('.brightness input'), range);
            this.showBrightness(await monitor.get('Brightness'));
        }
        const inputs = await monitor.tryGet('InputPort');
        this.find('.input').hidden = !inputs;
        if (inputs) this.find('select').value = inputs[0];
        this.find('fieldset').disabled = this.isUpdating;
        this.say('');
    }

    showBrightness(step) {
        this.find('.brightness input').value = this.find('output').value = step;
    }

    /** While one PUT is under way, only the latest of those that wait is sent. Then it shows what the monitor has. */
    async setBrightness() {
        const wanted = this.find('.brightness input').valueAsNumber;
        this.find('output').value = wanted;
        if ((await this.monitor.put('Brightness', wanted)) === 'superseded') return;
        const step = await this.monitor.get('Brightness');
        if (this.find('.brightness input').valueAsNumber !== wanted) return;
        this.showBrightness(step);
        this.say(
            step === wanted ? '' : `The monitor did not follow: its brightness is still ${step}.`,
            step !== wanted,
        );
    }

    async setInput() {
        const input = Number(this.find('select').value);
        await this.monitor.put('InputPort', input);
        await find();
        if (this.isGone) return this.leave(`It shows input ${input} now, and cannot be reached from here any more.`);
        const [current] = await this.monitor.get('InputPort');
        this.find('select').value = current;
        if (current !== input) this.say(`The monitor did not follow: it still shows input ${current}.`, true);
    }

    async update(path) {
        const { monitor } = this;
        const file = await pell.open(path);
        try {
            const check = await monitor.get('FirmwareUpdate', { checkDfwFile: file.id });
            const refusal = [
                '',
                'The package is for another product.',
                'It has this version.',
                'It has a newer version.',
            ];
            if (check) return this.say(refusal[check] ?? 'The package does not fit.', true);
            const before = versionText(await monitor.get('FirmwareUpdateVersion'));
            try {
                await this.transfer(file);
            } catch (error) {
                const reason = `The transfer failed: ${error.message}`;
                return this.say(`${reason} It runs ${before} as before. Check its cable and try again.`, true);
            }
            await monitor.post('FirmwareUpdateTrigger');
            this.say('It updates itself now. Leave it switched on.');
            if (!(await this.isBack()))
                return this.leave('It did not come back. Switch it off and on, then look for monitors.');
            const after = versionText(await monitor.get('FirmwareUpdateVersion'));
            if (after === before) this.say(`The update had no effect: it still runs ${before}.`, true);
            else this.say(`Updated from ${before} to ${after}.`);
        } finally {
            await file.close();
        }
    }

    async transfer(file) {
        for await (const { transferredBlock, blockCount } of this.monitor.transfer(file).progress()) {
            Object.assign(this.find('progress'), { max: blockCount, value: transferredBlock });
            this.find('.transfer span').textContent = `block ${transferredBlock} of ${blockCount}`;
        }
    }

    /** Waits for the end of the update, half a minute at most. */
    async isBack() {
        for (let second = 0; second < 30; ++second) {
            await wait(1000);
            const { state } = await this.monitor.get('FirmwareUpdate').catch(() => ({}));
            if (state !== undefined && state !== 3) return true;
            if (state === undefined) await pell.monitors({ update: true }).catch(() => {});
        }
        return false;
    }
}

let cards = [];

/** Lists the monitors afresh. Cards stay where they are, also those of monitors that are gone. */
async function find() {
    try {
        const found = await pell.monitors({ update: true });
        const isSame =
            ({ product, serial }) =>
            (other) =>
                other.product === product && other.serial === serial;
        const addresses = found.filter((monitor, at) => found.findIndex(isSame(monitor)) === at);
        const known = cards;
        cards = [...known];
        for (const monitor of addresses) {
            const card = known.find((card) => isSame(monitor)(card.monitor)) ?? new Card(monitor);
            if (!cards.includes(card)) cards.push(card);
            $('#monitors').append(card.element);
            if ((!known.includes(card) || card.isGone) && !card.isUpdating) card.attempt(() => card.load());
        }
        for (const card of cards)
            if (!addresses.some(isSame(card.monitor)) && !card.isUpdating && !card.isGone)
                card.leave('It is gone: check its cable and power, then look for monitors.');
        const twins = found.filter((monitor, at) => found.findIndex(isSame(monitor)) !== at);
        $('#message').textContent =
            twins
                .map(
                    ({ product, serial }) =>
                        `Two monitors call themselves ${product} ${serial}: only one can be controlled.`,
                )
                .join(' ') || (found.length ? `${found.length} monitors are connected.` : 'No monitor is connected.');
    } catch (error) {
        $('#message').textContent = `The monitors cannot be listed: ${error.message}`;
    }
}

// Two updates run at once, the others wait. One that waits can be cancelled; one that has begun cannot be stopped.
const waiting = [];
let running = 0;

function enqueue(card) {
    waiting.push(card);
    card.isUpdating = card.find('fieldset').disabled = true;
    card.find('.transfer').hidden = card.find('.cancel').hidden = false;
    card.find('progress').value = 0;
    card.find('.transfer span').textContent = 'waits for the others';
    card.say('');
    startUpdates();
}

function cancel(card) {
    if (!waiting.includes(card)) return;
    waiting.splice(waiting.indexOf(card), 1);
    finish(card);
    card.say('The update was cancelled before it began.');
}

function finish(card) {
    card.isUpdating = false;
    card.find('fieldset').disabled = card.isGone;
    card.find('.transfer').hidden = true;
}

async function startUpdates() {
    while (running < 2 && waiting.length) {
        const card = waiting.shift();
        ++running;
        card.find('.cancel').hidden = true;
        card.find('.transfer span').textContent = 'checks the package';
        card.attempt(() => card.update($('#package').value)).then(() => {
            --running;
            finish(card);
            startUpdates();
        });
    }
}

$('#find').onclick = find;
find();
