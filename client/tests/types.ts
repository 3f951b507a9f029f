// What compiles, with which types, and what does not. This is not run.
import { httpTransport, Monitor, Pell, PellError } from 'libpell-client';

const pell = new Pell(httpTransport('/pell'));
const monitor = new Monitor(httpTransport('/pell'), 'TQ271-P', '10000001');
type Range = { min: number; max: number };
type Point = { x: number; y: number };

type Equal<A, B> = (<T>() => T extends A ? 1 : 2) extends <T>() => T extends B ? 1 : 2 ? true : false;
declare function is<Expected>(): <Given>(value: Promise<Given>, isEqual: Equal<Expected, Given>) => void;

export function answers(isRange: boolean, whichever: { range?: true }, name: 'Brightness' | 'Contrast') {
    is<number>()(monitor.get('Brightness'), true);
    is<Range>()(monitor.get('Brightness', { range: true }), true);
    is<number>()(monitor.get('Brightness', {}, { signal: new AbortController().signal }), true);
    is<number | undefined>()(monitor.tryGet('Brightness', { percentage: true }), true);
    // The first row whose members are there decides.
    is<boolean>()(monitor.get('Brightness', { range: true, supports: true }), true);
    is<Range>()(monitor.get('Brightness', { percentage: true, range: true }), true);
    is<boolean>()(monitor.get('LUT1D', { supports: true, depth: 10 }), true);
    is<number[]>()(monitor.get('LUT1D', { depth: 10, color: 'red' }), true);
    // Where the type of the query leaves open which row it is, the answer is of either.
    is<number | Range>()(monitor.get('Brightness', whichever), true);
    is<number | Range>()(monitor.get('Brightness', isRange ? { range: true } : {}), true);
    is<Range>()(monitor.get(name, { range: true }), true);
    is<Point>()(monitor.get('Chromaticity', { color: 'red' }), true);
    is<Point>()(monitor.get('Chromaticity'), true);
    is<'done' | 'superseded'>()(monitor.put('Brightness', 60), true);
    is<null>()(monitor.delete('ColorPatch'), true);
    is<null>()(monitor.post('FirmwareUpdateTrigger'), true);
    is<Monitor[]>()(pell.monitors({ update: true }), true);
    is<null>()(pell.delete('Monitors'), true);
    is<number>()(
        pell
            .open('new.dfw')
            .then((file) => file.describe())
            .then(({ version }) => version.osd),
        true,
    );
    pell.on('transferFirmwareData', ({ transferredBlock }) => transferredBlock.toFixed());
}

export function refused(error: PellError, some: string) {
    // @ts-expect-error there is no such resource
    monitor.get('Brightnes');
    // @ts-expect-error it is not one of a monitor
    monitor.get('Monitors');
    // @ts-expect-error a name that may be any
    monitor.get(some);
    // @ts-expect-error it serves no GET
    monitor.get('FirmwareUpdateTransfer');
    // @ts-expect-error no row has such a member
    monitor.get('Brightness', { rang: true });
    // @ts-expect-error false would count as true
    monitor.get('Brightness', { range: false });
    // @ts-expect-error there is no such colour
    monitor.get('Chromaticity', { color: 'pink' });
    // @ts-expect-error no row without a query
    monitor.get('ColorMatrix');
    // @ts-expect-error a member of another kind
    monitor.get('ModeName', { mode: '3' });
    // @ts-expect-error a misspelt member
    monitor.put('Brightness', { percentige: 12.5 });
    // @ts-expect-error the matrix of which index?
    monitor.put('ColorMatrix', [1, 0, 0, 0, 1, 0, 0, 0, 1]);
    // @ts-expect-error no such event
    pell.on('transferFirmware', () => {});
    // @ts-expect-error no step fails with this text
    return error.reason === 'Set brighntess.';
}
