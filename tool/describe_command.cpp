// "quillbrook describe": what files are, and what is in them.

#include "tool/command.h"
#include "tool/file_description.h"
#include "tool/output_files.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"

#include <iostream>

namespace tool {
namespace {

struct DescribeJob {
    std::vector<std::string> paths;
    DescriptionInput input;
    std::string json;
    bool overwrite = false;
};

JobResult run(const DescribeJob& job) {
    receive_tables(true);
    if (!job.json.empty()) {
        check_output("--json", job.json, job.paths, {});
        hold_outputs({job.json}, job.overwrite);
    }
    std::vector<FileDescription> files;
    bool all_read = true;
    for (const std::string& path : job.paths) {
        const FileDescription& file = files.emplace_back(describe_file(path, job.input));
        if (file.fault.empty())
            std::cout << one_line(path) << ": " << told_description(file) << '\n';
        else
            std::cerr << "quillbrook: " << one_line(file.fault) << '\n';
        all_read = all_read && file.fault.empty();
    }
    if (!job.json.empty()) deliver_bytes(job.json, description_document(files));
    return all_read ? JobResult(exit_done) : JobResult::found();
}

void add_options(OptionTable& options, DescribeJob& job) {
    options.add({
        {"FILE", "", "Edits, logs and tables of any kind", InputFiles{job.paths}, Needed::yes},
        {"--sequence", "NAME", "Which sequence of a file that holds several", job.input.sequence},
        rate(job.input.rate, "Frames a second, in place of what the files say"),
        {"--json", "FILE", "What they are as a JSON document too", job.json},
        {"--overwrite", "", "Replace a document that is there", job.overwrite},
    });
}

constexpr const char* examples = R"(Examples:
  quillbrook describe reel.otio days.ale weir.cdb
      what each of them is, its tracks, rate and rolls
  quillbrook describe reel.edl --rate 25 --json files.json
      the same for programs too

Exit status: 0 all were read, 1 not all of them.)";

} // namespace

extern const Command describe_command{"describe", "Tell what files are and what is in them", examples,
                                      prepare<DescribeJob, add_options, run>};

} // namespace tool
