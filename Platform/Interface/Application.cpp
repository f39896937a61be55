#include "Platform/Interface/Application.h"

#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Interface/ViewController.h"
#include "Platform/Interface/Window.h"

namespace platform {

Application& Application::sharedApplication() {
    return Environment::current().part<Application>();
}

void Application::startAnew() {
    *this = Application();
}

void Application::setContentSize(Size points, double scale) {
    change(points, scale, points.width > points.height ? landscape_ : portrait_);
}

void Application::setOrientation(InterfaceOrientation orientation) {
    if (isLandscape(orientation))
        landscape_ = orientation;
    if (isPortrait(orientation))
        portrait_ = orientation;
    change(frame_.size, Screen::mainScreen().scale(), orientation);
}

void Application::change(Size points, double scale, InterfaceOrientation orientation) {
    const Rect frame{{}, points};
    const bool resized = frame != frame_;
    auto& center = NotificationCenter::defaultCenter();
    center.post(kWillChangeStatusBarFrame, {{kStatusBarFrameUserInfoKey, frame}});
    orientation_ = orientation;
    frame_ = frame;
    Screen::mainScreen().setSize(points, scale);
    const auto window = keyWindow();
    if (window && window->rootViewController()) {
        if (resized)
            window->rootViewController()->viewWillTransitionToSize(points, {});
        window->layout();
    }
    center.post(kDidChangeStatusBarFrame);
}

} // namespace platform
