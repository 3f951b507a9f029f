// What holds for every export of the table.
#include <set>

#include "exports/ResourceTable.h"
#include "host/Plugin.h"
#include "tests/plugin/Page.h"

namespace {

using torvo::exports::ResourceRow;
using torvo::exports::resourceTable;

TEST(Table, HasEachResourceOnce) {
    EXPECT_EQ(resourceTable.size(), 145U);
    std::set<std::string> names;
    std::set<int> ordinals;
    for (const ResourceRow& row : resourceTable) {
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
        EXPECT_TRUE(ordinals.insert(row.ordinal).second) << row.name;
    }
    EXPECT_FALSE(ordinals.contains(146) || ordinals.contains(147)) << "the ordinals of Setup and TearDown";
}

TEST(Table, IsWhatThePluginExports) {
    const host::Plugin plugin(host::Plugin::defaultFile());
    for (const ResourceRow& row : resourceTable) {
        EXPECT_NE(plugin.find(row.name), nullptr) << row.name;
        EXPECT_EQ(plugin.find(row.name), plugin.find(row.entry)) << row.name;
    }
    EXPECT_NE(plugin.find("Setup"), nullptr);
    EXPECT_NE(plugin.find("TearDown"), nullptr);
}

}  // namespace
