/** A whole number from 0 to 255. */
export type UInt8 = number;

/** A whole number from 0 to 65535. */
export type UInt16 = number;

/** A whole number from 0 to 4294967295. */
export type UInt32 = number;

/** A whole number from -2147483648 to 2147483647. */
export type Int32 = number;

/** A whole number that says which part of a setting a request is about; it may be given as its text, too. */
export type Selector = UInt32;

/** A text of at most so many bytes as UTF-8, and without a NUL. */
export type Text<Bytes extends number> = string;

/** A list of exactly so many elements. */
export type List<Element, Length extends number> = Element[];

/** A list of at least one element. */
export type NonEmpty<Element> = Element[];

/** An object that has at least one of these members. */
export type AtLeastOne<T> = { [Name in keyof T]: Pick<T, Name> & Partial<Omit<T, Name>> }[keyof T];

/** A boolean; in a request, a number that is not zero and the text "true" are true as well, anything else is false. */
export type LenientFlag = boolean;

/** A number; in a body, a text of a decimal number and a boolean (1 or 0) count as numbers, anything else is 0. */
export type LenientNumber = number;

/** A whole number like UInt32; in a body, anything that is no number is 0. */
export type LenientUInt32 = number;

/** A member of a query that counts when it is there, whatever its value. */
export type Flag = true;
