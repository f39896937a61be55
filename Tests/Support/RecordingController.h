#pragma once

#include "Platform/Foundation/Geometry.h"
#include "Platform/Interface/View.h"
#include "Platform/Interface/ViewController.h"

#include <functional>
#include <string>
#include <vector>

/// A controller that notes what it is told.
class RecordingController : public platform::ViewController {
public:
    void viewDidLoad() override { note("did load"); }
    void viewWillAppear(bool /*animated*/) override { note("will appear"); }
    void viewDidAppear(bool /*animated*/) override { note("did appear"); }
    void viewWillDisappear(bool /*animated*/) override { note("will disappear"); }
    void viewDidDisappear(bool /*animated*/) override { note("did disappear"); }
    void viewWillTransitionToSize(platform::Size size,
                                  const platform::TransitionCoordinator& /*transition*/) override {
        lastSize = size;
        note("will transition");
    }

    std::vector<std::string> events;
    platform::Size lastSize;
    /// Called with every event.
    std::function<void(const std::string&)> onEvent;

private:
    void note(const std::string& event) {
        events.push_back(event);
        if (onEvent)
            onEvent(event);
    }
};
