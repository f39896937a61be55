#pragma once

#include "Platform/Interface/GestureRecognizer.h"

#include <functional>
#include <utility>

namespace platform {

/// A drag: begins with the first move that is beyond the touch's slop, at that move's place.
class PanGestureRecognizer final : public GestureRecognizer {
public:
    using Action = std::function<void(PanGestureRecognizer&)>;
    explicit PanGestureRecognizer(Action action) : action_(std::move(action)) {}

    /// A finger more fails the gesture, or cancels it once it runs. No limit at first.
    void setMaximumNumberOfTouches(std::size_t count) { mostTouches_ = count; }
    [[nodiscard]] std::size_t maximumNumberOfTouches() const { return mostTouches_; }

    /// Of the finger that began it, in points per second of the view.
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
