#include "simulator/core/FirmwarePackage.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <map>
#include <optional>
#include <stdexcept>
#include <tuple>

namespace simulator {

namespace {

constexpr std::string_view magic = "pell-firmware 1\n";
constexpr std::string_view checksumName = "checksum: ";

void require(bool condition, const std::string& message) {
    if (!condition) throw std::invalid_argument(message);
}

std::optional<std::uint32_t> parseNumber(std::string_view text, int base = 10) {
    std::uint32_t number = 0;
    const auto end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number, base);
    return error == std::errc() && rest == end ? std::optional(number) : std::nullopt;
}

std::uint32_t crc32(std::uint32_t crc, std::string_view bytes) {
    crc = ~crc;
    for (const char byte : bytes) {
        crc ^= static_cast<unsigned char>(byte);
        for (int bit = 0; bit < 8; ++bit) crc = (crc >> 1) ^ (crc & 1 ? 0xEDB88320u : 0);
    }
    return ~crc;
}

std::string hexadecimal(std::uint32_t number) {
    char digits[9];
    std::snprintf(digits, sizeof digits, "%08x", static_cast<unsigned>(number));
    return digits;
}

/// The lines "name: value" up to the end of the text.
std::map<std::string_view, std::string_view> readLines(std::string_view text) {
    std::map<std::string_view, std::string_view> lines;
    while (!text.empty()) {
        const auto line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(line.size() + 1, text.size()));
        const auto colon = line.find(": ");
        require(colon != std::string_view::npos, "a line of the header is no \"name: value\"");
        lines[line.substr(0, colon)] = line.substr(colon + 2);
    }
    return lines;
}

auto components(const FirmwareVersionRecord& version) {
    return std::tie(version.system, version.controller, version.frontEnd, version.osd, version.fpga);
}

}  // namespace

std::string writePackage(const FirmwarePackage& package) {
    const auto isControl = [](char c) { return static_cast<unsigned char>(c) < ' '; };
    require(std::none_of(package.product.begin(), package.product.end(), isControl),
            "a product's name is one line of text");
    std::string bytes(magic);
    if (!package.product.empty()) bytes += "product: " + package.product + "\n";
    bytes += "version: " + versionText(package.version) + "\n";
    bytes += "block-size: " + std::to_string(package.blockSize) + "\n";
    bytes += "size: " + std::to_string(package.payload.size()) + "\n";
    const auto checksum = crc32(crc32(0, bytes), package.payload);
    return bytes + std::string(checksumName) + hexadecimal(checksum) + "\n\n" + package.payload;
}

FirmwarePackage readPackage(std::string_view bytes) {
    require(bytes.starts_with(magic), "this is no firmware package");
    const auto end = bytes.find("\n\n");
    require(end != std::string_view::npos, "the header has no end");
    const auto payload = bytes.substr(end + 2);
    const auto lines = readLines(bytes.substr(magic.size(), end - magic.size()));
    const auto line = [&](const char* name) {
        const auto found = lines.find(name);
        require(found != lines.end(), "the header has no \"" + std::string(name) + "\"");
        return found->second;
    };
    const auto number = [&](const char* name, int base = 10) {
        const auto parsed = parseNumber(line(name), base);
        require(parsed.has_value(), "the header's \"" + std::string(name) + "\" is no number");
        return *parsed;
    };

    FirmwarePackage package;
    if (lines.contains("product")) package.product = line("product");
    package.version = parseVersion(line("version"));
    package.blockSize = number("block-size");
    require(package.blockSize > 0, "the block size is 0");
    require(payload.size() == number("size"), "the payload is not as long as the header says");
    const auto checked = bytes.substr(0, bytes.find("\n" + std::string(checksumName)) + 1);
    require(crc32(crc32(0, checked), payload) == number("checksum", 16), "the checksum is wrong");
    package.payload = payload;
    return package;
}

std::string damage(std::string bytes, PackageDefect defect) {
    switch (defect) {
        case PackageDefect::checksum:
            bytes.back() = static_cast<char>(bytes.back() ^ 1);
            break;
        case PackageDefect::truncated:
            bytes.resize(bytes.size() / 2);
            break;
        case PackageDefect::header:
            bytes.front() = '?';
            break;
    }
    return bytes;
}

FirmwareVersionRecord parseVersion(std::string_view text) {
    FirmwareVersionRecord version{};
    auto rest = text;
    for (const auto component :
         {&version.system, &version.controller, &version.frontEnd, &version.osd, &version.fpga}) {
        const auto digits = rest.substr(0, rest.find('.'));
        *component = parseNumber(digits).value_or(0);
        rest.remove_prefix(std::min(digits.size() + 1, rest.size()));
    }
    // One way of writing each version: what is anything else reads back differently.
    require(versionText(version) == text,
            "\"" + std::string(text) + "\" is no version, which is five numbers with dots");
    return version;
}

std::string versionText(const FirmwareVersionRecord& version) {
    std::string text;
    for (const auto component : {version.system, version.controller, version.frontEnd, version.osd, version.fpga})
        text += (text.empty() ? "" : ".") + std::to_string(component);
    return text;
}

bool isNewer(const FirmwareVersionRecord& version, const FirmwareVersionRecord& other) {
    return components(version) > components(other);
}

}  // namespace simulator
