// "quillbrook order": what film is to be pulled or scanned for the reels of a programme.

#include "film/cut_uses.h"
#include "tool/command.h"
#include "tool/film_check.h"
#include "tool/key_values.h"
#include "tool/open_logs.h"
#include "tool/order_file.h"
#include "tool/order_outputs.h"
#include "tool/order_text.h"
#include "tool/output_files.h"
#include "tool/reel_films.h"
#include "tool/roll_choices.h"
#include "tool/run_setup.h"
#include "tool/shared_options.h"
#include "tool/tool_error.h"
#include "tool/tool_logger.h"
#include "tool/wrong_file.h"

#include <algorithm>
#include <climits>
#include <iostream>
#include <map>
#include <tuple>

namespace tool {
namespace {

enum class Sorting { roll, scan, scene, edit };

struct OrderJob {
    EditInput edit; ///< its paths are the reels, edits or tables
    ChannelName channel;
    std::string log;
    Output output;
    std::optional<std::string> json;
    std::vector<std::string> had;
    film::OrderOptions order;
    bool ends = false;
    bool prove = false;
    bool force = false;
    Sorting sorting = Sorting::roll;
    LibraryOptions options;
    Settings settings;
    CheckChoices checks;
    OrderOutputs outputs;
    RollChoices rolls;
};

void check_files(const OrderJob& job) {
    std::vector<std::string> inputs = joined(job.edit.paths, job.had);
    if (!job.log.empty()) inputs.push_back(job.log);
    for (const std::string& input : inputs)
        check_named_input(input);
    std::vector<std::string> outputs{job.output.report};
    check_output("-o", job.output.report, inputs, {});
    if (job.json) {
        check_output("--json", *job.json, inputs, outputs);
        outputs.push_back(*job.json);
    }
    outputs = joined(outputs,
                     check_order_outputs(job.outputs, !job.had.empty(), job.rolls.building.feet > 0, inputs, outputs));
    hold_outputs(outputs, job.output.overwrite);
    for (const std::string& input : inputs)
        check_readable(input);
    if (!job.log.empty()) check_is_log_table(job.log);
}

void add_reels(const OrderJob& job, film::OrderToTell& order) {
    const ReelReader reader({job.edit, job.channel, job.log, job.options, job.checks, job.output.quiet});
    film::ReelNeeds all;
    for (const std::string& path : job.edit.paths) {
        ReelFilm reel = reader.read(path);
        if (reel.sound) throw JobError(path + ": is a table of sound, and only picture film is ordered");
        film::add_needs(reel.film, reel.log, static_cast<int>(order.reels.size()), all);
        film::add_slivers(reel.film, reel.log, static_cast<int>(order.reels.size()), all);
        order.reels.push_back(std::move(reel.input));
    }
    order.all_needs = std::move(all.needs);
    order.unknown = std::move(all.unknown);
}

/// By what comes first of each piece.
bool goes_ahead(const OrderToTell& order, Sorting sorting, const film::OrderPiece& a, const film::OrderPiece& b) {
    const auto first_use = [&](const film::OrderPiece& piece) {
        std::pair<int, std::int64_t> first{INT_MAX, 0};
        for (const std::size_t place : piece.uses)
            first = std::min(first, {order.needs[place].reel, order.needs[place].strip.start});
        return first;
    };
    const auto scene = [&](const film::OrderPiece& piece) {
        const film::Strip& strip = order.needs[piece.uses.front()].strip;
        return std::tie(strip.scene, strip.take, strip.name);
    };
    const auto place_on_tape = [&](const film::OrderPiece& piece) {
        const film::Strip& strip = order.needs[piece.uses.front()].strip;
        const film::Count& timecode = strip.timecode;
        return std::pair(strip.rolls.tape, std::min(timecode.frame_at(0), timecode.frame_at(strip.length() - 1)));
    };
    // Numbers of a roll that lie otherwise between the perforations stand among its others.
    const auto number = [](const film::OrderPiece& piece) {
        return film::perforations_of(piece.run, piece.frames).first;
    };
    switch (sorting) {
    case Sorting::roll:
        return std::tuple(a.run.roll, a.run.kind, a.run.prefix, number(a)) <
               std::tuple(b.run.roll, b.run.kind, b.run.prefix, number(b));
    case Sorting::edit:
        return first_use(a) < first_use(b);
    case Sorting::scan:
        return place_on_tape(a) < place_on_tape(b);
    default:
        return scene(a) < scene(b);
    }
}

void sort_pieces(OrderToTell& order, Sorting sorting) {
    std::vector<std::size_t> places(order.pieces.size());
    for (std::size_t i = 0; i < places.size(); ++i)
        places[i] = i;
    std::stable_sort(places.begin(), places.end(), [&](std::size_t a, std::size_t b) {
        return goes_ahead(order, sorting, order.pieces[a], order.pieces[b]);
    });
    film::OrderPieces sorted;
    std::vector<std::size_t> now(places.size());
    for (const std::size_t place : places) {
        now[place] = sorted.size();
        sorted.push_back(std::move(order.pieces[place]));
    }
    order.pieces = std::move(sorted);
    for (film::ChangeOrder::Longer& longer : order.longer)
        longer.piece = now[longer.piece];
    std::sort(order.longer.begin(), order.longer.end());
}

void make_order(const OrderJob& job, OrderToTell& order) {
    order.options = job.order;
    order.by_roll = job.sorting == Sorting::roll;
    order.log = job.log;
    add_reels(job, order);
    for (const std::string& path : job.had)
        read_order(path, order.had, order.had_names);
    if (job.had.empty()) {
        order.needs = order.all_needs;
        order.pieces = film::order_of(order.needs, job.order);
    } else {
        film::ChangeOrder change = film::change_order(order.all_needs, order.had, job.order, job.ends);
        order.needs = std::move(change.needs);
        order.pieces = std::move(change.pieces);
        order.longer = std::move(change.longer);
        order.unused = std::move(change.unused);
    }
    sort_pieces(order, job.sorting);
    build_select_rolls(job.rolls, order);
}

/// The order by itself, and with all that was had.
int prove(const OrderToTell& order, std::ostream& out) {
    const film::OrderProof alone = film::prove_order(order.pieces, order.needs, order.options);
    const film::OrderProof cover = film::prove_cover(order.pieces, order.had, order.all_needs);
    const std::vector<std::string> rolls = failures_of_rolls(order);
    for (const std::vector<std::string>* failures : {&alone.failures, &cover.failures, &rolls})
        for (const std::string& failure : *failures)
            out << "order: " << one_line(failure) << '\n';
    if (!alone.failures.empty() || !cover.failures.empty() || !rolls.empty()) return exit_not_proved;
    out << "proved: " << order.pieces.size() << (order.pieces.size() == 1 ? " piece, " : " pieces, ") << cover.frames
        << " needed frames" << (order.had.empty() ? "" : ", with what was had") << '\n';
    return exit_done;
}

/// Film of one roll whose frames lie otherwise between the perforations, or that names a roll once and once none, makes
/// pieces of its own.
void tell_overlaps(const OrderToTell& order, bool quiet) {
    std::map<film::Strand, std::vector<std::size_t>> strands;
    for (std::size_t i = 0; i < order.pieces.size(); ++i)
        strands[film::strand_of(order.pieces[i].run)].push_back(i);
    embedded::Warnings warnings;
    for (auto& [strand, places] : strands) {
        const auto film = [&order](std::size_t place) {
            return film::perforations_of(order.pieces[place].run, order.pieces[place].frames);
        };
        std::stable_sort(places.begin(), places.end(),
                         [&](std::size_t a, std::size_t b) { return film(a).first < film(b).first; });
        for (std::size_t i = 1; i < places.size(); ++i) {
            const std::string &roll = order.pieces[places[i]].run.roll, &other = order.pieces[places[i - 1]].run.roll;
            const bool one_roll = roll == other || roll.empty() || other.empty();
            if (one_roll && film(places[i]).first <= film(places[i - 1]).last)
                warnings.push_back({embedded::WarningKind::doubt,
                                    "piece " + std::to_string(places[i] + 1) + " holds film of piece " +
                                        std::to_string(places[i - 1] + 1) + " again: " +
                                        (roll == other ? "their frames lie otherwise between the perforations"
                                                       : "one of them names no roll")});
        }
    }
    if (warnings.size() > 1) {
        warnings.front().text += "; and " + film::counted(static_cast<std::int64_t>(warnings.size()) - 1,
                                                          "more such piece", "more such pieces");
        warnings.erase(warnings.begin() + 1, warnings.end());
    }
    tell_warnings(warnings, quiet);
}

int run(const OrderJob& job) {
    check_files(job);
    if (job.force && !job.log.empty()) read_in_spite_of_seals({job.log}, job.output.quiet);
    apply_settings(job.settings);
    receive_tables(job.output.quiet);
    OrderToTell order;
    make_order(job, order);
    tell_overlaps(order, job.output.quiet);
    deliver_bytes(job.output.report, order_text(order));
    if (job.json) deliver_bytes(*job.json, order_document(order));
    write_order_outputs(job.outputs, order, !job.had.empty(), job.output.quiet);
    const bool taken = is_stream(job.output.report) || (job.json && is_stream(*job.json));
    return job.prove ? prove(order, taken ? std::cerr : std::cout) : exit_done;
}

constexpr std::pair<const char*, Sorting> sortings[] = {
    {"roll", Sorting::roll}, {"scan", Sorting::scan}, {"scene", Sorting::scene}, {"edit", Sorting::edit}};

void add_pieces(OptionTable& options, OrderJob& job) {
    constexpr int most = 10000;
    options.add({
        {"--handles", "N", "Frames beyond what is needed at each end of a piece",
         WholeNumber{job.order.handles, 0, most}},
        {"--min-handles", "M", "Tell handles that are shorter, where a take ends",
         WholeNumber{job.order.min_handles, 0, most}},
        {"--join", "N", "Pieces with fewer frames between them become one; by default those that touch",
         WholeNumber{job.order.join, 0, most}},
        {"--whole-takes", "", "Pull takes whole, where a log's row or the media tells how far they go",
         job.order.whole_takes},
        {"--sort", "BY",
         "Pieces by roll and number, by tape and timecode (scan), by scene and take, or in the order of the edit",
         one_of(sortings, job.sorting, "roll")},
        {"--had", "ORDER", "Earlier orders (--json): order only what they lack", InputFiles{job.had}},
        {"--ends", "", "Of shots that grew, order only what was added", job.ends},
    });
}

void add_options(OptionTable& options, OrderJob& job) {
    options.add(
        {{"EDIT", "", "The reels: edits, or their cutlist tables (.cdb)", InputFiles{job.edit.paths}, Needed::yes},
         output_file(job.output, "The order to write"),
         {"--json", "FILE", "The order for scripts and for --had", job.json}});
    add_pieces(options, job);
    add_roll_options(options, job.rolls);
    add_channel_and_log(options, job.channel, job.log);
    add_edit_reading(options, job.edit);
    options.add({
        {"--prove", "", "Hold the order against the film that the reels need", job.prove},
        library_set(job.options, parse_options),
        host_setting(job.settings),
        overwrite(job.output, "Replace files that are there"),
        force(job.force),
        quiet(job.output),
    });
    add_check_options(options, job.checks);
    add_order_outputs(options, job.outputs);
}

constexpr const char* examples = R"(Examples:
  quillbrook order r1.otio r2.otio -o order.txt --handles 8 --json order.json --prove
      what to pull for two reels, by roll and number, with 8 frames more at each end
  quillbrook order r1.edl --rate 24 --log show.RDB -o order.txt --handles 12 --join 48
      with numbers from a log; pieces less than two seconds apart are pulled as one
  quillbrook order new-r1.otio new-r2.otio -o more.txt --handles 8 --had order.json --json more.json
      after a recut: only what was not had, what is longer now, and what no reel uses any more

Exit status: 0 done, 1 the job failed, 2 wrong usage, 3 the order doesn't prove.)";

} // namespace

extern const Command order_command{"order", "Order the film that the reels of a programme need", examples,
                                   prepare<OrderJob, add_options, run>};

} // namespace tool
