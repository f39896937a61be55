#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Result.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// Sound is the point of what is played, and goes on while the screen is locked.
inline constexpr const char* kAudioSessionCategoryPlayback = "AudioSessionCategoryPlayback";

/// Whoever arbitrates sound between the applications of a machine, such as a phone's.
class ZANTO_EXPORT AudioArbiter {
public:
    virtual ~AudioArbiter() = default;
    /// Errors: the reason why the category cannot be had; none for success.
    [[nodiscard]] virtual std::optional<Error> setCategory(std::string_view category) = 0;
    /// `notifyOthers`: the others are told when this application lets go of the sound again.
    [[nodiscard]] virtual std::optional<Error> setActive(bool active, bool notifyOthers) = 0;
};

/// The application's claim to the machine's sound. Where nobody arbitrates it is always granted.
///
/// Thread: main.
class ZANTO_EXPORT AudioSession {
public:
    enum class ActiveOptions : unsigned { None = 0, NotifyOthersOnDeactivation = 1 };

    [[nodiscard]] static AudioSession& sharedInstance();

    /// Errors: the arbiter's; category and activity stay as they were.
    [[nodiscard]] std::optional<Error> setCategory(std::string_view category);
    std::optional<Error> setActive(bool active, ActiveOptions options = ActiveOptions::None);
    [[nodiscard]] const std::string& category() const { return category_; }
    [[nodiscard]] bool isActive() const { return isActive_; }

    /// Host set-up; null for a machine where nobody arbitrates.
    void setArbiter(std::shared_ptr<AudioArbiter> arbiter);

private:
    std::shared_ptr<AudioArbiter> arbiter_;
    std::string category_;
    bool isActive_ = false;
};

} // namespace platform
