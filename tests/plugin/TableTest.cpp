// What holds for every export of the table.
#include <set>

#include "exports/ResourceTable.h"
#include "host/Plugin.h"
#include "tests/plugin/Page.h"

namespace {

using torvo::exports::ResourceRow;
using torvo::exports::resourceTable;

TEST(Table, HasEachResourceOnce) {
    std::set<std::string> names;
    std::set<int> ordinals = {146, 147};  // Setup and TearDown
    for (const ResourceRow& row : resourceTable) {
        EXPECT_TRUE(names.insert(row.name).second) << row.name;
        EXPECT_TRUE(ordinals.insert(row.ordinal).second) << row.name;
    }
    EXPECT_EQ(*ordinals.begin(), 1);
    EXPECT_EQ(static_cast<std::size_t>(*ordinals.rbegin()), ordinals.size()) << "an ordinal is left out";
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
