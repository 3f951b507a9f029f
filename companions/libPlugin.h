/* libPlugin, the host's support library for plug-ins: our own declarations of a library that is not ours.
 *
 * Every function is looked up by name. Each returns a directory of the host as a NUL-terminated UTF-8 text that the
 * library owns and keeps for the life of the process, or null when the host has no such directory. */
#ifndef PELL_COMPANIONS_LIBPLUGIN_H
#define PELL_COMPANIONS_LIBPLUGIN_H

#ifdef __cplusplus
extern "C" {
#endif

const char* Plg_GetRegistryPath(void);
const char* Plg_GetRegistryHtmlPath(void);
const char* Plg_GetRegistryExportsPath(void); /* where the host's shared components lie, libscrivo2 among them */

#ifdef __cplusplus
}
#endif

#endif
