#include "tool/splice_options.h"

namespace tool {

Option method_option(film::SpliceRules& rules) {
    return {"--method", "METHOD", "How the negative is put together: ab, single or ultrasonic",
            one_of(film::cut_methods, rules.method, "ab")};
}

Option splice_loss_option(film::SpliceRules& rules) {
    return {"--splice-loss", "N[p]", "Frames, or with p perforations, that a splice spends on either side of a cut",
            OneText{[&rules](const std::string& text) { rules.own = film::splice_loss_of(text); },
                    {},
                    [](const std::string& text) {
                        return std::string(film::splice_loss_of(text)
                                               ? ""
                                               : "it is no number of frames, as 2, or of perforations, as 2p");
                    }}};
}

} // namespace tool
