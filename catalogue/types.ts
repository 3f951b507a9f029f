// The types that several resources share. The kinds of numbers and texts are those of tools/prelude.ts.

/** The limits of a setting in steps. */
export type Range = { min: UInt32; max: UInt32 };

export type ColorRGB = "red" | "green" | "blue";
export type ColorRGBW = "red" | "green" | "blue" | "white";

export type PerRGB<T> = { red: T; green: T; blue: T };
export type PerRGBW<T> = { red: T; green: T; blue: T; white: T };
export type SixColors<T> = { red: T; green: T; blue: T; cyan: T; magenta: T; yellow: T };

/** CIE 1931 chromaticity. */
export type Chromaticity = { x: number; y: number };

/** How the page names a monitor. */
export type MonitorAddress = { product: string; serial: string };

/** The versions of the parts of a monitor's firmware. */
export type FirmwareVersions = { system: UInt32; controller: UInt32; frontEnd: UInt32; osd: UInt32; fpga: UInt32 };

/** A date with a time of day; the month counts from 1. */
export type ClockTime = { year: UInt16; month: UInt8; day: UInt8; hour: UInt8; minute: UInt8 };

/** What a monitor keeps of the last two runs of a job, as far as there are any. */
export type LastRuns<T> = { latest?: T; beforeLast?: T };

/** What a SelfQC calibration calibrates the monitor to. */
export type CalibrationTarget = {
    accuracy: LenientUInt32; // a code of the monitor
    Lmax: LenientNumber; // cd/m2
    LminEnable: LenientFlag;
    Lmin: LenientNumber; // cd/m2
    colorTemperature: LenientUInt32; // kelvin
    whitePoint: { x: LenientNumber; y: LenientNumber };
    displayFunction: LenientUInt32; // a code of the monitor
    exp: LenientUInt32; // a code of the monitor
    userFileName: Text<255>;
    LambEnable: LenientFlag;
    Lamb: LenientNumber; // cd/m2
    ambient: LenientNumber;
    ambientSensor: { name: Text<63>; serial: Text<31> };
    lut: List<LenientNumber, 256>; // the first 256 entries are read, missing ones are 0
};

/** A schedule of a SelfQC job; the timing is a code of the monitor. */
export type SelfQCSchedule =
    | { timing: UInt32; type: 16 | 31; usageHour: UInt32 } // by hours of usage
    | { timing: UInt32; type: 17; year: UInt16; month: UInt8; day: UInt8; hour: UInt8; minute: UInt8 } // once
    | { timing: UInt32; type: 32; hour: UInt8; minute: UInt8 } // every day
    | { timing: UInt32; type: 33; dayOfWeek: UInt32; hour: UInt8; minute: UInt8 } // every week
    | { timing: UInt32; type: 34; day: UInt8; hour: UInt8; minute: UInt8 } // every month
    | { timing: UInt32; type: 35; quarter: UInt32; day: UInt8; hour: UInt8; minute: UInt8 } // every quarter
    | { timing: UInt32; type: 36; halfYear: UInt32; day: UInt8; hour: UInt8; minute: UInt8 } // every half year
    | { timing: UInt32; type: 37; month: UInt8; day: UInt8; hour: UInt8; minute: UInt8 } // every year
    | { timing: UInt32; type: UInt32 }; // every other type

/** When a SelfQC job runs next: by usage, or at a date. */
export type NextSchedule =
    | { type: 1; usageTime: { hour: UInt32; minute: UInt32 } }
    | { type: UInt32; year: UInt16; month: UInt8; day: UInt8; hour: UInt8; minute: UInt8 };
