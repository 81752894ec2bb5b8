// "quillbrook web": the page for browsers, served to those of this machine.

#include "tool/command.h"
#include "tool/loaded_library.h"
#include "tool/tool_error.h"
#include "web/server/page_server.h"

#include <filesystem>
#include <iostream>

namespace tool {
namespace {

constexpr int usual_port = 8417;

struct WebJob {
    int port = usual_port;
    std::string folder; ///< empty: where an install puts it
};

/// Beside the command of an install: PREFIX/bin and PREFIX/share.
std::string installed_folder() {
    std::error_code trouble;
    const std::filesystem::path command = std::filesystem::read_symlink("/proc/self/exe", trouble);
    return (command.parent_path().parent_path() / "share/quillbrook/web").string();
}

int run(const WebJob& job) {
    web::PageServer server;
    server.folder = job.folder.empty() ? installed_folder() : job.folder;
    server.port = job.port;
    server.ready = [](int port) {
        std::cout << "http://127.0.0.1:" << port << "/ is the page; Ctrl-C ends it" << std::endl;
    };
    void* const entry = loaded_entry(QUILLBROOK_WEB_LIBRARY, web::serve_page_name, "the page can't be served");
    std::string fault;
    reinterpret_cast<web::ServePage*>(entry)(server, fault);
    if (!fault.empty()) throw JobError(fault);
    return exit_done;
}

void add_options(OptionTable& options, WebJob& job) {
    options.add({
        {"--port", "N", "The port of this machine to serve it at; 0 takes any that is free",
         WholeNumber{job.port, 0, 65535}},
        {"--folder", "DIR", "The page, where it isn't the one that was installed with the command", job.folder},
    });
}

constexpr const char* examples = R"(Examples:
  quillbrook web
      serves the page of the install to browsers of this machine, until Ctrl-C
  quillbrook web --folder out/web --port 8000
      the one that "./demo --web" built)";

} // namespace

extern const Command web_command{"web", "Serve the page for browsers to this machine", examples,
                                 prepare<WebJob, add_options, run>};

} // namespace tool
