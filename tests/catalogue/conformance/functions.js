// What is known of the companions' functions, by their names and headers.
import fs from 'node:fs';

/** Every request of a monitor begins with these, and `Monitors` lists by them. */
export const isLookUp = (name) => ['DmCtrlGetNumMonitors', 'DmCtrlGetSerialProduct'].includes(name);
export const isSupport = (name) => name.startsWith('DmCtrlSupported');
export const isCleanUp = (name) => /ExitCritical|Release|UnlockMonitor/.test(name);
export const isReading = (name) =>
    /^DmCtrl(Get|Enum|Supported|Has|Prof|Find|LockMonitor|UnlockMonitor)|^FW(?!.*(Transfer|Trigger)Firm)/.test(name);

/** Those whose failure is the request's: they return a DmResult. A monitor need not be locked or looked for. */
export const checkedFunctions = new Set(
    ['companions/libfwupdate.h', ...fs.readdirSync('companions/libdmc').map((name) => `companions/libdmc/${name}`)]
        .flatMap((file) => [...fs.readFileSync(file, 'utf8').matchAll(/^DmResult (\w+)\(/gm)])
        .map(([, name]) => name)
        .filter((name) => !isCleanUp(name) && !/Find|LockMonitor/.test(name)),
);
