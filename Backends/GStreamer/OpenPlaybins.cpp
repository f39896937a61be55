#include "Backends/GStreamer/OpenPlaybins.h"

#include "Backends/GStreamer/Playbin.h"

namespace platform {

OpenPlaybins& OpenPlaybins::shared() {
    // Never destroyed: threads that outlive static destruction still use it.
    static auto* const open = new OpenPlaybins;
    struct CloseAtExit {
        ~CloseAtExit() { open->closeAll(); }
    };
    static const CloseAtExit closeAtExit;
    return *open;
}

void OpenPlaybins::add(const std::shared_ptr<Playbin>& playbin) {
    const std::scoped_lock lock(mutex_);
    playbins_.emplace(playbin.get(), playbin);
}

void OpenPlaybins::remove(const Playbin* playbin) {
    const std::scoped_lock lock(mutex_);
    playbins_.erase(playbin);
}

void OpenPlaybins::closeAll() {
    // Closes outside of the lock, because `close` calls `remove`.
    decltype(playbins_) open;
    {
        const std::scoped_lock lock(mutex_);
        open.swap(playbins_);
    }
    for (const auto& one : open)
        if (const auto playbin = one.second.lock())
            playbin->close();
}

} // namespace platform
