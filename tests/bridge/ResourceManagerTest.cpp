// Handles under identifiers. Those of the plug-in are never twice the same.
#include <gtest/gtest.h>

#include <vector>

#include "resources/firmware/ResourceManager.h"

namespace torvo {

namespace {

TEST(ResourceManager, HasTheHandleThatWasAddedLastUnderAnIdentifier) {
    int former = 1, latter = 2;
    std::vector<int> released;
    const auto own = [&](int& handle) {
        return std::shared_ptr<int>(&handle, [&](const int* gone) { released.push_back(*gone); });
    };
    {
        ResourceManager<int*, std::default_delete<int>> manager;
        manager.add("identifier", own(former));
        manager.add("identifier", own(latter));
        EXPECT_EQ(manager.find("identifier").get(), &latter);
        EXPECT_EQ(released, std::vector{1});
    }
    EXPECT_EQ(released, (std::vector{1, 2}));
}

}  // namespace

}  // namespace torvo
