#pragma once
// Writes small cutlists, as a run of the command would leave them.

#include <map>
#include <string>
#include <vector>

/// A stretch of film as it stands in a cut: frames of one strip from `frame` on.
struct CutShot {
    std::string strip; ///< eight characters, as "KJ123456"
    int frame = 0;     ///< 16 make a key number
    int length = 0;
    std::string name = {};
    std::string scene = {}, take = {};
    std::string ink = {}; ///< the ink number of its first frame; empty: none
    std::string speed = "1";
};

/// The text of a key number: frame 17 of a strip is "KJ1234560001+01".
std::string key_text(const std::string& strip, int frame);

/// A cutlist table (.cdb) of one reel: a cutting copy of 35mm four-perforation film. `parameters` go over its own.
std::string cut_table(const std::vector<CutShot>& shots, const std::map<std::string, std::string>& parameters = {});
