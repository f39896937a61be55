#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Object.h"

#include <memory>
#include <string>

namespace platform {

class Bundle;
class View;

/// Stands for an archive of user-interface objects. This platform has no archives, so a controller
/// that is created from one is like any other.
struct Coder {};

/// A change of size in progress. This platform changes sizes at once: the duration is 0.
struct TransitionCoordinator {
    double durationSeconds = 0;
};

/// Owns a view, and is notified when the view loads, appears and changes size.
///
/// Created with `make`; subclasses override the `view…` functions and call their base class first.
///
/// Thread: main.
class ZANTO_EXPORT ViewController : public Object {
public:
    ViewController() = default;
    explicit ViewController(const Coder& coder);
    /// This platform has no nibs: `loadView()` creates the view, whatever the name is.
    ViewController(const std::string& nibName, const std::shared_ptr<Bundle>& bundle);

    /// The view. The first call creates it and calls `viewDidLoad()`.
    [[nodiscard]] std::shared_ptr<View> view();
    [[nodiscard]] bool isViewLoaded() const { return view_ != nullptr; }

    virtual void viewDidLoad() {}
    virtual void viewWillAppear(bool /*animated*/) {}
    virtual void viewDidAppear(bool /*animated*/) {}
    virtual void viewWillDisappear(bool /*animated*/) {}
    virtual void viewDidDisappear(bool /*animated*/) {}
    virtual void viewWillTransitionToSize(Size /*size*/,
                                          const TransitionCoordinator& /*transition*/) {}

protected:
    /// Creates the view: black and of the screen's size, unless overridden.
    [[nodiscard]] virtual std::shared_ptr<View> loadView();

private:
    std::shared_ptr<View> view_;
};

} // namespace platform
