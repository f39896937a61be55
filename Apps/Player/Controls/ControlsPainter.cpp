#include "Apps/Player/Controls/ControlsPainter.h"

#include "Apps/Player/Controls/ControlsIcons.h"
#include "Apps/Player/Controls/ControlsText.h"
#include "Apps/Player/Controls/Keys.h"

#include <imgui.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <string_view>

using platform::Rect;
using platform::Size;

namespace {

constexpr float kTextSize = 16;
constexpr float kSmallTextSize = 15;
constexpr float kRounding = 14;
constexpr float kButtonRounding = 10;

struct Tone {
    int red, green, blue;
    double alpha;
};
constexpr Tone kBack{14, 16, 20, 0.72};
constexpr Tone kVeil{0, 0, 0, 0.5};
constexpr Tone kInk{255, 255, 255, 1};
constexpr Tone kFaintInk{255, 255, 255, 0.35};
constexpr Tone kTrack{255, 255, 255, 0.3};
constexpr Tone kTouched{255, 255, 255, 0.14};
constexpr Tone kPressed{255, 255, 255, 0.3};
constexpr Tone kAccent{255, 178, 64, 1};

ImU32 color(const Tone& tone, double opacity = 1) {
    const auto alpha = static_cast<int>(std::lround(tone.alpha * opacity * 255));
    return IM_COL32(tone.red, tone.green, tone.blue, alpha);
}

ImVec2 point(double x, double y) {
    return {static_cast<float>(x), static_cast<float>(y)};
}
ImVec2 topLeft(const Rect& area) {
    return point(area.origin.x, area.origin.y);
}
ImVec2 bottomRight(const Rect& area) {
    return point(area.origin.x + area.size.width, area.origin.y + area.size.height);
}
ImVec2 middle(const Rect& area) {
    return point(area.origin.x + area.size.width / 2, area.origin.y + area.size.height / 2);
}
bool isEmpty(const Rect& area) {
    return area.size.width <= 0 || area.size.height <= 0;
}

ImVec2 extentOf(std::string_view text, float size, float wrapWidth = 0) {
    return ImGui::GetFont()->CalcTextSizeA(size, FLT_MAX, wrapWidth, text.data(),
                                           text.data() + text.size());
}

/// The start of the UTF-8 character that ends at `end`.
std::size_t letterBefore(std::string_view text, std::size_t end) {
    std::size_t begin = end - 1;
    while (begin > 0 && (static_cast<unsigned char>(text[begin]) & 0xC0U) == 0x80U)
        --begin;
    return begin;
}

/// As many leading characters as fit, with an ellipsis if any are cut off.
std::string shortened(std::string_view text, double width) {
    if (extentOf(text, kTextSize).x <= width)
        return std::string(text);
    std::string shown;
    for (std::size_t length = text.size(); length > 0;) {
        length = letterBefore(text, length);
        shown = std::string(text.substr(0, length)).append("…");
        if (extentOf(shown, kTextSize).x <= width)
            break;
    }
    return shown;
}

/// Draws one picture of the controls into a draw list.
class Painting {
public:
    Painting(ImDrawList& list, const ControlsPicture& picture, Size size)
        : list_(list), picture_(picture), size_(size) {}

    void paint() {
        if (picture_.opacity > 0 && !isEmpty(picture_.layout.panel))
            paintBar();
        if (picture_.showsLoading && !isEmpty(picture_.layout.loading))
            paintLoading();
        if (!isEmpty(picture_.layout.message))
            paintMessage();
        if (picture_.state.showsHelp)
            paintHelp();
    }

private:
    void paintBar() {
        fill(picture_.layout.panel, kBack, kRounding, picture_.opacity);
        for (const auto& [control, area] : picture_.layout.places) {
            if (isBar(control))
                paintSlider(control, area);
            else
                paintButton(control, area);
        }
        paintTimes();
        paintName();
        paintSeekTime();
    }

    void paintButton(Control control, const Rect& area) {
        const Rect back{{area.origin.x + 2, area.origin.y + 2},
                        {area.size.width - 4, area.size.height - 4}};
        if (picture_.pressed == control)
            fill(back, kPressed, kButtonRounding, picture_.opacity);
        else if (picture_.pointedAt == control)
            fill(back, kTouched, kButtonRounding, picture_.opacity);
        drawIcon(list_, control, picture_.state, middle(area),
                 color(toneOf(control), picture_.opacity));
        if (isOn(control))
            list_.AddRectFilled(point(middle(area).x - 9, area.origin.y + area.size.height - 6),
                                point(middle(area).x + 9, area.origin.y + area.size.height - 3),
                                color(kAccent, picture_.opacity), 1.5F);
    }

    [[nodiscard]] Tone toneOf(Control control) const {
        if (isOn(control))
            return kAccent;
        const bool isForSphereOnly = control == Control::DeviceMotion;
        return isForSphereOnly && picture_.state.mode != DisplayMode::Sphere ? kFaintInk : kInk;
    }

    [[nodiscard]] bool isOn(Control control) const {
        switch (control) {
        case Control::Plane:
            return picture_.state.mode == DisplayMode::Plane;
        case Control::Sphere:
            return picture_.state.mode == DisplayMode::Sphere;
        case Control::LittlePlanet:
            return picture_.state.mode == DisplayMode::LittlePlanet;
        case Control::SideBySide:
            return picture_.state.mode == DisplayMode::SideBySide;
        case Control::DeviceMotion:
            return picture_.state.followsDevice && picture_.state.mode == DisplayMode::Sphere;
        default:
            return false;
        }
    }

    void paintSlider(Control control, const Rect& area) {
        const auto& video = *picture_.state.video;
        const double fraction = control == Control::VolumeBar ? video.volume
                                : *video.duration > 0         ? video.seconds / *video.duration
                                                              : 0;
        const double y = middle(area).y;
        const double x = placeAt(area, fraction);
        const bool isHot = picture_.pressed == control || picture_.pointedAt == control;
        paintTrack(placeAt(area, 0), placeAt(area, 1), y, kTrack, picture_.opacity);
        paintTrack(placeAt(area, 0), x, y, kAccent, picture_.opacity);
        list_.AddCircleFilled(point(x, y), isHot ? 9 : 7, color(kInk, picture_.opacity));
    }

    void paintTrack(double from, double to, double y, const Tone& tone, double opacity) {
        list_.AddRectFilled(point(from, y - 2), point(to, y + 2), color(tone, opacity), 2);
    }

    void paintTimes() {
        if (!picture_.state.video)
            return;
        const auto& video = *picture_.state.video;
        if (!isEmpty(picture_.layout.elapsed))
            writeInMiddle(picture_.layout.elapsed, timeText(video.seconds), kSmallTextSize,
                          picture_.opacity);
        if (!isEmpty(picture_.layout.length))
            writeInMiddle(picture_.layout.length,
                          video.duration ? timeText(*video.duration) : "live", kSmallTextSize,
                          picture_.opacity);
    }

    /// The tooltip above the control under the mouse.
    void paintName() {
        if (!picture_.pointedAt || picture_.pressed)
            return;
        const std::string_view name = nameOf(*picture_.pointedAt);
        const auto* const area = picture_.layout.areaOf(*picture_.pointedAt);
        if (name.empty() || !area)
            return;
        writeAbove(middle(*area).x, name);
    }

    /// The time at the position of the mouse or the press on the seek bar.
    void paintSeekTime() {
        const auto* const bar = picture_.layout.areaOf(Control::SeekBar);
        if (!picture_.seekPoint || !bar)
            return;
        writeAbove(placeAt(*bar, *picture_.seekPoint),
                   timeText(*picture_.seekPoint * *picture_.state.video->duration));
    }

    /// Writes text in a box above the panel, as close to `x` as the window allows.
    void writeAbove(double x, std::string_view text) {
        const double width = extentOf(text, kSmallTextSize).x + 20.0;
        const double left = std::clamp(x - width / 2, 4.0, std::max(size_.width - width - 4, 4.0));
        const Rect box{{left, picture_.layout.panel.origin.y - 36}, {width, 28}};
        fill(box, kBack, 8, picture_.opacity);
        writeInMiddle(box, text, kSmallTextSize, picture_.opacity);
    }

    void paintLoading() {
        const auto& loading = *picture_.state.loading;
        const Rect& bar = picture_.layout.loadingBar;
        fill(picture_.layout.loading, kBack, kRounding);
        const std::string percent = percentText(loading.fraction);
        const double percentWidth = extentOf(percent, kTextSize).x;
        const double y = picture_.layout.loading.origin.y + 13;
        const Rect textArea{{bar.origin.x, y},
                            {bar.size.width - percentWidth - (percent.empty() ? 0 : 12), 22}};
        writeShortened(textArea, loading.text);
        write(point(bar.origin.x + bar.size.width - percentWidth, y), percent, kTextSize);
        paintProgress(bar, loading.fraction);
        if (picture_.layout.cancel)
            paintCancel(picture_.layout.cancel->area);
    }

    void paintProgress(const Rect& bar, std::optional<double> fraction) {
        fill(bar, kTrack, 4);
        Rect done = bar;
        if (fraction) {
            done.size.width = std::max(bar.size.width * std::clamp(*fraction, 0.0, 1.0), 8.0);
        } else {
            // An indeterminate progress bar: a piece that moves from end to end and back in two
            // seconds.
            constexpr double piece = 0.3;
            const double turn = platform::toSeconds(picture_.loadingTime);
            const double swing = 0.5 - 0.5 * std::cos(turn * 3.14159);
            done.size.width *= piece;
            done.origin.x += bar.size.width * (1 - piece) * swing;
        }
        fill(done, kAccent, 4);
    }

    void paintCancel(const Rect& area) {
        const bool isPressed = picture_.pressed == Control::CancelLoading;
        const bool isHot = picture_.pointedAt == Control::CancelLoading;
        fill(area,
             isPressed ? kPressed
             : isHot   ? kTouched
                       : Tone{255, 255, 255, 0.08},
             kButtonRounding);
        if (area.size.width < 60)
            drawCross(list_, middle(area), color(kInk));
        else
            writeInMiddle(area, "Cancel", kTextSize);
    }

    void paintMessage() {
        const Rect& box = picture_.layout.message;
        fill(box, kBack, kRounding);
        const Rect text{{box.origin.x + 16, box.origin.y + 10},
                        {box.size.width - 16 - 56, box.size.height - 20}};
        writeWithin(text, picture_.state.message);
        if (picture_.layout.dismiss) {
            const Rect& area = picture_.layout.dismiss->area;
            if (picture_.pointedAt == Control::DismissMessage)
                fill(area, kTouched, kButtonRounding);
            drawCross(list_, middle(area), color(kInk));
        }
    }

    void paintHelp() {
        list_.AddRectFilled({0, 0}, point(size_.width, size_.height), color(kVeil));
        float size = kTextSize;
        while (size > 7 && helpHeight(size) > size_.height - 24)
            size -= 1;
        const double keys = keyWidth(size);
        const double width = helpWidth(size);
        const double height = helpHeight(size);
        const Rect box{{(size_.width - width) / 2, (size_.height - height) / 2}, {width, height}};
        fill(box, Tone{14, 16, 20, 0.9}, kRounding);
        double y = box.origin.y + 14;
        for (const auto& [key, text] : keyHelpLines()) {
            write(point(box.origin.x + 18, y), key, size, kAccent);
            const float wrap = helpWrap(size);
            list_.AddText(ImGui::GetFont(), size, point(box.origin.x + 18 + keys, y), color(kInk),
                          text.data(), text.data() + text.size(), wrap);
            y += lineHeight(text, size);
        }
    }

    [[nodiscard]] double keyWidth(float size) const { return size * 4.6; }
    [[nodiscard]] double helpWidth(float size) const {
        double widest = 0;
        for (const auto& line : keyHelpLines())
            widest = std::max(widest, static_cast<double>(extentOf(line.text, size).x));
        return std::min(widest + keyWidth(size) + 36, size_.width - 16);
    }
    [[nodiscard]] float helpWrap(float size) const {
        return static_cast<float>(helpWidth(size) - keyWidth(size) - 34);
    }
    [[nodiscard]] double lineHeight(std::string_view text, float size) const {
        return extentOf(text, size, helpWrap(size)).y + size * 0.4;
    }
    [[nodiscard]] double helpHeight(float size) const {
        double height = 28;
        for (const auto& line : keyHelpLines())
            height += lineHeight(line.text, size);
        return height;
    }

    void fill(const Rect& area, const Tone& tone, float rounding, double opacity = 1) {
        list_.AddRectFilled(topLeft(area), bottomRight(area), color(tone, opacity), rounding);
    }
    void write(ImVec2 place, std::string_view text, float size, const Tone& tone = kInk,
               double opacity = 1) {
        list_.AddText(ImGui::GetFont(), size, place, color(tone, opacity), text.data(),
                      text.data() + text.size());
    }
    void writeInMiddle(const Rect& area, std::string_view text, float size, double opacity = 1) {
        const ImVec2 extent = extentOf(text, size);
        const ImVec2 center = middle(area);
        write({std::round(center.x - extent.x / 2), std::round(center.y - extent.y / 2)}, text,
              size, kInk, opacity);
    }
    void writeShortened(const Rect& area, std::string_view text) {
        write(topLeft(area), shortened(text, area.size.width), kTextSize);
    }
    /// Wraps the text into lines, in the largest font size that fits.
    void writeWithin(const Rect& area, std::string_view text) {
        const auto width = static_cast<float>(area.size.width);
        float size = kTextSize;
        while (size > 9 && extentOf(text, size, width).y > area.size.height)
            size -= 1;
        const double y = area.origin.y + (area.size.height - extentOf(text, size, width).y) / 2;
        list_.PushClipRect(topLeft(area), bottomRight(area), true);
        list_.AddText(ImGui::GetFont(), size, point(area.origin.x, std::max(y, area.origin.y)),
                      color(kInk), text.data(), text.data() + text.size(), width);
        list_.PopClipRect();
    }

    ImDrawList& list_;
    const ControlsPicture& picture_;
    Size size_;
};

} // namespace

void ControlsPainter::draw(const ControlsPicture& picture, Size size, double scale) {
    surface_.draw(size, scale, [&](ImDrawList& list) { Painting(list, picture, size).paint(); });
}
