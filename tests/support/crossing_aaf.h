#pragma once
// The AAF of examples/formats: the shots that examples/make/crossing.py writes as texts.

#include "tests/support/aaf_writer.h"

namespace crossing {

aaf_writer::Made aaf();

} // namespace crossing
