#pragma once
// Where the material of a clip item comes from: its file, the clip of a bin that it was taken from, and the log of
// each.

#include "embedded/edit_builder.h"
#include "formats/fcp7xml/fcp7_index.h"
#include "formats/fcp7xml/fcp7_values.h"
#include "formats/timeline/sources.h"

#include <string>

namespace formats::fcp7 {

/// What reading a sequence needs to know everywhere.
struct Context {
    const Index& index;
    Clock clock;
    bool all_effects = false;
    Teller& teller;
    timeline::Sources& sources;
};

/// A clip item, or the angle of a multiclip that it shows, with its medium.
struct Media {
    Element item;   ///< the clip item
    Element clip;   ///< of an angle; none elsewhere
    Element file;   ///< in full; none where the document doesn't hold it
    Element master; ///< the clip of a bin; may be none
    Rate rate;      ///< in which the item's own frames count

    /// The clip of an angle says more of it than the item.
    const Element& told_by() const { return clip ? clip : item; }
};

Media media_of(const Element& item, const Element& clip, const Rate& otherwise, const Context& context);
/// What came from no medium: black, titles, mattes.
bool is_generated(const Media& media);
/// A still picture, which any frame of it shows. One that might be but is read as a series is told.
bool is_still(const Media& media, const Fraction& in, Teller& teller);
/// What editing programs call black: "Slug", "Black", "Black Video", also with a number.
bool is_named_black(std::string_view name);
/// Black, of what came from no medium: titles may have any name.
bool is_black(const Media& media);
/// The item's, else the file's.
std::string name_of(const Media& media);

embedded::SourceDescription describe_source(const Media& media, const Context& context);
/// Material without a medium: a nest of several tracks, a title.
embedded::SourceDescription describe_rendered(const std::string& name, const std::string& identity,
                                              const Context& context);

} // namespace formats::fcp7
