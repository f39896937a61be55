#pragma once

#include "Platform/Foundation/Export.h"

#include <cstdint>

/// The observer of an interactor's camera.
///
/// Thread: main.
class ZANTO_EXPORT InterractorDelegate {
public:
    virtual ~InterractorDelegate() = default;

    /// The matrices or the zoom changed: the observer should redraw.
    virtual void matrixUpdated() = 0;
    /// Reserved; the library never calls it.
    virtual void interractorDidDetectAction(std::int32_t /*action*/) {}
};
