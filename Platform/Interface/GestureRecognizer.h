#pragma once

#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Interface/Touch.h"

#include <functional>
#include <memory>
#include <vector>

namespace platform {

class View;

/// How far a recogniser is with the touches of its view. The numbers are part of the interface.
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
/// The recogniser of a view that recognises first fails the others, which stay failed until no
/// finger is on the view any more. A continuous gesture begins, changes and ends or is cancelled; a
/// discrete one only ends. The action is told of each of these, not of failures.
///
/// Owner:  its view; it refers to the view weakly. Made with `make`.
/// Thread: main.
class GestureRecognizer : public Object {
public:
    [[nodiscard]] GestureState state() const { return state_; }
    /// The view that carries it; null before it is added and after it is removed.
    [[nodiscard]] std::shared_ptr<View> view() const { return view_.lock(); }
    [[nodiscard]] std::size_t numberOfTouches() const { return touches_.size(); }
    /// Where the gesture is, in a view's points: the middle of its touches.
    [[nodiscard]] Point locationInView(const View& view) const;

protected:
    using Touches = std::vector<std::shared_ptr<const Touch>>;

    /// The fingers on the view in the order in which they came down, the lifted one included while
    /// it is told of.
    [[nodiscard]] const Touches& touches() const { return touches_; }
    /// To Began, Changed, Ended, Cancelled or Failed, and the action is told.
    void enter(GestureState state);
    [[nodiscard]] bool isRunning() const {
        return state_ == GestureState::Began || state_ == GestureState::Changed;
    }

    /// What a finger did; asked only while the gesture is possible or running.
    virtual void touchDown() = 0;
    virtual void touchMoved(const Touch& touch) = 0;
    virtual void touchUp(const Touch& touch) = 0;
    /// All fingers have gone: a new gesture is possible.
    virtual void forget() {}
    virtual void tell() = 0;

private:
    friend class GestureArena;
    friend class View;

    std::weak_ptr<View> view_;
    GestureState state_ = GestureState::Possible;
    Touches touches_;
};

} // namespace platform
