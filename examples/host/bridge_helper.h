/* What the host asks of its own bridge helper, besides the three functions that libpell calls. */
#include <libpell.h>
#include <windows.h>

#ifdef LIBPELL_DEFINE_BRIDGE_HELPER
#define HELPER_API LIBPELL_EXPORT
#else
#define HELPER_API LIBPELL_IMPORT
#endif

typedef struct Answer {
    struct Answer* next;
    uint32_t promise;
    uint32_t status;
    char json[1]; /* as long as it is */
} Answer;

/* The answer to a request that has returned, and no longer the helper's; NULL when it was lost for want of memory. */
HELPER_API Answer* takeAnswer(uint32_t promise);
HELPER_API void releaseAnswer(Answer* answer);

/* Writes one line, whole. */
HELPER_API void print(const char* name, const char* text);
