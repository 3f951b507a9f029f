// `pellhost doctor`: what is installed around a libpell, and what follows from it.
#pragma once

#include <filesystem>
#include <functional>

#include "host/Console.h"
#include "host/Session.h"

namespace host {

struct Installation {
    std::filesystem::path plugin;
    std::filesystem::path program;  ///< the folder of the host's program; the plug-in's own folder if it is empty
};

/// A library may end the process when it is loaded, so what is known by then can be told before.
struct Progress {
    std::function<void(const Json& examination)> onFilesRead;  ///< nothing is loaded yet; members are missing yet
    std::function<void(const std::filesystem::path& file)> onLoading;
};

/// A document as docs/doctor.schema.json describes it. The files are read without being loaded. Only when nothing that
/// is needed is missing are they loaded, to ask libPlugin for its folders and libpell for the monitors and what each of
/// them supports: nothing is written to any of them. Loads the plug-in into this process, once.
Json examine(const Installation& installation, const Progress& progress);

/// The document for people, in lines of at most 100 columns, but for paths: first what the files tell, then the rest.
/// Problems that have been told are not told again.
std::string formatFiles(const Style& style, const Json& examination);
std::string formatRest(const Style& style, const Json& examination, const Json& told);

}  // namespace host
