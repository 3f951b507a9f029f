// All monitors: their brightness, their input, and updates of their firmware.
import { Pell } from 'libpell-client';
import { transport } from './transport.js';

const pell = new Pell(transport);
const $ = (selector, within = document) => within.querySelector(selector);
const nameOf = ({ product, serial }) => `${product} ${serial || 'without a serial'}`;
const refusals = ['', 'The package is for another product.', 'It has this version.', 'It has a newer version.'];

// Two updates run at once. Others wait for one of these, and can be cancelled as long as they do.
const lanes = [Promise.resolve(), Promise.resolve()];

/** A monitor and its part of the page. It is loading, ready, waiting for its update, updating or gone. */
class Card {
    constructor(monitor) {
        this.monitor = monitor;
        this.element = $('template').content.firstElementChild.cloneNode(true);
        this.find = (selector) => $(selector, this.element);
        this.find('h2').textContent = nameOf(monitor);
        this.find('.brightness input').oninput = () => this.attempt(this.setBrightness);
        this.find('.input input').oninput = () => this.warnOfInput();
        this.find('.switch').onclick = () => this.attempt(this.setInput);
        this.find('.update').onclick = () => this.enqueue();
        this.find('.cancel').onclick = () => this.become('ready', 'The update was cancelled before it began.');
        $('#monitors').append(this.element);
    }

    become(state, text = '', isProblem = state === 'gone') {
        this.state = state;
        this.find('fieldset').disabled = state !== 'ready';
        this.find('.transfer').hidden = state !== 'waiting' && state !== 'updating';
        this.find('.cancel').hidden = state !== 'waiting';
        this.showBrightness();
        this.showInput();
        this.say(text, isProblem);
        if (state === 'gone') showCount();
    }

    say(text, isProblem) {
        this.find('p').textContent = text;
        this.find('p').className = isProblem ? 'problem' : '';
    }

    /** Does something that may fail, and then says why in words that help. */
    async attempt(work, stateAfterFailure) {
        try {
            await work.call(this);
        } catch ({ name, message, isDisconnected }) {
            let reason = `That did not work: ${message}`;
            if (name === 'TransportError') reason = 'The application does not answer.';
            if (isDisconnected) reason = 'It cannot be reached: check its cable and power, then look for monitors.';
            this.become(isDisconnected ? 'gone' : (stateAfterFailure ?? this.state), reason, true);
        }
    }

    /** One request after another: a monitor that is slow to answer gets slower by several at once. */
    async load() {
        const { monitor } = this;
        if (!monitor.serial) return this.become('gone', 'It tells no serial number, so it cannot be controlled.');
        this.become('loading', 'Asking the monitor…');
        const range = await monitor.tryGet('Brightness', { range: true });
        Object.assign(this.find('.brightness input'), range);
        this.brightness = range && (await monitor.get('Brightness'));
        this.input = (await monitor.tryGet('InputPort'))?.[0];
        if (!this.versionBefore) return this.become('ready');
        this.become('updating', 'It is back. Comparing its version with that before the update…');
        await this.finishUpdate();
    }

    /** Shows what the monitor has, as far as it is known: also after a failure. */
    showBrightness() {
        this.find('.brightness').hidden = this.brightness === undefined;
        this.find('.brightness input').value = this.find('output').value = this.brightness;
    }

    showInput() {
        this.find('.input').hidden = this.input === undefined;
        this.find('.input input').value = this.input;
        this.find('.warning').hidden = true;
    }

    /** While one PUT is under way, only the latest of those that wait is sent. Then it shows what the monitor has. */
    async setBrightness() {
        const wanted = (this.wanted = this.find('.brightness input').valueAsNumber);
        this.find('output').value = wanted;
        if ((await this.monitor.put('Brightness', wanted)) === 'superseded') return;
        this.brightness = wanted;
        this.brightness = await this.monitor.get('Brightness');
        if (this.wanted !== wanted) return;
        this.showBrightness();
        const follows = this.brightness === wanted;
        this.say(follows ? '' : `The monitor did not follow: its brightness is still ${this.brightness}.`, !follows);
    }

    /**
     * No request tells which inputs a monitor has, nor which of them lead to this computer. So any number may be one, and
     * any other input may be the last that the page can choose.
     */
    warnOfInput() {
        const field = this.find('.input input');
        const input = field.valueAsNumber;
        this.find('.warning').hidden = !field.validity.valid || input === this.input;
        this.find('.warning span').textContent =
            `Input ${input} may belong to another computer. Then this page cannot reach the monitor any more, ` +
            `and only the buttons at the monitor switch it back. To stay, enter ${this.input}.`;
    }

    async setInput() {
        const input = this.find('.input input').valueAsNumber;
        this.find('.warning').hidden = true;
        try {
            await this.monitor.put('InputPort', input);
        } catch (error) {
            if (error.message !== 'Invalid argument.') throw error;
            return this.become('ready', `It has no input ${input}.`, true);
        }
        this.input = input;
        await findMonitors();
        const advice = 'Look for monitors when it shows this computer again.';
        if (this.state === 'gone')
            return this.say(`It shows input ${input} now, and cannot be reached from here. ${advice}`);
        [this.input] = await this.monitor.get('InputPort');
        this.showInput();
        const follows = this.input === input;
        this.say(follows ? '' : `The monitor did not follow: it still shows input ${this.input}.`, !follows);
    }

    enqueue() {
        this.become('waiting');
        this.showTransfer('waits for the others');
        lanes.push(lanes.shift().then(() => this.state === 'waiting' && this.attempt(this.update, 'ready')));
    }

    showTransfer(text, value = 0, max = 1) {
        this.find('.transfer span').textContent = text;
        Object.assign(this.find('progress'), { max, value });
    }

    async update() {
        this.become('updating');
        this.showTransfer('checks the package');
        const file = await pell.open($('#package').value);
        try {
            const check = await this.monitor.get('FirmwareUpdate', { checkDfwFile: file.id });
            if (check) return this.become('ready', refusals[check] ?? 'The package does not fit.', true);
            const before = await this.version();
            try {
                for await (const { transferredBlock, blockCount } of this.monitor.transfer(file).progress())
                    this.showTransfer(`block ${transferredBlock} of ${blockCount}`, transferredBlock, blockCount);
            } catch ({ message }) {
                const advice = `It runs ${before} as before. Check its cable and try again.`;
                return this.become('ready', `The transfer failed: ${message} ${advice}`, true);
            }
            this.versionBefore = before;
            await this.monitor.post('FirmwareUpdateTrigger');
            this.say('It updates itself now. Leave it switched on.');
            await this.finishUpdate();
        } finally {
            await file.close();
        }
    }

    async version() {
        const { system, controller, frontEnd, osd, fpga } = await this.monitor.get('FirmwareUpdateVersion');
        return [system, controller, frontEnd, osd, fpga].join('.');
    }

    /** Waits for the end of the update, half a minute at most. Meanwhile the monitor may be away. */
    async finishUpdate() {
        for (let second = 0; second < 30; ++second) {
            await new Promise((resolve) => setTimeout(resolve, 1000));
            try {
                if ((await this.monitor.get('FirmwareUpdate')).state !== 3) return await this.compareVersions();
            } catch {
                await pell.monitors({ update: true }).catch(() => {});
            }
        }
        this.become('gone', 'It did not come back. Switch it off and on, then look for monitors.');
    }

    async compareVersions() {
        const after = await this.version();
        const before = this.versionBefore;
        this.versionBefore = undefined;
        if (after === before) this.become('ready', `The update had no effect: it still runs ${before}.`, true);
        else this.become('ready', `Updated from ${before} to ${after}.`);
    }
}

const cards = new Map();
let found = [];

/** Lists the monitors afresh. Cards stay where they are, also those of monitors that are gone. */
async function findMonitors() {
    try {
        found = await pell.monitors({ update: true });
        const names = found.map(nameOf);
        for (const monitor of found) {
            const card = cards.get(nameOf(monitor)) ?? new Card(monitor);
            cards.set(nameOf(monitor), card);
            if (!card.state || card.state === 'gone') card.attempt(card.load, 'gone');
        }
        for (const [name, card] of cards)
            if (!names.includes(name) && card.state !== 'updating' && card.state !== 'gone')
                card.become('gone', 'It is gone: check its cable and power, then look for monitors.');
        showCount();
    } catch ({ message }) {
        $('#message').textContent = `The monitors cannot be listed: ${message}`;
    }
}

/** How many of those that were found are still there, and which of them share a name. */
function showCount() {
    const connected = found.filter((monitor) => !monitor.serial || cards.get(nameOf(monitor))?.state !== 'gone');
    let text = `Connected monitors: ${connected.length}.`;
    for (const [name, { monitor }] of cards) {
        const count = connected.filter((other) => nameOf(other) === name).length;
        const share = monitor.serial ? 'only one' : 'none';
        if (count > 1) text += ` ${count} monitors call themselves ${name}: ${share} can be controlled.`;
    }
    $('#message').textContent = text;
}

$('#find').onclick = findMonitors;
findMonitors();
