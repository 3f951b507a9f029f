// Firmware packages for simulated monitors.
//
//   pell-firmware 1
//   product: TQ271-P          the line is missing when the package names no product
//   version: 2.1.0.3.7        system, controller, front end, OSD, FPGA
//   block-size: 1024
//   size: 65536
//   checksum: 1c291ca3        CRC-32 of the lines before this one and the payload
//
//   (after one empty line, `size` bytes of payload)
#pragma once

#include <libfwupdate.h>
#include <records/firmware.h>

#include <string>
#include <string_view>

namespace simulator {

struct FirmwarePackage {
    std::string product;  ///< empty: none
    FirmwareVersionRecord version{};
    std::uint32_t blockSize = 1024;  ///< bytes; the last block may be shorter
    std::string payload;

    std::uint32_t size() const { return static_cast<std::uint32_t>(payload.size()); }
    std::uint32_t blockCount() const {
        return static_cast<std::uint32_t>((payload.size() + blockSize - 1) / blockSize);
    }
};

/// The bytes of a package file. Throws std::invalid_argument when the format cannot hold the package.
std::string writePackage(const FirmwarePackage& package);

/// Throws std::invalid_argument, with the reason, when these are not the bytes of a sound package.
FirmwarePackage readPackage(std::string_view bytes);

/// What can be wrong with a package file.
enum class PackageDefect { checksum, truncated, header };

/// A sound package's bytes with a defect.
std::string damage(std::string bytes, PackageDefect defect);

/// Five numbers with dots between them. `parseVersion` throws std::invalid_argument.
FirmwareVersionRecord parseVersion(std::string_view text);
std::string versionText(const FirmwareVersionRecord& version);

/// By the first component in which they differ.
bool isNewer(const FirmwareVersionRecord& version, const FirmwareVersionRecord& other);

}  // namespace simulator
