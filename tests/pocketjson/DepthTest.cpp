#include <gtest/gtest.h>

#include <functional>

#include "Text.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <pthread.h>
#endif

namespace pocketjson {
namespace {

constexpr std::size_t kStackSize = 256 * 1024;
constexpr int kDepth = 1000000;

void runOnSmallStack(std::function<void()> task) {
#ifdef _WIN32
    const auto run = [](void* context) -> DWORD {
        (*static_cast<std::function<void()>*>(context))();
        return 0;
    };
    const HANDLE thread = CreateThread(nullptr, kStackSize, run, &task, STACK_SIZE_PARAM_IS_A_RESERVATION, nullptr);
    ASSERT_NE(thread, nullptr);
    WaitForSingleObject(thread, INFINITE);
    CloseHandle(thread);
#else
    const auto run = [](void* context) -> void* {
        (*static_cast<std::function<void()>*>(context))();
        return nullptr;
    };
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setstacksize(&attributes, kStackSize);
    pthread_t thread;
    ASSERT_EQ(pthread_create(&thread, &attributes, run, &task), 0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
#endif
}

// Objects and arrays in turn, each with something before and after what is nested.
std::string opening() {
    std::string text;
    for (int level = 0; level < kDepth; ++level) text += level % 3 ? "[\"s\"," : "{\"a\":[1],\"b\":";
    return text;
}

std::string closing() {
    std::string text;
    for (int level = kDepth; level-- > 0;) text += level % 3 ? ",0]" : ",\"c\":{}}";
    return text;
}

class Counter : public SaxHandler {
 public:
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool integer(std::int64_t) override { return true; }
    bool floating(double) override { return true; }
    bool string(std::string_view) override { return true; }
    bool startArray() override { return ++opened > 0; }
    bool endArray() override { return ++closed > 0; }
    bool startObject() override { return ++opened > 0; }
    bool key(std::string_view) override { return true; }
    bool endObject() override { return ++closed > 0; }

    int opened = 0;
    int closed = 0;
};

TEST(Depth, IsNotLimitedByTheCallStack) {
    runOnSmallStack([] {
        const std::string text = opening() + "null" + closing();
        Value value = parsed(text);
        {
            Value copy = value;
            copy["a"] = 2;
            EXPECT_NE(copy, value);
        }
        EXPECT_EQ(written(value), text);
        EXPECT_EQ(parsed(text), value);
        Value other = parsed(text);
        value = std::move(other["b"]);
        EXPECT_TRUE(value.isArray());

        Counter counter;
        std::string error;
        EXPECT_TRUE(parse(error, counter, text));
        EXPECT_EQ(counter.opened, counter.closed);
        EXPECT_GT(counter.opened, kDepth);
    });
}

TEST(Depth, DoesNotMatterToAFailure) {
    runOnSmallStack([] {
        Value value;
        std::string error;
        EXPECT_FALSE(parse(error, value, opening() + "x"));
        // Everything up to the error stands.
        int depth = 1;
        for (Value rest = value; rest.size() == 2; ++depth) rest = rest.isObject() ? rest.get("b") : rest.at(1);
        EXPECT_EQ(depth, kDepth);
    });
}

// Wide as well as deep, and partly shared: what others refer to must survive.
TEST(Depth, ReleaseSparesWhatIsShared) {
    Value shared = parsed(R"({"x":[[1],{"y":["z"]}],"w":"text that is not short"})");
    const std::string before = written(shared);
    Value value;
    for (int level = 0; level < 200; ++level) {
        Value parent{
            {"a", shared}, {"b", value}, {"c", Value::array({shared.get("x"), value, "s", Value::array({value})})}};
        value = level % 2 ? Value::array({shared, std::move(parent), level, Value::array({Value::array({"leaf"})})})
                          : parent;
    }
    Value kept = value.at(1).get("b");
    value = nullptr;
    EXPECT_EQ(kept.get("a"), shared);
    kept = nullptr;
    // Only an unshared text is replaced in place.
    const auto* text = &shared.get("w").text();
    shared["w"] = "changed";
    EXPECT_EQ(&shared.get("w").text(), text);
    shared["w"] = "text that is not short";
    EXPECT_EQ(written(shared), before);
}

}  // namespace
}  // namespace pocketjson
