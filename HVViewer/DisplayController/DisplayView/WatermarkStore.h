#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <string_view>
#include <utility>

/// A cache of objects made from the watermark, one for each text and size. Objects are kept until
/// the process ends, because drawers hold plain pointers to them.
///
/// Thread: any; thread-safe.
template <class Made>
class WatermarkStore {
public:
    /// Runs `make` on the first call for a text and a size; later calls return the same object.
    /// Returns null if `make` returned null. `text` must stay valid until the process ends.
    template <class Make>
    const Made* findOrMake(std::string_view text, int maxSidePx, const Make& make) {
        const std::scoped_lock lock(mutex_);
        const auto [entry, isNew] = made_.try_emplace({text, maxSidePx});
        if (isNew)
            entry->second = make();
        return entry->second.get();
    }

private:
    std::mutex mutex_; // guards made_
    std::map<std::pair<std::string_view, int>, std::unique_ptr<const Made>> made_;
};
