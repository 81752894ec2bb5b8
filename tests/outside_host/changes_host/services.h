#pragma once
// What the host's services do beyond `host/`.

#include <string>

/// What was written into the report that was opened last.
std::string& report_bytes();
