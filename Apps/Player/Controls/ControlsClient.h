#pragma once

#include "Apps/Player/Controls/ControlsState.h"
#include "Apps/Player/Controls/WindowAction.h"

/// The program behind the controls: provides the state that they show and performs their actions.
class ControlsClient {
public:
    virtual ~ControlsClient() = default;

    /// Called at every drawing and touch.
    [[nodiscard]] virtual ControlsState state() const = 0;
    virtual void perform(WindowAction action) = 0;
    virtual void seekTo(double seconds) = 0;
    /// From 0 to 1.
    virtual void setVolume(double volume) = 0;
    virtual void cancelLoading() = 0;
    virtual void dismissMessage() = 0;
};
