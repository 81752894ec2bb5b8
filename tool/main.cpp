// quillbrook: film lists from edits.

#include "tool/command_line.h"
#include "tool/tool_error.h"

#include <exception>
#include <iostream>

namespace {

struct Runner {
    int operator()(const std::string& text) const {
        std::cout << text;
        return tool::exit_done;
    }
    int operator()(const std::function<int()>& job) const { return job(); }
};

int tell(const std::exception& error, int status) {
    std::cerr << "quillbrook: " << error.what() << '\n';
    return status;
}

} // namespace

int main(int argc, char** argv) {
    try {
        const int status = std::visit(Runner{}, tool::parse_command_line(argc, argv));
        std::cout.flush();
        return std::cout ? status : tell(tool::JobError("standard output couldn't be written"), tool::exit_failed);
    } catch (const tool::UsageError& error) {
        return tell(error, tool::exit_wrong_usage);
    } catch (const std::exception& error) {
        return tell(error, tool::exit_failed);
    } catch (...) {
        return tell(tool::JobError("an unknown failure"), tool::exit_failed);
    }
}
