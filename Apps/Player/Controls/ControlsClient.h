#pragma once

#include "Apps/Player/Controls/ControlsState.h"
#include "Apps/Player/Controls/WindowAction.h"

/// The program behind the controls: what they show, and who does what is asked with them.
class ControlsClient {
public:
    virtual ~ControlsClient() = default;

    /// Asked whenever something is drawn or touched.
    [[nodiscard]] virtual ControlsState state() const = 0;
    virtual void perform(WindowAction action) = 0;
    virtual void seekTo(double seconds) = 0;
    /// 0 to 1.
    virtual void setVolume(double volume) = 0;
    virtual void cancelLoading() = 0;
    virtual void dismissMessage() = 0;
};
