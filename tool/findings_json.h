#pragma once
// Findings as JSON; docs/findings.schema.json says what the document holds.

#include "film/finding.h"

#include <string>

namespace tool {

std::string findings_document(const film::Findings& findings);

} // namespace tool
