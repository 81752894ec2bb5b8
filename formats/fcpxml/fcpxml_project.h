#pragma once
// What a document holds that can be read as an edit: its projects, or its clips.

#include "formats/edit_reading.h"
#include "formats/fcpxml/fcpxml_document.h"

#include <cstdint>
#include <string>
#include <vector>

namespace formats::fcpxml {

/// A project, or a clip of a browser.
struct Project {
    Element element;
    Element sequence; ///< of a project or a compound clip; none of other clips
    std::string name;
    std::string library; ///< or what it stands in instead
    Format format;
};

/// The projects that hold something; where there is none, the clips. `stem` is the name of those without one. Compound
/// clips that the resources hold are taken too where one is `wanted` by name and nothing else has it.
std::vector<Project> projects_of(const Element& root, const Context& context, const std::string& stem,
                                 const std::string& wanted);

std::vector<Sequence> sequences_of(const std::vector<Project>& projects);

/// "2023-11-22 03:29:21 -0800" in seconds since the epoch; 0 where it isn't such a time.
std::int64_t parse_date(std::string_view text);

} // namespace formats::fcpxml
