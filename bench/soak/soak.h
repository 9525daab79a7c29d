#pragma once

#include <string>

namespace kirolane::soak {

/// What a run is asked for. Each prints its counts and comes to whether all that it promises has held.
struct Run {
    std::string clips; ///< the folder that make_clips.sh has filled
    int count = 0;
    unsigned seed = 0;
};

/// Files of all extensions with bytes changed, opened one after the other, and every tenth a good one.
bool Mutants(const Run& run);
/// Acts of an evening, an engine killed at a random moment of each.
bool Kills(const Run& run);
/// Good files, opened one after the other: what is left behind of them.
bool Openings(const Run& run);

} // namespace kirolane::soak
