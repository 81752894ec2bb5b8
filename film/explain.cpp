#include "film/explain.h"

#include "film/edit_film.h"
#include "film/edit_walk.h"
#include "film/log_rows.h"

#include <algorithm>

namespace film {
namespace {

constexpr const char* role_names[] = {"cut", "the outgoing side of a transition", "the incoming side of a transition",
                                      "a layer of an optical"};

std::string quoted(const std::string& text) { return '"' + text + '"'; }

EditLabel* timecode_of(const EditPtr& edit) { return edit->getLabel(user_label_timecode, {medium_source_picture, 2}); }

class Explaining {
public:
    Explaining(const EditPtr& edit, const CheckOptions& options, const LogRows* log)
        : edit_(edit), options_(options), log_(log), film_(film_of_edit(edit, options.uses, log)) {}

    Explanation at(std::int64_t frame) {
        for (const Strip& strip : film_.strips) {
            if (strip.start > frame || frame >= strip.end) continue;
            if (lines_.empty()) explain_place(frame);
            explain(strip, frame - strip.start);
        }
        return std::move(lines_);
    }

    /// The first frame of the event itself, or where it has none of its shares; below 0 where there is no such event.
    std::int64_t start_of(int event) const {
        std::int64_t start = -1;
        for (const Strip& strip : film_.strips) {
            if (strip.event != event) continue;
            if (strip.role == Role::cut) return strip.start;
            if (start < 0) start = strip.start;
        }
        return start;
    }

private:
    void say(const char* step, const std::string& text) { lines_.push_back(std::string(step) + ": " + text); }

    void explain_place(std::int64_t frame) {
        const double seconds = (Fraction(frame) / film_rate(edit_)).to_double();
        say("edit", "film frame " + std::to_string(frame) + ", timecode " +
                        timecode_of(edit_)->get_label_point(seconds).get_string() + ", at " +
                        fraction_text(film_rate(edit_)) + " film frames a second");
    }

    void explain(const Strip& strip, std::int64_t k) {
        explain_event(strip);
        if (strip.black) return say("film", "black, which needs none");
        if (strip.source) explain_source(strip, k);
        if (strip.timecode)
            say("timecode", "reel " + quoted(strip.rolls.tape) + " at " + strip.timecode.text_at(k) + " (" +
                                label_type_to_edlstr(strip.timecode.kind) + ")");
        if (log_) explain_log(strip, k);
        explain_key(strip, k);
    }

    void explain_event(const Strip& strip) {
        const std::string channel = options_.uses.kind == 2 ? "A" + std::to_string(options_.uses.number)
                                                            : "V" + std::to_string(strip.layer + 1);
        std::string text = strip.event > 0 ? "event " + std::to_string(strip.event) + " of " + channel : channel;
        if (!strip.name.empty()) text += ", " + quoted(strip.name);
        text += ", frames " + std::to_string(strip.start) + " to " + std::to_string(strip.end - 1) + " as " +
                role_names[static_cast<int>(strip.role)];
        if (!strip.where.empty()) text += ", " + strip.where;
        say("event", text);
        if (strip.optical > 0) say("optical", "optical " + std::to_string(strip.optical) + " holds it");
        if (strip.layer > 0 && strip.optical == 0)
            say("optical", "none with a number draws on its track, so no list shows it");
    }

    void explain_source(const Strip& strip, std::int64_t k) {
        say("source", "frame " + std::to_string(strip.source.frame_at(k)) +
                          " of its film, counted from 0: " + fraction_text(strip.source.first) + " + " +
                          std::to_string(k) + " x " + fraction_text(strip.source.step));
    }

    void explain_log(const Strip& strip, std::int64_t k) {
        const LogRow* row = strip.log_row < 0 ? nullptr : log_->row(strip.log_row);
        if (row) {
            const std::int64_t inside = strip.timecode.frame_at(k) - row->start;
            say("log", row_text(*row) + ", frame " + std::to_string(inside) + " of " +
                           std::to_string(row->end - row->start) +
                           (strip.sureness == Sureness::beyond ? ", outside it" : ""));
        } else {
            say("log", "no row of it holds this frame");
        }
        const FilmEvent& event = film_.events[static_cast<std::size_t>(strip.item)];
        const LogRow* listed =
            event.timecode ? log_->listed(event.rolls.tape, event.timecode_in, event.timecode_out) : nullptr;
        if (listed != row) say("lists", listed ? "they take " + row_text(*listed) : "they find no row");
    }

    std::string row_text(const LogRow& row) const {
        LabelPoint start(static_cast<int>(row.start), row.kind), key = row.key;
        return options_.log_file + " line " + std::to_string(row.line) + ", reel " + quoted(row.reel) + " from " +
               start.get_string() + (row.camera.empty() ? "" : ", roll " + row.camera) + ", key number " +
               (row.key.is_useful() ? key.get_string() : "none");
    }

    void explain_key(const Strip& strip, std::int64_t k) {
        if (!strip.key) return say("key", "no number is known");
        const label_cvt& kind = *get_static_label_cvt(strip.key.kind);
        const std::string off = strip.off > 0 ? ", within " + std::to_string(strip.off) + " frame" : "";
        say("key", "frame " + std::to_string(strip.key.frame_at(k)) + " behind 0000+00 of " + strip.key.prefix + ", " +
                       label_type_to_edlstr(strip.key.kind) + ": " + std::to_string(kind.samples_per_frame()) +
                       " perforations a frame, " + std::to_string(kind.samples_per_count()) + " a number" + off);
        say("film", (strip.rolls.listed.empty() ? "no roll" : "roll " + strip.rolls.listed) + ", " +
                        strip.key.text_at(k) + (strip.ink ? ", ink " + strip.ink.text_at(k) : ""));
    }

    const EditPtr edit_;
    const CheckOptions& options_;
    const LogRows* const log_;
    const EditFilm film_;
    Explanation lines_;
};

} // namespace

Explanation explain_frame(const EditPtr& edit, const CheckOptions& options, const LogRows* log, std::int64_t frame) {
    return Explaining(edit, options, log).at(frame);
}

Explanation explain_event(const EditPtr& edit, const CheckOptions& options, const LogRows* log, int event) {
    Explaining explaining(edit, options, log);
    const std::int64_t start = explaining.start_of(event);
    return start < 0 ? Explanation() : explaining.at(start);
}

std::optional<std::int64_t> frame_of_timecode(const EditPtr& edit, const std::string& text) {
    const EditLabel& label = *timecode_of(edit);
    LabelPoint point(0, label.type());
    point.set_sample(text.c_str());
    if (!label.is_valid() || !point.is_useful()) return std::nullopt;
    const std::int64_t frames = std::int64_t{point.sample} - label.get_label_point(0).sample;
    if (frames < 0) return std::nullopt;
    return film_frame_of(Fraction(frames) * Fraction::exactly(label.posn_step) + Fraction(1, 1000000), film_rate(edit));
}

} // namespace film
