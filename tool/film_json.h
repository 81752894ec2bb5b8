#pragma once
// Film in the JSON documents of orders and of conforming, the same members in both.

#include "film/order_facts.h"
#include "tool/json_writer.h"

#include <vector>

namespace tool {

/// "reels": what was read, each with its file, its edit and the CRC-32 of its bytes.
void put_reels(JsonWriter& out, const std::vector<film::OrderInput>& reels);

void put_range(JsonWriter& out, const char* first, const char* last, const film::FrameRange& range);

/// Members of a stretch of film: roll, prefix, kind, perforation, first and last whole frame.
void put_stretch(JsonWriter& out, const film::FilmRun& run, const film::FrameRange& frames);

/// Members of what a reel shows of film that isn't known.
void put_unknown(JsonWriter& out, const film::UnknownFilm& film);

} // namespace tool
