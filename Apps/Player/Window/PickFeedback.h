#pragma once

#include "Apps/Player/Output/TracedController.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Interface/Touch.h"

#include <memory>
#include <string>
#include <vector>

class SDLHost;

namespace platform {
class View;
struct Color;
} // namespace platform

/// Shows people what they pick: a line on standard output, the window's title for 2 s, a square
/// where they tapped or looked for 0.7 s; and, while automatic picking is on, a cross where it
/// looks. Nothing of it takes touches.
///
/// Owner:  the program; host and controller outlive it. Made with `platform::make` once the
///         controller's view is the host's.
/// Thread: main.
class PickFeedback final : public platform::Object {
public:
    /// `title`: the window's at other times.
    PickFeedback(SDLHost& host, ZNTDisplayViewController& controller, std::string title);
    ~PickFeedback() override;
    void init() override;

    /// Every touch of the window, before what is picked by it.
    void touch(const platform::TouchEvent& event);
    void picked(const Pick& pick);
    /// The mode, the hot spots or automatic picking may be others now.
    void update();

private:
    using Views = std::vector<std::shared_ptr<platform::View>>;

    [[nodiscard]] std::vector<platform::Point> lookedAt() const;
    std::shared_ptr<platform::View> show(const platform::Rect& frame,
                                         const platform::Color& color) const;
    void showTitle(const Pick& pick);
    void mark(const std::vector<platform::Point>& places);

    SDLHost& host_;
    ZNTDisplayViewController& controller_;
    std::string title_;
    platform::Point lifted_; // where a touch was last
    Views crosses_;
    Views marks_;
    std::shared_ptr<int> picksTitle_; // while the window has it; another one each time
};
