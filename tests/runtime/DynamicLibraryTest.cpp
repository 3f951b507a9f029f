#include <gtest/gtest.h>
#include <libPlugin.h>

#include <filesystem>
#include <regex>
#include <set>

#include "runtime/BridgeResult.h"
#include "runtime/DynamicLibrary.h"
#include "runtime/Loaders.h"

namespace {

namespace platform = torvo::platform;

std::filesystem::path asPath(const std::string& utf8) {
    return {std::u8string(utf8.begin(), utf8.end())};
}

// A folder whose name no 8-bit code page of Windows holds as a whole.
class DynamicLibraryTest : public testing::Test {
 protected:
    DynamicLibraryTest() {
        std::filesystem::remove_all(asPath(folder.text()));
        std::filesystem::create_directory(asPath(folder.text()));
    }
    ~DynamicLibraryTest() override { std::filesystem::remove_all(asPath(folder.text())); }

    const fs::Path own{platform::ownDirectory()};
    const fs::Path folder = own.joined("late \xC3\xA4\xE6\x97\xA5\xD0\xB6");
    const fs::Path late = folder.joined(platform::libraryFileName("late"));
};

TEST_F(DynamicLibraryTest, FindsALibraryThatIsInstalledLater) {
    DynamicLibrary library;
    library.load(late);
    EXPECT_FALSE(library.isLoaded());
    EXPECT_EQ(library.find(NAMED(Plg_GetRegistryPath)), nullptr);

    std::filesystem::copy_file(asPath(own.joined(platform::libraryFileName("libPlugin")).text()), asPath(late.text()));
    library.load(late);
    ASSERT_NE(library.find(NAMED(Plg_GetRegistryPath)), nullptr);
    EXPECT_EQ(library.find(NamedFunction<void()>{"NoSuchFunction"}), nullptr);

    library.unload();
    EXPECT_EQ(library.find(NAMED(Plg_GetRegistryPath)), nullptr);
    library.load(late);
    EXPECT_TRUE(library.isLoaded());
}

TEST_F(DynamicLibraryTest, TakesTheModuleOfAnImport) {
    DynamicLibrary library;
    for (int round = 0; round < 2; ++round) {
        library.loadImported(platform::libraryFileName("libdmc"));
        EXPECT_TRUE(std::filesystem::equivalent(asPath(library.directory().text()), asPath(own.text())));
    }
    library.reportMissingFunction();  // which only the companions' loaders take for a failure
}

TEST(Path, HasAParentAndIsJoinedWithOneSeparator) {
    const std::string separator(1, platform::pathSeparator);
    const struct {
        const char* path;
        const char* parent;
        std::string joined;
    } cases[] = {
        {"/a/b", "/a", "/a/b" + separator + "c"}, {"/a/", "/a", "/a/c"}, {"/", "", "/c"},
        {"a", "", "a" + separator + "c"},         {"", "", ""},
    };
    for (const auto& [path, parent, joined] : cases) {
        EXPECT_EQ(fs::Path(path).parent().text(), parent) << path;
        EXPECT_EQ(fs::Path(path).joined("c").text(), joined) << path;
        EXPECT_EQ(fs::Path(path).joined("//c").text(), joined) << path;
    }
}

TEST(Uuid, IsRandomAndSaysSo) {
    const std::regex form("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}");
    std::set<char> digits[36];
    for (int i = 0; i < 1000; ++i) {
        const std::string uuid = platform::newUuid();
        ASSERT_TRUE(std::regex_match(uuid, form)) << uuid;
        for (std::size_t place = 0; place < uuid.size(); ++place) digits[place].insert(uuid[place]);
    }
    for (std::size_t place = 0; place < std::size(digits); ++place) {
        const bool isHyphen = place == 8 || place == 13 || place == 18 || place == 23;
        const bool isVersion = place == 14, isVariant = place == 19;
        EXPECT_EQ(digits[place].size(), isHyphen || isVersion ? 1U : isVariant ? 4U : 16U) << place;
    }
}

TEST(Loaders, ReportAMissingFunctionUnderTheirName) {
    const auto messageOf = [](const torvo::CompanionLoader& loader) -> std::string {
        try {
            loader(NamedFunction<void()>{"NoSuchFunction"});
        } catch (const torvo::BridgeResultError& error) {
            return std::to_string(error.result.statusCode) + " " + error.result.name + " " + error.result.message;
        }
        return "found";
    };
    const std::string kind = "404 FunctionNotFoundError ";
    EXPECT_EQ(messageOf(torvo::libdmcLoader::instance()), kind + "libdmc does not have a requested function.");
    EXPECT_EQ(messageOf(torvo::libPluginLoader::instance()), kind + "libPlugin does not have a requested function.");
    EXPECT_EQ(messageOf(torvo::libfwupdateLoader::instance()),
              kind + "libfwupdate does not have a requested function.");
}

}  // namespace
