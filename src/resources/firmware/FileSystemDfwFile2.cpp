// A firmware package, described by the firmware library's own JSON; null when the library has no description.
#include "bridge/Resource.h"
#include "pocketjson/Parser.h"
#include "resources/firmware/DfwFileResource.h"
#include "runtime/Owned.h"

namespace torvo::bridge {

class FileSystemDfwFile2 final : public DfwFileResource {
 public:
    FileSystemDfwFile2() noexcept : DfwFileResource("FileSystem/DfwFile2") {}

 private:
    FWDfwFile* open(const fs::Path& path) const override {
        return libfwupdateLoader::instance()(NAMED(FWDfwFileCreateWithUtf8Path))(path.text().c_str());
    }

    Value describe(FWDfwFile* file, const Value&) const override {
        const libfwupdateLoader& library = libfwupdateLoader::instance();
        const auto textOf = library(NAMED(FWUtf8StringGetCString));
        const Release release(library(NAMED(FWUtf8StringRelease)));
        const Owned<FWUtf8String> description(library(NAMED(FWUtf8StringCreateDfwFileJsonString))(file), release);
        const char* const text = description ? textOf(description.get()) : nullptr;
        return text ? pocketjson::parseOrNull(text) : Value();
    }
};

template struct Entry<FileSystemDfwFile2>;

}  // namespace torvo::bridge
