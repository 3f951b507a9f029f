// How the page reaches the plug-in. In a host application this file is another one: see README.md.
import { httpTransport } from 'libpell-client';

export const transport = httpTransport('/pell');
