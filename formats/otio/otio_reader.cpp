#include "formats/otio/otio_reader.h"

#include "embedded/services.h"
#include "embedded/warning.h"
#include "formats/bundle/folder_bundle.h"
#include "formats/file_names.h"
#include "formats/otio/otio_unrender.h"
#include "formats/sequence_choice.h"

#include <algorithm>
#include <memory>
#include <utility>

namespace formats {
namespace {

/// What a de-rendered copy takes over from the edit that it is made of.
struct Original {
    std::string name;
    std::int64_t modification_time = 0;
    const embedded::RateInfo* rate = nullptr;
    bool all_effects = false;
};

/// Edits keep the text that they were read from, for their copies.
using SharedText = std::shared_ptr<const std::string>;

SharedText shared(std::string text) { return std::make_shared<const std::string>(std::move(text)); }

/// One reading of one text.
class Reading {
public:
    Reading(SharedText text, std::string path, std::int64_t file_time, const ReadOptions& options)
        : text_(std::move(text)), path_(std::move(path)), file_time_(file_time), options_(options) {}

    ReadResult run(const Original* original);
    /// The text with rendered clips replaced; empty where it can't be read. What there is to tell is noted as of the
    /// copy.
    std::string unrendered_text();

private:
    bool parse();
    void read(const Original* original);
    /// Whether an edit is to be read, of the timeline that `timeline_` then says.
    bool choose_timeline();
    otio::Context context_for(const otio::Root& root);
    embedded::EditDescription description(const otio::Root& root, const otio::Context& context,
                                          const Original* original);
    embedded::EditBuilder::Unrender unrender_hooks(const embedded::EditDescription& edit) const;
    void add_warnings(const embedded::Warnings& warnings);

    SharedText text_;
    std::string path_;
    std::int64_t file_time_;
    ReadOptions options_;
    std::size_t timeline_ = 0;
    JsonDocument document_;
    embedded::Warnings warnings_;
    ReadResult result_;
    /// All that was told of the edit: of its copy only the rest is.
    std::shared_ptr<embedded::Warnings> told_ = std::make_shared<embedded::Warnings>();
};

bool Reading::parse() {
    if (!document_.parse(*text_)) {
        result_.error = path_ + ": " + document_.error();
        return false;
    }
    otio::refuse_newer_versions(document_.root());
    return true;
}

otio::Context Reading::context_for(const otio::Root& root) {
    otio::Context context;
    context.rate = options_.rate ? options_.rate : otio::rate_of_edit(root);
    context.all_effects = options_.all_effects;
    context.warnings = &warnings_;
    if (!root.is_timeline()) return context;
    const JsonValue* own = otio::own_metadata_of(root.object().value);
    context.drop_frame = json_truth(json_member(own, "drop_frame"));
    context.film_rate = otio::read_rate(root.object(), json_member(own, "film_rate"), "\"film_rate\"");
    return context;
}

embedded::EditDescription Reading::description(const otio::Root& root, const otio::Context& context,
                                               const Original* original) {
    embedded::EditDescription edit = otio::describe_edit(root, context, path_, file_time_);
    if (original) {
        edit.name = original->name;
        edit.modification_time = original->modification_time;
    }
    if (original || options_.unrender) edit.identity = "copy:" + edit.name;
    return edit;
}

embedded::EditBuilder::Unrender Reading::unrender_hooks(const embedded::EditDescription& edit) const {
    const Original original{edit.name, edit.modification_time, edit.rate, options_.all_effects};
    ReadOptions options = options_;
    options.rate = edit.rate;
    embedded::EditBuilder::Unrender hooks;
    hooks.write = [text = text_, options, from = path_](const std::string& path) {
        Reading reading(text, from, 0, options);
        const std::string copy = reading.unrendered_text();
        embedded::tell_of_copy(reading.result_.warnings);
        return !copy.empty() && embedded::write_file_whole(path, copy, nullptr);
    };
    hooks.open = [original, options, from = path_, told = told_](const std::string& path) {
        std::string text;
        if (!embedded::read_file(path, &text, nullptr)) return EditPtr();
        ReadResult result = Reading(shared(std::move(text)), from, 0, options).run(&original);
        std::erase_if(result.warnings, [&](const embedded::Warning& warning) {
            return std::find(told->begin(), told->end(), warning) != told->end();
        });
        embedded::tell_of_copy(result.warnings);
        return result.edit;
    };
    return hooks;
}

void Reading::add_warnings(const embedded::Warnings& warnings) {
    for (const embedded::Warning& warning : warnings)
        result_.warnings.push_back({warning.kind, path_ + ": " + warning.text});
}

// Of several the first counts where none is named, as it does elsewhere; but not without a word.
bool Reading::choose_timeline() {
    const std::vector<const JsonValue*> timelines = otio::timelines_of(document_.root());
    if (timelines.size() < 2) return true;
    std::vector<Sequence> all;
    for (std::size_t i = 0; i < timelines.size(); ++i) {
        const std::string name = otio::name_of(*timelines[i]);
        all.push_back({name.empty() ? stem_of(path_) : name, "timeline " + std::to_string(i + 1),
                       otio::rate_of_edit(otio::Root(document_.root(), i))});
    }
    if (options_.list_only) {
        result_.sequences = std::move(all);
        return false;
    }
    if (options_.sequence.empty()) {
        warnings_.push_back("holds several timelines; the first is read: " + names_of(all));
        return true;
    }
    const std::optional<std::size_t> chosen = choose_sequence(all, options_, path_, result_);
    timeline_ = chosen.value_or(0);
    return chosen.has_value();
}

void Reading::read(const Original* original) {
    if (!parse() || !choose_timeline()) return;
    if (options_.unrender) {
        const otio::Root root(document_.root(), timeline_);
        options_.rate = context_for(root).rate;
        otio::unrender(document_.document(), context_for(root));
    }
    const otio::Root root(document_.root(), timeline_);
    const otio::Context context = context_for(root);
    const embedded::EditDescription edit = description(root, context, original);
    embedded::EditBuilder builder(edit);
    builder.set_unrender(unrender_hooks(edit));
    otio::add_channels(root, context, builder);
    document_ = {}; // of which nothing is left to read, before the edit takes its memory
    result_.edit = builder.finish();
    add_warnings(warnings_);
    add_warnings(builder.warnings());
    *told_ = result_.warnings;
    if (!result_.edit) result_.error = path_ + ": the edit can't be stored";
}

ReadResult Reading::run(const Original* original) {
    try {
        read(original);
    } catch (const otio::ReadError& error) {
        result_.error = path_ + ": " + error.message;
    }
    return std::move(result_);
}

std::string Reading::unrendered_text() {
    try {
        if (!parse() || !choose_timeline()) return {};
        const otio::Root root(document_.root(), timeline_);
        otio::unrender(document_.document(), context_for(root));
        add_warnings(warnings_);
        return json_to_text(document_.root());
    } catch (const otio::ReadError&) {
        return {};
    }
}

} // namespace

ReadResult read_otio_bytes(std::string_view bytes, const std::string& path_for_messages, std::int64_t file_time,
                           const ReadOptions& options) {
    return Reading(shared(std::string(bytes)), path_for_messages, file_time, options).run(nullptr);
}

ReadResult read_otio(const std::string& path, const ReadOptions& options) {
    return read_whole(file_of_bundle(path), [&](std::string bytes, std::int64_t file_time) {
        return Reading(shared(std::move(bytes)), path, file_time, options).run(nullptr);
    });
}

} // namespace formats
