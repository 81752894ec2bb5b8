// Files that hold several sequences, and the one that is meant.

#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <filesystem>

using testing::HasSubstr;
using testing::StartsWith;

namespace {

std::string timeline(const std::string& name, const std::string& shot) {
    return R"({"OTIO_SCHEMA": "Timeline.1", "name": ")" + name +
           R"(", "tracks": {"OTIO_SCHEMA": "Stack.1", "children": [
        {"OTIO_SCHEMA": "Track.1", "kind": "Video", "children": [{"OTIO_SCHEMA": "Clip.1", "name": ")" +
           shot + R"(", "source_range": {"OTIO_SCHEMA": "TimeRange.1",
              "start_time": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 0},
              "duration": {"OTIO_SCHEMA": "RationalTime.1", "rate": 24, "value": 10}}}]}]}})";
}

class Sequences : public ToolTest {
protected:
    void write_reels(const std::vector<std::string>& names) {
        std::string children;
        for (const std::string& name : names)
            children += (children.empty() ? "" : ",") + timeline(name, "of " + name);
        write("reels.otio", R"({"OTIO_SCHEMA": "SerializableCollection.1", "children": [)" + children + "]}");
    }
    std::string shown(const std::vector<std::string>& more) {
        std::vector<std::string> line{"edit", "show", "reels.otio"};
        line.insert(line.end(), more.begin(), more.end());
        const ToolResult result = run(line);
        return result.out + result.err;
    }
};

TEST_F(Sequences, AreListedWithRateAndPlace) {
    write_reels({"Reel 1", "Reel 2"});
    EXPECT_EQ(shown({"--sequences"}), "\"Reel 1\", 24fps, timeline 1\n\"Reel 2\", 24fps, timeline 2\n");
}

TEST_F(Sequences, OneIsChosenByName) {
    write_reels({"Reel 1", "Reel 2"});
    EXPECT_THAT(shown({"--sequence", "Reel 2"}), StartsWith("Edit \"Reel 2\""));
}

TEST_F(Sequences, TheFirstTimelineOfACollectionCountsButNotUnheard) {
    write_reels({"Reel 1", "Reel 2"});
    const std::string text = shown({});
    EXPECT_THAT(text, StartsWith("Edit \"Reel 1\""));
    EXPECT_THAT(text, HasSubstr("the first is read: \"Reel 1\" (timeline 1), \"Reel 2\" (timeline 2)"));
}

TEST_F(Sequences, ANameThatIsntThereIsRefusedWithThoseThatAre) {
    write_reels({"Reel 1", "Reel 2"});
    EXPECT_THAT(shown({"--sequence", "Reel 3"}),
                HasSubstr("reels.otio: holds no sequence \"Reel 3\", but \"Reel 1\" (timeline 1), \"Reel 2\" "
                          "(timeline 2); name one with --sequence"));
}

TEST_F(Sequences, ANameOfSeveralIsRefused) {
    write_reels({"Reel", "Reel"});
    EXPECT_THAT(shown({"--sequence", "Reel"}),
                HasSubstr("holds several sequences \"Reel\": \"Reel\" (timeline 1), \"Reel\" (timeline 2); name one as "
                          "\"Reel (timeline 1)\""));
    EXPECT_THAT(shown({"--sequence", "Reel (timeline 2)"}), StartsWith("Edit \"Reel\""));
}

TEST_F(Sequences, TheOnlyOneMustHaveTheNameToo) {
    write("one.edl", "TITLE: REEL 1\n001  A001 V C 01:00:10:00 01:00:12:00 10:00:00:00 10:00:02:00\n");
    const auto show = [&](const std::string& name) {
        return run({"edit", "show", "one.edl", "--rate", "24", "--sequence", name});
    };
    EXPECT_EQ(show("REEL 1").status, 0);
    EXPECT_THAT(show("REEL 2").err, HasSubstr("one.edl: holds no sequence \"REEL 2\", but \"REEL 1\""));
    EXPECT_EQ(run({"edit", "show", "one.edl", "--rate", "24", "--sequences"}).out, "\"REEL 1\", 24fps\n");
}

const char* const titled_project =
    R"(<fcpxml version="1.11"><resources><format id="r" frameDuration="1/24s"/><effect id="t" name="Title"/>)"
    R"(<asset id="m" name="A012" start="3600s" duration="99s" hasVideo="1" format="r"/></resources><event>)"
    R"(<project name="Reel 3"><sequence format="r"><spine><title ref="t" name="Opening" duration="1s"/>)"
    R"(<asset-clip ref="m" name="Harbour" start="3605s" duration="2s"/></spine></sequence></project></event></fcpxml>)";

TEST_F(ToolTest, AProjectOfFcpxmlBecomesACutlist) {
    write("reel.fcpxml", titled_project);
    EXPECT_THAT(run({"edit", "show", "reel.fcpxml", "--sequences"}).out, StartsWith("\"Reel 3\", 24fps, line 1\n"));
    const ToolResult result = run({"cutlist", "reel.fcpxml", "-o", "reel.txt"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(read("reel.txt"), HasSubstr("Harbour"));
}

TEST_F(ToolTest, AFolderOfFcpxmlIsTakenAsAnEdit) {
    std::filesystem::create_directory(path("reel.fcpxmld"));
    write("reel.fcpxmld/Info.fcpxml", titled_project);
    const ToolResult result = run({"cutlist", "reel.fcpxmld", "-o", "reel.txt"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(read("reel.txt"), HasSubstr("Harbour"));
}

const char* const film_sequence =
    R"(<?xml version="1.0"?><!DOCTYPE xmeml><xmeml version="5"><bin><children><sequence id="s"><name>Reel 4</name>)"
    R"(<rate><timebase>24</timebase><ntsc>TRUE</ntsc></rate><media><video><track>)"
    R"(<generatoritem><name>Opening</name><start>0</start><end>24</end><effect><effectid>Text</effectid></effect>)"
    R"(</generatoritem><clipitem><name>Harbour</name><start>24</start><end>72</end><in>100</in><out>148</out>)"
    R"(<file id="f"><name>A012.mov</name></file><filmdata><cameraroll>A012</cameraroll><keycode>)"
    R"(<prefix>KJ291010</prefix><feetframes>5867+00</feetframes></keycode></filmdata></clipitem>)"
    R"(</track></video></media></sequence></children></bin></xmeml>)";

TEST_F(ToolTest, ASequenceOfFcp7XmlBecomesACutlistWithItsKeyNumbers) {
    write("reel.xml", film_sequence);
    EXPECT_EQ(run({"edit", "show", "reel.xml", "--sequences"}).out, "\"Reel 4\", 23.976fps, line 1\n");
    const ToolResult result = run({"cutlist", "reel.xml", "-o", "reel.txt"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(read("reel.txt"), HasSubstr("Harbour"));
    EXPECT_THAT(read("reel.txt"), HasSubstr("KJ2910105873+04"));
}

} // namespace
