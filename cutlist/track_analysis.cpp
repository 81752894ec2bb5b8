#include "cutlist/track_analysis.h"

#include "base/messages.h"
#include "cutlist/cdbgen.h"
#include "cutlist/convert_labels.h"
#include "cutlist/convert_shots.h"
#include "cutlist/fx_opticals.h"
#include "host/channel_kinds.h"
#include "host/fixed_text.h"

#include <cstdio>

namespace {

constexpr unsigned every_subtype = 15;
constexpr int sound_track = 1;

/// What one run works on.
struct analysis {
    EditPtr& edit;
    LoggerHandle& logger;
    int use_log;
    CueList* cues;
    LogShotList* shots;
    event_array& events;

    /// Makes the next record of a track; false at its end.
    bool convert(int chan, ce_handle& handle, std::unique_ptr<cut_s>& rec, int track) const {
        if (events.overfull()) return false;
        const convert_result result = use_log ? convert_event_from_shots(edit, chan, cues, handle, rec, shots, track)
                                              : convert_event_from_labels(edit, chan, cues, handle, rec, track);
        return result == convert_done;
    }
};

template <class Visit> void for_each_picture_channel(const Edit& edit, Visit visit) {
    for (int chan = edit.getFirstChan(picture_channel, every_subtype); chan != no_more_channels;
         edit.getNextChan(chan, picture_channel, every_subtype))
        visit(chan);
}

// FX channels, and the first of the others.
void list_opticals(const analysis& run) {
    bool first_plain = true;
    for_each_picture_channel(*run.edit, [&](int chan) {
        const bool fx = run.edit->getChanSubtype(chan) == chan_fx;
        if (!fx && !first_plain) return;
        if (!fx) first_plain = false;
        say(run.logger, fx ? "Analysing opticals on FX track" : "Analysing opticals on V1", level_progress);
        analyse_fx_opticals(run.edit, chan, run.cues, run.events);
    });
}

// A transition belongs to both cuts that it joins:
//
//     | prev          |DO  ->  DI| rec          |
//
// and one against black is a fade on the side of the picture.
void join_records(cut_s& prev, cut_s& rec) {
    put_text(rec.fx_op_in, prev.fx_op_out);
    if (rec.fx_op_in[0] != '\0') rec.fx_op_in[1] = 'I';
    put_text(rec.fx_mod_in, prev.fx_mod_out);
    rec.fx_len_in = prev.fx_len_out;
    if (rec.fx_op_in[0] == 'D' && prev.special == special_black)
        rec.fx_op_in[0] = 'F';
    else if (prev.fx_op_out[0] == 'D' && rec.special == special_black)
        prev.fx_op_out[0] = 'F';
}

void list_picture_track(const analysis& run, int chan, int track) {
    const Qb::Ptr<Cel> flat = flatten(run.edit->get_edit_cel_p(chan)->simplify(0, false, true), 3, 1);
    ce_handle handle = flat->get_start_ceh();
    cut_s* prev = nullptr;
    std::unique_ptr<cut_s> rec;
    while (run.convert(chan, handle, rec, track)) {
        rec->track = track;
        if (prev) join_records(*prev, *rec);
        prev = rec.get();
        run.events.add(std::move(rec));
    }
}

void list_picture_tracks(const analysis& run) {
    int track = 0;
    for_each_picture_channel(*run.edit, [&](int chan) {
        const EditChanSubType subtype = run.edit->getChanSubtype(chan);
        if (subtype == chan_unlisted || subtype == chan_fx) return;
        ++track;
        char text[40];
        std::snprintf(text, sizeof text, "Analysing track V%d", track);
        say(run.logger, text, level_progress);
        list_picture_track(run, chan, track);
    });
}

Qb::Ptr<Cel> without_crossfades(const Edit& edit, const Qb::Ptr<Cel>& cel) {
    const Qb::Ptr<Cel> result(new Cel(0, edit.getCelResolution()));
    const int trouble = cel->crossfade_removal_whole(result.get());
    if (trouble != 0) trace("\ncdbgen: got %d from crossfade_removal_whole()\n", trouble);
    return result;
}

// Sound records keep track 0 and aren't joined; track 1 only keeps the converter from looking for effects.
void list_sound_track(const analysis& run, int chan, int keep_crossfades) {
    say(run.logger, "Analysing sound track", level_progress);
    Qb::Ptr<Cel> cel = run.edit->get_edit_cel_p(chan)->simplify(0, false, true);
    if (keep_crossfades == 0) cel = without_crossfades(*run.edit, cel);
    const Qb::Ptr<Cel> flat = flatten(cel, 3, 1);
    ce_handle handle = flat->get_start_ceh();
    std::unique_ptr<cut_s> rec;
    while (run.convert(chan, handle, rec, sound_track))
        run.events.add(std::move(rec));
}

} // namespace

bool analyse_tracks(int chan_type, int chan_num, EditPtr& edit, int keep_crossfades, LoggerHandle& logger, int use_log,
                    CueList* cues, LogShotList* shots, event_array& events) {
    const analysis run = {edit, logger, use_log, cues, shots, events};
    if (chan_type == picture_channel) {
        list_opticals(run);
        list_picture_tracks(run);
    } else if (chan_type == sound_channel) {
        list_sound_track(run, chan_num, keep_crossfades);
    }
    if (!events.overfull()) return true;
    say(logger, "The edit has more than 9999 events: no list can hold it", level_fatal);
    return false;
}
