#pragma once
// AAF files that tests, fuzzing and benchmarks share.

#include "tests/support/aaf_writer.h"

#include <cstddef>

namespace aaf_samples {

/// Something of everything that is read: two tracks in a scope, fades and dissolves, a sub-clip, speeds, markers, and a
/// chain through pulldown to tape and film.
aaf_writer::Made everything();

/// One track of so many clips at 24 frames a second, with a dissolve at every tenth cut, from 200 masters whose files
/// lead through pulldown to tape and film.
aaf_writer::Made long_cut(std::size_t clips);

} // namespace aaf_samples
