#pragma once
// How every change list begins: its title, then two lines of heads over its columns.

class report;

struct ListHeads {
    const int* stops; ///< closed by 0, static
    const char* first;
    const char* second;
};

/// The layouts of a list by what its rows show.
struct ListLayouts {
    ListHeads scene_take_and_keys;
    ListHeads scene_take;
    ListHeads name_and_keys;
    ListHeads name;
};

/// The layout that the options ask for.
const ListHeads& chosen_heads(const ListLayouts& layouts);

/// Sets the list's stops and prints its title and heads, with a rule below.
void start_section(report& out, const char* title, const ListHeads& heads);
