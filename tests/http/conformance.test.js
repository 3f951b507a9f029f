// What the catalogue says, proven over HTTP: the same answers, calls, events and log lines as in a batch.
import assert from 'node:assert/strict';
import fs from 'node:fs';
import http from 'node:http';
import { test } from 'node:test';
import { Host, textsOf } from '../catalogue/conformance/host.js';
import { contradictionsOf } from '../catalogue/conformance/proof.js';
import { openWorld } from '../catalogue/conformance/world.js';
import { ask, builds, startServer } from './server.js';

const catalogue = JSON.parse(fs.readFileSync('catalogue/catalogue.json', 'utf8'));

/** Takes the lines of a batch over HTTP, and what happened meanwhile from the stream of exchanges. */
class HttpHost extends Host {
    static t;
    #exchanges = [];
    #arrived = () => {};
    #turn = Promise.resolve();
    #agent = new http.Agent({ keepAlive: true });

    constructor(root, build, folder) {
        super(root, build, folder);
        this.build = build;
    }

    async start() {
        this.server = await startServer(HttpHost.t, this.build);
        const stream = await fetch(`${this.server.address}/lab/api/exchanges?since=0`);
        this.#read(stream.body.pipeThrough(new TextDecoderStream())).catch(() => {}); // when the server ends
    }

    async #read(chunks) {
        let text = '';
        for await (const chunk of chunks) {
            const events = (text + chunk).split('\n\n');
            text = events.pop();
            for (const event of events)
                if (/^event: exchange$/m.test(event)) this.#exchanges.push(JSON.parse(/^data: (.*)$/m.exec(event)[1]));
            this.#arrived();
        }
    }

    repliesTo(lines) {
        const work = async () => {
            const replies = [];
            for (const line of lines) replies.push(await (line.simulate ? this.#simulate(line) : this.#ask(line)));
            return replies;
        };
        const replies = this.#turn.then(work);
        this.#turn = replies.catch(() => {});
        return replies;
    }

    async #simulate(line) {
        const options = { method: 'POST', body: JSON.stringify(line), agent: this.#agent };
        return JSON.parse((await ask(this.server.address, '/lab/api/simulate', options)).text);
    }

    async #ask(line) {
        const [, , query, body] = textsOf(line);
        const path = catalogue.resources[line.resource].path.replace(/\/\{(\w+)\}/g, (_, name) => {
            const value = line.parameters[name];
            return value === undefined ? '' : `/${encodeURIComponent(value)}`;
        });
        const target = `/pell/${path}${query && '?'}${encodeURIComponent(query).replace('%7B', '{')}`;
        const options = { method: line.method, body: body || undefined, agent: this.#agent };
        const { status, text } = await ask(this.server.address, target, options);
        while (!this.#exchanges.length) await new Promise((resolve) => (this.#arrived = resolve));
        const exchange = this.#exchanges.shift();
        assert.deepEqual(exchange.texts, textsOf(line));
        const [response] = exchange.responses;
        assert.deepEqual({ status, text }, { status: response.status, text: response.text });
        for (const call of exchange.calls) delete call.milliseconds; // which are others each time
        return exchange;
    }

    async close() {
        this.#agent.destroy();
    }
}

/** All natively; elsewhere one of each topic, which are slow there and differ by nothing but the transport. */
function namesFor(build) {
    const names = Object.keys(catalogue.resources);
    const topicOf = (name) => catalogue.resources[name].topic;
    const isFirst = (name, at) => names.findIndex((other) => topicOf(other) === topicOf(name)) === at;
    return build === 'native' ? names : names.filter(isFirst);
}

for (const build of builds)
    test(build, { concurrency: true }, async (t) => {
        HttpHost.t = t;
        const world = await openWorld(build, { runs: 0, Full: HttpHost });
        t.after(() => world.close());
        const proofs = namesFor(build).map((name) =>
            t.test(name, async () => {
                const problems = await contradictionsOf(name, catalogue, world);
                assert.ok(!problems.length, problems.join('\n'));
            }),
        );
        await Promise.all(proofs);
        t.diagnostic(`${build}: ${world.requests()} requests`);
    });
