/* QtWebKitBridgeHelper.dll of the example: answers wait in a list until the host takes them. A host with a page would
 * settle the page's promise instead, on the page's own thread. */
#define LIBPELL_DEFINE_BRIDGE_HELPER
#include "bridge_helper.h"

static SRWLOCK guard = SRWLOCK_INIT; /* of the list, and of the output */
static Answer* answers;
static volatile LONG lastPromise;

uint32_t BridgeHelperCreatePromiseID(void) {
    return (uint32_t)InterlockedIncrement(&lastPromise);
}

/* The text is gone when this returns, so it is copied. */
void BridgeHelperSetResponse(uint32_t promise, uint32_t status, const char* json) {
    Answer* const answer = HeapAlloc(GetProcessHeap(), 0, sizeof(Answer) + (SIZE_T)lstrlenA(json));
    if (!answer) return;
    answer->promise = promise;
    answer->status = status;
    lstrcpyA(answer->json, json);
    AcquireSRWLockExclusive(&guard);
    answer->next = answers;
    answers = answer;
    ReleaseSRWLockExclusive(&guard);
}

void BridgeHelperDispatchEvent(const char* name, const char* json) {
    print(name, json);
}

Answer* takeAnswer(uint32_t promise) {
    Answer** place = &answers;
    AcquireSRWLockExclusive(&guard);
    while (*place && (*place)->promise != promise) place = &(*place)->next;
    Answer* const answer = *place;
    if (answer) *place = answer->next;
    ReleaseSRWLockExclusive(&guard);
    return answer;
}

void releaseAnswer(Answer* answer) {
    if (answer) HeapFree(GetProcessHeap(), 0, answer);
}

void print(const char* name, const char* text) {
    const char* const parts[] = {name, ": ", text, "\r\n"};
    const HANDLE output = GetStdHandle(STD_OUTPUT_HANDLE);
    AcquireSRWLockExclusive(&guard);
    for (int i = 0; i < 4; ++i) {
        DWORD written = 0;
        WriteFile(output, parts[i], (DWORD)lstrlenA(parts[i]), &written, NULL);
    }
    ReleaseSRWLockExclusive(&guard);
}
