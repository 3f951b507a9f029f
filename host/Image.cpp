#include "host/Image.h"

#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace host {

namespace {

/// The bytes of a file, in which every read stays within bounds. Numbers are little-endian, as on x86-64.
class Bytes {
 public:
    explicit Bytes(const std::filesystem::path& file) {
        if (std::filesystem::is_directory(file)) throw std::runtime_error("it is a folder");
        std::ifstream stream(file, std::ios::binary);
        if (!stream) throw std::runtime_error("it cannot be read, perhaps for want of permissions");
        bytes_.assign(std::istreambuf_iterator<char>(stream), {});
    }

    template <class Number>
    Number at(std::size_t offset) const {
        Number number;
        requireWithin(offset, sizeof number);
        std::memcpy(&number, bytes_.data() + offset, sizeof number);
        return number;
    }

    std::string textAt(std::size_t offset) const {
        const auto end = bytes_.find('\0', offset);
        if (end == std::string::npos) throw std::runtime_error("it is damaged");
        return bytes_.substr(offset, end - offset);
    }

    std::size_t find(std::string_view wanted, std::size_t offset, std::size_t size) const {
        requireWithin(offset, size);
        return std::string_view(bytes_).substr(0, offset + size).find(wanted, offset);
    }

    bool beginsWith(std::string_view start) const { return bytes_.starts_with(start); }

 private:
    void requireWithin(std::size_t offset, std::size_t size) const {
        if (offset > bytes_.size() || size > bytes_.size() - offset) throw std::runtime_error("it is damaged");
    }

    std::string bytes_;
};

#ifdef _WIN32

/// The parts of a PE32+ file. Addresses in it are those of the loaded image, relative to its start.
class Portable {
 public:
    explicit Portable(const Bytes& bytes) : bytes_(bytes) {
        const std::size_t headers = bytes.beginsWith("MZ") ? bytes.at<std::uint32_t>(0x3C) : 0;
        if (headers == 0 || bytes.at<std::uint32_t>(headers) != 0x4550) throw std::runtime_error("it is no DLL");
        if (bytes.at<std::uint16_t>(headers + 4) != 0x8664) throw std::runtime_error("it is not for x86-64");
        directories_ = headers + 24 + 112;
        const std::size_t sections = headers + 24 + bytes.at<std::uint16_t>(headers + 20);
        for (std::size_t i = 0; i < bytes.at<std::uint16_t>(headers + 6); ++i) {
            const auto field = [&](std::size_t offset) { return bytes.at<std::uint32_t>(sections + i * 40 + offset); };
            sections_.push_back({.address = field(12), .size = field(16), .offset = field(20)});
        }
    }

    void readExports(std::set<std::string, std::less<>>& names) const {
        const auto directory = directoryAt(0);
        if (directory.address == 0) return;
        const auto table = offsetOf(directory.address);
        const auto list = offsetOf(bytes_.at<std::uint32_t>(table + 32));
        for (std::size_t i = 0; i < bytes_.at<std::uint32_t>(table + 24); ++i)
            names.insert(bytes_.textAt(offsetOf(bytes_.at<std::uint32_t>(list + i * 4))));
    }

    /// Functions that are imported by their ordinals have no names.
    void readImports(std::vector<Image::Import>& imports) const {
        const auto directory = directoryAt(1);
        if (directory.address == 0) return;
        for (auto descriptor = offsetOf(directory.address);; descriptor += 20) {
            const auto name = bytes_.at<std::uint32_t>(descriptor + 12);
            if (name == 0) return;
            Image::Import import{.library = bytes_.textAt(offsetOf(name)), .functions = {}};
            const auto lookup = bytes_.at<std::uint32_t>(descriptor);
            auto entry = offsetOf(lookup ? lookup : bytes_.at<std::uint32_t>(descriptor + 16));
            for (; const auto value = bytes_.at<std::uint64_t>(entry); entry += 8)
                if (value >> 63 == 0)
                    import.functions.push_back(bytes_.textAt(offsetOf(static_cast<std::uint32_t>(value)) + 2));
            imports.push_back(std::move(import));
        }
    }

    /// A VS_FIXEDFILEINFO, of which there is one, begins with this signature.
    std::string version() const {
        const auto directory = directoryAt(2);
        if (directory.address == 0) return {};
        const auto found = bytes_.find("\xBD\x04\xEF\xFE", offsetOf(directory.address), directory.size);
        if (found == std::string::npos) return {};
        const auto part = [&](std::size_t offset) { return std::to_string(bytes_.at<std::uint16_t>(found + offset)); };
        return part(10) + "." + part(8) + "." + part(14) + "." + part(12);
    }

 private:
    struct Directory {
        std::uint32_t address;
        std::uint32_t size;
    };
    struct Section {
        std::uint32_t address;
        std::uint32_t size;
        std::uint32_t offset;
    };

    Directory directoryAt(std::size_t index) const {
        return {bytes_.at<std::uint32_t>(directories_ + index * 8),
                bytes_.at<std::uint32_t>(directories_ + index * 8 + 4)};
    }

    std::size_t offsetOf(std::uint32_t address) const {
        for (const auto& section : sections_)
            if (address >= section.address && address - section.address < section.size)
                return section.offset + (address - section.address);
        throw std::runtime_error("it is damaged");
    }

    const Bytes& bytes_;
    std::size_t directories_;
    std::vector<Section> sections_;
};

Image readParts(const Bytes& bytes) {
    const Portable file(bytes);
    Image image;
    file.readExports(image.exports);
    file.readImports(image.imports);
    image.version = file.version();
    return image;
}

#else

/// A 64-bit ELF file.
Image readParts(const Bytes& bytes) {
    if (!bytes.beginsWith("\177ELF\2\1")) throw std::runtime_error("it is no shared object");
    if (bytes.at<std::uint16_t>(0x12) != 62) throw std::runtime_error("it is not for x86-64");
    constexpr std::uint32_t dynamicSymbols = 11;
    const auto sections = bytes.at<std::uint64_t>(0x28);
    const auto sectionAt = [&](std::size_t index) { return sections + index * bytes.at<std::uint16_t>(0x3A); };
    Image image;
    for (std::size_t i = 0; i < bytes.at<std::uint16_t>(0x3C); ++i) {
        const auto section = sectionAt(i);
        if (bytes.at<std::uint32_t>(section + 4) != dynamicSymbols) continue;
        const auto texts = bytes.at<std::uint64_t>(sectionAt(bytes.at<std::uint32_t>(section + 40)) + 24);
        const auto start = bytes.at<std::uint64_t>(section + 24), end = start + bytes.at<std::uint64_t>(section + 32);
        for (auto symbol = start + 24; symbol < end; symbol += 24) {  // the first is empty
            auto name = bytes.textAt(texts + bytes.at<std::uint32_t>(symbol));
            if (bytes.at<std::uint16_t>(symbol + 6) == 0)
                image.unresolved.push_back(std::move(name));
            else
                image.exports.insert(std::move(name));
        }
    }
    return image;
}

#endif

}  // namespace

Image readImage(const std::filesystem::path& file) {
    return readParts(Bytes(file));
}

}  // namespace host
