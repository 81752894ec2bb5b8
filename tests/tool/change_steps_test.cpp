// The steps of "quillbrook changelist": the file for scripts, and what --prove says of them.

#include "formats/json_document.h"
#include "tests/support/project_paths.h"
#include "tests/tool/cut_table.h"
#include "tests/tool/tool_process.h"

#include <gmock/gmock.h>

#include <fstream>
#include <sstream>

using formats::json_member;
using formats::json_string;
using formats::JsonValue;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using testing::StartsWith;

namespace {

const CutShot lamp{"KJ123456", 1600, 48, "Lamp", "12", "3", "AA121003+00"};
const CutShot wick{"KJ654321", 3200, 36, "Wick", "12A", "1"};
const CutShot street{"KN111111", 160, 24, "Street", "13", "2"};

std::string source_file(const std::string& name) {
    std::ostringstream bytes;
    bytes << std::ifstream(project_folder() + "/" + name, std::ios::binary).rdbuf();
    return bytes.str();
}

// The words of the schema that it uses are all that these understand.

bool has_type(const JsonValue& value, std::string_view type) {
    if (type == "object") return value.IsObject();
    if (type == "array") return value.IsArray();
    if (type == "string") return value.IsString();
    if (type == "integer") return value.IsInt();
    if (type == "number") return value.IsNumber();
    return type == "null" && value.IsNull();
}

bool has_one_of_types(const JsonValue& value, const JsonValue& types) {
    if (types.IsString()) return has_type(value, json_string(&types));
    for (const JsonValue& type : types.GetArray())
        if (has_type(value, json_string(&type))) return true;
    return false;
}

bool is_one_of(const JsonValue& value, const JsonValue& choices) {
    for (const JsonValue& choice : choices.GetArray())
        if (value == choice) return true;
    return false;
}

class SchemaCheck {
public:
    explicit SchemaCheck(const JsonValue& schema) : root_(schema) {}

    void check(const JsonValue& value, const JsonValue& schema, const std::string& at) {
        if (json_member(schema, "$ref")) return check(value, *json_member(*json_member(root_, "$defs"), "step"), at);
        const JsonValue* types = json_member(schema, "type");
        const JsonValue* only = json_member(schema, "const");
        const JsonValue* choices = json_member(schema, "enum");
        const JsonValue* least = json_member(schema, "minimum");
        EXPECT_TRUE(!types || has_one_of_types(value, *types)) << at;
        EXPECT_TRUE(!only || value == *only) << at;
        EXPECT_TRUE(!choices || is_one_of(value, *choices)) << at;
        EXPECT_TRUE(!least || value.GetInt() >= least->GetInt()) << at;
        if (value.IsObject()) check_members(value, schema, at);
        if (value.IsArray())
            for (const JsonValue& item : value.GetArray())
                check(item, *json_member(schema, "items"), at + "[]");
    }

private:
    void check_members(const JsonValue& value, const JsonValue& schema, const std::string& at) {
        for (const JsonValue& name : json_member(schema, "required")->GetArray())
            EXPECT_TRUE(value.HasMember(name)) << at << " lacks " << json_string(&name);
        for (const auto& member : value.GetObject()) {
            const std::string name(json_string(&member.name));
            const JsonValue* described = json_member(*json_member(schema, "properties"), name);
            ASSERT_NE(described, nullptr) << at << " has " << name;
            check(member.value, *described, at + '.' + name);
        }
    }

    const JsonValue& root_;
};

class ChangeSteps : public ToolTest {
protected:
    void write_cuts(const std::vector<CutShot>& old_cut, const std::vector<CutShot>& new_cut) {
        write("old.cdb", cut_table(old_cut));
        write("new.cdb", cut_table(new_cut));
    }
    ToolResult change(const std::vector<std::string>& more) const {
        std::vector<std::string> arguments{"changelist", "--old", "old.cdb", "--new",      "new.cdb",
                                           "-o",         "a.txt", "--quiet", "--overwrite"};
        arguments.insert(arguments.end(), more.begin(), more.end());
        return run(arguments);
    }
    /// The document of a run, which keeps to the schema.
    const JsonValue& document() {
        const ToolResult result = change({"--json", "a.json"});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(result.out, "");
        formats::JsonDocument schema;
        EXPECT_TRUE(schema.parse(source_file("docs/changes.schema.json"))) << schema.error();
        EXPECT_TRUE(document_.parse(read("a.json"))) << document_.error();
        SchemaCheck(schema.root()).check(document_.root(), schema.root(), "document");
        return document_.root();
    }
    static const JsonValue& steps(const JsonValue& document, const char* list) {
        return *json_member(*json_member(document, "lists"), list);
    }
    /// "4:insert@2/18+20" is step 4, which inserts 20 frames at frame 18 of reel 2.
    static std::string brief(const JsonValue& steps) {
        std::ostringstream text;
        for (const JsonValue& step : steps.GetArray())
            text << (text.tellp() > 0 ? " " : "") << step["step"].GetInt() << ':' << step["kind"].GetString() << '@'
                 << step["reel"].GetInt() << '/' << step["position"].GetInt() << '+' << step["length"].GetInt();
        return text.str();
    }

private:
    formats::JsonDocument document_;
};

TEST_F(ChangeSteps, DocumentNamesItsFormatVersionAndFilm) {
    write_cuts({lamp, wick}, {lamp, wick});
    const JsonValue& root = document();
    EXPECT_EQ(json_string(json_member(root, "format")), "quillbrook changes");
    EXPECT_EQ(root["version"].GetInt(), 1);
    EXPECT_EQ(json_string(json_member(root, "film")), "35mm-4p");
    EXPECT_TRUE(steps(root, "changes").Empty());
    EXPECT_TRUE(steps(root, "bench").Empty());
    EXPECT_EQ(read("a.json").back(), '\n');
}

TEST_F(ChangeSteps, EachStepSaysWhatToDoWhereAndWithWhichFilm) {
    write_cuts({wick}, {lamp, wick});
    const JsonValue& root = document();
    for (const char* list : {"changes", "bench"}) {
        EXPECT_EQ(brief(steps(root, list)), "1:insert@1/0+48") << list;
        const JsonValue& step = steps(root, list)[0];
        EXPECT_EQ(json_string(&step["first_key"]), "KJ1234560100+00");
        EXPECT_EQ(json_string(&step["last_key"]), "KJ1234560102+15");
        EXPECT_EQ(json_string(&step["first_ink"]), "AA121003+00");
        EXPECT_EQ(json_string(&step["last_ink"]), "AA121005+15");
        EXPECT_EQ(step["speed"].GetDouble(), 1.0);
        EXPECT_EQ(json_string(&step["camera_roll"]), "A456");
        EXPECT_EQ(json_string(&step["shot"]), "Lamp");
        EXPECT_EQ(json_string(&step["scene"]), "12");
        EXPECT_EQ(json_string(&step["take"]), "3");
        EXPECT_TRUE(step["from"].IsNull());
        EXPECT_TRUE(step["to"].IsNull());
    }
    EXPECT_EQ(steps(root, "changes")[0]["printed_position"].GetInt(), 0);
    EXPECT_TRUE(steps(root, "changes")[0]["reel_length"].IsNull());
    EXPECT_EQ(steps(root, "bench")[0]["reel_length"].GetInt(), 84);
}

TEST_F(ChangeSteps, MovesNameEachOther) {
    write_cuts({lamp, wick, street}, {lamp, street, wick});
    const JsonValue& root = document();
    for (const char* list : {"changes", "bench"}) {
        const JsonValue& both = steps(root, list);
        ASSERT_EQ(both.Size(), 2U) << list;
        const bool lifted_first = json_string(&both[0]["kind"]) == "pick up";
        const JsonValue& lift = both[lifted_first ? 0 : 1];
        const JsonValue& lay = both[lifted_first ? 1 : 0];
        EXPECT_EQ(json_string(&lay["kind"]), "put down");
        EXPECT_EQ(lift["to"].GetInt(), lay["step"].GetInt());
        EXPECT_EQ(lay["from"].GetInt(), lift["step"].GetInt());
        EXPECT_TRUE(lift["from"].IsNull());
        EXPECT_TRUE(lay["to"].IsNull());
        EXPECT_TRUE(lift["first_ink"].IsNull());
    }
}

TEST_F(ChangeSteps, BytesThatAreNoCharactersAreReplaced) {
    CutShot odd = lamp;
    odd.name = "L\xE4mp \xF0\x9F\x8E\x9E\xFF";
    odd.scene = "\xC3";
    odd.take = "a\"b\x01";
    write_cuts({wick}, {odd, wick});
    const JsonValue& step = steps(document(), "changes")[0];
    EXPECT_EQ(json_string(&step["shot"]), "L\xEF\xBF\xBDmp \xF0\x9F\x8E\x9E\xEF\xBF\xBD");
    EXPECT_EQ(json_string(&step["scene"]), "\xEF\xBF\xBD");
    EXPECT_EQ(json_string(&step["take"]), "a\"b\xE2\x90\x81");
}

TEST_F(ChangeSteps, FileForScriptsIsReplacedOnlyWhenAllowed) {
    write_cuts({wick}, {lamp, wick});
    write("a.json", "mine\n");
    const ToolResult refused =
        run({"changelist", "--old", "old.cdb", "--new", "new.cdb", "-o", "a.txt", "--json", "a.json"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.err, HasSubstr("a.json: is there already"));
    EXPECT_EQ(read("a.json"), "mine\n");
    EXPECT_FALSE(exists("a.txt"));
    EXPECT_EQ(change({"--json", "a.json"}).status, 0);
    EXPECT_THAT(read("a.json"), StartsWith("{\n"));
}

TEST_F(ChangeSteps, ProofSpeaksOfTheListsThatAreAskedFor) {
    write_cuts({lamp}, {lamp, wick});
    const auto said = [&](const char* lists) { return change({"--prove", "--lists", lists}).out; };
    EXPECT_EQ(change({"--prove"}).out, "changes: proved, 1 step\n");
    EXPECT_EQ(said("summary"), "changes: proved, 1 step\n");
    EXPECT_EQ(said("bench"), "bench: proved, 1 step\n");
    EXPECT_EQ(said("bench,changes"), "changes: proved, 1 step\nbench: proved, 1 step\n");
    EXPECT_EQ(change({"--prove", "--set", "chg_bench_list=1"}).out, "changes: proved, 1 step\nbench: proved, 1 step\n");
    write_cuts({lamp}, {lamp});
    EXPECT_EQ(said("changes"), "changes: proved, 0 steps\n");
}

TEST_F(ChangeSteps, FailedProofTellsWhereAndLeavesAllFiles) {
    CutShot head = lamp, second = wick, third = street, last{"KN222222", 320, 8};
    head.length = 16;
    second.length = third.length = 8;
    write_cuts({head, second, third, last}, {second, last, head, third});
    const ToolResult result = change({"--prove", "--json", "a.json", "--lists", "changes,bench"});
    EXPECT_EQ(result.status, 3);
    EXPECT_EQ(result.err, "");
    EXPECT_THAT(result.out, MatchesRegex("changes: after all 4 steps reel 1 differs from the new cut at frame 8: .+\n"
                                         "bench: proved, [0-9]+ steps\n"));
    EXPECT_THAT(result.out.substr(0, result.out.find('\n')), Not(HasSubstr("proved")));
    EXPECT_THAT(read("a.txt"), HasSubstr("DETAILED LIST"));
    EXPECT_THAT(read("a.json"), StartsWith("{\n"));
    EXPECT_EQ(change({"--prove", "--lists", "bench"}).status, 0);
}

TEST_F(ChangeSteps, FailedProofNamesTheStepWhereThereIsOne) {
    write("a1.cdb", cut_table({lamp}));
    write("a2.cdb", cut_table({wick, street}));
    write("b1.cdb", cut_table({wick}));
    write("b2.cdb", cut_table({street}));
    const ToolResult result = run(
        {"changelist", "--old", "a1.cdb", "a2.cdb", "--new", "b1.cdb", "b2.cdb", "-o", "a.txt", "--quiet", "--prove"});
    EXPECT_EQ(result.status, 3);
    EXPECT_THAT(result.out, MatchesRegex("changes: step 3 parts from the new cut at reel 1, frame -48: .+\n"));
}

TEST_F(ChangeSteps, ProofChangesNothingThatIsPrinted) {
    write_cuts({lamp, wick, street}, {street, lamp, wick});
    change({"--json", "a.json", "--lists", "changes,bench"});
    const std::string report = read("a.txt"), steps_file = read("a.json");
    const ToolResult proved = change({"--json", "a.json", "--lists", "changes,bench", "--prove"});
    EXPECT_EQ(proved.status, 0) << proved.out;
    EXPECT_EQ(read("a.txt"), report);
    EXPECT_EQ(read("a.json"), steps_file);
}

} // namespace
