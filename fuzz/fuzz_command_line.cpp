// Any lines as the arguments of the command, run as a job in a folder of small files that is made anew each time. A
// line that fails leaves the folder as it was, and none leaves anything but its outputs. Arguments with a slash aren't
// tried, so that nothing outside of the folder is ever named.

#include "changelist/changelist_options.h"
#include "cutlist/cutlist_options.h"
#include "embedded/services.h"
#include "embedded/table_door.h"
#include "tests/support/environment.h"
#include "tests/support/scratch_directory.h"
#include "tool/run_request.h"

#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <map>
#include <streambuf>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

namespace fs = std::filesystem;

constexpr std::size_t longest_line = 2048;
constexpr std::size_t most_arguments = 40;

using Files = std::map<std::string, std::string>;
using Arguments = std::vector<std::string>;

constexpr const char* edit_list = "TITLE: SMALL\nFCM: NON-DROP FRAME\n"
                                  "001  V001 V C        01:00:00:00 01:00:02:00 10:00:00:00 10:00:02:00\n"
                                  "002  V001 V C        01:00:04:00 01:00:04:00 10:00:02:00 10:00:02:00\n"
                                  "002  V002 V D    012 01:00:05:00 01:00:06:00 10:00:02:00 10:00:03:00\n";
constexpr const char* log =
    "Heading\nFIELD_DELIM\tTABS\nVIDEO_FORMAT\tPAL\nFPS\t25\nFILM_FORMAT\t35mm,4perf\n\nColumn\n"
    "Name\tTape\tStart\tEnd\tCamroll\tKN Start\n\nData\n"
    "one\tV001\t01:00:00:00\t02:00:00:00\tA001\tKJ 12 3456-0100+00\n";

Arguments arguments_of(const std::string& bytes) {
    Arguments arguments;
    for (std::size_t at = 0; at <= bytes.size();) {
        const std::size_t end = std::min(bytes.find('\n', at), bytes.size());
        arguments.push_back(bytes.substr(at, end - at));
        at = end + 1;
    }
    return arguments;
}

/// What is told goes nowhere.
class Nowhere : public std::streambuf {
    int overflow(int c) override { return traits_type::not_eof(c); }
};

/// The folder that lines are run in.
class Bench {
public:
    Bench() {
        for (const char* folder : {"tmp", "work"})
            fs::create_directory(scratch_.file(folder));
        fs::current_path(scratch_.file("work"));
        ::setenv("TMPDIR", scratch_.file("tmp").c_str(), 1);
        std::cout.rdbuf(&nowhere_);
        std::cerr.rdbuf(&nowhere_);
        if (!std::freopen("/dev/null", "r", stdin)) std::abort();
        files_ = {{"a.edl", edit_list}, {"a.ale", log}};
        fill();
        for (const Arguments& line : {Arguments{"cutlist", "a.edl", "--rate", "25", "-o", "a.txt"},
                                      Arguments{"cutlist", "a.edl", "--rate", "25", "-o", "b.txt", "--neg-cut"},
                                      Arguments{"log", "import", "a.ale", "-o", "a.RDB"}})
            if (run(line) != tool::exit_done) std::abort();
        files_ = present();
    }

    void fill() const {
        for (const fs::directory_entry& entry : fs::directory_iterator("."))
            fs::remove_all(entry.path());
        for (const auto& [name, bytes] : files_)
            put_bytes(name, bytes);
    }
    const Files& files() const { return files_; }
    static Files present() {
        Files found;
        for (const fs::directory_entry& entry : fs::directory_iterator("."))
            found[entry.path().filename().string()] = bytes_of_file(entry.path().string());
        return found;
    }
    /// The exit status.
    static int run(const Arguments& arguments) {
        cutlist_options() = CutlistOptions();
        changelist_options() = ChangelistOptions();
        embedded::clear_host_settings();
        embedded::set_lists_directory("");
        embedded::receive_tables(nullptr);
        embedded::take_write_failure(nullptr);
        embedded::take_read_failure(nullptr, nullptr);
        std::cout.clear();
        std::vector<const char*> pointers{"quillbrook"};
        for (const std::string& argument : arguments)
            pointers.push_back(argument.c_str());
        try {
            return tool::run_request(tool::parse_command_line(static_cast<int>(pointers.size()), pointers.data()));
        } catch (const tool::UsageError&) {
            return tool::exit_wrong_usage;
        } catch (const tool::JobError&) {
            return tool::exit_failed;
        }
    }

private:
    ScratchDirectory scratch_;
    EnvironmentValue now_{"SOURCE_DATE_EPOCH", "1000000000"};
    Nowhere nowhere_;
    Files files_;
};

/// What a failed line may have made all the same: the document of what a check found.
bool keeps_documents(const Arguments& arguments) { return !arguments.empty() && arguments.front() == "check"; }

bool is_own_name(const std::string& name) {
    return name.rfind(".quillbrook", 0) == 0 || name.rfind("quillbrook-", 0) == 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static Bench& bench = *new Bench;
    if (size > longest_line) return 0;
    const std::string bytes(reinterpret_cast<const char*>(data), size);
    if (bytes.find('/') != std::string::npos || bytes.find('\0') != std::string::npos) return 0;
    const Arguments arguments = arguments_of(bytes);
    if (arguments.size() > most_arguments) return 0;
    bench.fill();
    const int status = Bench::run(arguments);
    const Files left = Bench::present();
    for (const auto& [name, text] : left)
        if (is_own_name(name)) std::abort();
    const bool failed = status == tool::exit_failed || status == tool::exit_wrong_usage;
    if (failed && !keeps_documents(arguments) && left != bench.files()) std::abort();
    return 0;
}
