#pragma once

#include <map>
#include <memory>
#include <mutex>

namespace platform {

class Playbin;

/// Those that nobody has closed yet. A process that ends closes them: their threads must not find
/// the main queue gone.
///
/// Thread: any.
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
