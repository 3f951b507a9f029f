// The client as one script: everything is a member of the global `libpell`.
import { DfwFile, Monitor, Pell, PellError, httpTransport } from './index.js';

(window as unknown as { libpell: object }).libpell = { DfwFile, Monitor, Pell, PellError, httpTransport };
