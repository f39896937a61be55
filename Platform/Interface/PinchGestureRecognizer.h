#pragma once

#include "Platform/Interface/GestureRecognizer.h"

#include <functional>
#include <utility>

namespace platform {

/// A pinch with two fingers. It begins with the first move while both are down; their distance at
/// that move is the reference.
class PinchGestureRecognizer final : public GestureRecognizer {
public:
    using Action = std::function<void(PinchGestureRecognizer&)>;
    explicit PinchGestureRecognizer(Action action) : action_(std::move(action)) {}

    /// The ratio of the fingers' distance to that at the beginning of the gesture or at the last
    /// `setScale`, times the value that was set.
    [[nodiscard]] double scale() const { return scale_; }
    void setScale(double scale);

private:
    void touchDown() override {}
    void touchMoved(const Touch& touch) override;
    void touchUp(const Touch& touch) override;
    void forget() override;
    void tell() override { action_(*this); }
    [[nodiscard]] double distance() const;

    Action action_;
    double scale_ = 1;
    double startScale_ = 1;
    double startDistance_ = 1;
};

} // namespace platform
