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

        Recorder recorder;
        std::string error;
        EXPECT_TRUE(parse(error, recorder, text));
        EXPECT_EQ(recorder.events.back(), "}");
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

// Each level refers to the one below it more than once: the last reference goes while the level above is released.
TEST(Depth, DoesNotMatterToWhatIsSharedWithinAValue) {
    runOnSmallStack([] {
        using Level = Value (*)(const Value& below);
        constexpr Level kLevels[] = {
            [](const Value& below) {
                return Value::array({below, below});
            },
            [](const Value& below) {
                return Value{{"a", below}, {"b", 1}, {"c", below}};
            },
            [](const Value& below) {
                return Value{{"a", below}, {"b", Value::array({"s", Value::array({below}), below})}};
            },
        };
        using Change = void (*)(Value & value);
        constexpr Change kChanges[] = {
            [](Value& value) { value = nullptr; },
            [](Value& value) { value = "text"; },
            [](Value& value) { value.setType(Value::Integer); },
            [](Value& value) { value[value.isArray() ? "a" : "b"] = value.isArray() ? value : 1; },
            [](Value& value) { value.append(1); },
            [](Value& value) { value.element(0) = nullptr; },
            [](Value& value) { value.remove("a"); },
            [](Value& value) { value = value.isArray() ? value.at(1) : value.get("b"); },
        };
        for (const Level level : kLevels) {
            for (const Change change : kChanges) {
                Value value;
                for (int i = 0; i < kDepth / 10; ++i) value = level(value);
                // What only the copy holds after its change goes with the copy, all else with the value.
                Value copy = value;
                change(copy);
                change(value);
            }
        }
    });
}

// Wide as well as deep, and partly shared: what others refer to must survive.
TEST(Depth, ReleaseSparesWhatIsShared) {
    const Value shared = parsed(R"({"x":[[1],{"y":["z"]}],"w":"text that is not short"})");
    const std::string before = written(shared);
    Value value;
    for (int level = 0; level < 200; ++level) {
        value = Value::array({shared, level, Value::array({value, Value::array({"leaf"})}), "s"});
        value = {{"a", shared}, {"b", value}, {"c", Value::array({shared.get("x"), value})}};
    }
    const Value kept = value.get("b");
    value = nullptr;
    EXPECT_EQ(kept.at(0), shared);
    EXPECT_EQ(written(shared), before);
}

}  // namespace
}  // namespace pocketjson
