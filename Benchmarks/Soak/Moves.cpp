#include "Benchmarks/Soak/Moves.h"

Moves allMoves() {
    Moves all;
    for (const Moves& part : {contentMoves(), hotSpotMoves(), lookMoves(), hostMoves()})
        all.insert(all.end(), part.begin(), part.end());
    return all;
}
