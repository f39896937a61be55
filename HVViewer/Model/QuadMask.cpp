#include "HVViewer/Model/QuadMask.h"

#include <algorithm>
#include <bit>

void RingMask::clearRange(int first, int count) {
    if (count <= 0)
        return;
    if (count >= kSegments) {
        *this = RingMask();
        return;
    }
    const int start = (first % kSegments + kSegments) % kSegments;
    clearStraight(start, std::min(start + count, kSegments));
    clearStraight(0, start + count - kSegments);
}

void RingMask::clearStraight(int first, int end) {
    while (first < end) {
        const int wordEnd = std::min(end, (first / 64 + 1) * 64);
        const std::uint64_t below = wordEnd % 64 == 0 ? ~0ULL : (1ULL << bit(wordEnd)) - 1;
        words_[index(first)] &= ~(below & ~0ULL << bit(first));
        first = wordEnd;
    }
}

int RingMask::find(int from, bool value) const {
    while (from < kSegments) {
        const std::uint64_t wanted = (value ? word(from) : ~word(from)) >> bit(from);
        if (wanted != 0)
            return std::min(from + std::countr_zero(wanted), kSegments);
        from = (from / 64 + 1) * 64;
    }
    return kSegments;
}

RingMask& RingMask::operator&=(const RingMask& other) {
    for (std::size_t i = 0; i < words_.size(); ++i)
        words_[i] &= other.words_[i];
    return *this;
}

QuadMask QuadMask::all() {
    QuadMask mask;
    mask.rings_.fill(RingMask::all());
    return mask;
}

QuadMask& QuadMask::operator&=(const QuadMask& other) {
    for (std::size_t i = 0; i < rings_.size(); ++i)
        rings_[i] &= other.rings_[i];
    return *this;
}

namespace {

void appendRing(std::vector<QuadRun>& runs, const RingMask& ring, std::int32_t firstOfRing) {
    for (int start = ring.find(0, true); start < RingMask::kSegments;) {
        const int end = ring.find(start, false);
        QuadRun* last = runs.empty() ? nullptr : &runs.back();
        // The end of a ring and the start of the next ring are adjacent in the strip.
        if (last && last->first + last->count == firstOfRing + start)
            last->count += end - start;
        else
            runs.push_back({firstOfRing + start, end - start});
        start = ring.find(end, true);
    }
}

/// The number of quads between a run and the previous one.
std::int32_t gapBefore(const std::vector<QuadRun>& runs, std::size_t index) {
    return runs[index].first - (runs[index - 1].first + runs[index - 1].count);
}

/// The widest gap that has to be closed so that at most `most` runs are left.
std::int32_t widestBridge(const std::vector<QuadRun>& runs, std::size_t most) {
    std::vector<std::int32_t> gaps;
    gaps.reserve(runs.size());
    for (std::size_t i = 1; i < runs.size(); ++i)
        gaps.push_back(gapBefore(runs, i));
    const auto bridges = static_cast<std::ptrdiff_t>(runs.size() - most);
    std::nth_element(gaps.begin(), gaps.begin() + bridges - 1, gaps.end());
    return gaps[static_cast<std::size_t>(bridges) - 1];
}

} // namespace

std::vector<QuadRun> QuadMask::runs(std::size_t most) const {
    std::vector<QuadRun> found;
    for (int ring = 0; ring < kRings; ++ring)
        appendRing(found, rings_[static_cast<std::size_t>(ring)], ring * RingMask::kSegments);
    if (found.size() <= most)
        return found;
    const std::int32_t widest = widestBridge(found, most);
    std::vector<QuadRun> joined{found.front()};
    for (std::size_t i = 1; i < found.size(); ++i) {
        if (gapBefore(found, i) <= widest)
            joined.back().count = found[i].first + found[i].count - joined.back().first;
        else
            joined.push_back(found[i]);
    }
    return joined;
}
