// `pellhost doctor`: what is installed around a libpell, and what follows from it.
#pragma once

#include <filesystem>

#include "host/Console.h"
#include "host/Session.h"

namespace host {

struct Installation {
    std::filesystem::path plugin;
    std::filesystem::path program;  ///< the folder of the host's program
};

/// A document as docs/doctor.schema.json describes it. The files are read without being loaded. Only when nothing that
/// is needed is missing are they loaded, to ask libPlugin for its folders and libpell for the monitors and what each of
/// them supports: nothing is written to any of them. Loads the plug-in into this process, once.
Json examine(const Installation& installation);

/// The document for people, in lines of at most 100 columns, but for paths.
std::string formatExamination(const Style& style, const Json& examination);

}  // namespace host
