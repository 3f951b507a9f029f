// A firmware package in a file that goes with its object.
#pragma once

#include <filesystem>
#include <fstream>
#include <random>
#include <string>

#include "simulator/core/FirmwarePackage.h"

namespace tests {

/// In the system's folder for temporary files. Its name is not ASCII, and no 8-bit code page of Windows has it whole.
class PackageFile {
 public:
    explicit PackageFile(const std::string& product = "TQ271-P", std::size_t size = 10 * 1024,
                         const std::u8string& prefix = u8"pell-päckage-日ж")
        : file_(std::filesystem::temp_directory_path() / prefix) {
        file_ += std::to_string(std::random_device()()) + ".dfw";
        simulator::FirmwarePackage package;
        package.product = product;
        package.version = simulator::parseVersion("2.1.0.3.7");
        package.payload.assign(size, 'f');
        write(simulator::writePackage(package));
    }
    ~PackageFile() {
        std::error_code ignored;
        std::filesystem::remove(file_, ignored);
    }
    PackageFile(const PackageFile&) = delete;
    PackageFile& operator=(const PackageFile&) = delete;

    void damage(simulator::PackageDefect defect) const {
        std::ifstream stream(file_, std::ios::binary);
        const std::string bytes(std::istreambuf_iterator<char>(stream), {});
        stream.close();
        write(simulator::damage(bytes, defect));
    }

    /// In UTF-8.
    std::string path() const { return utf8(file_); }
    std::string name() const { return utf8(file_.filename()); }

 private:
    static std::string utf8(const std::filesystem::path& path) {
        const auto text = path.u8string();
        return {text.begin(), text.end()};
    }
    void write(const std::string& bytes) const { std::ofstream(file_, std::ios::binary) << bytes; }

    std::filesystem::path file_;
};

}  // namespace tests
