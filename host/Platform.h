// What a program must ask of the system to speak UTF-8 with it.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

namespace host {

/// The program's arguments without its name, in UTF-8.
std::vector<std::string> arguments(int argc, char** argv);

/// Makes the standard streams carry UTF-8 bytes as they are written, with no line ends changed.
void prepareStandardStreams();

bool isTerminal(std::FILE* stream);

/// True when the stream is a terminal that shows colours.
bool showsColours(std::FILE* stream);

/// From now on, large blocks of memory go back to the system as soon as they are released. Else each thread that had
/// some might keep as much.
void returnLargeBlocks();

/// Shows an address in the user's browser, if there is one.
void openInBrowser(const std::string& address);

/// A file's own path, with all links followed. Throws std::filesystem::filesystem_error when there is no such file.
std::filesystem::path finalPath(const std::filesystem::path& file);

/// Where the system looks for libraries that are not beside the program: in folders of its own, if it has such, and
/// then in those that the user's environment names.
std::vector<std::filesystem::path> systemFolders();
std::vector<std::filesystem::path> searchPath();

std::string toUtf8(const std::filesystem::path& path);
std::filesystem::path fromUtf8(const std::string& text);

}  // namespace host
