#include "web/server/page_server.h"

#include <httplib.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>

namespace web {
namespace {

namespace fs = std::filesystem;

constexpr const char* address = "127.0.0.1";

struct Kind {
    const char* extension;
    const char* type;
};
constexpr Kind kinds[] = {
    {".html", "text/html; charset=utf-8"},
    {".js", "text/javascript; charset=utf-8"},
    {".css", "text/css; charset=utf-8"},
    {".json", "application/json"},
    {".svg", "image/svg+xml"},
    {".wasm", "application/wasm"},
};

const char* type_of(const fs::path& path) {
    const auto found = std::find_if(std::begin(kinds), std::end(kinds),
                                    [&](const Kind& kind) { return path.extension() == kind.extension; });
    return found == std::end(kinds) ? "application/octet-stream" : found->type;
}

struct PageFile {
    fs::path path;
    std::string mark; ///< tells versions of it apart
};

std::string mark_of(const fs::directory_entry& entry) {
    const auto changed = entry.last_write_time().time_since_epoch().count();
    return '"' + std::to_string(entry.file_size()) + '-' + std::to_string(changed) + '"';
}

/// By what is asked for: "/js/main.js". Asking for anything else finds nothing, however it is written.
using PageFiles = std::map<std::string, PageFile>;

PageFiles files_of(const fs::path& folder) {
    PageFiles files;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder))
        if (entry.is_regular_file() && !entry.is_symlink())
            files['/' + entry.path().lexically_relative(folder).generic_string()] = {entry.path(), mark_of(entry)};
    if (const auto start = files.find("/index.html"); start != files.end()) files["/"] = start->second;
    return files;
}

/// Pages of other places reach this one by a name of theirs that leads here; they don't get an answer.
bool names_this_machine(const httplib::Request& request, int port) {
    const std::string host = request.get_header_value("Host");
    for (const char* name : {address, "localhost"})
        if (host == name || host == name + (':' + std::to_string(port))) return true;
    return false;
}

void answer(const PageFile& file, const httplib::Request& request, httplib::Response& response) {
    response.set_header("ETag", file.mark);
    if (request.get_header_value("If-None-Match") == file.mark) {
        response.status = 304;
        return;
    }
    std::ifstream in(file.path, std::ios::binary);
    std::string bytes{std::istreambuf_iterator<char>(in), {}};
    if (!in.is_open())
        response.status = 404;
    else
        response.set_content(std::move(bytes), type_of(file.path));
}

/// A port that another program listens at is taken; one that was just left is free.
void take_port_alone(socket_t socket) {
    const int yes = 1;
    ::setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
}

void set_up(httplib::Server& server, const PageFiles& files, const int& port) {
    server.set_socket_options(take_port_alone);
    server.set_default_headers({{"Cache-Control", "no-cache"},
                                {"X-Content-Type-Options", "nosniff"},
                                {"Cross-Origin-Resource-Policy", "same-origin"},
                                {"Content-Security-Policy", "frame-ancestors 'none'"}});
    server.set_pre_routing_handler([&](const httplib::Request& request, httplib::Response& response) {
        using Outcome = httplib::Server::HandlerResponse;
        const bool gets = request.method == "GET" || request.method == "HEAD";
        if (gets && names_this_machine(request, port)) return Outcome::Unhandled;
        response.status = gets ? 403 : 405;
        return Outcome::Handled;
    });
    server.Get(".*", [&](const httplib::Request& request, httplib::Response& response) {
        const auto found = files.find(request.path);
        if (found == files.end())
            response.status = 404;
        else
            answer(found->second, request, response);
    });
}

} // namespace

std::string serve_page(const PageServer& wanted) {
    std::error_code trouble;
    if (!fs::is_regular_file(fs::path(wanted.folder) / "index.html", trouble))
        return wanted.folder + ": holds no page; \"./demo --web\" builds it, and an install puts it in its place";
    const PageFiles files = files_of(wanted.folder);
    httplib::Server server;
    int port = wanted.port;
    set_up(server, files, port);
    if (port == 0)
        port = server.bind_to_any_port(address);
    else if (!server.bind_to_port(address, port))
        port = -1;
    if (port < 0) return "port " + std::to_string(wanted.port) + " is taken or not allowed; --port takes another";
    wanted.ready(port);
    return server.listen_after_bind() ? "" : "serving ended";
}

} // namespace web

void quillbrook_serve_page(const web::PageServer& server, std::string& fault) {
    try {
        fault = web::serve_page(server);
    } catch (const std::exception& error) {
        fault = error.what();
    }
}
