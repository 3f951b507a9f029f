#pragma once

#include <string>
#include <vector>

namespace bench {

/// Texts that are measured as one: a pass reads or writes all of them, each on its own.
struct Corpus {
    std::string name;
    std::vector<std::string> documents;
};

/// Generated anew each time, with the same bytes on every machine.
std::vector<Corpus> builtInCorpora();

/// The file as a single document, named after the file. Throws std::runtime_error.
Corpus corpusOfFile(const std::string& path);

}  // namespace bench
