#include "host/Firmware.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <thread>

#include "host/Platform.h"
#include "host/Report.h"
#include "simulator/core/FirmwarePackage.h"
#include "simulator/core/Parameters.h"

namespace host {

namespace {

std::string versionText(const Json& version) {
    FirmwareVersionRecord record{};
    if (!simulator::Output(&record).write(version)) throw std::runtime_error(writeJson(version) + " is no version");
    return simulator::versionText(record);
}

/// A bar on a terminal; elsewhere a line for every tenth.
class Progress {
 public:
    explicit Progress(const Console& console) : console_(console) {}
    ~Progress() {
        if (begun_ && console_.draws) console_.out << std::endl;
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void show(std::uint64_t done, std::uint64_t total) {
        if (total == 0) return;
        const auto percent = 100 * done / total;
        const auto amount =
            std::to_string(percent) + " %  " + std::to_string(done) + " of " + std::to_string(total) + " blocks";
        if (console_.draws)
            drawBar(percent, amount);
        else if (!begun_ || percent / 10 > shownPercent_ / 10)
            writeLine(percent, amount);
        begun_ = true;
    }

 private:
    void drawBar(std::uint64_t percent, const std::string& amount) {
        constexpr std::size_t width = 40;
        const auto filled = std::min<std::size_t>(width * percent / 100, width);
        const auto bar = std::string(filled, '#') + std::string(width - filled, ' ');
        console_.out << "\r[" << bar << "] " << amount << std::flush;
    }

    void writeLine(std::uint64_t percent, const std::string& amount) {
        console_.out << "  " << amount << std::endl;
        shownPercent_ = percent;
    }

    const Console& console_;
    bool begun_ = false;
    std::uint64_t shownPercent_ = 0;
};

class Update {
 public:
    Update(const Session& session, std::string serial, std::string product, const Console& console, Style style)
        : session_(session),
          serial_(std::move(serial)),
          product_(std::move(product)),
          console_(console),
          style_(style) {}

    Json run(const std::string& file) {
        const auto path = toUtf8(std::filesystem::absolute(fromUtf8(file)));
        id_ = ask("open the package",
                  {.method = "POST", .resource = "FileSystemDfwFile", .body = writeJson({{"path", path}})})
                  .at("id");
        try {
            auto result = apply(file);
            close();
            return result;
        } catch (...) {
            closeAfterFailure();
            throw;
        }
    }

 private:
    Json apply(const std::string& file) {
        const auto package = ask("describe the package", {.resource = "FileSystemDfwFile", .id = id_});
        const auto before = readVersion();
        show("package  " + file + ": " + versionText(package.at("version")) + " for " +
             package.at("monitorProduct").get<std::string>());
        show("monitor  " + product_ + "/" + serial_ + ": " + before);
        const auto check = ask("check the package", ofMonitor("GET", "FirmwareUpdate", {{"checkDfwFile", id_}}));
        const auto fits =
            ask("check the package", ofMonitor("GET", "FirmwareUpdate", {{"supports", true}, {"dfwFile", id_}}));
        if (fits != true) throw std::runtime_error("the package does not fit the monitor: " + reason(check));

        transfer();
        show("trigger the update");
        ask("trigger the update", ofMonitor("POST", "FirmwareUpdateTrigger"));
        waitForUpdate();
        const auto after = readVersion();
        if (after != versionText(package.at("version")))
            throw std::runtime_error("the monitor has the version " + after + " after the update");
        show("monitor  " + product_ + "/" + serial_ + ": " + after);
        return {{"monitor", {{"product", product_}, {"serial", serial_}}},
                {"package", package},
                {"check", check},
                {"before", before},
                {"after", after}};
    }

    void transfer() {
        show("transfer");
        Progress progress(console_);
        auto request = ofMonitor("POST", "FirmwareUpdateTransfer");
        request.body = writeJson({{"dfwFile", id_}});
        ask("transfer the firmware", request, [&](const Json& event) {
            if (event.at("name") == "transferFirmwareData") showProgress(progress, event.at("text"));
        });
    }

    /// A plug-in under development may send anything as an event.
    static void showProgress(Progress& progress, const Json& text) {
        try {
            const auto transfer = parseJson(text.get<std::string>());
            progress.show(transfer.at("transferredBlock").get<std::uint64_t>(),
                          transfer.at("blockCount").get<std::uint64_t>());
        } catch (const std::exception&) {
            return;
        }
    }

    /// The monitor reports that it is busy until it runs the new firmware.
    void waitForUpdate() {
        constexpr auto updating = 3;
        constexpr auto attempts = 200;
        const auto request = ofMonitor("GET", "FirmwareUpdate");
        for (int i = 0; i < attempts; ++i) {
            if (ask("read the state of the update", request).at("state") != updating) return;
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        throw std::runtime_error("the monitor does not end its update");
    }

    std::string readVersion() {
        return versionText(ask("read the firmware version", ofMonitor("GET", "FirmwareUpdateVersion")));
    }

    void closeAfterFailure() {
        try {
            close();
        } catch (const std::exception& error) {
            console_.error << error.what() << std::endl;
        }
    }

    void close() { ask("close the package", {.method = "DELETE", .resource = "FileSystemDfwFile", .id = id_}); }

    static std::string reason(const Json& check) {
        constexpr const char* reasons[] = {"", "it is for another product", "the monitor has this version already",
                                           "the monitor has a newer version"};
        const auto text =
            check.is_number_unsigned() && check < std::size(reasons) ? reasons[check.get<unsigned>()] : "";
        return text + std::string(*text ? " " : "") + "(code " + writeJson(check) + ")";
    }

    Request ofMonitor(const char* method, const char* resource, const Json& query = {}) const {
        return {.method = method,
                .resource = resource,
                .product = product_,
                .serial = serial_,
                .query = query.is_null() ? "" : writeJson(query)};
    }

    /// The value of the answer; throws when it is an error.
    Json ask(const std::string& step, const Request& request, EventObserver onEvent = {}) const {
        const auto exchange = session_.call(request, std::move(onEvent));
        auto outcome = readOutcome(exchange);
        if (style_.detail != Detail::compact)
            console_.out << formatExchange(style_, request, outcome, exchange) << std::flush;
        if (!outcome.succeeded()) throw std::runtime_error("cannot " + step + ": " + describeError(outcome.error));
        return std::move(outcome.value);
    }

    void show(const std::string& line) const { console_.out << line << std::endl; }

    const Session& session_;
    const std::string serial_;
    const std::string product_;
    const Console& console_;
    const Style style_;
    std::string id_;
};

}  // namespace

void createPackage(const PackageOptions& options) {
    simulator::FirmwarePackage package;
    package.product = options.product;
    package.version = simulator::parseVersion(options.version);
    for (std::uint32_t i = 0; i < options.size; ++i) package.payload += static_cast<char>((i * 31 + (i >> 8)) & 0xFF);
    auto bytes = simulator::writePackage(package);

    using simulator::PackageDefect;
    if (options.broken == "checksum") bytes = damage(std::move(bytes), PackageDefect::checksum);
    if (options.broken == "truncated") bytes = damage(std::move(bytes), PackageDefect::truncated);
    if (options.broken == "header") bytes = damage(std::move(bytes), PackageDefect::header);
    std::ofstream stream(fromUtf8(options.file), std::ios::binary);
    stream << bytes << std::flush;
    if (!stream) throw std::runtime_error("cannot write " + options.file);
}

Json updateFirmware(const Session& session, const std::string& package, const std::string& serial,
                    const std::string& product, const Console& console, Style style) {
    return Update(session, serial, product, console, style).run(package);
}

}  // namespace host
