// pellhost, the development host: single requests and firmware updates from the command line, and batches for scripts
// and tests.
#include "host/CommandLine.h"
#include "host/Platform.h"

int main(int argc, char** argv) {
    return host::runCommandLine(host::arguments(argc, argv), host::Console::standard());
}
