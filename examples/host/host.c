/* A host for libpell: two threads send requests, and each answer becomes a line of the output.
 *
 * The monitor is the text of the environment variable PELL_MONITOR. HOST_LINKS_LIBPELL makes a host that is linked
 * against libpell's import library; without it, the program loads the plug-in that lies beside it. */
#ifdef HOST_LINKS_LIBPELL
#define LIBPELL_DECLARE_EXPORTS
#endif
#include "bridge_helper.h"

static const char* monitor = "{\"product\":\"TQ271-P\",\"serial\":\"10000001\"}";
static volatile LONG failures;

#ifdef HOST_LINKS_LIBPELL
#define ROW(name) {#name, name},
static const struct {
    const char* name;
    LibpellEntry entry;
} rows[] = {LIBPELL_RESOURCES(ROW)};

static LibpellEntry find(const char* resource) {
    for (int i = 0; i < LIBPELL_RESOURCE_COUNT; ++i)
        if (lstrcmpA(rows[i].name, resource) == 0) return rows[i].entry;
    return NULL;
}
#else
static HMODULE plugin;

/* By its full path, and with the altered search path: so the companions that lie beside libpell are found, and never
 * any in the current directory before them. */
static void load(void) {
    WCHAR file[MAX_PATH + 16];
    DWORD length = GetModuleFileNameW(NULL, file, MAX_PATH);
    if (length == MAX_PATH) return; /* only a part of the path */
    while (length > 0 && file[length - 1] != L'\\') --length;
    lstrcpyW(file + length, L"libpell.dll");
    plugin = LoadLibraryExW(file, NULL, LOAD_WITH_ALTERED_SEARCH_PATH);
}

static LibpellEntry find(const char* resource) {
    return (LibpellEntry)(void (*)(void))GetProcAddress(plugin, resource);
}
#endif

/* Carries out one request and prints its answer, which the helper has got when the call returns. */
static void request(const char* resource, const char* options, const char* body) {
    const LibpellEntry entry = find(resource);
    Answer* const answer = entry ? takeAnswer(entry(options, monitor, "{}", body)) : NULL;
    if (!answer || answer->status != 200) InterlockedIncrement(&failures);
    print(resource, answer ? answer->json : "no answer");
    releaseAnswer(answer);
}

static DWORD WINAPI adjust(void* resource) {
    request(resource, "{\"method\":\"PUT\"}", "60");
    request(resource, "{\"method\":\"GET\"}", "");
    return 0;
}

int main(void) {
    static char text[256];
    const DWORD length = GetEnvironmentVariableA("PELL_MONITOR", text, sizeof text);
    if (length > 0 && length < sizeof text) monitor = text;
#ifndef HOST_LINKS_LIBPELL
    load();
    if (!plugin) {
        print("libpell.dll", "cannot be loaded: ask pellhost doctor");
        ExitProcess(1);
    }
#endif
    request("Monitors", "{\"method\":\"GET\"}", "");
    const HANDLE threads[2] = {CreateThread(NULL, 0, adjust, "Brightness", 0, NULL),
                               CreateThread(NULL, 0, adjust, "Contrast", 0, NULL)};
    for (int i = 0; i < 2; ++i) {
        if (!threads[i] || WaitForSingleObject(threads[i], INFINITE) != WAIT_OBJECT_0) ExitProcess(1);
    }
    /* No request runs any more: only now may libdmc be released, and libpell be unloaded. */
#ifdef HOST_LINKS_LIBPELL
    TearDown();
#else
    const LibpellTearDown tearDown = (LibpellTearDown)(void (*)(void))GetProcAddress(plugin, "TearDown");
    if (tearDown) tearDown();
    FreeLibrary(plugin);
#endif
    ExitProcess(failures == 0 ? 0 : 1);
}
