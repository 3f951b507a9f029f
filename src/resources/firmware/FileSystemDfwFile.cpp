// A firmware package, described by its target product and versions.
#include <records/firmware.h>

#include "bridge/Records.h"
#include "bridge/Resource.h"
#include "resources/firmware/DfwFileResource.h"

namespace torvo::bridge {

class FileSystemDfwFile final : public DfwFileResource {
 public:
    FileSystemDfwFile() noexcept : DfwFileResource("FileSystem/DfwFile") {}

 private:
    FWDfwFile* open(const fs::Path& path) const override {
        return libfwupdateLoader::instance()(NAMED(FWDfwFileCreateWithPath))(platform::nativePath(path.text()).c_str());
    }

    Value describe(FWDfwFile* file, const Value& query) const override {
        const libfwupdateLoader& library = libfwupdateLoader::instance();
        if (query.has("supports")) {
            FirmwareVersionRecord version{};
            const auto read = [&](const auto& member) { version.*member.pointer = query.get(member.name).asUInt(); };
            std::apply([&](const auto&... member) { (read(member), ...); }, companions::members<FirmwareVersionRecord>);
            return library(NAMED(FWDfwFileSupportsMonitorFirmwareVersion))(file, &version) != 0;
        }
        const char* const product = library(NAMED(FWDfwFileGetTargetMonitorProduct))(file);
        return {{"monitorProduct", product ? product : ""},
                {"version", toValue(library(NAMED(FWDfwFileGetTargetFirmwareVersion))(file))}};
    }
};

template struct Entry<FileSystemDfwFile>;

}  // namespace torvo::bridge
