// A host whose companions may lie anywhere: it is linked against libdmc and the bridge helper, as the host application
// is, and so has loaded them through its own search order before the plug-in comes.
//
//   layout_host PLUGIN STEP...
//
// A step is RESOURCE, a GET, or RESOURCE=BODY, a PUT; each prints a line with the status, the value or the error's
// message, and "logged" when a log line was written. The step FILE@COPY copies a file; exports:FOLDER makes libPlugin
// say that the logging library lies there.
#include <QtWebKitBridgeHelper.h>
#include <libdmc.h>

#include <filesystem>
#include <iostream>
#include <string>

#include "host/Session.h"

namespace {

using host::Json;

std::string call(const host::Session& session, const std::string& step) {
    const auto equals = step.find('=');
    const bool isPut = equals != std::string::npos;
    const Json exchange = session.call(host::Request{.method = isPut ? "PUT" : "GET",
                                                     .resource = step.substr(0, equals),
                                                     .product = "TQ271-P",
                                                     .serial = "10000001",
                                                     .body = isPut ? step.substr(equals + 1) : ""});
    const Json& response = exchange.at("responses").at(0);
    const Json envelope = Json::parse(response.at("text").get<std::string>());
    const Json& error = envelope.at("error");
    return response.at("status").dump() + " " + (error.is_null() ? envelope.at("value") : error.at("message")).dump() +
           (exchange.at("log").empty() ? "" : " logged");
}

}  // namespace

int main(int argc, char** argv) {
    std::uint32_t monitors = 0;
    if (argc < 2 || DmCtrlGetNumMonitors(&monitors) < 0 || BridgeHelperCreatePromiseID() == 0) return 1;
    const host::Session session(argv[1]);
    for (int i = 2; i < argc; ++i) {
        const std::string step = argv[i];
        if (step.starts_with("exports:"))
            simulator::simulate({{"simulate", "return"},
                                 {"function", "Plg_GetRegistryExportsPath"},
                                 {"result", 1},
                                 {"outputs", {step.substr(step.find(':') + 1)}}});
        else if (const auto at = step.find('@'); at != std::string::npos)
            std::filesystem::copy_file(step.substr(0, at), step.substr(at + 1));
        else
            std::cout << call(session, step) << std::endl;
    }
}
