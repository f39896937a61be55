#pragma once

#include <string_view>
#include <vector>

class Scene;

/// Something that a user, a program or the system may do at any time.
struct Move {
    std::string_view name;
    /// The relative frequency.
    int weight;
    void (*make)(Scene&);
};

using Moves = std::vector<Move>;

[[nodiscard]] Moves contentMoves();
[[nodiscard]] Moves hotSpotMoves();
[[nodiscard]] Moves lookMoves();
[[nodiscard]] Moves hostMoves();
/// All of the above.
[[nodiscard]] Moves allMoves();
