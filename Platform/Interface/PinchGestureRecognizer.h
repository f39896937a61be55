#pragma once

#include "Platform/Interface/GestureRecognizer.h"

#include <functional>
#include <utility>

namespace platform {

/// Two fingers that close or spread: begins with the first move while both are down, which is what
/// it measures against.
class PinchGestureRecognizer final : public GestureRecognizer {
public:
    using Action = std::function<void(PinchGestureRecognizer&)>;
    explicit PinchGestureRecognizer(Action action) : action_(std::move(action)) {}

    /// The factor by which the fingers have spread since the gesture began, or since it was set,
    /// times what it was set to.
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
