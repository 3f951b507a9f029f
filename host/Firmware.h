// Firmware packages, made and applied: `pellhost firmware`.
#pragma once

#include <cstdint>
#include <string>

#include "host/Console.h"
#include "simulator/core/Json.h"

namespace host {

class Session;
using simulator::Json;

struct PackageOptions {
    std::string file;
    std::string product;  ///< empty: the package names none
    std::string version;  ///< system.controller.frontEnd.osd.fpga
    std::uint32_t size = 65536;
    std::string broken{};  ///< "checksum", "truncated" or "header"; empty: it is sound
};

/// Throws std::invalid_argument for options that make no package, std::runtime_error when the file cannot be written.
void createPackage(const PackageOptions& options);

/// Opens and checks the package, transfers it, triggers the update, and closes the package, whatever happens. Returns
/// {"monitor", "package", "check", "before", "after"}; throws std::runtime_error with a text for people when a step
/// fails or the package does not fit the monitor. The console shows the steps.
Json updateFirmware(const Session& session, const std::string& package, const std::string& serial,
                    const std::string& product, const Console& console, Style style);

}  // namespace host
