#include "Routes.h"

#include <chrono>
#include <cstdio>
#include <thread>

namespace sim {

namespace {

using httplib::Request;
using httplib::Response;

void reply(Response &response, const Json &body, int status = 200) {
    response.status = status;
    response.set_content(body.dump(), "application/json");
}

void refuse(Response &response, int status, const char *reason) {
    reply(response, {{"error", reason}}, status);
}

/// Whether the fault has taken the reply's place.
bool misbehave(Response &response, Fault fault) {
    switch (fault) {
    case Fault::slow:
        std::this_thread::sleep_for(std::chrono::seconds(3));
        return false;
    case Fault::hang:
        std::this_thread::sleep_for(std::chrono::hours(1));
        return true;
    case Fault::garbage:
        response.set_content("{\"device_id\": \xff\xfe", "application/json");
        return true;
    case Fault::truncate:
        response.set_content_provider(10'000, "application/json",
                                      [](size_t, size_t, httplib::DataSink &sink) {
                                          sink.write("{\"device_id\":\"10b4", 18);
                                          return false;
                                      });
        return true;
    case Fault::redirect:
        response.set_redirect("http://127.0.0.1:9/elsewhere", 307);
        return true;
    case Fault::error500:
        refuse(response, 500, "something went wrong");
        return true;
    case Fault::html:
        response.status = 502;
        response.set_content("<html><body><h1>Bad gateway</h1></body></html>", "text/html");
        return true;
    case Fault::null:
        response.set_content("null", "application/json");
        return true;
    }
    return false;
}

/// What was asked for on that path, or nullptr.
template <class Value>
const Value *onPath(const std::map<std::string, Value> &byPath, const std::string &path) {
    auto found = byPath.find(path);
    if (found == byPath.end())
        found = byPath.find("");
    return found == byPath.end() ? nullptr : &found->second;
}

/// When the request came that this thread answers, in milliseconds.
thread_local std::int64_t requestTime = 0;

} // namespace

void addRoutes(httplib::Server &server, World &world, const std::string &token, const Options &options) {
    server.set_pre_routing_handler([token, options](const Request &request, Response &response) {
        requestTime = nowMilliseconds();
        const Fault *fault = onPath(options.faults, request.path);
        if (fault && misbehave(response, *fault))
            return httplib::Server::HandlerResponse::Handled;
        if (request.get_header_value("Authorization") != "Bearer " + token) {
            refuse(response, 401, "unauthorized");
            return httplib::Server::HandlerResponse::Handled;
        }
        return httplib::Server::HandlerResponse::Unhandled;
    });
    server.set_post_routing_handler([options](const Request &request, Response &) {
        if (const auto *delay = onPath(options.delays, request.path))
            std::this_thread::sleep_for(*delay);
    });
    if (options.log) {
        server.set_logger([](const Request &request, const Response &response) {
            std::printf("%s %s %d %lld %lld\n", request.method.c_str(), request.path.c_str(), response.status,
                        static_cast<long long>(requestTime), static_cast<long long>(nowMilliseconds()));
            std::fflush(stdout);
        });
    }
    server.set_exception_handler([](const Request &, Response &response, const std::exception_ptr &) {
        refuse(response, 400, "the request cannot be understood");
    });

    server.Get("/api/status", [&](const Request &, Response &response) { reply(response, world.status()); });
    server.Get("/api/settings",
               [&](const Request &, Response &response) { reply(response, world.settings()); });
    server.Get("/api/devices",
               [&](const Request &, Response &response) { reply(response, world.devices()); });
    server.Get("/api/history",
               [&](const Request &, Response &response) { reply(response, world.history()); });

    server.Put("/api/settings", [&](const Request &request, Response &response) {
        reply(response, world.save(Json::parse(request.body)));
    });
    const auto pause = [&world](bool paused) {
        return [&world, paused](const Request &, Response &response) {
            world.setPaused(paused);
            reply(response, {{"ok", true}});
        };
    };
    server.Post("/api/pause", pause(true));
    server.Post("/api/resume", pause(false));
    server.Post(R"(/api/history/apply/(-?\d+))", [&](const Request &request, Response &response) {
        world.apply(std::stoll(request.matches[1].str()));
        reply(response, {{"ok", true}});
    });
    server.Delete("/api/history", [&](const Request &, Response &response) {
        world.clearHistory();
        reply(response, {{"ok", true}});
    });
    server.Delete(R"(/api/devices/(.+))", [&](const Request &request, Response &response) {
        if (world.removeDevice(request.matches[1]))
            reply(response, {{"ok", true}});
        else
            refuse(response, 404, "no such device");
    });
    server.Post("/api/pair/show",
                [&](const Request &, Response &response) { reply(response, world.showPin()); });
    server.Post("/api/pair/connect", [&](const Request &request, Response &response) {
        reply(response, world.connect(Json::parse(request.body)));
    });
    server.Post("/api/accessibility/prompt", [&](const Request &, Response &response) {
        world.promptAccessibility();
        reply(response, {{"ok", true}});
    });
}

} // namespace sim
