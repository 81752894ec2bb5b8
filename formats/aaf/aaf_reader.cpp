#include "formats/aaf/aaf_reader.h"

#include "formats/aaf/aaf_composition.h"
#include "formats/file_names.h"
#include "formats/sequence_choice.h"

#include <utility>

namespace formats {
namespace {

/// One reading of one file.
class Reading {
public:
    Reading(std::string path, std::int64_t file_time, const ReadOptions& options)
        : path_(std::move(path)), file_time_(file_time), options_(options) {}

    ReadResult run(std::string_view bytes);

private:
    void read(std::string_view bytes);
    void fail(const std::string& why) { result_.error = path_ + ": " + why; }
    std::string name_of(const aaf::Mob& composition) const {
        return composition.name.empty() ? stem_of(path_) : composition.name;
    }
    /// Null with the result set where no edit is to be read.
    const aaf::Mob* choose_composition();
    const embedded::RateInfo* rate_for(const aaf::Mob& composition);
    void build(const aaf::Mob& composition);
    void add_warnings(const embedded::Warnings& warnings);
    void tell_of_damage();

    std::string path_;
    std::int64_t file_time_;
    ReadOptions options_;
    aaf::File file_;
    embedded::Warnings warnings_;
    std::set<std::string> said_;
    ReadResult result_;
};

void Reading::add_warnings(const embedded::Warnings& warnings) {
    for (const embedded::Warning& warning : warnings)
        result_.warnings.push_back({warning.kind, path_ + ": " + warning.text});
}

void Reading::tell_of_damage() {
    embedded::Warnings warnings;
    for (const std::string& fault : file_.faults())
        warnings.push_back({embedded::WarningKind::dropped, fault});
    for (const std::string& damage : file_.damage())
        warnings.push_back({embedded::WarningKind::doubt, damage});
    add_warnings(warnings);
}

const aaf::Mob* Reading::choose_composition() {
    const std::vector<const aaf::Mob*> tops = aaf::top_compositions(file_);
    if (tops.empty()) {
        fail("it holds no composition");
        return nullptr;
    }
    std::vector<Sequence> all;
    for (std::size_t i = 0; i < tops.size(); ++i)
        all.push_back({name_of(*tops[i]), "composition " + std::to_string(i + 1), aaf::rate_of(file_, *tops[i])});
    if (options_.list_only) {
        result_.sequences = std::move(all);
        return nullptr;
    }
    const std::optional<std::size_t> chosen = choose_sequence(all, options_, path_, result_);
    return chosen ? tops[*chosen] : nullptr;
}

const embedded::RateInfo* Reading::rate_for(const aaf::Mob& composition) {
    const embedded::RateInfo* rate = options_.rate ? options_.rate : aaf::rate_of(file_, composition);
    if (rate) return rate;
    const std::vector<std::string> damage = file_.damage();
    const std::string why = !damage.empty() ? damage.front() : aaf::why_no_rate(composition);
    fail(composition.title() + ": neither pictures nor timecode tell its rate" + (why.empty() ? "" : " (" + why + ")"));
    result_.rate_missing = true;
    return nullptr;
}

void Reading::build(const aaf::Mob& composition) {
    const embedded::RateInfo* rate = rate_for(composition);
    if (!rate) return;
    const aaf::Context context{file_, rate, options_.all_effects, &warnings_, &said_};
    embedded::EditBuilder builder(aaf::describe_edit(composition, context, name_of(composition), file_time_));
    aaf::add_channels(composition, context, builder);
    result_.edit = builder.finish();
    add_warnings(warnings_);
    add_warnings(builder.warnings());
    if (!result_.edit) fail("the edit can't be stored");
}

void Reading::read(std::string_view bytes) {
    if (!file_.open(bytes)) return fail(file_.error());
    if (const aaf::Mob* composition = choose_composition()) build(*composition);
}

ReadResult Reading::run(std::string_view bytes) {
    try {
        read(bytes);
    } catch (const aaf::ReadError& error) {
        result_.edit = EditPtr();
        fail(error.message);
    }
    tell_of_damage();
    return std::move(result_);
}

} // namespace

ReadResult read_aaf_bytes(std::string_view bytes, const std::string& path_for_messages, std::int64_t file_time,
                          const ReadOptions& options) {
    return Reading(path_for_messages, file_time, options).run(bytes);
}

ReadResult read_aaf(const std::string& path, const ReadOptions& options) {
    return read_whole(read_aaf_bytes, path, path, options);
}

} // namespace formats
