#include "Apps/Player/Controls/ControlsLayout.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <span>

using platform::Point;
using platform::Rect;
using platform::Size;

namespace {

constexpr double kRowHeight = 48;
constexpr double kLeastWidth = 44;
constexpr double kMostWidth = 52;
constexpr double kLeastBar = 72;
constexpr double kMostVolumeBar = 132;
constexpr double kGap = 16; // between groups
constexpr double kTimeWidth = 64;
constexpr double kWidestPanel = 860;
constexpr double kWidestNotice = 460;
constexpr double kKnob = 9; // the track is inset by this at both ends
constexpr double kLetterWidth = 8.5;
constexpr double kLineHeight = 20;

constexpr std::array kTransport{Control::Playback, Control::Mute, Control::VolumeBar};
constexpr std::array kModes{Control::Plane, Control::Sphere, Control::LittlePlanet,
                            Control::SideBySide};
constexpr std::array kTools{Control::DeviceMotion, Control::Screenshot, Control::Help,
                            Control::FullScreen};

using Group = std::span<const Control>;
using Row = std::vector<Group>; // an empty row holds the seek bar

struct Spacing {
    double margin; // to the window's edge
    double padding;
};

Spacing spacingOf(Size window) {
    const bool isSmall = window.width < 420 || window.height < 260;
    return isSmall ? Spacing{4, 0} : Spacing{12, 8};
}

double leastWidthOf(Control control) {
    return isBar(control) ? kLeastBar : kLeastWidth;
}

double leastWidthOf(Group group) {
    return std::accumulate(group.begin(), group.end(), 0.0,
                           [](double sum, Control control) { return sum + leastWidthOf(control); });
}

double leastWidthOf(const Row& row) {
    return std::accumulate(row.begin(), row.end(), 0.0,
                           [](double sum, Group group) { return sum + leastWidthOf(group); });
}

/// Puts as many groups into a row as fit; the most important rows come first.
std::vector<Row> rowsWithin(double width, bool hasVideo) {
    const Row all{kTransport, kModes, kTools};
    if (hasVideo && leastWidthOf(all) + 2 * kGap <= width)
        return {all, {}};
    std::vector<Row> rows;
    if (hasVideo)
        rows = {{kTransport}, {}};
    const Row others{kModes, kTools};
    if (leastWidthOf(others) <= width)
        rows.push_back(others);
    else
        rows.insert(rows.end(), {{kModes}, {kTools}});
    return rows;
}

/// The first controls of the group that fit.
Group within(double width, Group group) {
    while (!group.empty() && leastWidthOf(group) > width)
        group = group.first(group.size() - 1);
    return group;
}

/// The width of each button of a row.
double cellWidth(double width, const Row& row) {
    double bars = 0;
    double cells = 0;
    for (const Group group : row) {
        const auto count = std::count_if(group.begin(), group.end(), isBar);
        bars += static_cast<double>(count) * kLeastBar;
        cells += static_cast<double>(group.size()) - static_cast<double>(count);
    }
    const double gaps = kGap * static_cast<double>(row.size() - 1);
    const double share = (width - bars - gaps) / std::max(cells, 1.0);
    return std::clamp(std::floor(share), kLeastWidth, kMostWidth);
}

class Placer {
public:
    Placer(ControlsLayout& layout, Rect inside, bool isSeekable)
        : layout_(layout), inside_(inside), y_(inside.origin.y), isSeekable_(isSeekable) {}

    void place(const Row& row) {
        if (row.empty())
            placeSeekBar();
        else
            placeGroups(row);
        y_ += kRowHeight;
    }

private:
    void add(Control control, double x, double width) {
        layout_.places.push_back({control, {{x, y_}, {width, kRowHeight}}});
    }

    void placeSeekBar() {
        double left = inside_.origin.x;
        double width = inside_.size.width;
        if (width >= 2 * kTimeWidth + kLeastBar) {
            layout_.elapsed = {{left, y_}, {kTimeWidth, kRowHeight}};
            layout_.length = {{left + width - kTimeWidth, y_}, {kTimeWidth, kRowHeight}};
            left += kTimeWidth;
            width -= 2 * kTimeWidth;
        }
        if (isSeekable_)
            add(Control::SeekBar, left, width);
    }

    /// Spaces the groups as far apart as possible.
    void placeGroups(const Row& row) {
        Row shown;
        for (const Group group : row)
            shown.push_back(row.size() == 1 ? within(inside_.size.width, group) : group);
        const double cell = cellWidth(inside_.size.width, shown);
        const bool isAlone = shown.size() == 1;
        const auto barWidth = [&](Group group) {
            const auto others = static_cast<double>(group.size() - 1) * cell;
            const double rest = inside_.size.width - others;
            return isAlone ? rest : std::min(kMostVolumeBar, spareWidth(shown, cell) + kLeastBar);
        };
        const auto widthOf = [&](Control control, Group group) {
            return isBar(control) ? barWidth(group) : cell;
        };
        double total = 0;
        for (const Group group : shown) {
            for (const Control control : group)
                total += widthOf(control, group);
        }
        const double gap =
            isAlone ? 0 : (inside_.size.width - total) / static_cast<double>(shown.size() - 1);
        double x = inside_.origin.x + (isAlone ? (inside_.size.width - total) / 2 : 0);
        for (const Group group : shown) {
            for (const Control control : group) {
                add(control, x, widthOf(control, group));
                x += widthOf(control, group);
            }
            x += gap;
        }
    }

    /// The remaining width if the gaps between groups are as small as possible.
    [[nodiscard]] double spareWidth(const Row& row, double cell) const {
        double used = kGap * static_cast<double>(row.size() - 1);
        for (const Group group : row) {
            for (const Control control : group)
                used += isBar(control) ? kLeastBar : cell;
        }
        return std::max(0.0, inside_.size.width - used);
    }

    ControlsLayout& layout_;
    Rect inside_;
    double y_;
    bool isSeekable_;
};

void placePanel(ControlsLayout& layout, Size window, const ControlsState& state) {
    const auto [margin, padding] = spacingOf(window);
    const double width = std::min(window.width - 2 * margin, kWidestPanel);
    const double inside = width - 2 * padding;
    if (inside < kLeastWidth)
        return;
    auto rows = rowsWithin(inside, state.video.has_value());
    const auto heightOf = [padding = padding](std::size_t count) {
        return static_cast<double>(count) * kRowHeight + 2 * padding;
    };
    while (!rows.empty() && heightOf(rows.size()) > window.height - 2 * margin)
        rows.pop_back();
    if (rows.empty())
        return;
    // The seek bar is above the buttons.
    if (rows.size() > 1 && rows[1].empty())
        std::swap(rows[0], rows[1]);
    const double height = heightOf(rows.size());
    layout.panel = {{std::floor((window.width - width) / 2), window.height - margin - height},
                    {width, height}};
    const Rect area{{layout.panel.origin.x + padding, layout.panel.origin.y + padding},
                    {inside, height - 2 * padding}};
    Placer placer(layout, area, state.video && state.video->duration);
    for (const Row& row : rows)
        placer.place(row);
}

/// The widest panel that fits at `top`; empty if none fits.
Rect noticeBelow(double top, double height, Size window) {
    const double margin = spacingOf(window).margin;
    const double width = std::min(window.width - 2 * margin, kWidestNotice);
    if (width < 2 * kLeastWidth || top + height > window.height - margin)
        return {};
    return {{std::floor((window.width - width) / 2), top}, {width, height}};
}

void placeLoading(ControlsLayout& layout, Size window) {
    constexpr double height = 64;
    layout.loading = noticeBelow(spacingOf(window).margin, height, window);
    const auto& [origin, size] = layout.loading;
    if (size.width == 0)
        return;
    const double cancelWidth = size.width < 260 ? kLeastWidth : 92;
    constexpr double inset = 14;
    layout.loadingBar = {{origin.x + inset, origin.y + 40},
                         {size.width - 2 * inset - cancelWidth, 8}};
    layout.cancel = {
        Control::CancelLoading,
        {{origin.x + size.width - cancelWidth - 8, origin.y + 8}, {cancelWidth, kRowHeight}}};
}

void placeMessage(ControlsLayout& layout, Size window, const std::string& message) {
    const double margin = spacingOf(window).margin;
    const double top = layout.loading.size.height > 0
                           ? layout.loading.origin.y + layout.loading.size.height + margin
                           : margin;
    const double width = std::min(window.width - 2 * margin, kWidestNotice) - kRowHeight - 2 * kGap;
    const double letters = std::max(1.0, std::floor(width / kLetterWidth));
    const double lines = std::ceil(static_cast<double>(message.size()) / letters);
    const double room = std::max(window.height - top - margin, kRowHeight + 8);
    layout.message =
        noticeBelow(top, std::clamp(lines * kLineHeight + 24, kRowHeight + 8, room), window);
    const auto& [origin, size] = layout.message;
    if (size.width > 0)
        layout.dismiss = {
            Control::DismissMessage,
            {{origin.x + size.width - kRowHeight - 4, origin.y + 4}, {kRowHeight, kRowHeight}}};
}

} // namespace

bool contains(const Rect& area, Point point) {
    return point.x >= area.origin.x && point.x < area.origin.x + area.size.width &&
           point.y >= area.origin.y && point.y < area.origin.y + area.size.height;
}

double fractionAt(const Rect& bar, double x) {
    const double length = std::max(bar.size.width - 2 * kKnob, 1.0);
    return std::clamp((x - bar.origin.x - kKnob) / length, 0.0, 1.0);
}

double placeAt(const Rect& bar, double fraction) {
    return bar.origin.x + kKnob + (bar.size.width - 2 * kKnob) * std::clamp(fraction, 0.0, 1.0);
}

const Rect* ControlsLayout::areaOf(Control control) const {
    for (const Place& place : places) {
        if (place.control == control)
            return &place.area;
    }
    return nullptr;
}

std::optional<Control> ControlsLayout::controlAt(Point point) const {
    for (const Place& place : places) {
        if (contains(place.area, point))
            return place.control;
    }
    return std::nullopt;
}

std::optional<Control> ControlsLayout::noticeControlAt(Point point) const {
    for (const auto& place : {cancel, dismiss}) {
        if (place && contains(place->area, point))
            return place->control;
    }
    return std::nullopt;
}

ControlsLayout layOutControls(Size window, const ControlsState& state) {
    ControlsLayout layout;
    placePanel(layout, window, state);
    if (state.loading)
        placeLoading(layout, window);
    if (!state.message.empty())
        placeMessage(layout, window, state.message);
    return layout;
}
