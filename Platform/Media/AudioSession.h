#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Result.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// For an application whose purpose is playback: its sound goes on while the screen is locked.
inline constexpr const char* kAudioSessionCategoryPlayback = "AudioSessionCategoryPlayback";

/// Arbitrates sound between the applications of a machine, such as a telephone.
class ZANTO_EXPORT AudioArbiter {
public:
    virtual ~AudioArbiter() = default;
    /// Errors: the reason why the category is refused; `nullopt` for success.
    [[nodiscard]] virtual std::optional<Error> setCategory(std::string_view category) = 0;
    /// `notifyOthers`: other applications are notified when this one releases the sound.
    [[nodiscard]] virtual std::optional<Error> setActive(bool active, bool notifyOthers) = 0;
};

/// The application's claim to the machine's sound. It is always granted where there is no arbiter.
///
/// Thread: main.
class ZANTO_EXPORT AudioSession {
public:
    enum class ActiveOptions : unsigned { Default = 0, NotifyOthersOnDeactivation = 1 };

    [[nodiscard]] static AudioSession& sharedInstance();

    /// Errors: those of the arbiter; category and activity do not change then.
    [[nodiscard]] std::optional<Error> setCategory(std::string_view category);
    std::optional<Error> setActive(bool active, ActiveOptions options = ActiveOptions::Default);
    [[nodiscard]] const std::string& category() const { return category_; }
    [[nodiscard]] bool isActive() const { return isActive_; }

    /// Host set-up; null for a machine without an arbiter.
    void setArbiter(std::shared_ptr<AudioArbiter> arbiter);

private:
    std::shared_ptr<AudioArbiter> arbiter_;
    std::string category_;
    bool isActive_ = false;
};

} // namespace platform
