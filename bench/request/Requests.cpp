#include "request/Requests.h"

#include <random>

namespace bench {

namespace {

const std::string get = R"({"method":"GET"})";
const std::string put = R"({"method":"PUT"})";
const std::string monitor = R"({"product":"TQ271-P","serial":"10000001"})";

/// A table for a grid of `edge` points, as a page makes it with JSON.stringify: [[512,3,1023],...].
std::string table(unsigned edge) {
    std::mt19937 random(edge);
    std::string text = "[";
    for (unsigned point = 0; point < edge * edge * edge; ++point) {
        text += point ? ",[" : "[";
        for (const char* separator : {",", ",", "]"}) text += std::to_string(random() % 1024) + separator;
    }
    return text + "]";
}

}  // namespace

std::vector<Request> requests() {
    std::vector<Request> list{
        {"Brightness GET", "Brightness", get, monitor, "{}", "null"},
        {"Brightness GET range", "Brightness", get, monitor, R"({"range":true})", "null"},
        {"Brightness PUT", "Brightness", put, monitor, "{}", "60"},
        {"Brightness PUT, refused", "Brightness", put, monitor, "{}", R"("bright")"},
        {"SelfQCCalibrationTarget GET", "SelfQCCalibrationTarget", get, monitor, "{}", "null"},
        {"Monitors GET", "Monitors", get, "{}", "{}", "null"},
    };
    for (const unsigned monitors : {8U, 64U}) {
        const std::string among = ", " + std::to_string(monitors) + " monitors";
        list.push_back({"Brightness GET" + among, "Brightness", get, monitor, "{}", "null", monitors});
        list.push_back({"Monitors GET" + among, "Monitors", get, "{}", "{}", "null", monitors});
    }
    for (const unsigned edge : {5U, 9U, 17U, 33U})
        list.push_back({"LUT3D PUT " + std::to_string(edge) + "^3", "LUT3D", put, monitor, "{}", table(edge)});
    return list;
}

}  // namespace bench
