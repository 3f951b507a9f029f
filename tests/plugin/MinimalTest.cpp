// The plug-in in an older world: libdmc has the ordinary imports only; libPlugin and the logging library are absent.
#include "tests/plugin/Page.h"

namespace {

TEST(MinimalWorld, ServesTheOrdinaryAndLogsNothing) {
    Page page;
    const Answer answer = page.get("Brightness");
    EXPECT_EQ(summary(answer), "200 50");
    EXPECT_EQ(answer.log, "");
    EXPECT_EQ(page.get("Monitors").value.size(), 3U);
    EXPECT_EQ(summary(page.put("Hue", "12")), "200 null");
    EXPECT_EQ(summary(page.get("Hue")), "200 12");
}

}  // namespace
