#pragma once
// What an edit was built of, to the letter: for writers of edit files, which need what was said rather than what became
// of it.

#include "embedded/edit_builder.h"
#include "embedded/event_layout.h"

#include <deque>
#include <vector>

namespace embedded {

struct RecipeChannel {
    int kind = 0; ///< 1 picture, 2 sound
    int subtype = 0;
    std::vector<ChannelItem> items;
    std::vector<ChannelCut> cuts; ///< all that were added, also those that the layout dropped

    bool fx() const;
};

struct RecipeCue {
    int channel = -1; ///< -1 all of them
    EditBuilder::CueLevel level = EditBuilder::CueLevel::stack;
    CueDescription cue;
};

/// `ChannelItem::event.source` counts `sources`. Labels whose text can't be read aren't there.
struct EditRecipe {
    EditDescription edit;
    std::deque<SourceDescription> sources; ///< they are large, and stay where they are while more are added
    std::vector<RecipeChannel> channels;
    std::vector<RecipeCue> cues; ///< in the order of the calls
};

/// Null for an edit that nothing was cut of, as a source. It is the edit's.
const EditRecipe* recipe_of(const EditPtr& edit);

} // namespace embedded
