#include "tool/run_request.h"

#include "embedded/transaction.h"
#include "tool/environment.h"
#include "tool/output_files.h"

#include <iostream>

namespace tool {
namespace {

struct Runner {
    int operator()(const std::string& text) const {
        std::cout << text;
        return exit_done;
    }
    int operator()(const std::function<JobResult()>& job) const {
        check_environment();
        tell_unknown_variables();
        embedded::Transaction run;
        const JobResult result = job();
        std::cout.flush();
        std::string why;
        if (!result.keeps_files || !std::cout) return result.status;
        check_written();
        check_tables_read();
        if (!run.commit(&why)) throw JobError(why);
        return result.status;
    }
};

} // namespace

int run_request(const Request& request) { return std::visit(Runner{}, request); }

} // namespace tool
