#pragma once
// A command of the line. To add one: a file NAME_command.cpp with its job, the options of the job, what it does, and
//
//     extern const Command name_command{"name", "What it does", examples, prepare<NameJob, add_options, run>};
//
// then its row in tool/commands.cpp. tool/print_command.cpp is a short one to begin from.

#include "tool/limit_options.h"
#include "tool/option_table.h"
#include "tool/tool_error.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace tool {

/// A command with a job of its own: the line fills it by the options, then it is run.
struct Prepared {
    OptionTable options;
    std::function<JobResult()> run; ///< a failure that nothing was said of is a `JobError`
};

struct Command {
    const char* name; ///< "cutlist", "log import"
    const char* about;
    const char* examples; ///< the end of the help
    Prepared (*prepare)();
};

/// `run` takes the job, and returns its exit status or a `JobResult`.
template <class Job, void (*add_options)(OptionTable&, Job&), auto run> Prepared prepare() {
    const auto job = std::make_shared<Job>();
    Prepared prepared;
    add_options(prepared.options, *job);
    const auto limits = std::make_shared<LimitOptions>();
    limits->add_to(prepared.options);
    prepared.run = [job, limits]() -> JobResult {
        limits->apply();
        return run(*job);
    };
    return prepared;
}

/// Commands that begin with the same word.
struct CommandGroup {
    const char* name;
    const char* about;
};

extern const char* const about;
extern const char* const main_examples;

/// In the order of the help. Those of a group stand together.
const std::vector<const Command*>& all_commands();
/// The group of a command such as "log import"; null where it stands by itself.
const CommandGroup* group_of(const Command& command);

} // namespace tool
