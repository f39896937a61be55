#pragma once

#include "Platform/Interface/PanGestureRecognizer.h"
#include "Platform/Interface/PinchGestureRecognizer.h"
#include "Platform/Interface/TapGestureRecognizer.h"
#include "Platform/Interface/View.h"
#include "Platform/Interface/ViewController.h"
#include "Platform/Interface/Window.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

/// What a recogniser's action was told, in order.
struct GestureLog {
    std::vector<platform::GestureState> states;
    std::vector<platform::Point> locations;
    std::vector<platform::Point> velocities; // of pans
    std::vector<double> scales;              // of pinches
    /// Called at the end of every action.
    std::function<void(platform::GestureState)> during;
};

/// A visible window of 200 by 100 points without a host, and fingers to touch it with.
class TouchScene {
public:
    using State = platform::GestureState;
    using States = std::vector<State>;

    TouchScene();

    [[nodiscard]] platform::Window& window() { return *window_; }
    [[nodiscard]] std::shared_ptr<platform::View> root() { return controller_->view(); }
    /// A subview of the root view, in front of the earlier ones.
    std::shared_ptr<platform::View> add(platform::Rect frame);

    /// `time` in milliseconds.
    void down(std::int64_t id, platform::Point location, double time = 0,
              platform::TouchKind kind = platform::TouchKind::Finger);
    void move(std::int64_t id, platform::Point location, double time = 0);
    void up(std::int64_t id, platform::Point location, double time = 0);
    void cancel(std::int64_t id, platform::Point location = {});

private:
    std::shared_ptr<platform::Window> window_ = platform::make<platform::Window>();
    std::shared_ptr<platform::ViewController> controller_ =
        platform::make<platform::ViewController>();
};

/// Recognisers that note in `log` what they do; it outlives their view's last touch.
std::shared_ptr<platform::PanGestureRecognizer>
addPan(const std::shared_ptr<platform::View>& view, GestureLog& log, std::size_t mostTouches = 1);
std::shared_ptr<platform::PinchGestureRecognizer>
addPinch(const std::shared_ptr<platform::View>& view, GestureLog& log);
std::shared_ptr<platform::TapGestureRecognizer> addTap(const std::shared_ptr<platform::View>& view,
                                                       GestureLog& log);
