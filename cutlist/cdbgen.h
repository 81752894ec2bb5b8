#pragma once
// The generator driver: from an edit to a saved cutlist.

#include "cutlist/event_array.h"
#include "host/edit.h"
#include "host/settings.h"

class cutdb;

/// Makes the cutlist of `edit` and saves it; `cdb_name` takes the name of the file. `edit` is pointed at the
/// de-rendered copy where one is made. `options` is read first where it isn't null.
bool cdbgen(LightweightString<wchar_t>& cdb_name, EditPtr& edit, LoggerHandle& logger, int use_log, CueList* cues,
            const configb* options);

/// The first block of header parameters, all that is known before the tracks are analysed.
void write_cutlist_header(cutdb& db, Edit& edit, const char* project_name);
/// One row a record, in order.
void append_events(cutdb& db, const event_array& events);

/// Debug trace of at most 511 bytes; silent unless the module's switch is on, which nothing turns.
void trace(const char* format, ...) __attribute__((format(printf, 1, 2)));
