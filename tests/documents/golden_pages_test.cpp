// Whole documents of a small cut, byte for byte: tests/documents/golden. QUILLBROOK_UPDATE_GOLDEN=1 writes them anew
// instead; only people set it, and look at what changed.

#include "documents/csv.h"
#include "documents/html.h"
#include "documents/json.h"
#include "documents/plain_text.h"
#include "film/find.h"
#include "tests/documents/made_cut_film.h"
#include "tests/support/project_paths.h"
#include "tests/support/scratch_directory.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <sstream>

using namespace documents;
using namespace documents_test;
using namespace generator_test;

namespace {

/// Some of what can be the matter with film: another speed, a dissolve, a title of the lab, the same frames twice,
/// black, no key number, names that other formats have signs for.
EditPtr small_edit() {
    EditBuilder builder{plain_edit("The Lamp & the <Lens>")};
    const int v1 = builder.add_channel(picture);
    SourceDescription named = shot("Анна 灯台", "KN2446760090+13");
    named.scene = "12";
    named.take = "3";
    named.reels[{2, 1}] = "A002";
    SourceDescription bare = shot("=1+1, \"said\"");
    bare.key.reset();
    const SourceId a = builder.add_source(shot("12A/1")), b = builder.add_source(named), c = builder.add_source(bare);
    builder.add_event(v1, event_of(a, 48, 5));
    builder.add_event(v1, event_of(b, 36, 20));
    builder.add_transition(v1, dissolve(8, 8));
    builder.add_event(v1, event_of(a, 40, 100));
    builder.add_event(v1, event_of(a, 24, 30, Fraction(3, 2)));
    builder.add_event(v1, event_of(c, 25, 0));
    builder.add_event(v1, with_effect(event_of(b, 30, 200), lab_effect("Superimpose title")));
    return builder.finish();
}

Document small_document() {
    const EditPtr edit = small_edit();
    film::CheckOptions checks;
    checks.edit_file = "lamp.otio";
    CutOptions options;
    options.reel = "4";
    Document document = all_lists_of(*cut_of(edit, false, options, film::check_edit(edit, checks, nullptr, {})));
    document.title.made = "21 September 2026 14:13:20";
    return document;
}

/// The style sheet and the script are the same for all.
std::string without_assets(std::string page) {
    for (const std::string tag : {"style", "script"}) {
        const std::size_t begin = page.find("<" + tag + ">") + tag.size() + 2;
        page.replace(begin, page.find("</" + tag + ">", begin) - begin, "...");
    }
    return page;
}

std::string golden_path(const std::string& name) { return project_folder() + "/tests/documents/golden/" + name; }

std::string bytes_of(const std::string& path) {
    std::ostringstream bytes;
    bytes << std::ifstream(path, std::ios::binary).rdbuf();
    return bytes.str();
}

void expect_golden(const std::string& name, const std::string& made) {
    const char* update = std::getenv("QUILLBROOK_UPDATE_GOLDEN");
    if (update && std::string(update) == "1") put_bytes(golden_path(name), made);
    EXPECT_EQ(made, bytes_of(golden_path(name))) << name;
}

} // namespace

TEST(GoldenPages, Text) { expect_golden("lamp.txt", plain_text_of(small_document())); }

TEST(GoldenPages, Json) { expect_golden("lamp.json", json_of(small_document())); }

TEST(GoldenPages, Html) { expect_golden("lamp.html", without_assets(html_of(small_document()))); }

TEST(GoldenPages, Csv) {
    for (const NamedFile& file : csv_files(small_document()))
        expect_golden(file.name, file.bytes);
}
