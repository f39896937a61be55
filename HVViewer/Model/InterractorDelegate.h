#pragma once

#include "Platform/Foundation/Export.h"

#include <cstdint>

/// Told by an interactor when the camera has changed.
///
/// Thread: main.
class ZANTO_EXPORT InterractorDelegate {
public:
    virtual ~InterractorDelegate() = default;

    /// The matrices or the zoom changed: redraw.
    virtual void matrixUpdated() = 0;
    /// Reserved: nothing sends it.
    virtual void interractorDidDetectAction(std::int32_t /*action*/) {}
};
