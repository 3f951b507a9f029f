// The client behind transports that are played here: order of writes, aborts, answers that are none, events, progress.
import assert from 'node:assert/strict';
import { mock, test } from 'node:test';
import { setImmediate as turn } from 'node:timers/promises';
import { httpTransport, Monitor, Pell, PellError } from '../../build/client/index.js';

/** A transport that answers what it was requests first when it is told to. */
function stub() {
    const requests = [];
    const listeners = new Set();
    const transport = (request) => new Promise((resolve, reject) => requests.push({ request, resolve, reject }));
    transport.on = (event, listener) => {
        listeners.add(listener);
        return () => assert.ok(listeners.delete(listener));
    };
    const answer = async (text = '{"error":null,"value":null}', status = 200) => {
        requests.shift().resolve({ status, text });
        await turn();
    };
    return {
        transport,
        requests,
        listeners,
        answer,
        dispatch: (step) => listeners.forEach((one) => one(JSON.stringify(step))),
    };
}

const outcomeOf = (promise) => promise.catch((error) => error.name);
const failure = '{"error":{"name":"DmError","message":"Failed.","code":2147483648},"value":null}';

// Each put: a body, or [body, resource, query, options, monitor]. "sent" has what is sent, in its order; "at once" how many
// of them without waiting for an answer.
const orders = {
    'of numbers, the last that waits wins': { puts: [1, 2, 3, 4], sent: [1, 4], dropped: [1, 2] },
    'flags are like numbers': { puts: [true, false, true], sent: [true, true], dropped: [1] },
    'so are calls without a body': {
        puts: [1, 2, 3].map(() => [undefined, 'Save']),
        sent: [undefined, undefined],
        dropped: [1],
    },
    'objects and lists are all sent': { puts: [{ red: 1 }, { green: 2 }, [3]], sent: [{ red: 1 }, { green: 2 }, [3]] },
    'objects that are alike replace each other': {
        puts: [1, 2, 3].map((red) => [{ red }, 'Gain', {}, { latest: true }]),
        sent: [{ red: 1 }, { red: 3 }],
        dropped: [1],
    },
    'numbers that all count are sent': {
        puts: [1, 2, 3].map((one) => [one, 'Hue', {}, { latest: false }]),
        sent: [1, 2, 3],
    },
    'nothing overtakes what must be sent': {
        puts: [1, { percentage: 2 }, 3, 4],
        sent: [1, { percentage: 2 }, 4],
        dropped: [2],
    },
    'another query is another write': {
        puts: [0, 1, 1].map((index) => [[index], 'ColorMatrix', { index }, { latest: true }]),
        sent: [[0], [1]],
        dropped: [1],
    },
    'other resources do not wait': { puts: [1, [2, 'Contrast'], 3], sent: [1, 2, 3], atOnce: 2 },
    'other monitors do not wait': { puts: [1, [2, 'Hue', {}, {}, 'other']], sent: [1, 2], atOnce: 2 },
};

for (const [name, { puts, sent, dropped = [], atOnce = 1 }] of Object.entries(orders))
    test(`writes: ${name}`, async () => {
        const { transport, requests, answer } = stub();
        const results = puts.map((put) => {
            const [body, resource = 'Hue', query, options, serial = 'one'] =
                Array.isArray(put) && put.length > 1 ? put : [put];
            // Several objects may stand for a monitor.
            return outcomeOf(new Monitor(transport, 'P', serial).put(resource, body, query, options));
        });
        assert.equal(requests.length, atOnce);
        const bodies = [];
        while (requests.length) {
            bodies.push(requests[0].request.body);
            await answer();
        }
        assert.deepEqual(bodies, sent);
        const expected = puts.map((_, at) => (dropped.includes(at) ? 'superseded' : 'done'));
        assert.deepEqual(await Promise.all(results), expected);
    });

test('writes: other transports do not wait', () => {
    const stubs = [stub(), stub()];
    for (const { transport } of stubs) new Monitor(transport, 'P', 'S').put('Hue', 1);
    assert.ok(stubs.every(({ requests }) => requests.length));
});

test('what waits is sent after a failure, too, and a DELETE does not overtake a PUT', async () => {
    const { transport, requests, answer } = stub();
    const monitor = new Monitor(transport, 'P', 'S');
    const results = [monitor.put('ColorPatch', {}), monitor.put('ColorPatch', {}), monitor.delete('ColorPatch')].map(
        outcomeOf,
    );
    await answer(failure, 500);
    requests.shift().reject(new Error('unreachable'));
    await turn();
    assert.equal(requests[0].request.method, 'DELETE');
    await answer();
    assert.deepEqual(await Promise.all(results), ['DmError', 'TransportError', null]);
    await Promise.all([monitor.put('ColorPatch', {}), answer()]);
});

test('what waits is sent as it was given, though the page uses its objects again', async () => {
    const { transport, requests, answer } = stub();
    const monitor = new Monitor(transport, 'P', 'S');
    const [body, query] = [[1], { index: 1 }];
    monitor.put('ColorMatrix', []);
    monitor.put('ColorMatrix', body, query);
    body[0] = query.index = 2;
    await answer();
    assert.deepEqual([requests[0].request.body, requests[0].request.query], [[1], { index: 1 }]);
});

test('a body that is no JSON is refused, whether it would wait or not, and holds up nothing', async () => {
    const { transport, requests, answer } = stub();
    const monitor = new Monitor(transport, 'P', 'S');
    const cycle = [];
    cycle.push(cycle);
    const put = (body) => outcomeOf(monitor.put('ColorMatrix', body));
    assert.equal(await put(cycle), 'TypeError');
    const results = [[1], cycle, [2], cycle].map(put);
    await answer(); // An unhandled rejection would fail this test.
    assert.deepEqual(requests[0].request.body, [2]);
    await answer();
    assert.deepEqual(await Promise.all(results), ['done', 'TypeError', 'done', 'TypeError']);
});

test('what has not been sent can be aborted', async () => {
    const { transport, requests, answer } = stub();
    const monitor = new Monitor(transport, 'P', 'S');
    const control = new AbortController();
    const options = { signal: control.signal };
    const results = [
        monitor.put('Hue', 1, {}, options),
        monitor.put('Hue', 2, {}, options),
        monitor.put('Hue', [3], {}, options),
        monitor.put('Hue', [4]),
    ].map(outcomeOf);
    control.abort();
    results.push(outcomeOf(monitor.get('Hue', {}, options)));
    await answer();
    assert.deepEqual(
        requests.map(({ request }) => request.body),
        [[4]],
    );

    // Once sent, it is not aborted, and what follows waits for it.
    const later = new AbortController();
    results.push(
        ...[5, 6].map((step) => outcomeOf(monitor.put('Hue', step, {}, { signal: later.signal, latest: false }))),
    );
    await answer();
    later.abort();
    results.push(outcomeOf(monitor.put('Hue', 7)));
    assert.deepEqual(
        requests.map(({ request }) => request.body),
        [5],
    );
    while (requests.length) await answer();
    assert.deepEqual(await Promise.all(results), [
        ...['done', 'AbortError', 'AbortError', 'done', 'AbortError'],
        ...['done', 'AbortError', 'done'],
    ]);
    // The signals of old polyfills have no reason.
    await assert.rejects(monitor.get('Hue', {}, { signal: { aborted: true } }), { name: 'AbortError' });
    const reason = new Error('left the page');
    await assert.rejects(monitor.get('Hue', {}, { signal: AbortSignal.abort(reason) }), reason);
});

const malformed = (members) => () => ({
    status: 500,
    text: JSON.stringify({ error: { name: 'DmError', message: 'Failed.', ...members }, value: null }),
});
/** What a transport does, and the status and message of the error. */
const noAnswers = [
    [() => assert.fail('broken'), 0, /cannot be reached: broken/],
    [() => Promise.reject(), 0, /cannot be reached/],
    [() => {}, 0, /not one of the plug-in/],
    [() => ({ status: 502, text: '<html>Bad Gateway' }), 502, /<html>Bad Gateway/],
    [() => ({ status: 200, text: '{"error":null,"val' }), 200, /not one/],
    [() => ({ status: 200, text: 'null' }), 200, /not one/],
    [() => ({ status: 403, text: '{"error":"Forbidden"}' }), 403, /Forbidden/],
    [() => ({ status: 500, text: '{"error":"x","value":null}' }), 500, /not one/],
    [malformed({ name: { a: 1 } }), 500, /not one/],
    [malformed({ message: undefined }), 500, /not one/],
    [malformed({ code: '2147483655' }), 500, /not one/],
    [malformed({ reason: 5 }), 500, /not one/],
    [() => ({ status: '500', text: 'gone' }), 0, /gone/],
    [() => ({ status: 200, text: Object.create(null) }), 200, /not one/],
    [() => ({ status: 200, text: { error: null, value: 1 } }), 200, /not one/],
];

test('a transport that fails, or whose answer is none of the plug-in', async () => {
    for (const [transport, status, message] of noAnswers) {
        const error = await new Pell(transport).monitors().catch((error) => error);
        assert.ok(error instanceof PellError);
        const { name, isDisconnected, code, reason } = error;
        assert.deepEqual(
            [name, error.status, isDisconnected, code, reason],
            ['TransportError', status, false, undefined, undefined],
        );
        assert.match(error.message, message);
    }
});

test('a listener hears until it is removed, whatever others do', () => {
    const { transport, listeners, dispatch } = stub();
    const thrown = [];
    mock.method(globalThis, 'setTimeout', (work) => {
        assert.throws(work, (error) => Boolean(thrown.push(error.message)));
    });
    const pell = new Pell(transport);
    const heard = [];
    const stops = [
        pell.on('transferFirmwareData', () => assert.fail('mistake of the page')),
        pell.on('transferFirmwareData', (step) => heard.push(step)),
    ];
    dispatch(1);
    [...listeners][1]('no JSON');
    const late = [...listeners][1];
    stops.forEach((stop) => stop());
    stops.forEach((stop) => stop());
    late('2');
    mock.restoreAll();
    assert.deepEqual(heard, [1]);
    assert.equal(listeners.size, 0);
    assert.equal(thrown.length, 2);
    assert.throws(() => new Pell(() => {}).on('transferFirmwareData', () => {}), /has no events/);
});

/** Streams of events that a test opens itself. */
function stubEventSource() {
    const sources = [];
    globalThis.EventSource = class extends EventTarget {
        static CLOSED = 2;
        constructor() {
            super();
            sources.push(this);
        }
        close() {}
    };
    return sources;
}

test('a stream of events that was refused opens again as long as someone listens', () => {
    const waiting = mock.method(globalThis, 'setTimeout', () => {}).mock;
    const sources = stubEventSource();
    const fail = (source) => {
        source.readyState = EventSource.CLOSED;
        source.onerror({});
        waiting.calls.at(-1).arguments[0]();
    };
    const stop = httpTransport('/pell').on('transferFirmwareData', () => {});
    fail(sources[0]);
    assert.equal(sources.length, 2);
    stop();
    fail(sources[1]);
    mock.restoreAll();
    assert.equal(sources.length, 2);
});

test('a POST that waits for the stream of events is sent as it was given, and can be aborted', async () => {
    const sources = stubEventSource();
    const response = { status: 200, text: async () => '{"error":null,"value":null}' };
    const fetched = mock.method(globalThis, 'fetch', async () => response).mock;
    const monitor = new Monitor(httpTransport('/pell'), 'P', 'S');
    const stop = monitor.on('transferFirmwareData', () => {});
    const control = new AbortController();
    const body = { dfwFile: '1' };
    const post = (options) => outcomeOf(monitor.post('FirmwareUpdateTransfer', body, {}, options));
    const results = [post({ signal: control.signal }), post({ signal: control.signal }), post(), post()];
    body.dfwFile = '2';
    control.abort();
    assert.deepEqual(await Promise.all(results.slice(0, 2)), ['AbortError', 'AbortError']);
    assert.equal(fetched.calls.length, 0);
    sources[0].onopen();
    assert.deepEqual(await Promise.all(results.slice(2)), [null, null]);
    const bodies = fetched.calls.map((call) => call.arguments[1].body);
    stop();
    mock.restoreAll();
    assert.deepEqual(bodies, ['{"dfwFile":"1"}', '{"dfwFile":"1"}']);
});

const step = (transferredBlock, product = 'P', serial = 'S') => ({ product, serial, transferredBlock, blockCount: 4 });

test('progress tells the newest step of this monitor, and ends with the transfer', async () => {
    const { transport, requests, listeners, answer, dispatch } = stub();
    const update = new Monitor(transport, 'P', 'S').transfer({ id: 'package' });
    assert.deepEqual(requests[0].request.body, { dfwFile: 'package' });
    const blocks = [];
    const loop = (async () => {
        for await (const { transferredBlock } of update.progress()) blocks.push(transferredBlock);
    })();
    dispatch(step(1));
    await turn();
    [step(2), step(3), step(9, 'other'), step(9, 'P', 'other')].forEach(dispatch);
    await turn();
    dispatch(step(4));
    await answer();
    dispatch(step(5));
    await Promise.all([loop, update.done]);
    assert.deepEqual(blocks, [1, 3, 4]);
    assert.equal(listeners.size, 0);
    for await (const one of update.progress()) assert.equal(one.transferredBlock, 4); // the end of one that is over
});

test('the last step of a transfer may come after the answer, or never', async () => {
    const timers = mock.method(globalThis, 'setTimeout', () => 0).mock;
    const blocksUntil = async (end) => {
        const { transport, listeners, answer, dispatch } = stub();
        const update = new Monitor(transport, 'P', 'S').transfer({ id: 'package' });
        const blocks = [];
        const loop = (async () => {
            for await (const { transferredBlock } of update.progress()) blocks.push(transferredBlock);
        })();
        dispatch(step(2));
        await answer();
        await update.done;
        assert.equal(listeners.size, 1);
        end(dispatch);
        await loop;
        assert.equal(listeners.size, 0);
        return blocks;
    };
    assert.deepEqual(await blocksUntil((dispatch) => dispatch(step(4))), [2, 4]);
    assert.deepEqual(await blocksUntil(() => timers.calls.at(-1).arguments[0]()), [2]);
    mock.restoreAll();
});

test('a transfer that fails fails in the loop; one whose loop was left tells it in `done` alone', async () => {
    const { transport, listeners, answer, dispatch } = stub();
    const monitor = new Monitor(transport, 'P', 'S');
    const loop = async () => {
        for await (const one of monitor.transfer({ id: 'package' }).progress()) assert.ok(one);
    };
    const failing = outcomeOf(loop());
    dispatch(step(1));
    await answer(failure, 500);
    assert.equal(await failing, 'DmError');

    const left = monitor.transfer({ id: 'package' });
    dispatch(step(1));
    for await (const one of left.progress()) if (one) break;
    await answer(failure, 500); // An unhandled rejection would fail this test.
    await assert.rejects(left.done, { name: 'DmError' });
    assert.equal(listeners.size, 0);

    const withoutEvents = new Monitor(() => ({ status: 200, text: '{"error":null,"value":null}' }), 'P', 'S');
    for await (const one of withoutEvents.transfer({ id: 'package' }).progress()) assert.fail(one);
});
