// Records in both directions: every kind of member, what the data lacks, and that the tables are complete.
#include <gtest/gtest.h>
#include <records/device.h>
#include <records/firmware.h>
#include <records/picture.h>
#include <records/selfcalibration.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <regex>

#include "bridge/Records.h"
#include "pocketjson/Parser.h"
#include "pocketjson/Serializer.h"
#include "runtime/DateTime.h"

namespace {

struct Point {
    double x;
    double y;
};

struct Everything {
    std::int8_t i8;
    std::uint8_t u8;
    std::int16_t i16;
    std::uint16_t u16;
    std::int32_t i32;
    std::uint32_t u32;
    std::int64_t i64;
    double number;
    std::uint32_t flag;
    char text[4];
    std::uint16_t list[2];
    Point points[2];
};

struct Target {
    std::uint16_t id;
    std::uint32_t enable;
    double luminance;
    DmColorValue white;
};

struct Timetable {
    std::uint32_t type;
    std::uint16_t year;
    std::uint8_t week;
};

}  // namespace

namespace companions {

template <>
inline constexpr auto members<Point> = std::tuple(Member{"x", &Point::x}, Member{"y", &Point::y});

template <>
inline constexpr auto members<Everything> = std::tuple(
    Member{"i8", &Everything::i8}, Member{"u8", &Everything::u8}, Member{"i16", &Everything::i16},
    Member{"u16", &Everything::u16}, Member{"i32", &Everything::i32}, Member{"u32", &Everything::u32},
    Member{"i64", &Everything::i64}, Member{"number", &Everything::number}, Flag{"flag", &Everything::flag},
    Member{"text", &Everything::text}, Member{"list", &Everything::list}, Member{"points", &Everything::points});

template <>
inline constexpr auto members<Target> =
    std::tuple(Member{"id", &Target::id}.required(Needs::Number, "data must have id."), Flag{"enable", &Target::enable},
               Member{"luminance", &Target::luminance}.required(Needs::Anything, "data must have luminance."),
               Part{"white", &Target::white, colorXy});

template <>
inline constexpr auto members<Timetable> = std::tuple(
    Member{"type", &Timetable::type}, Member{"year", &Timetable::year}.writtenAs("yaer").omittedWhenAllOnes(),
    Member{"week", &Timetable::week}.omittedWhenAllOnes());

}  // namespace companions

namespace torvo {

namespace {

using pocketjson::Value;

std::string textOf(const Value& value) {
    std::string text;
    pocketjson::write(value, text);
    return text;
}

TEST(Records, GoRoundWithEveryKindOfMember) {
    const std::string json =
        R"({"flag":true,"i16":-32768,"i32":-2147483648,"i64":-9007199254740993,"i8":-128,"list":[1,65535],"number":-0.5,)"
        R"("points":[{"x":1,"y":2},{"x":3,"y":4}],"text":"abc","u16":65535,"u32":4294967295,"u8":255})";
    const Value value = pocketjson::parseOrNull(json);
    const auto record = toRecord<Everything>(value);
    EXPECT_EQ(record.i8, -128);
    EXPECT_EQ(record.u8, 255);
    EXPECT_EQ(record.i64, -9007199254740993);
    EXPECT_EQ(record.points[1].y, 4);
    EXPECT_EQ(textOf(toValue(record)), json);

    Everything replaced{};
    replaceMembers(replaced, value);
    EXPECT_EQ(textOf(toValue(replaced)), json);
}

TEST(Records, LayOutASelfQCScheduleByItsType) {
    const struct {
        const char* schedule;
        std::array<std::uint8_t, 8> details;
        const char* given = nullptr;  // when that is not the schedule itself
    } cases[] = {
        {R"({"timing":1,"type":16,"usageHour":16909060})", {4, 3, 2, 1}},
        {R"({"day":3,"hour":4,"minute":5,"month":2,"timing":1,"type":17,"year":258})", {2, 1, 2, 3, 4, 5}},
        {R"({"timing":1,"type":31,"usageHour":16909060})", {4, 3, 2, 1}},
        {R"({"hour":1,"minute":2,"timing":1,"type":32})", {1, 2}},
        {R"({"dayOfWeek":16909060,"hour":5,"minute":6,"timing":1,"type":33})", {4, 3, 2, 1, 5, 6}},
        {R"({"day":1,"hour":2,"minute":3,"timing":1,"type":34})", {1, 2, 3}},
        {R"({"day":5,"hour":6,"minute":7,"quarter":16909060,"timing":1,"type":35})", {4, 3, 2, 1, 5, 6, 7}},
        {R"({"day":5,"halfYear":16909060,"hour":6,"minute":7,"timing":1,"type":36})", {4, 3, 2, 1, 5, 6, 7}},
        {R"({"day":2,"hour":3,"minute":4,"month":1,"timing":1,"type":37})", {1, 2, 3, 4}},
        {R"({"timing":1,"type":38})", {}},
        {R"({"hour":1,"minute":2,"timing":1,"type":32})",
         {1, 2},
         R"({"hour":257,"minute":2,"timing":1,"type":32,"day":3})"},
    };
    for (const auto& [json, details, given] : cases) {
        const auto schedule = toRecord<DmSelfQCSchedule>(pocketjson::parseOrNull(given ? given : json));
        EXPECT_TRUE(std::equal(details.begin(), details.end(), schedule.details)) << json;
        EXPECT_EQ(textOf(toValue(schedule)), json);
    }
}

TEST(Records, KeepOrZeroWhatTheDataLacks) {
    const Value before = pocketjson::parseOrNull(
        R"({"flag":true,"i16":1,"i32":1,"i64":1,"i8":1,"list":[1,1],"number":1,"points":[{"x":1,"y":1},{"x":1,"y":1}],)"
        R"("text":"a","u16":1,"u32":1,"u8":1})");
    const struct {
        const char* data;
        const char* member;
        const char* kept;
        const char* zeroed;
    } cases[] = {
        {"{}", "flag", "true", "false"},
        {R"({"flag":1})", "flag", "true", "true"},
        {R"({"flag":0})", "flag", "true", "false"},
        {R"({"flag":"true"})", "flag", "true", "true"},
        {R"({"flag":"no"})", "flag", "true", "false"},
        {R"({"number":"2.5"})", "number", "1", "2.5"},
        {R"({"number":true})", "number", "1", "1"},
        {R"({"number":1e999})", "number", "1", "0.0"},
        {R"({"number":"1e999"})", "number", "1", "0.0"},
        {R"({"u16":65537})", "u16", "1", "1"},
        {R"({"u8":-1})", "u8", "0", "0"},
        {R"({"i32":2.5})", "i32", "3", "3"},
        {R"({"text":7})", "text", R"("a")", R"("")"},
        {R"({"list":[5]})", "list", "[5,1]", "[5,0]"},
        {R"({"list":7})", "list", "[1,1]", "[0,0]"},
        {R"({"points":[null,{"y":7}]})", "points", R"([{"x":1,"y":1},{"x":1,"y":7}])",
         R"([{"x":0.0,"y":0.0},{"x":0.0,"y":7}])"},
    };
    for (const auto& [data, member, kept, zeroed] : cases) {
        const Value value = pocketjson::parseOrNull(data);
        auto record = toRecord<Everything>(before);
        replaceMembers(record, value);
        EXPECT_EQ(textOf(toValue(record).get(member)), kept) << data;
        EXPECT_EQ(textOf(toValue(toRecord<Everything>(value)).get(member)), zeroed) << data;
    }
}

TEST(Records, RefuseTextsThatTheirFieldCannotHold) {
    for (const char* data : {R"({"text":"abcd"})", R"({"text":"a\u0000b"})"}) {
        Everything record{};
        EXPECT_THROW(toRecord<Everything>(pocketjson::parseOrNull(data)), BridgeResultError) << data;
        EXPECT_THROW(replaceMembers(record, pocketjson::parseOrNull(data)), BridgeResultError) << data;
    }
    Everything full{};
    std::fill(std::begin(full.text), std::end(full.text), 't');  // as a library may answer it
    EXPECT_EQ(toValue(full).get("text"), "tttt");
}

TEST(Records, CheckRequiredMembersInTheOrderOfTheTable) {
    const struct {
        const char* data;
        const char* refusal;
    } cases[] = {
        {"{}", "data must have id."},
        {R"({"id":"7","luminance":1})", "data must have id."},
        {R"({"id":7})", "data must have luminance."},
        {R"({"id":7,"luminance":"2.5"})", nullptr},
    };
    for (const auto& [data, refusal] : cases) {
        const Value value = pocketjson::parseOrNull(data);
        for (const bool whole : {true, false}) {
            std::string message;
            try {
                Target target{};
                whole ? void(toRecord<Target>(value)) : replaceMembers(target, value);
            } catch (const BridgeResultError& error) {
                message = error.result.message;
            }
            EXPECT_EQ(message, refusal ? refusal : "") << data;
        }
    }
}

TEST(Records, TellColoursInTheFormThatTheirTableNames) {
    Target target = toRecord<Target>(pocketjson::parseOrNull(R"({"id":1,"luminance":0,"white":{"x":0.3,"y":"0.4"}})"));
    EXPECT_EQ(target.white.x, 0.3);
    EXPECT_EQ(target.white.y, 0.4);
    target.white = {1, 2, 3, 0.25, 0.5, 7};
    EXPECT_EQ(textOf(toValue(target)), R"({"enable":false,"id":1,"luminance":0.0,"white":{"x":0.25,"y":0.5}})");
    EXPECT_EQ(textOf(toValue(target.white, companions::colorXYZ)), R"({"X":1,"Y":2,"Z":3})");
    EXPECT_EQ(textOf(toValue(target.white, companions::colorYxy)), R"({"Y":7,"x":0.25,"y":0.5})");
}

TEST(Records, OmitWhatDoesNotApplyAndReadNamesOfTheirOwn) {
    Timetable timetable = toRecord<Timetable>(pocketjson::parseOrNull(R"({"type":9,"year":2024,"yaer":2025})"));
    EXPECT_EQ(textOf(toValue(timetable)), R"({"type":9,"week":0,"year":2025})");
    timetable.year = 0xFFFF;
    timetable.week = 0xFF;
    EXPECT_EQ(textOf(toValue(timetable)), R"({"type":9})");
}

// ---- The tables themselves -----------------------------------------------------------------------------------------

/// Stands for whatever initialises a member.
struct Anything {
    template <class T>
    operator T() const;
};

/// How many initialisers a member takes without braces of its own: an array one for each element.
template <class Record, class T>
constexpr std::size_t initializersOf(T Record::*) {
    return std::is_array_v<T> ? std::max<std::size_t>(std::extent_v<T>, 1) : 1;
}

template <class Record>
constexpr std::size_t initializersOfTable() {
    return std::apply([](const auto&... member) { return (initializersOf(member.pointer) + ...); },
                      companions::members<Record>);
}

template <class Record, std::size_t... Position>
constexpr bool takes(std::index_sequence<Position...>) {
    return requires {
        Record{(static_cast<void>(Position), Anything())...};
    };
}

/// Whether the table has every member of the record: it takes as many initialisers as the table, and not one more.
template <class Record>
void expectWholeTable(const char* name) {
    constexpr std::size_t count = initializersOfTable<Record>();
    EXPECT_TRUE(takes<Record>(std::make_index_sequence<count>())) << name << ": a member is in the table twice";
    EXPECT_FALSE(takes<Record>(std::make_index_sequence<count + 1>())) << name << ": a member is not in the table";
}

template <class... Record>
std::size_t expectWholeTables(std::tuple<Record...>) {
    (expectWholeTable<Record>(typeid(Record).name()), ...);
    return sizeof...(Record);
}

TEST(RecordTables, HaveEveryMemberOfTheirRecord) {
    const std::size_t tested = expectWholeTables(
        std::tuple<DmChromaticity, DmColorValue, DmSixColors, DmPrimaries, DmProfileData, DmGainDefinition,
                   DmPanelLuminance, DmColor, DmBounds, DmColorPatch, DmSignalSync, DmSignalInformation,
                   DmSignalResolution, DmSignalInfoFrame, DmAutoLumisavePoint, DmAutoLumisaveSettings, DmYearMonth,
                   DmBacklightReplaceInfo, DmBoosterTarget, DmBacklightBooster, DmBoosterUsageTime, DmFirmwareVersion,
                   DmDisplayFirmwareVersion, DmUsageTime, DmAmbientSensor, DmCalibrationTarget, DmSelfQCSchedule,
                   DmClockTime, DmSelfCorrectionTarget, DmSelfCorrectionResult, DmSelfDiagnosis, DmCalibrationWindow,
                   DmSelfCalibrationTarget, DmSelfCalibrationResult, DmSelfCalibrationResultSetting,
                   DmSelfCalibrationSchedule, DmUsageHourMinute, DmSelfQCNextSchedule, DmSelfQCCalibrationResult,
                   DmGrayScaleCheckTarget, DmGrayScaleCheckLastTarget, DmGrayScaleCheckResult, DmLEAData,
                   DmPhotoADAgingCorrection, FirmwareVersionRecord>());

    std::size_t tables = 0;
    const std::regex table("auto members<\\w+>");
    for (const auto& file : std::filesystem::directory_iterator(PELL_RECORDS)) {
        if (file.path().filename() == "Member.h") continue;  // has an example only
        std::ifstream stream(file.path());
        for (std::string line; std::getline(stream, line);) tables += std::regex_search(line, table);
    }
    EXPECT_EQ(tested, tables) << "a table is not tested here";
}

TEST(DateTime, IsPaddedWithZeros) {
    EXPECT_EQ((DateTime{2024, 1, 15, 9, 5}.text()), "2024-01-15 09:05:00");
    EXPECT_EQ((DateTime{7, 12, 31, 23, 59, 58}.text()), "0007-12-31 23:59:58");
    EXPECT_EQ(DateTime{}.text(), "0000-00-00 00:00:00");
    EXPECT_EQ((DateTime{65535, 255, 255, 255, 255, 255}.text()), "65535-255-255 255:255:255");
}

}  // namespace

}  // namespace torvo
