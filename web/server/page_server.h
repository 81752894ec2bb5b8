#pragma once
// Serves the files of a folder to browsers of this machine.

#include <functional>
#include <string>

namespace web {

struct PageServer {
    std::string folder;
    int port = 0;                        ///< 0: any that is free
    std::function<void(int port)> ready; ///< called once, when it listens
};

/// Listens on the loopback address until the process ends. Gives what is in the folder as it begins, to GET and HEAD,
/// and nothing else: no link out of it, no other name of this machine. Returns why it couldn't begin or go on.
std::string serve_page(const PageServer& server);

/// What the library is loaded by; fills `fault` with what `serve_page` returns.
using ServePage = void(const PageServer& server, std::string& fault);
constexpr const char* serve_page_name = "quillbrook_serve_page";

} // namespace web

extern "C" web::ServePage quillbrook_serve_page;
