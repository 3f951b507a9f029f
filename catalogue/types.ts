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
