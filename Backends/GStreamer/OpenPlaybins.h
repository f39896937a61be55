#pragma once

#include <map>
#include <memory>
#include <mutex>

namespace platform {

class Playbin;

/// All playbins that are not closed yet. At process exit they are closed, because their threads
/// must not use the main queue after its destruction.
///
/// Thread: any; thread-safe.
class OpenPlaybins {
public:
    [[nodiscard]] static OpenPlaybins& shared();

    void add(const std::shared_ptr<Playbin>& playbin);
    void remove(const Playbin* playbin);

private:
    void closeAll();

    std::mutex mutex_; // guards playbins_
    std::map<const Playbin*, std::weak_ptr<Playbin>> playbins_;
};

} // namespace platform
