// Names that try to add rows, pages or lines to what the command makes, inputs without an end, and lines and names that
// are too long.

#include "tests/tool/tool_process.h"

#include <algorithm>

namespace {

using Names = std::vector<std::string>;

std::string rational(int frames) {
    return R"({"OTIO_SCHEMA":"RationalTime.1","rate":24,"value":)" + std::to_string(frames) + '}';
}

std::string range(int start, int length) {
    return R"({"OTIO_SCHEMA":"TimeRange.1","start_time":)" + rational(start) + R"(,"duration":)" + rational(length) +
           '}';
}

std::string clip(const std::string& name, const std::string& reel, int start) {
    return R"({"OTIO_SCHEMA":"Clip.1","name":")" + name + R"(","source_range":)" + range(start, 48) +
           R"(,"effects":[{"OTIO_SCHEMA":"Effect.1","name":")" + name + R"(","effect_name":"Blur)" + name +
           R"("}],"media_reference":{"OTIO_SCHEMA":"ExternalReference.1","target_url":"file:///)" + reel +
           R"(.mov","available_range":)" + range(0, 4000) + R"(,"metadata":{"quillbrook":{"reel":")" + reel +
           R"(","cam_reel":")" + reel + R"(","scene":")" + name + R"(","keycode":"KJ1234560100+00"}}}})";
}

/// An edit whose names, reels and titles all end in `tail`, which stands in JSON as it is.
std::string edit_with(const std::string& tail) {
    return R"({"OTIO_SCHEMA":"Timeline.1","name":"reel)" + tail + R"(","metadata":{"quillbrook":{"project":"show)" +
           tail +
           R"("}},"tracks":{"OTIO_SCHEMA":"Stack.1","children":[{"OTIO_SCHEMA":"Track.1","kind":"Video","children":[)" +
           clip("a" + tail, "R1" + tail, 10) + ',' + clip("b" + tail, "R2" + tail, 200) + ',' +
           clip("c" + tail, "R1" + tail, 20) + "]}]}}";
}

struct Shape {
    long lines, pages, escapes;
    bool operator==(const Shape&) const = default;
};

Shape shape_of(const std::string& bytes) {
    return {std::count(bytes.begin(), bytes.end(), '\n'), std::count(bytes.begin(), bytes.end(), '\f'),
            std::count(bytes.begin(), bytes.end(), '\x1b')};
}

class ForgedNames : public ToolTest {
protected:
    /// What all commands make of an edit, by file.
    std::map<std::string, Shape> shapes(const std::string& tail) {
        write("a.otio", edit_with(tail));
        std::string said;
        const auto done = [&](const Names& arguments) {
            const ToolResult result = run(arguments);
            EXPECT_EQ(result.status, 0) << result.err;
            said += result.err;
            return shape_of(result.out);
        };
        std::map<std::string, Shape> found;
        done({"cutlist", "a.otio", "-o", "a.txt", "--all-effects", "--single-layer", "1,2,3,4", "--overwrite"});
        done({"print", "a.cdb", "-o", "again.txt", "--overwrite"});
        done({"changelist", "--old", "a.cdb", "--new", "a.cdb", "-o", "changes.txt", "--json", "changes.json",
              "--overwrite", "--lists", "summary,new,changes,transitions,bench"});
        found["edit show"] = done({"edit", "show", "a.otio"});
        for (const std::string& name : names())
            if (name != "a.otio") found[name] = shape_of(read(name));
        told = said;
        return found;
    }

    std::string told;
};

TEST_F(ForgedNames, AddNeitherLinesNorPagesToAnything) {
    const std::map<std::string, Shape> plain = shapes("_");
    EXPECT_EQ(told.find("control"), std::string::npos);
    for (const char* tail :
         {"\\nX", "\\r\\n", "\\fX", "\\u001b[2J", "\\u0085X", "\\u2028X", "\\u0000X", "\\t", "\\u007f"}) {
        EXPECT_TRUE(shapes(tail) == plain) << tail;
        EXPECT_NE(told.find("control characters are shown by signs"), std::string::npos) << tail;
    }
}

TEST_F(ForgedNames, NeitherDoThoseOfATableMadeByOthers) {
    shapes("_");
    const std::string table = read("a.cdb");
    const auto pages = shape_of(read("again.txt"));
    std::string forged = table.substr(0, table.find("%end"));
    for (std::size_t at = 0; (at = forged.find("R1_", at)) != std::string::npos; at += 3)
        forged.replace(at, 3, "R\\n1");
    forged.replace(0, forged.find('\n'), "%recdb 1");
    write("b.cdb", forged);
    const ToolResult printed = run({"print", "b.cdb", "-o", "b.txt"});
    EXPECT_EQ(printed.status, 0);
    EXPECT_NE(printed.err.find("control characters are shown by signs"), std::string::npos) << printed.err;
    EXPECT_TRUE(shape_of(read("b.txt")) == pages);
}

TEST_F(ForgedNames, AMessageIsOneLineWhateverAPathHolds) {
    const ToolResult result = run({"print", "no\nsuch\x1b[2J.cdb", "-o", "b.txt"});
    EXPECT_EQ(result.status, 1);
    const Shape shape = shape_of(result.err);
    EXPECT_EQ(shape.lines, 1);
    EXPECT_EQ(shape.escapes, 0);
}

class TooMuch : public ToolTest {
protected:
    void expect_refused(const Names& arguments, const std::string& why) {
        const ToolResult result = run(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_NE(result.err.find(why), std::string::npos) << result.err;
        EXPECT_FALSE(exists("out.txt"));
    }
};

TEST_F(TooMuch, AFileOrADeviceEndsAtTheLimit) {
    write("big.otio", std::string((1 << 20) + 1, ' '));
    expect_refused({"cutlist", "big.otio", "-o", "out.txt", "--max-input", "1"}, "larger than 1 MiB");
    expect_refused({"edit", "show", "/dev/zero", "--max-input", "2"}, "larger than 2 MiB");
    expect_refused({"log", "show", "/dev/zero", "--max-input", "2"}, "larger than 2 MiB");
    write("big.cdb", std::string((1 << 20) + 1, ' '));
    expect_refused({"print", "big.cdb", "-o", "out.txt", "--max-input", "1"}, "larger than 1 MiB");
}

/// An edit list of so many shots of a roll.
std::string shots(int count) {
    std::string text = "TITLE: LONG\n";
    const auto at = [](int frame) {
        char time[32];
        std::snprintf(time, sizeof time, " %02d:%02d:%02d:%02d", 1 + frame / 24 / 3600, frame / 24 / 60 % 60,
                      frame / 24 % 60, frame % 24);
        return std::string(time);
    };
    for (int shot = 0; shot < count; ++shot)
        text += std::to_string(shot + 1) + " A V C" + at(shot * 20) + at(shot * 20 + 10) + at(shot * 10) +
                at(shot * 10 + 10) + "\n";
    return text;
}

TEST_F(TooMuch, WhatTheRunMakesItselfHasNoLimit) {
    constexpr std::size_t limit = 1 << 20;
    write("a.edl", shots(7000));
    const std::vector<std::string> one{"--rate", "24", "--max-input", "1", "--quiet"};
    const auto done = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.end(), one.begin(), one.end());
        return expect_done(arguments);
    };
    EXPECT_GT(done({"cutlist", "a.edl", "-o", "-"}).out.size(), limit);
    done({"cutlist", "a.edl", "-o", "a.txt", "--lists", "rolls,pull,assembly,doubts", "--prove", "--html", "a.html"});
    EXPECT_GT(std::filesystem::file_size(path("a.txt")), limit);
    EXPECT_GT(std::filesystem::file_size(path("a.cdb")), limit);
    write("b.edl", shots(6999));
    done({"changelist", "--old", "a.edl", "--new", "b.edl", "-o", "changes.txt"});
    expect_refused({"print", "a.cdb", "-o", "again.txt", "--max-input", "1"}, "larger than 1 MiB");
}

TEST_F(TooMuch, SoDoesALine) {
    const std::string line = "TITLE: " + std::string(500, 'x') +
                             "\n001  R1  V  C  01:00:00:00 01:00:01:00 00:00:00:00 "
                             "00:00:01:00\n";
    write("a.edl", line);
    expect_refused({"edit", "show", "a.edl", "--rate", "25", "--max-line", "400"},
                   "a.edl: line 1 is longer than 400 bytes");
    EXPECT_EQ(run({"edit", "show", "a.edl", "--rate", "25"}).status, 0);
}

TEST_F(TooMuch, ANameIsCutAndTold) {
    write("a.otio", edit_with(std::string(100, 'x')));
    const ToolResult result = run({"cutlist", "a.otio", "-o", "a.txt", "--max-name", "50"});
    EXPECT_EQ(result.status, 0);
    EXPECT_NE(result.err.find("cut after 50 bytes"), std::string::npos) << result.err;
}

} // namespace
