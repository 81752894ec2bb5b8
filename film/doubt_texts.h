#pragma once
// What stands where in a list of missing and doubtful elements.

#include <string_view>

namespace film {

enum class DoubtSection { lists, no_list, whole };

namespace doubt_texts {

inline constexpr const char* title = "                         MISSING AND DOUBTFUL ELEMENTS";
inline constexpr const char* by_table = "***NOTE: by the table alone, without its edit and its log";
inline constexpr const char* heads[] = {
    "Evt  Position Roll              Tape              Timecode      Shot name",
    "     What is missing or in doubt",
};
inline constexpr const char* none = "     Nothing is missing or in doubt";
/// By `DoubtSection`; the first has no title.
inline constexpr std::string_view sections[] = {
    {},
    "***** IN NO OTHER LIST: film of upper tracks",
    "***** OF THE EDIT AS A WHOLE",
};
inline constexpr const char* end = "End of missing and doubtful elements";
inline constexpr const char* page_name = "LIST OF DOUBTS";

inline constexpr std::string_view missing = "MISSING", wrong = "WRONG", doubt = "DOUBT";
inline constexpr std::string_view words[] = {missing, wrong, doubt};

inline constexpr int position_column = 5, roll_column = 14, tape_column = 32, timecode_column = 50, name_column = 64;
inline constexpr int word_column = 5, what_column = 15;
inline constexpr std::string_view indent = "     ";

} // namespace doubt_texts
} // namespace film
