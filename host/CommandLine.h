// The command line of pellhost: see docs/pellhost.md.
#pragma once

#include <string>
#include <vector>

#include "host/Console.h"

namespace host {

/// Carries out a command, given as the program's arguments without its name. Returns the exit code: 0, 1 when the
/// request failed, or 2 for wrong usage.
int runCommandLine(std::vector<std::string> arguments, const Console& console);

}  // namespace host
