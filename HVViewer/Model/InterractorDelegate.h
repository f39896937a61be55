#pragma once

/// Told by an interactor when the camera has changed.
class InterractorDelegate {
public:
    virtual ~InterractorDelegate() = default;

    /// The matrices or the zoom changed: redraw.
    virtual void matrixUpdated() = 0;
};
