// The plug-ins that libpell is compared with: the same four resources, written for one JSON library each. Here stands
// what is the same for all of them; a library's own file says how its documents are read and how answers are written.
#pragma once

#include <QtWebKitBridgeHelper.h>
#include <dlfcn.h>
#include <libPlugin.h>
#include <libdmc.h>
#include <libscrivo2.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace peers {

struct Texts {
    const char* options;
    const char* params;
    const char* query;
    const char* body;
};

inline std::string_view viewOf(const char* text) noexcept {
    return text ? std::string_view(text) : std::string_view();
}

enum class Method { Get, Post, Put, Delete };

inline const char* methodName(Method method) noexcept {
    constexpr std::array names{"GET", "POST", "PUT", "DELETE"};
    return names[static_cast<std::size_t>(method)];
}

inline Method methodOf(std::string_view text) noexcept {
    constexpr auto equal = [](std::string_view left, std::string_view right) {
        return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                          [](char a, char b) { return (a >= 'a' && a <= 'z' ? a - 'a' + 'A' : a) == b; });
    };
    if (equal(text, "POST")) return Method::Post;
    if (equal(text, "PUT")) return Method::Put;
    if (equal(text, "DELETE")) return Method::Delete;
    return Method::Get;
}

/// Every failure of a request; the texts are of static storage.
struct Failure {
    std::uint32_t status;
    const char* name;
    const char* message;
    std::uint32_t code = 0;  ///< with a reason, of a failure of the monitor-control library
    const char* reason = "";
};

inline void require(bool condition, const char* message) {
    if (!condition) throw Failure{400, "BadRequestError", message};
}

inline void check(DmResult result, const char* action) {
    if (result >= 0 || static_cast<std::uint32_t>(result) == 0x80000006) return;
    throw Failure{500, "DmError", "Failed.", static_cast<std::uint32_t>(result), action};
}

/// The libraries whose functions are looked up by name, opened with the first request.
class Companions {
 public:
    static const Companions& instance() {
        static const Companions companions;
        return companions;
    }

    DmResult calibrationTarget(const char* serial, const char* product, DmCalibrationTarget* target) const {
        const auto function = find<decltype(DmCtrlGetSelfQCCalTarget)>(libdmc_, "DmCtrlGetSelfQCCalTarget");
        if (!function) throw Failure{404, "FunctionNotFoundError", "libdmc does not have a requested function."};
        return function(serial, product, target);
    }

    void log(std::uint32_t level, const char* line) const {
        if (const auto function = find<decltype(scrivo_log)>(libscrivo2_, "scrivo_log"))
            function(logger_, "Pell", level, line);
    }

 private:
    Companions() {
        Dl_info own{};
        if (!dladdr(reinterpret_cast<const void*>(&methodName), &own)) return;
        const std::string file = own.dli_fname;
        const std::string folder = file.substr(0, file.rfind('/') + 1);
        libdmc_ = open(folder + "libdmc_x64.so");
        const auto exportsPath =
            find<decltype(Plg_GetRegistryExportsPath)>(open(folder + "libPlugin_x64.so"), "Plg_GetRegistryExportsPath");
        if (!exportsPath) return;
        libscrivo2_ = open(std::string(exportsPath()) + "/libscrivo2_x64.so");
        if (const auto getLogger = find<decltype(scrivo_get_logger)>(libscrivo2_, "scrivo_get_logger"))
            logger_ = getLogger();
    }

    static void* open(const std::string& file) { return dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL); }

    template <class Function>
    static Function* find(void* library, const char* name) {
        return library ? reinterpret_cast<Function*>(dlsym(library, name)) : nullptr;
    }

    void* libdmc_ = nullptr;
    void* libscrivo2_ = nullptr;
    ScrivoLogger* logger_ = nullptr;
};

/// A text in a buffer of fixed size that may lack its NUL.
template <std::size_t Size>
std::string_view boundedText(const char (&buffer)[Size]) noexcept {
    return {buffer, static_cast<std::size_t>(std::find(buffer, buffer + Size, '\0') - buffer)};
}

struct Address {
    char serial[DM_SERIAL_SIZE] = {};
    char product[DM_PRODUCT_SIZE] = {};

    DmResult read(std::uint32_t index) { return DmCtrlGetSerialProduct(index, serial, product, 0); }
};

constexpr std::uint32_t maximumMonitors = 1024;

struct Monitor {
    std::string serial;
    std::string product;

    void find() const {
        std::uint32_t count = 0;
        check(DmCtrlGetNumMonitors(&count), "");
        count = std::min(count, maximumMonitors);
        for (std::uint32_t index = 0; index < count; ++index) {
            Address address;
            check(address.read(index), "");
            if (boundedText(address.serial) == serial && boundedText(address.product) == product) return;
        }
        check(static_cast<DmResult>(0x80000000), "Monitor is not found.");
    }
};

/// A number as an unsigned step: the low 32 bits of an integer, a rounded double, 0 for what is negative.
inline std::uint32_t unsignedNumber(std::int64_t number) noexcept {
    return number > 0 ? static_cast<std::uint32_t>(number) : 0;
}
inline std::uint32_t unsignedNumber(double number) noexcept {
    const double rounded = std::round(number);
    return rounded > 0 && rounded < 0x1p32 ? static_cast<std::uint32_t>(rounded) : 0;
}

struct Range {
    std::uint32_t minimum;
    std::uint32_t maximum;
};

/// What a JSON library's file offers; `Node` is a value of its documents, `Text` a finished text.
template <class Json>
concept JsonLibrary = requires(const typename Json::Request& request, const typename Json::Node& node,
                               const typename Json::Text& text) {
    {
        request.options()
        } -> std::same_as<const typename Json::Node&>;  // and params, query, body; null if not JSON,
                                                        // but a body is then a string of its text
    { Json::member(node, "") } -> std::same_as<const typename Json::Node*>;  // null if there is none
    { Json::isObject(node) } -> std::same_as<bool>;
    { Json::isArray(node) } -> std::same_as<bool>;
    { Json::isNumber(node) } -> std::same_as<bool>;
    { Json::memberCount(node) } -> std::convertible_to<std::size_t>;
    { Json::elements(node) } -> std::same_as<std::span<const typename Json::Node>>;
    { Json::text(node) } -> std::convertible_to<std::string_view>;  // empty if it is no string
    { Json::number(node) } -> std::same_as<double>;
    { Json::unsignedNumber(node) } -> std::same_as<std::uint32_t>;
    { Json::answer() } -> std::same_as<typename Json::Text>;  // a null; the others are below
    { Json::characters(text) } -> std::same_as<const char*>;
};

template <class Json>
std::string_view memberText(const typename Json::Node& node, std::string_view name) {
    const auto* const found = Json::member(node, name);
    return found ? Json::text(*found) : std::string_view();
}

inline void logRequest(Method method, const std::string& uri, const Failure& outcome) {
    std::string line;
    line.reserve(uri.size() + 100);
    line += "statusCode:";
    line += std::to_string(outcome.status);
    line += "\tmethod:";
    line += methodName(method);
    line += "\turi:";
    line += uri;
    if (outcome.status == 200) {
        line += "\tmsg:Success";
    } else {
        line += "\terr:";
        line += outcome.name;
        line += "\tmsg:";
        line += outcome.message;
        if (outcome.code) {
            std::array<char, 24> code{};
            std::snprintf(code.data(), code.size(), "\tcode:0x%08x", outcome.code);
            line += code.data();
        }
    }
    Companions::instance().log(outcome.status == 200 ? 2 : 5, line.c_str());
}

/// One request from its texts to the answer handed over. `handle(method, request, uri)` returns the answer's text and
/// may throw a Failure.
template <JsonLibrary Json, class Handler>
std::uint32_t serve(const Texts& texts, Handler handle) noexcept {
    try {
        const std::uint32_t promise = BridgeHelperCreatePromiseID();
        Failure outcome{200, "", ""};
        Method method = Method::Get;
        std::string uri = "/pell/";
        typename Json::Text text;
        try {
            const typename Json::Request request(texts);
            method = methodOf(memberText<Json>(request.options(), "method"));
            text = handle(method, request, uri);
        } catch (const Failure& failure) {
            outcome = failure;
            text = Json::answer(outcome);
        } catch (...) {
            outcome = {500, "UnknownError", "Unknown error occurred."};
            text = Json::answer(outcome);
        }
        logRequest(method, uri, outcome);
        BridgeHelperSetResponse(promise, outcome.status, Json::characters(text));
        return promise;
    } catch (...) {
        return 0;
    }
}

/// A request about one monitor: `handle(method, request, monitor)`.
template <JsonLibrary Json, class Handler>
std::uint32_t serveMonitor(const char* resource, const Texts& texts, Handler handle) noexcept {
    return serve<Json>(texts, [&](Method method, const typename Json::Request& request, std::string& uri) {
        const Monitor monitor{std::string(memberText<Json>(request.params(), "serial")),
                              std::string(memberText<Json>(request.params(), "product"))};
        uri += "Monitors/" + monitor.product + "/" + monitor.serial + "/" + resource;
        require(!monitor.serial.empty() && !monitor.product.empty(), "URI is invalid.");
        monitor.find();
        return handle(method, request, monitor);
    });
}

[[noreturn]] inline void refuseMethod(Method method) {
    constexpr std::array messages{"GET is not allowed.", "POST is not allowed.", "PUT is not allowed.",
                                  "DELETE is not allowed."};
    throw Failure{405, "MethodError", messages[static_cast<std::size_t>(method)]};
}

/// What a PUT brings: the body, or the single member "data" of it.
template <JsonLibrary Json>
const typename Json::Node& dataOf(const typename Json::Request& request) {
    const auto& body = request.body();
    if (!Json::isObject(body) || Json::memberCount(body) != 1) return body;
    const auto* const data = Json::member(body, "data");
    return data ? *data : body;
}

template <JsonLibrary Json>
std::uint32_t brightness(const Texts& texts) noexcept {
    return serveMonitor<Json>("Brightness", texts, [](Method method, const auto& request, const Monitor& monitor) {
        const char* const serial = monitor.serial.c_str();
        const char* const product = monitor.product.c_str();
        if (method == Method::Get) {
            const auto& query = request.query();
            if (Json::member(query, "supports")) return Json::answer(DmCtrlSupportedBrightness(serial, product) != 0);
            if (Json::member(query, "range")) {
                Range range{};
                check(DmCtrlGetRangeBrightnessForStep(serial, product, &range.minimum, &range.maximum),
                      "Get brightness range.");
                return Json::answer(range);
            }
            if (Json::member(query, "percentage")) {
                double percentage = 0;
                check(DmCtrlGetBrightnessForPercentage(serial, product, &percentage), "Get brightness percentage.");
                return Json::answer(percentage);
            }
            std::uint32_t step = 0;
            check(DmCtrlGetBrightnessForStep(serial, product, &step), "Get brightness.");
            return Json::answer(step);
        }
        if (method != Method::Put) refuseMethod(method);

        const auto& data = dataOf<Json>(request);
        const auto* const percentage = Json::member(data, "percentage");
        const bool hasPercentage = percentage && Json::isNumber(*percentage);
        require(Json::isNumber(data) || hasPercentage, "data must be number.");
        if (hasPercentage)
            check(DmCtrlSetBrightnessForPercentage(serial, product, Json::number(*percentage)),
                  "Set brightness percentage.");
        else
            check(DmCtrlSetBrightnessForStep(serial, product, Json::unsignedNumber(data)), "Set brightness.");
        return Json::answer();
    });
}

template <JsonLibrary Json>
std::uint32_t lut3D(const Texts& texts) noexcept {
    return serveMonitor<Json>("3DLUT", texts, [](Method method, const auto& request, const Monitor& monitor) {
        if (method != Method::Put) refuseMethod(method);
        const auto& data = dataOf<Json>(request);
        require(Json::isArray(data), "data must be array.");
        const auto triples = Json::elements(data);
        require(!triples.empty(), "data must have object array.");
        std::vector<DmColor> table;
        table.reserve(triples.size());
        for (const auto& triple : triples) {
            require(Json::isArray(triple), "Each value must be array.");
            const auto color = Json::elements(triple);
            require(
                color.size() == 3 && Json::isNumber(color[0]) && Json::isNumber(color[1]) && Json::isNumber(color[2]),
                "Each value must be 3 number array.");
            table.push_back(
                {Json::unsignedNumber(color[0]), Json::unsignedNumber(color[1]), Json::unsignedNumber(color[2])});
        }
        check(DmCtrlSet3DLUTDirect(monitor.serial.c_str(), monitor.product.c_str(), table.data(),
                                   static_cast<std::uint32_t>(table.size())),
              "Set 3D LUT.");
        return Json::answer();
    });
}

template <JsonLibrary Json>
std::uint32_t calibrationTarget(const Texts& texts) noexcept {
    return serveMonitor<Json>(
        "SelfQC/Calibration/Target", texts, [](Method method, const auto&, const Monitor& monitor) {
            if (method != Method::Get) refuseMethod(method);
            DmCalibrationTarget target{};
            check(Companions::instance().calibrationTarget(monitor.serial.c_str(), monitor.product.c_str(), &target),
                  "Get SelfQC calibration target.");
            return Json::answer(target);
        });
}

template <JsonLibrary Json>
std::uint32_t monitors(const Texts& texts) noexcept {
    return serve<Json>(texts, [](Method method, const auto& request, std::string& uri) {
        if (method != Method::Get) refuseMethod(method);
        uri += "Monitors";
        if (Json::member(request.query(), "update")) DmCtrlFind(0, 0);
        std::vector<Address> list;
        for (Address address; list.size() < maximumMonitors; list.push_back(address))
            if (address.read(static_cast<std::uint32_t>(list.size())) < 0) break;
        return Json::answer(list);
    });
}

}  // namespace peers

/// The exports of a plug-in, which are those of libpell.
#define PEER_EXPORT(name, function)                                                                              \
    extern "C" [[gnu::visibility("default")]] std::uint32_t name(const char* options, const char* params,        \
                                                                 const char* query, const char* body) noexcept { \
        return function({options, params, query, body});                                                         \
    }
#define PEER_EXPORTS(Json)                           \
    PEER_EXPORT(Brightness, peers::brightness<Json>) \
    PEER_EXPORT(LUT3D, peers::lut3D<Json>)           \
    PEER_EXPORT(Monitors, peers::monitors<Json>)     \
    PEER_EXPORT(SelfQCCalibrationTarget, peers::calibrationTarget<Json>)
