#include "Apps/Player/Controls/ControlsIcons.h"

#include <array>
#include <cmath>
#include <initializer_list>
#include <numbers>

namespace {

constexpr float kHalf = 12; // half of an icon's side
constexpr float kLine = 2;
constexpr float kPi = std::numbers::pi_v<float>;

/// Draws in coordinates from -1 to 1, y down.
class Pen {
public:
    Pen(ImDrawList& list, ImVec2 center, ImU32 color)
        : list_(list), center_(center), color_(color) {}

    void line(ImVec2 from, ImVec2 to) { list_.AddLine(at(from), at(to), color_, kLine); }
    void lines(std::initializer_list<ImVec2> places, bool isClosed = false) {
        for (const ImVec2 place : places)
            list_.PathLineTo(at(place));
        list_.PathStroke(color_, isClosed ? ImDrawFlags_Closed : ImDrawFlags_None, kLine);
    }
    void area(std::initializer_list<ImVec2> places) {
        for (const ImVec2 place : places)
            list_.PathLineTo(at(place));
        list_.PathFillConvex(color_);
    }
    void frame(ImVec2 from, ImVec2 to, float rounding) {
        list_.AddRect(at(from), at(to), color_, rounding * kHalf, ImDrawFlags_None, kLine);
    }
    void box(ImVec2 from, ImVec2 to, float rounding) {
        list_.AddRectFilled(at(from), at(to), color_, rounding * kHalf);
    }
    void circle(ImVec2 center, float radius) {
        list_.AddCircle(at(center), radius * kHalf, color_, 0, kLine);
    }
    void disc(ImVec2 center, float radius) {
        list_.AddCircleFilled(at(center), radius * kHalf, color_);
    }
    /// Angles run clockwise from the right.
    void arc(ImVec2 center, ImVec2 radii, float from, float to) {
        constexpr int steps = 20;
        for (int step = 0; step <= steps; ++step) {
            const float angle = from + (to - from) * static_cast<float>(step) / steps;
            list_.PathLineTo(
                at({center.x + radii.x * std::cos(angle), center.y + radii.y * std::sin(angle)}));
        }
        list_.PathStroke(color_, ImDrawFlags_None, kLine);
    }

private:
    [[nodiscard]] ImVec2 at(ImVec2 place) const {
        return {center_.x + place.x * kHalf, center_.y + place.y * kHalf};
    }

    ImDrawList& list_;
    ImVec2 center_;
    ImU32 color_;
};

void drawPlayback(Pen pen, bool isPlaying) {
    if (!isPlaying)
        return pen.area({{-0.6F, -0.9F}, {0.95F, 0}, {-0.6F, 0.9F}});
    pen.box({-0.7F, -0.85F}, {-0.2F, 0.85F}, 0.1F);
    pen.box({0.2F, -0.85F}, {0.7F, 0.85F}, 0.1F);
}

void drawSpeaker(Pen pen, double volume) {
    pen.area({{-0.95F, -0.32F}, {-0.5F, -0.32F}, {-0.5F, 0.32F}, {-0.95F, 0.32F}});
    pen.area({{-0.52F, -0.32F}, {-0.02F, -0.8F}, {-0.02F, 0.8F}, {-0.52F, 0.32F}});
    if (volume <= 0) {
        pen.line({0.35F, -0.32F}, {0.95F, 0.32F});
        pen.line({0.95F, -0.32F}, {0.35F, 0.32F});
        return;
    }
    pen.arc({0, 0}, {0.48F, 0.48F}, -kPi / 4, kPi / 4);
    if (volume > 0.5)
        pen.arc({0, 0}, {0.92F, 0.92F}, -kPi / 4, kPi / 4);
}

void drawPlane(Pen pen) {
    pen.frame({-1, -0.68F}, {1, 0.68F}, 0.16F);
    pen.lines({{-0.95F, 0.42F}, {-0.35F, -0.12F}, {0.08F, 0.28F}, {0.4F, 0}, {0.95F, 0.42F}});
    pen.disc({0.45F, -0.34F}, 0.12F);
}

void drawSphere(Pen pen) {
    pen.circle({0, 0}, 0.95F);
    pen.arc({0, 0}, {0.42F, 0.95F}, 0, 2 * kPi);
    pen.arc({0, 0}, {0.95F, 0.32F}, 0, kPi);
    pen.arc({0, 0}, {0.95F, 0.32F}, kPi, 2 * kPi);
}

/// A globe with trees on its upper side.
void drawLittlePlanet(Pen pen) {
    pen.disc({0, 0.3F}, 0.62F);
    for (const float angle : {-0.5F * kPi, -0.85F * kPi, -0.15F * kPi}) {
        const auto place = [angle](float radius, float turn) {
            return ImVec2{radius * std::cos(angle + turn), 0.3F + radius * std::sin(angle + turn)};
        };
        pen.area({place(0.74F, -0.3F), place(1.28F, 0), place(0.74F, 0.3F)});
    }
}

void drawGoggles(Pen pen) {
    pen.frame({-1, -0.62F}, {1, 0.62F}, 0.24F);
    pen.line({0, -0.62F}, {0, 0.62F});
    pen.disc({-0.5F, 0}, 0.26F);
    pen.disc({0.5F, 0}, 0.26F);
}

/// A rotated phone.
void drawTurningDevice(Pen pen) {
    pen.lines({{-0.66F, -0.4F}, {0.02F, -0.8F}, {0.66F, 0.4F}, {-0.02F, 0.8F}}, true);
    pen.arc({0, 0}, {1.05F, 1.05F}, -0.36F * kPi, -0.1F * kPi);
    pen.arc({0, 0}, {1.05F, 1.05F}, 0.64F * kPi, 0.9F * kPi);
    pen.area({{0.8F, -0.34F}, {1.26F, -0.4F}, {1.05F, 0}});
    pen.area({{-0.8F, 0.34F}, {-1.26F, 0.4F}, {-1.05F, 0}});
}

void drawCamera(Pen pen) {
    pen.frame({-1, -0.52F}, {1, 0.74F}, 0.2F);
    pen.area({{-0.42F, -0.5F}, {-0.26F, -0.82F}, {0.26F, -0.82F}, {0.42F, -0.5F}});
    pen.circle({0, 0.1F}, 0.36F);
}

void drawKeyboard(Pen pen) {
    pen.frame({-1.05F, -0.66F}, {1.05F, 0.66F}, 0.18F);
    for (const float x : {-0.66F, -0.22F, 0.22F, 0.66F})
        pen.disc({x, -0.28F}, 0.1F);
    for (const float x : {-0.44F, 0.0F, 0.44F})
        pen.disc({x, 0.02F}, 0.1F);
    pen.line({-0.45F, 0.36F}, {0.45F, 0.36F});
}

/// Corners that point outwards, or inwards if full screen is on.
void drawFullScreen(Pen pen, bool isFullScreen) {
    const float corner = isFullScreen ? 0.28F : 0.85F;
    const float end = isFullScreen ? 0.85F : 0.3F;
    for (const float x : {-1.0F, 1.0F}) {
        for (const float y : {-1.0F, 1.0F})
            pen.lines({{x * end, y * corner}, {x * corner, y * corner}, {x * corner, y * end}});
    }
}

} // namespace

void drawIcon(ImDrawList& list, Control control, const ControlsState& state, ImVec2 center,
              ImU32 color) {
    const Pen pen(list, center, color);
    switch (control) {
    case Control::Playback:
        return drawPlayback(pen, state.video && state.video->isPlaying);
    case Control::Mute:
        return drawSpeaker(pen, state.video ? state.video->volume : 0);
    case Control::Plane:
        return drawPlane(pen);
    case Control::Sphere:
        return drawSphere(pen);
    case Control::LittlePlanet:
        return drawLittlePlanet(pen);
    case Control::SideBySide:
        return drawGoggles(pen);
    case Control::DeviceMotion:
        return drawTurningDevice(pen);
    case Control::Screenshot:
        return drawCamera(pen);
    case Control::Help:
        return drawKeyboard(pen);
    case Control::FullScreen:
        return drawFullScreen(pen, state.isFullScreen);
    case Control::DismissMessage:
    case Control::CancelLoading:
        return drawCross(list, center, color);
    case Control::SeekBar:
    case Control::VolumeBar:
        return;
    }
}

void drawCross(ImDrawList& list, ImVec2 center, ImU32 color) {
    Pen pen(list, center, color);
    pen.line({-0.6F, -0.6F}, {0.6F, 0.6F});
    pen.line({0.6F, -0.6F}, {-0.6F, 0.6F});
}
