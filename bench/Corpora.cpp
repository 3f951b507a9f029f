#include "Corpora.h"

#include <array>
#include <charconv>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <random>
#include <stdexcept>
#include <string_view>

namespace bench {

namespace {

// The standard fixes what the engine yields, but not what its distributions make of it; hence our own.
class Random {
 public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}

    std::uint64_t below(std::uint64_t bound) { return engine_() % bound; }
    std::uint64_t from(std::uint64_t first, std::uint64_t last) { return first + below(last - first + 1); }
    bool oneIn(std::uint64_t times) { return below(times) == 0; }
    /// At least 0 and below 1.
    double fraction() { return static_cast<double>(engine_() >> 11) * 0x1p-53; }
    template <class T>
    const T& of(std::initializer_list<T> items) {
        return items.begin()[below(items.size())];
    }

 private:
    std::mt19937_64 engine_;
};

/// `opening`, `count` entries from `appendEntry(text, index)` with commas between them, `closing`.
template <class AppendEntry>
void appendList(std::string& text, char opening, std::size_t count, char closing, AppendEntry appendEntry) {
    text += opening;
    for (std::size_t i = 0; i < count; ++i) {
        if (i > 0) text += ',';
        appendEntry(text, i);
    }
    text += closing;
}

std::string decimal(double number, int significantDigits) {
    std::array<char, 32> buffer{};
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number, std::chars_format::general,
                                      significantDigits);
    return {buffer.data(), result.ptr};
}

std::string word(Random& random) {
    std::string letters;
    for (auto length = random.from(3, 10); length > 0; --length) letters += static_cast<char>('a' + random.below(26));
    return letters;
}

// Texts that the plug-in is called with, and its answers and events: one a line.
constexpr std::string_view kRequests = R"lines({"method":"GET"}
{"method":"PUT"}
{"product":"TQ271-P","serial":"10000001"}
{}
{"range":true}
{"percentage":true}
{"color":"red","depth":10}
null
60
{"data":{"percentage":45.5}}
{"data":{"x":0.3127,"y":0.329}}
{"dfwFile":"5f0c2f8e-55c9-4d4c-8f5e-0c3d7a3f9b21"}
{"path":":temporary/firmware/TQ271-P-2.1.0.3.7.dfw"}
{"error":null,"value":null}
{"error":null,"value":50}
{"error":null,"value":true}
{"error":null,"value":{"max":100,"min":0,"step":1}}
{"error":null,"value":{"blue":{"x":0.14999999999999999,"y":0.059999999999999998},"green":{"x":0.26500000000000001,"y":0.68999999999999995},"red":{"x":0.68000000000000005,"y":0.32000000000000001},"white":{"x":0.31269999999999998,"y":0.32900000000000001}}}
{"error":null,"value":[0.41239999999999999,0.35759999999999997,0.18049999999999999,0.21260000000000001,0.71519999999999995,0.072199999999999999,0.019300000000000001,0.1192,0.95050000000000001]}
{"error":null,"value":[{"product":"TQ271-P","serial":"10000001"},{"product":"TB240","serial":"10000002"},{"product":"TB240","serial":"10000001"}]}
{"error":null,"value":{"controller":0,"fpga":3,"frontEnd":1,"osd":5,"system":2}}
{"error":{"code":2147483658,"message":"Out of range.","name":"DmError","reason":"Set chromaticity."},"value":null}
{"error":{"message":"data must be number.","name":"BadRequestError"},"value":null}
{"blockCount":128,"product":"TQ271-P","serial":"10000001","totalBytes":131072,"transferredBlock":37,"transferredBytes":37888}
)lines";

Corpus requests() {
    Corpus corpus{"requests", {}};
    for (auto rest = kRequests; !rest.empty(); rest.remove_prefix(rest.find('\n') + 1))
        corpus.documents.emplace_back(rest.substr(0, rest.find('\n')));
    return corpus;
}

// A calibration target as the plug-in writes it.
Corpus target() {
    std::string text =
        R"({"Lamb":0.25,"LambEnable":true,"Lmax":450,"Lmin":0.45000000000000001,"LminEnable":true,"accuracy":2,)"
        R"("ambient":1,"ambientSensor":{"name":"Integrated Front Sensor","serial":"00471123"},)"
        R"("colorTemperature":6500,"displayFunction":3,"exp":2.2000000000000002,"lut":)";
    appendList(text, '[', 256, ']', [](std::string& out, std::size_t i) {
        const double x = static_cast<double>(i) / 255;
        out += decimal(x * x * (0.8 + 0.2 * x), 17);
    });
    text += R"(,"userFileName":"grey scale.lut","whitePoint":{"x":0.31269999999999998,"y":0.32900000000000001}})";
    return {"target", {text}};
}

Corpus lut3d() {
    constexpr std::size_t edge = 17;
    Random random(3);
    std::string text;
    appendList(text, '[', edge * edge * edge, ']', [&](std::string& triples, std::size_t) {
        appendList(triples, '[', 3, ']',
                   [&](std::string& out, std::size_t) { out += std::to_string(random.below(1024)); });
    });
    return {"lut3d", {text}};
}

Corpus records() {
    Random random(4);
    std::string text;
    appendList(text, '[', 2000, ']', [&](std::string& out, std::size_t i) {
        out += R"({"id":)" + std::to_string(100000 + i);
        out += R"(,"product":")" + random.of<std::string>({"TQ271-P", "TB240", "TQ319-W"});
        out += R"(","serial":")" + std::to_string(random.from(10000000, 99999999));
        out += R"(","owner":")" + word(random) + ' ' + word(random);
        out += R"(","active":)" + random.of<std::string>({"true", "false"});
        out += R"(,"hours":)" + std::to_string(random.below(50000));
        out += R"(,"luminance":)" + decimal(50 + 400 * random.fraction(), 6);
        out += R"(,"deviation":)" + decimal(random.fraction() - 0.5, 17);
        out += R"(,"room":)" + (random.oneIn(3) ? "null" : '"' + word(random) + '"');
        out += R"(,"offset":)" + std::to_string(static_cast<int>(random.below(200)) - 100) + '}';
    });
    return {"records", {text}};
}

std::string longString(Random& random) {
    const auto length = random.from(200, 4000);
    const bool plain = random.oneIn(3);
    std::string text = "\"";
    while (text.size() < length) {
        text += word(random) + ' ';
        if (plain || !random.oneIn(6)) continue;
        text += random.of<std::string_view>({R"(\n)", R"(\t)", R"(\")", R"(\\)", R"(\/)", R"(\u00e9)", R"(\u6f22)",
                                             R"(\ud83d\ude00)", "\xC3\xBC", "\xC3\x9F", "\xE6\xBC\xA2\xE5\xAD\x97",
                                             "\xF0\x9F\x98\x80", "\xD0\xB6"});
    }
    return text + '"';
}

Corpus texts() {
    Random random(5);
    std::string text = R"({"byName":)";
    appendList(text, '{', 100, '}', [&](std::string& out, std::size_t i) {
        out += '"' + word(random) + std::to_string(i) + "\":" + longString(random);
    });
    text += R"(,"inOrder":)";
    appendList(text, '[', 100, ']', [&](std::string& out, std::size_t) { out += longString(random); });
    return {"texts", {text + '}'}};
}

Corpus geometry() {
    constexpr std::size_t polygons = 50, rings = 2, points = 250;
    Random random(6);
    std::string text = R"({"type":"MultiPolygon","coordinates":)";
    const auto coordinate = [&](double range) {
        return decimal(range * (2 * random.fraction() - 1), static_cast<int>(random.from(6, 17)));
    };
    appendList(text, '[', polygons, ']', [&](std::string& polygon, std::size_t) {
        appendList(polygon, '[', rings, ']', [&](std::string& ring, std::size_t) {
            appendList(ring, '[', points, ']', [&](std::string& out, std::size_t) {
                out += '[' + coordinate(180);
                out += ',' + coordinate(90) + ']';
            });
        });
    });
    return {"geometry", {text + '}'}};
}

Corpus integers() {
    Random random(7);
    std::string text;
    appendList(text, '[', 50000, ']', [&](std::string& out, std::size_t) {
        // Of 19 digits only those below 9e18, which 64 bits can hold with a sign.
        const auto digits = random.from(1, 19);
        if (random.oneIn(4)) out += '-';
        out += static_cast<char>('1' + random.below(digits == 19 ? 8 : 9));
        for (auto rest = digits - 1; rest > 0; --rest) out += static_cast<char>('0' + random.below(10));
    });
    return {"integers", {text}};
}

}  // namespace

std::vector<Corpus> builtInCorpora() {
    return {requests(), target(), lut3d(), records(), texts(), geometry(), integers()};
}

Corpus corpusOfFile(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    Corpus corpus{std::filesystem::path(path).filename().string(),
                  {{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()}}};
    if (!file) throw std::runtime_error(path + " cannot be read");
    return corpus;
}

}  // namespace bench
