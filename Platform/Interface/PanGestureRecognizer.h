#pragma once

#include "Platform/Interface/GestureRecognizer.h"

#include <functional>
#include <utility>

namespace platform {

/// A drag. It begins with the first move that reaches the touch's slop, at the position of that
/// move.
class PanGestureRecognizer final : public GestureRecognizer {
public:
    using Action = std::function<void(PanGestureRecognizer&)>;
    explicit PanGestureRecognizer(Action action) : action_(std::move(action)) {}

    /// One more touch fails the gesture, or cancels it if it is running. There is no limit at
    /// first.
    void setMaximumNumberOfTouches(std::size_t count) { mostTouches_ = count; }
    [[nodiscard]] std::size_t maximumNumberOfTouches() const { return mostTouches_; }

    /// The velocity of the touch that began the gesture, in points per second.
    [[nodiscard]] Point velocityInView(const View& view) const;

private:
    void touchDown() override;
    void touchMoved(const Touch& touch) override;
    void touchUp(const Touch& touch) override;
    void tell() override { action_(*this); }

    Action action_;
    std::size_t mostTouches_ = static_cast<std::size_t>(-1);
};

} // namespace platform
