// The locale of a host's process.

#include "tests/host_seam/small_run.h"

#include <clocale>

using namespace host_seam;

namespace {

class LocaleOfTest {
public:
    ~LocaleOfTest() { std::setlocale(LC_ALL, old_.c_str()); }
    bool set(const char* name) const { return std::setlocale(LC_ALL, name) != nullptr; }

private:
    std::string old_ = std::setlocale(LC_ALL, nullptr);
};

class Locale : public SmallRun {};

TEST_F(Locale, HasNoSayInTheBytes) {
    block.set("proj_name", " caf\xC3\xA9 1,5 ");
    const EditPtr edit = small_edit();
    ASSERT_TRUE(make_small(edit));
    const std::string cdb = bytes_of("list.cdb"), report = bytes_of("list.txt");
    EXPECT_NE(cdb.find("\t1.5\t"), std::string::npos);
    const LocaleOfTest locale;
    int tried = 0;
    for (const char* name : {"C.UTF-8", "de_DE.UTF-8", "de_DE", "fr_FR.UTF-8", "nb_NO.UTF-8", "tr_TR.UTF-8", "POSIX"}) {
        if (!locale.set(name)) continue;
        ++tried;
        EXPECT_TRUE(make_small(edit)) << name;
        EXPECT_EQ(bytes_of("list.cdb"), cdb) << name;
        EXPECT_EQ(bytes_of("list.txt"), report) << name;
    }
    EXPECT_GT(tried, 0);
}

// "\xA0" is white space, and "\xE4" a letter with a capital, where one byte is one character.
TEST_F(Locale, HasNoSayInWhatIsWhiteSpaceOrALetter) {
    const LocaleOfTest locale;
    for (const char* name : {"C", "de_DE", "de_DE.ISO-8859-1"}) {
        if (!locale.set(name)) continue;
        char text[] = " \xA0x\xA0 ";
        trim_text(text);
        EXPECT_STREQ(text, "\xA0x\xA0") << name;
    }
}

} // namespace
