#pragma once
// JSON documents held against the schemas of docs/.

#include <string>

/// Where a document doesn't fit the schema in docs/ of that name, or what else is wrong; empty where it fits.
std::string fault_by_schema(const std::string& document, const std::string& schema);
