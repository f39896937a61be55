#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/InterfaceOrientation.h"

#include <memory>
#include <optional>

namespace platform {

class Window;

/// Posted before and after the content rectangle or the way it is held changes. The first one
/// carries the new frame, a `Rect`, under the key.
inline constexpr const char* kWillChangeStatusBarFrame =
    "ApplicationWillChangeStatusBarFrameNotification";
inline constexpr const char* kDidChangeStatusBarFrame =
    "ApplicationDidChangeStatusBarFrameNotification";
inline constexpr const char* kStatusBarFrameUserInfoKey = "ApplicationStatusBarFrameUserInfoKey";

/// The running program as the views see it: its window and how the screen is held.
///
/// Thread: main.
class ZANTO_EXPORT Application {
public:
    [[nodiscard]] static Application& sharedApplication();

    [[nodiscard]] InterfaceOrientation statusBarOrientation() const { return orientation_; }
    /// The content rectangle: there is no bar to stay clear of.
    [[nodiscard]] Rect statusBarFrame() const { return frame_; }

    [[nodiscard]] std::shared_ptr<Window> keyWindow() const { return window_.lock(); }
    void setKeyWindow(const std::weak_ptr<Window>& window) { window_ = window; }
    /// For hosts: forgets the window of an earlier one and how its screen was held.
    void startAnew();

    /// A new size, as if the device had been turned. Wider than high is landscape, else portrait;
    /// which of the two of either is the one last set for that shape.
    ///
    /// Order: the will-notification with the new frame; orientation and screen; the controller is
    /// told; layout; the did-notification.
    void setContentSize(Size points, double scale);

    /// Turns the content without a change of size, in the same order.
    void setOrientation(InterfaceOrientation orientation);

private:
    void change(Size points, double scale, InterfaceOrientation orientation);

    InterfaceOrientation orientation_ = InterfaceOrientation::Unknown;
    InterfaceOrientation landscape_ = InterfaceOrientation::LandscapeRight;
    InterfaceOrientation portrait_ = InterfaceOrientation::Portrait;
    Rect frame_;
    std::weak_ptr<Window> window_;
};

} // namespace platform
