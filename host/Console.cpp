#include "host/Console.h"

#include <iostream>

#include "host/Platform.h"

namespace host {

Console Console::standard() {
    prepareStandardStreams();
    return {.in = std::cin,
            .out = std::cout,
            .error = std::cerr,
            .asks = isTerminal(stdin),
            .draws = isTerminal(stdout),
            .colours = showsColours(stdout)};
}

}  // namespace host
