#pragma once

#include "Platform/Interface/GestureRecognizer.h"

#include <functional>
#include <utility>

namespace platform {

/// A tap of one finger: down and up within the slop and within 0.75 s.
class TapGestureRecognizer final : public GestureRecognizer {
public:
    using Action = std::function<void(TapGestureRecognizer&)>;
    explicit TapGestureRecognizer(Action action) : action_(std::move(action)) {}

private:
    void touchDown() override;
    void touchMoved(const Touch& touch) override;
    void touchUp(const Touch& touch) override;
    void tell() override { action_(*this); }

    Action action_;
};

} // namespace platform
