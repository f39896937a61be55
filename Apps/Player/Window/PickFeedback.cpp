#include "Apps/Player/Window/PickFeedback.h"

#include "Apps/Player/Terminal/Message.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "Hosts/SDL/SDLHost.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Interface/Application.h"
#include "Platform/Interface/View.h"

#include <nlohmann/json.hpp>

#include <utility>

using namespace std::chrono_literals;
using nlohmann::ordered_json;
using platform::MainQueue;
using platform::Point;
using platform::Rect;
using platform::View;

namespace {

constexpr double kMarkSide = 24;
constexpr double kCrossLength = 16;
constexpr double kCrossWidth = 2;
constexpr platform::Instant kMarkTime = 700ms;
constexpr platform::Instant kTitleTime = 2s;
constexpr platform::Color kMarkColor{1, 0.6F, 0, 1};
constexpr platform::Color kCrossColor{1, 1, 1, 1};

Rect around(Point center, platform::Size size) {
    return {{center.x - size.width / 2, center.y - size.height / 2}, size};
}

void remove(std::vector<std::shared_ptr<View>>& views) {
    for (const auto& view : std::exchange(views, {}))
        view->removeFromSuperview();
}

} // namespace

PickFeedback::PickFeedback(zanto::SDLHost& host, ZNTDisplayViewController& controller,
                           std::string title)
    : host_(host), controller_(controller), title_(std::move(title)) {}

PickFeedback::~PickFeedback() {
    remove(crosses_);
    remove(marks_);
    if (picksTitle_)
        host_.setTitle(title_);
}

void PickFeedback::init() {
    Object::init();
    platform::NotificationCenter::defaultCenter().addObserver(
        shared(this), platform::kDidChangeStatusBarFrame, [this](const auto&) { update(); });
    update();
}

void PickFeedback::touch(const platform::TouchEvent& event) {
    if (event.phase == platform::TouchPhase::Up)
        lifted_ = event.location;
}

void PickFeedback::picked(const Pick& pick) {
    const ordered_json line{{"pick", pick.name}, {"index", pick.index}, {"tap", pick.isTap}};
    print(line.dump(-1, ' ', false, ordered_json::error_handler_t::replace) + "\n");
    showTitle(pick);
    mark(pick.isTap ? std::vector{lifted_} : lookedAt());
}

/// The points at which automatic picking looks; in side-by-side mode also the corresponding point
/// of the right half.
std::vector<Point> PickFeedback::lookedAt() const {
    const auto point = controller_.hotSpotPickingPoint();
    if (!point)
        return {};
    const Point place{point->xPosition(), point->yPosition()};
    if (controller_.currentMode() != DisplayMode::SideBySide)
        return {place};
    const double right = controller_.virtualDisplayView()->frame().origin.x;
    return {place, {right + place.x, place.y}};
}

std::shared_ptr<View> PickFeedback::show(const Rect& frame, const platform::Color& color) const {
    auto view = platform::make<View>(frame);
    view->setBackgroundColor(color);
    view->setUserInteractionEnabled(false);
    controller_.view()->addSubview(view);
    return view;
}

void PickFeedback::update() {
    remove(crosses_);
    if (!controller_.enableHotSpotAutoPicking() || controller_.hotSpots().empty())
        return;
    for (const Point& place : lookedAt()) {
        crosses_.push_back(show(around(place, {kCrossLength, kCrossWidth}), kCrossColor));
        crosses_.push_back(show(around(place, {kCrossWidth, kCrossLength}), kCrossColor));
    }
}

void PickFeedback::showTitle(const Pick& pick) {
    host_.setTitle(pick.title() + " – zanto-player");
    picksTitle_ = std::make_shared<int>();
    MainQueue::main().asyncAfter(kTitleTime,
                                 [weak = weak(this), own = std::weak_ptr<int>(picksTitle_)] {
                                     const auto self = weak.lock();
                                     // If the token has expired, another pick has set the title.
                                     if (!self || own.expired())
                                         return;
                                     self->host_.setTitle(self->title_);
                                     self->picksTitle_.reset();
                                 });
}

void PickFeedback::mark(const std::vector<Point>& places) {
    remove(marks_);
    for (const Point& place : places)
        marks_.push_back(show(around(place, {kMarkSide, kMarkSide}), kMarkColor));
    const std::vector<std::weak_ptr<View>> shown(marks_.begin(), marks_.end());
    MainQueue::main().asyncAfter(kMarkTime, [weak = weak(this), shown] {
        const auto self = weak.lock();
        if (!self)
            return;
        for (const auto& each : shown) {
            if (const auto view = each.lock()) {
                view->removeFromSuperview();
                std::erase(self->marks_, view);
            }
        }
    });
}
