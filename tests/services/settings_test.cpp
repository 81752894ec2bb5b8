#include "embedded/services.h"
#include "tests/support/environment.h"

#include <gtest/gtest.h>

#include <climits>

namespace {

using Key = LightweightString<char>;

class HostSettings : public testing::Test {
protected:
    void TearDown() override { embedded::clear_host_settings(); }
    static int any(const char* key, int fallback) { return config_int(key, fallback, INT_MIN, INT_MAX); }
};

TEST_F(HostSettings, AnUnsetKeyGivesTheFallback) {
    EXPECT_EQ(any("allow_auto_unrender", 1), 1);
    EXPECT_EQ(any("audio_cutlist_24P", 0), 0);
    EXPECT_EQ(config_int("audio_cutlist_24P", 50, 0, 10), 50);
}

TEST_F(HostSettings, TheEnvironmentIsReadByTheUpperCaseName) {
    const EnvironmentValue value("QUILLBROOK_AUDIO_CUTLIST_24P", "1");
    EXPECT_EQ(any("audio_cutlist_24P", 0), 1);
}

TEST_F(HostSettings, ASettingWinsOverTheEnvironment) {
    const EnvironmentValue value("QUILLBROOK_ALLOW_AUTO_UNRENDER", "5");
    embedded::set_host_setting("allow_auto_unrender", 0);
    EXPECT_EQ(any("allow_auto_unrender", 1), 0);
    embedded::clear_host_settings();
    EXPECT_EQ(any("allow_auto_unrender", 1), 5);
}

TEST_F(HostSettings, AnEmptyVariableCountsAsUnset) {
    const EnvironmentValue value("QUILLBROOK_ALLOW_AUTO_UNRENDER", "");
    EXPECT_EQ(any("allow_auto_unrender", 1), 1);
}

TEST_F(HostSettings, ValuesAreKeptWithinTheLimits) {
    embedded::set_host_setting("depth", 99);
    EXPECT_EQ(config_int("depth", 1, 0, 10), 10);
    embedded::set_host_setting("depth", -99);
    EXPECT_EQ(config_int("depth", 1, 0, 10), 0);
}

TEST(SettingsBlock, AnAbsentKeyLeavesEveryTargetAlone) {
    const embedded::settings_block block;
    int number = 5;
    unsigned int natural = 6;
    bool truth = true;
    Key text("kept");
    char array[8] = "kept";
    strp_field field;
    EXPECT_EQ(block.in(Key("key"), number), -1);
    EXPECT_EQ(block.in(Key("key"), natural), -1);
    EXPECT_EQ(block.in(Key("key"), truth), -1);
    EXPECT_EQ(block.in(Key("key"), text), -1);
    EXPECT_EQ(block.in(Key("key"), array), -1);
    EXPECT_EQ(block.in(Key("key"), field), -1);
    EXPECT_EQ(number, 5);
    EXPECT_EQ(natural, 6U);
    EXPECT_TRUE(truth);
    EXPECT_STREQ(text.c_str(), "kept");
    EXPECT_STREQ(array, "kept");
    EXPECT_STREQ(field, "");
}

TEST(SettingsBlock, GivesAValueInEveryForm) {
    embedded::settings_block block;
    block.set("key", " 12x");
    int number = 0;
    unsigned int natural = 0;
    bool truth = false;
    Key text;
    char array[8] = "";
    strp_field field;
    EXPECT_EQ(block.in(Key("key"), number), 0);
    EXPECT_EQ(block.in(Key("key"), natural), 0);
    EXPECT_EQ(block.in(Key("key"), truth), 0);
    EXPECT_EQ(block.in(Key("key"), text), 0);
    EXPECT_EQ(block.in(Key("key"), array), 0);
    EXPECT_EQ(block.in(Key("key"), field), 0);
    EXPECT_EQ(number, 12);
    EXPECT_EQ(natural, 12U);
    EXPECT_TRUE(truth);
    EXPECT_STREQ(text.c_str(), " 12x");
    EXPECT_STREQ(array, " 12x");
    EXPECT_STREQ(field, " 12x");
}

TEST(SettingsBlock, OnlyEmptyAndZeroAreFalse) {
    embedded::settings_block block;
    for (const auto& [value, expected] :
         std::map<std::string, bool>{{"", false}, {"0", false}, {"1", true}, {"no", true}}) {
        block.set("key", value);
        bool truth = !expected;
        EXPECT_EQ(block.in(Key("key"), truth), 0);
        EXPECT_EQ(truth, expected) << value;
    }
    EXPECT_TRUE(block.has("key"));
    EXPECT_FALSE(block.has("KEY"));
}

TEST(SettingsBlock, NumbersOfAnySizeAreRead) {
    embedded::settings_block block;
    block.set("big", "4294967295");
    block.set("huge", "99999999999999999999999999");
    unsigned int natural = 0;
    int number = 5;
    EXPECT_EQ(block.in(Key("big"), natural), 0);
    EXPECT_EQ(natural, 4294967295U);
    EXPECT_EQ(block.in(Key("huge"), number), 0);
    EXPECT_NE(number, 5);
}

class Recorder : public LoggerHandle {
public:
    void message(const LightweightString<wchar_t>& text, int level) override {
        line = std::wstring(text.view());
        last_level = level;
    }
    std::wstring line;
    int last_level = -1;
};

TEST(Logger, AFormatWithoutPlaceholdersPrintsAsItStands) {
    Recorder log;
    log.Out("Analysing tracks\n");
    EXPECT_EQ(log.line, L"Analysing tracks\n");
    EXPECT_EQ(log.last_level, 0);
}

TEST(Logger, PlaceholdersAreFilledAndLongLinesCut) {
    Recorder log;
    log.Out("%s has %d\n", "V1", 12);
    EXPECT_EQ(log.line, L"V1 has 12\n");
    log.Out("%s", std::string(5000, 'x').c_str());
    EXPECT_EQ(log.line, std::wstring(1023, L'x'));
}

TEST(Trace, GoesToTheErrorOutput) {
    testing::internal::CaptureStderr();
    trace_printf("event %d\n", 3);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "event 3\n");
}

TEST(Messages, EveryNumberHasAText) {
    for (const ResId id : {10257, 10260, 10264, 10265, 10266, 10267, 10268, 10269, 10272, 10471, 10472, 10473, 10474,
                           10475, 10476, 10477, 10478, 10479, 10480}) {
        EXPECT_FALSE(resourceStrW(id).empty()) << id;
    }
    EXPECT_EQ(resourceStrW(10061, ResStrFmt::heading).view(), L"Black");
    EXPECT_EQ(resourceStrW(10061).view(), L"Black");
    EXPECT_TRUE(resourceStrW(1).empty());
}

TEST(Messages, ThoseThatNameAFileHoldThePlaceholder) {
    EXPECT_NE(resourceStrW(10257).view().find(L"$FILE$"), std::wstring_view::npos);
    EXPECT_NE(resourceStrW(10471).view().find(L"$FILE$"), std::wstring_view::npos);
    EXPECT_EQ(resourceStrW(10472).view().find(L"$FILE$"), std::wstring_view::npos);
}

TEST(SharedLock, LeavingSaysWhetherItWasEntered) {
    SharedMutex mutex;
    EXPECT_FALSE(mutex.leaveAsReader());
    mutex.enterAsReader();
    mutex.enterAsReader();
    EXPECT_TRUE(mutex.leaveAsReader());
    EXPECT_TRUE(mutex.leaveAsReader());
    EXPECT_FALSE(mutex.leaveAsReader());
}

class Number : public ArrayRec {
public:
    Number(int value, int& live) : value_(value), live_(live) { ++live_; }
    ~Number() override { --live_; }
    int compare(const ArrayRec& other) const override { return value_ - static_cast<const Number&>(other).value_; }
    void printOn(GrowString& out) const override { out.append(std::to_string(value_).c_str()); }

private:
    int value_;
    int& live_;
};

TEST(RecordArray, OwnsItsRecordsAndKeepsTheirOrder) {
    int live = 0;
    {
        Array records;
        records.appendDatum(new Number(3, live));
        records.insertDatum(new Number(1, live), 0);
        records.insertDatum(new Number(9, live), 99);
        records.replaceDatum(1, new Number(2, live));
        EXPECT_EQ(live, 3);
        EXPECT_EQ(records.size(), 3U);
        GrowString text;
        records.printOn(text);
        EXPECT_STREQ(text.c_str(), "129");
        EXPECT_TRUE(*records[0] != *records[1]);
        EXPECT_TRUE(*records[0] == *records[0]);
    }
    EXPECT_EQ(live, 0);
}

} // namespace
