#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Object.h"

#include <memory>
#include <string>

namespace platform {

class Bundle;
class View;

/// Stands for an archive of user-interface objects. This platform has none, so a controller made
/// from one is like any other.
struct Coder {};

/// A change of size under way. This platform changes sizes at once: the duration is 0.
struct TransitionCoordinator {
    double durationSeconds = 0;
};

/// Owns a view and is told when it loads, appears and changes size.
///
/// Made with `make`; subclasses override the `view…` operations and call their base class first.
///
/// Thread: main.
class ZANTO_EXPORT ViewController : public Object {
public:
    ViewController() = default;
    explicit ViewController(const Coder& coder);
    /// Nibs do not exist here: the view is made by `loadView()` whatever the name.
    ViewController(const std::string& nibName, const std::shared_ptr<Bundle>& bundle);

    /// The view, made and announced by the first call.
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
    /// Makes the view: black, of the screen's size, unless overridden.
    [[nodiscard]] virtual std::shared_ptr<View> loadView();

private:
    std::shared_ptr<View> view_;
};

} // namespace platform
