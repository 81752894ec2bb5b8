#include "base/guard.h"
#include "base/number_text.h"
#include "host/ascii_text.h"
#include "host/decimal_number.h"
#include "host/settings.h"
#include "logging/log_columns.h"
#include "quillbrook/logging_tables.h"

#include <cstdio>
#include <memory>
#include <utility>

namespace {

constexpr int current_revision = 16;
constexpr int oldest_revision = 6;
constexpr int most_records = 32000;

const char* yes_or_no(std::int32_t on) { return on ? "Y" : "N"; }

bool says_yes(const char* value) { return value && ascii::same(value, "Y"); }

int revision_of(const recdb& table) { return revision_number(table.get_param_val("filmdb")); }

// Six significant digits, filled up with blanks to six characters; the point is a point in any locale.
template <std::size_t N> void put_rate(char (&text)[N], double rate) {
    char digits[N];
    *decimal::write(digits, digits + N - 1, rate, 6) = '\0';
    std::snprintf(text, N, "%-6s", digits);
}

// A template that is too old stays in memory, and reachable there, until the process ends.
void keep_for_good(std::unique_ptr<filmdb> table) {
    static Vector<filmdb*>& kept = *new Vector<filmdb*>;
    kept.push_back(table.get());
    table.release();
}

} // namespace

filmdb::filmdb() : loggingdb(filmdb_fields()) { init(); }

filmdb::filmdb(const LightweightString<wchar_t>& name, const LightweightString<wchar_t>& tableName) : filmdb() {
    const bool named = survives([&] {
        set_filename(!tableName.empty() ? tableName : stripExtension(name) + L".RDB");
        source_name = name;
    });
    if (!named) fail();
}

filmdb::filmdb(const LightweightString<wchar_t>& name) : loggingdb(name, most_records) {
    const bool loaded = survives([&] {
        if (!get_valid()) {
            refuse(fdb_load_failed, "Failed to load recdb");
        } else if (load_revision()) {
            load_header();
        }
    });
    if (!loaded) fail();
}

filmdb::filmdb(const filmdb& other)
    : iObject(), loggingdb(other), film_std(other.film_std), cam_std(other.cam_std), film_origin(other.film_origin),
      pulldown(other.pulldown), sequence(other.sequence), film_rate(other.film_rate) {
    if (!survives([&] { source_name = other.source_name; })) fail();
}

filmdb& filmdb::operator=(const filmdb& other) {
    loggingdb::operator=(other);
    film_std = other.film_std;
    cam_std = other.cam_std;
    film_origin = other.film_origin;
    pulldown = other.pulldown;
    sequence = other.sequence;
    film_rate = other.film_rate;
    if (!survives([&] { source_name = other.source_name; })) fail();
    return *this;
}

filmdb::~filmdb() = default;

void filmdb::init() {
    revision = current_revision;
    char text[16];
    std::snprintf(text, sizeof text, "Rev %d", revision);
    const bool named = survives([&] { add_param("FILMDB", text); });
    loggingdb::init();
    if (!named) fail();
    set_film_std(gauge_unset);
    set_film_rate(0.0);
    set_film_origin(false);
    set_pulldown(false);
    set_sequence(0);
}

bool filmdb::refuse(fdb_error reason, const char* message) {
    set_error_message("%s", message);
    error = reason;
    set_valid(0);
    return false;
}

bool filmdb::load_revision() {
    error = fdb_ok;
    error_message[0] = '\0';
    revision = revision_of(*this);
    if (revision == 0) return refuse(fdb_not_filmdb, "INPUT FILE NOT A FILMDB");
    if (revision < oldest_revision)
        return refuse(fdb_old_filmdb, "INPUT FILE IS OLD FILMDB: CODE NOT WRITTEN TO HANDLE THIS YET\n");
    if (revision > current_revision) return refuse(fdb_too_new, "INPUT FILE IS TOO NEW FOR THIS SOFTWARE VERSION:\n");
    if (revision != current_revision) error = fdb_old_revision;
    return true;
}

void filmdb::load_header() {
    if (const char* value = get_param_val("label_std")) vid_std = edlstr_to_tv_standard(value);
    if (const char* value = get_param_val("snd label_std")) snd_std = edlstr_to_tv_standard(value);
    if (const char* value = get_param_val("film label_std")) film_std = edlstr_to_film_gauge(value);
    if (const char* value = get_param_val("film rate")) film_rate = floating_number(value);
    load_pulldown();
    if (const char* value = get_param_val("pic qual")) picqual = decimal_number(value);
}

// Two spellings of the origin's name are about; the first wins even where it says no.
void filmdb::load_pulldown() {
    const char* origin = get_param_val("film_origin");
    film_origin = says_yes(origin ? origin : get_param_val("frame origin"));
    pulldown = says_yes(get_param_val("pulldown"));
    const char* phase = pulldown ? get_param_val("sequence") : nullptr;
    sequence = decimal_number(phase);
}

filmdb* filmdb::make() {
    filmdb* made = nullptr;
    survives([&] { made = make_from_template(); });
    return made;
}

filmdb* filmdb::make_from_template() {
    const LightweightString<wchar_t> path = getRDBDirectory(iSettings::record_tables) + L"film.dbt";
    if (!fileExists(path)) return new filmdb;
    auto table = std::make_unique<filmdb>(path);
    if (table->error != fdb_old_revision) return table.release();
    std::fputs("WARNING: Database template file <\\QBPROJ\\FILM.DBT> is not the most recent revision\n", stdout);
    keep_for_good(std::move(table));
    return new filmdb;
}

int filmdb::add_any_recdb(recdb* other) {
    int result = 1;
    if (!survives([&] { result = append_rows(other); })) fail();
    return result;
}

int filmdb::append_rows(recdb* other) {
    if (revision_of(*other) == current_revision) return add_recdb(other) == -1 ? 1 : 0;
    if (check_fields(other) != 0) return fdb_missing_field;
    const unsigned count = other->get_num_records();
    for (unsigned i = 0; i < count; ++i)
        stuff_fields(add_records(1), other, static_cast<int>(i));
    return 0;
}

void filmdb::set_cam_std(TCInf std) {
    cam_std = std;
    if (std.rate != Qb::frame_rate_unset) add_std("cam label_std", std);
}

void filmdb::set_film_std(film_gauge gauge) {
    film_std = gauge;
    set_param("film label_std", film_gauge_to_edlstr(gauge));
}

void filmdb::set_film_rate(double rate) {
    char text[24];
    put_rate(text, rate);
    set_param("film rate", text);
    film_rate = rate;
}

void filmdb::set_film_origin(bool on) {
    film_origin = on;
    set_param("frame origin", yes_or_no(film_origin));
}

void filmdb::set_pulldown(bool on) {
    pulldown = on;
    set_param("pulldown", yes_or_no(pulldown));
}

void filmdb::set_sequence(int value) {
    sequence = value;
    if (pulldown) add_int_param("sequence", value);
}

int filmdb::check_fields(recdb* other) {
    int result = 0;
    for (const char* const* name = filmdb_required_fields; *name; ++name) {
        if (other->get_fieldnum(*name) != -1) continue;
        set_error_message("Cannot add file: missing field \"%s\"\n", *name);
        result = -1;
    }
    return result;
}

void filmdb::stuff_fields(int record, recdb* other, int otherRecord) {
    const unsigned count = other->get_num_fields();
    for (unsigned column = 0; column < count; ++column) {
        const int found = get_fieldnum(other->get_fieldname(column));
        if (found == -1) continue;
        const LightweightString<char> text = other->getField(static_cast<unsigned>(otherRecord), column);
        set_field(static_cast<unsigned>(record), static_cast<unsigned>(found), text.c_str());
    }
}

// The cycle is that of the standard as given; only the frames are counted by the table's where it isn't set.
int filmdb::calc_midnight_pulldown(double tc, int seq, TCInf std) {
    const int cycle = pd_cycle_size(std.rate);
    if (seq < 0 || seq > cycle - 1 || !pulldown) return 0;
    if (std.rate == Qb::frame_rate_unset) std = vid_std;
    const int result = seq - tc_to_frames(tc, std.rate, 0, 0) % cycle;
    return result < 0 ? result + cycle : result;
}

int filmdb::calc_midnight_pulldown(const char* tc, int seq, TCInf std) {
    if (std.rate == Qb::frame_rate_unset) std = vid_std;
    return calc_midnight_pulldown(string_to_tc(tc, std), seq, std);
}
