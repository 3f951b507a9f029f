// Where pellhost reads its input and writes its output, and how much it shows.
#pragma once

#include <iosfwd>

namespace host {

enum class Detail {
    compact,  ///< the status and the value or error
    verbose,  ///< the request, the status, the JSON answer, events and the log line
    trace,    ///< and the companion functions that were called
};

struct Style {
    Detail detail = Detail::compact;
    bool colours = false;
};

struct Console {
    std::istream& in;
    std::ostream& out;     ///< results; nothing else when they are for programs
    std::ostream& error;   ///< words for people
    bool asks = false;     ///< `in` is a terminal: ask for each line
    bool draws = false;    ///< `out` is a terminal: progress is a bar
    bool colours = false;  ///< `out` is a terminal that shows colours

    /// The standard streams, which carry UTF-8 with no line ends changed.
    static Console standard();
};

}  // namespace host
