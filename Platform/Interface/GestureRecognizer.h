#pragma once

#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Interface/Touch.h"

#include <functional>
#include <memory>
#include <vector>

namespace platform {

class View;

/// The progress of a recogniser with the touches of its view. The numeric values are part of the
/// interface.
enum class GestureState : int {
    Possible = 0,
    Began = 1,
    Changed = 2,
    Ended = 3,
    Cancelled = 4,
    Failed = 5,
};

/// Turns the touches of one view into a gesture.
///
/// The first recogniser of a view that recognises its gesture fails the others, which stay failed
/// until no touch is on the view any more. A continuous gesture begins, changes, and ends or is
/// cancelled; a discrete one only ends. The action is called for each of these states, not for a
/// failure.
///
/// Owner:  its view, which it references weakly. Created with `make`.
/// Thread: main.
class GestureRecognizer : public Object {
public:
    [[nodiscard]] GestureState state() const { return state_; }
    /// The view that owns it; null before it is added and after it is removed.
    [[nodiscard]] std::shared_ptr<View> view() const { return view_.lock(); }
    [[nodiscard]] std::size_t numberOfTouches() const { return touches_.size(); }
    /// The position of the gesture in a view's points: the centre of its touches.
    [[nodiscard]] Point locationInView(const View& view) const;

protected:
    using Touches = std::vector<std::shared_ptr<const Touch>>;

    /// The touches on the view in the order in which they began, including one that is just being
    /// lifted.
    [[nodiscard]] const Touches& touches() const { return touches_; }
    /// Changes to Began, Changed, Ended, Cancelled or Failed. The action is called except for
    /// Failed.
    void enter(GestureState state);
    [[nodiscard]] bool isRunning() const {
        return state_ == GestureState::Began || state_ == GestureState::Changed;
    }

    /// These three handle one change of a touch. They are called only while the gesture is possible
    /// or running.
    virtual void touchDown() = 0;
    virtual void touchMoved(const Touch& touch) = 0;
    virtual void touchUp(const Touch& touch) = 0;
    /// Resets the recogniser: no touch is left, so a new gesture is possible.
    virtual void forget() {}
    /// Calls the action.
    virtual void tell() = 0;

private:
    friend class GestureArena;
    friend class View;

    std::weak_ptr<View> view_;
    GestureState state_ = GestureState::Possible;
    Touches touches_;
};

} // namespace platform
