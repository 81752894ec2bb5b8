#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sstream>

#include <fcntl.h>
#include <stdlib.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;

std::vector<char*> pointers(std::vector<std::string>& texts) {
    std::vector<char*> result;
    for (std::string& text : texts)
        result.push_back(text.data());
    result.push_back(nullptr);
    return result;
}

std::vector<std::string> environment_of(const std::map<std::string, std::string>& more) {
    std::map<std::string, std::string> values{{"LC_ALL", "C"}, {"TZ", "UTC"}, {"SOURCE_DATE_EPOCH", "0"}};
    // Under sanitizers the command needs to know what isn't ours.
    if (const char* leaks = std::getenv("LSAN_OPTIONS")) values["LSAN_OPTIONS"] = leaks;
    for (const auto& [key, value] : more)
        values[key] = value;
    std::vector<std::string> result;
    for (const auto& [key, value] : values)
        result.push_back(key + '=' + value);
    return result;
}

// Between fork and exec, so only what is safe there.
[[noreturn]] void become_tool(const char* folder, const char* in, const char* out, const char* err,
                              char* const* arguments, char* const* environment) {
    const int in_file = open(in, O_RDONLY);
    const int out_file = open(out, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    const int err_file = open(err, O_WRONLY | O_CREAT | O_TRUNC, 0600);
    if (chdir(folder) == 0 && dup2(in_file, 0) >= 0 && dup2(out_file, 1) >= 0 && dup2(err_file, 2) >= 0)
        execve(arguments[0], arguments, environment);
    _exit(127);
}

// The command that was built beside the tests, or another one to try.
std::string tool_path() {
    const char* other = getenv("QUILLBROOK_TOOL");
    return other ? other : QUILLBROOK_TOOL;
}

std::string contents(const std::string& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

constexpr const char* words_of_trouble[] = {"wrong", "doubt", "note", "warning", "error", "quillbrook"};

void part_progress(const std::string& told, ToolResult& result) {
    std::istringstream lines(told);
    for (std::string line; std::getline(lines, line);) {
        const std::string word = line.substr(0, line.find(": "));
        const bool trouble =
            std::find(std::begin(words_of_trouble), std::end(words_of_trouble), word) != std::end(words_of_trouble);
        (trouble ? result.err : result.progress) += line + '\n';
    }
}

std::string rational(int frames) {
    return R"({"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":)" + std::to_string(frames) + '}';
}

std::string range(int start, int length) {
    return R"({"OTIO_SCHEMA":"TimeRange.1","start_time":)" + rational(start) + R"(,"duration":)" + rational(length) +
           '}';
}

std::string clip(const std::string& reel, const std::string& key, int start, int length) {
    return R"({"OTIO_SCHEMA":"Clip.1","name":")" + reel + R"(","source_range":)" + range(start, length) +
           R"(,"media_reference":{"OTIO_SCHEMA":"ExternalReference.1","target_url":"file:///)" + reel +
           R"(.mov","available_range":)" + range(0, 4000) + R"(,"metadata":{"quillbrook":{"reel":")" + reel +
           R"(","cam_reel":")" + reel + R"(","keycode":")" + key + R"("}}}})";
}

std::string track(const std::string& kind, const std::string& children) {
    return R"({"OTIO_SCHEMA":"Track.1","kind":")" + kind + R"(","children":[)" + children + "]}";
}

} // namespace

ToolTest::ToolTest() {
    std::string name = (fs::temp_directory_path() / "quillbrook-test-XXXXXX").string();
    if (!mkdtemp(name.data())) throw fs::filesystem_error("mkdtemp", name, {errno, std::generic_category()});
    folder_ = name;
}

ToolTest::~ToolTest() {
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

ToolResult ToolTest::run(const std::vector<std::string>& arguments,
                         const std::map<std::string, std::string>& environment) const {
    return run_with_input("", arguments, environment);
}

ToolResult ToolTest::run_with_input(const std::string& input, const std::vector<std::string>& arguments,
                                    const std::map<std::string, std::string>& environment) const {
    std::vector<std::string> line{tool_path()};
    line.insert(line.end(), arguments.begin(), arguments.end());
    std::vector<std::string> settings = environment_of(environment);
    const std::vector<char*> argv = pointers(line);
    const std::vector<char*> envp = pointers(settings);
    static std::atomic<int> runs = 0; // some tests have several at once
    const std::string beside = folder_.string() + '-' + std::to_string(++runs);
    const std::string out = beside + ".out";
    const std::string err = beside + ".err";
    const std::string in = beside + ".in";
    std::ofstream(in, std::ios::binary) << input;

    const pid_t child = fork();
    if (child == 0) become_tool(folder_.c_str(), in.c_str(), out.c_str(), err.c_str(), argv.data(), envp.data());
    int status = 0;
    waitpid(child, &status, 0);
    ToolResult result{WIFEXITED(status) ? WEXITSTATUS(status) : -1, contents(out), "", ""};
    part_progress(contents(err), result);
    fs::remove(in);
    fs::remove(out);
    fs::remove(err);
    return result;
}

ToolResult ToolTest::expect_done(const std::vector<std::string>& arguments) const {
    const ToolResult result = run(arguments);
    EXPECT_EQ(result.status, 0) << result.err;
    return result;
}

void ToolTest::expect_failure(const std::vector<std::string>& arguments, int status, const std::string& text) const {
    const std::vector<std::string> before = names();
    const ToolResult result = run(arguments);
    EXPECT_EQ(result.status, status) << result.out;
    EXPECT_THAT(result.err, testing::HasSubstr(text));
    EXPECT_EQ(result.err.find('\n'), result.err.size() - 1) << result.err;
    EXPECT_EQ(names(), before);
}

std::vector<std::string> ToolTest::names() const {
    std::vector<std::string> result;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder_))
        result.push_back(fs::relative(entry.path(), folder_).string());
    std::sort(result.begin(), result.end());
    return result;
}

std::string ToolTest::read(const std::string& name) const { return contents(path(name)); }

void ToolTest::write(const std::string& name, const std::string& bytes) const {
    std::ofstream(path(name), std::ios::binary) << bytes;
}

void ToolTest::write_edit(const std::string& name) const {
    const std::string pictures =
        clip("A001", "KJ1234560100+00", 10, 48) + ',' + clip("A002", "KJ6543210200+00", 20, 36);
    const std::string sound = clip("S001", "KJ1111110100+00", 0, 84);
    write(name, R"({"OTIO_SCHEMA":"Timeline.1","name":"Two shots","metadata":{"quillbrook":{"project":"Heron",)"
                R"("modification_time":86400}},"global_start_time":)" +
                    rational(86400) + R"(,"tracks":{"OTIO_SCHEMA":"Stack.1","children":[)" + track("Video", pictures) +
                    ',' + track("Audio", sound) + "]}}");
}
