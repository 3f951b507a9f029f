#pragma once

#include <filesystem>

namespace simulator {

/// The directory of the library or program that this address of code or data belongs to.
std::filesystem::path directoryOfModule(const void* address);

}  // namespace simulator
