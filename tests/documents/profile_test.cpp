// Profiles: which lists, and which of their columns.

#include "documents/profile.h"

#include "documents/list_kinds.h"

#include <gmock/gmock.h>

using namespace documents;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

TEST(Profile, EachOneNamesListsThatThereAre) {
    for (const std::string& name : profile_names()) {
        const Profile* profile = profile_named(name);
        ASSERT_NE(profile, nullptr) << name;
        EXPECT_FALSE(profile->lists.empty());
        for (const std::string& list : profile->lists)
            EXPECT_TRUE(is_list_id(list)) << list;
        for (const auto& [list, columns] : profile->columns)
            EXPECT_THAT(profile->lists, Contains(list));
    }
    EXPECT_THAT(profile_names(), ElementsAre("assistant", "cutter", "lab", "optical", "scan", "sound", "all"));
    EXPECT_NE(profile_named(""), nullptr);
    EXPECT_EQ(profile_named("nobody"), nullptr);
}

TEST(Profile, IsReadFromAFile) {
    std::string fault;
    const auto profile =
        read_profile("# ours\nlists = assembly , rolls\r\ncolumns assembly = event,key\n\nunits=frames\n"
                     "paper = letter",
                     &fault);
    ASSERT_TRUE(profile) << fault;
    EXPECT_THAT(profile->lists, ElementsAre("assembly", "rolls"));
    EXPECT_THAT(profile->columns.at("assembly"), ElementsAre("event", "key"));
    EXPECT_EQ(profile->columns.at("pull-roll"), profile_named("")->columns.at("pull-roll"));
    EXPECT_EQ(profile->frames, true);
    EXPECT_EQ(profile->paper, Paper::letter);
}

TEST(Profile, SaysWhichLineItDoesNotUnderstand) {
    const std::pair<const char*, const char*> wrong[] = {
        {"\nassembly", "line 2: has no \"=\""},      {"lists = nonsense", "line 1: there is no list \"nonsense\""},
        {"columns x = a", "there is no list \"x\""}, {"units = metres", "units isn't \"metres\""},
        {"colour = red", "there is no \"colour\""},  {"lists =", "lists is empty"},
    };
    for (const auto& [text, why] : wrong) {
        std::string fault;
        EXPECT_FALSE(read_profile(text, &fault)) << text;
        EXPECT_THAT(fault, HasSubstr(why));
    }
}

TEST(Profile, LeavesToPagesTheColumnsThatItNames) {
    Document document;
    document.lists.resize(1);
    document.lists[0].id = "assembly";
    document.lists[0].columns = {{"event", "Event", Align::right, Wrap::none, {{"event"}}},
                                 {"roll", "Roll", Align::left, Wrap::words, {{"roll"}}}};
    Profile profile;
    profile.columns["assembly"] = {"roll"};
    profile.paper = Paper::letter;
    apply_profile(profile, document);
    EXPECT_EQ(document.lists[0].columns[0].title, "");
    EXPECT_EQ(document.lists[0].columns[1].title, "Roll");
    EXPECT_EQ(fields_of(document.lists[0]).size(), 2U);
    EXPECT_EQ(document.paper, Paper::letter);
}
