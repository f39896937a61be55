#pragma once

#include <string_view>
#include <vector>

class Scene;

/// Something that people, a program or the machine may do at any moment.
struct Move {
    std::string_view name;
    /// How often, beside the others.
    int weight;
    void (*make)(Scene&);
};

using Moves = std::vector<Move>;

[[nodiscard]] Moves contentMoves();
[[nodiscard]] Moves hotSpotMoves();
[[nodiscard]] Moves lookMoves();
[[nodiscard]] Moves hostMoves();
/// All of them.
[[nodiscard]] Moves allMoves();
