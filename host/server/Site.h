// What is served where: the plug-in's resources and events, the lab, and the page.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "host/Journal.h"
#include "host/server/EventLog.h"
#include "host/server/Guard.h"
#include "host/server/Lab.h"
#include "host/server/WorkPool.h"

namespace host::server {

struct SiteOptions {
    std::filesystem::path page{};        ///< a folder to be served at /; empty: none
    bool forwards = false;               ///< what is not served here goes on to a development server
    std::vector<std::string> origins{};  ///< of pages that may ask from elsewhere
};

/// Requests are routed on the network's thread; those of the plug-in are carried out by threads of their own.
class Site {
 public:
    Site(SiteOptions options, Journal& journal, Lab& lab, EventLog& events);

    /// To be called before the first request.
    void setPort(std::uint16_t port) { guard_ = Guard(port, options_.origins); }

    /// What becomes of a request with this head; its body is not there yet.
    Route route(const HttpRequest& head);

    /// Drops the requests that wait for a thread, and tells how many; none is taken any more.
    std::size_t close();

    /// The same, and waits for what runs.
    void finish();

 private:
    Route routeAllowed(const HttpRequest& head);
    Route routeOfPlugin(const HttpRequest& head);
    Route routeOfLab(const HttpRequest& head);
    Whole callOfLab();

    HttpResponse ask(const Request& request, const std::string& source);

    /// A request that a thread of the pool answers, after others of the same queue.
    static Whole on(WorkPool& pool, std::function<HttpResponse(const HttpRequest&)> answer, std::string queue = {});

    const SiteOptions options_;
    Journal& journal_;
    Lab& lab_;
    EventLog& events_;
    Guard guard_;
    WorkPool pool_;
    WorkPool labPool_;
};

}  // namespace host::server
