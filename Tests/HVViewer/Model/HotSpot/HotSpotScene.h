#pragma once

#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

/// What a selection notification said.
struct Selection {
    std::string name;
    std::int64_t index = -1;
    bool tap = false;
    friend bool operator==(const Selection&, const Selection&) = default;
};

/// Notes selections while it lives.
class SelectionListener {
public:
    SelectionListener();
    ~SelectionListener();
    SelectionListener(const SelectionListener&) = delete;
    SelectionListener& operator=(const SelectionListener&) = delete;

    /// Those since the last question.
    [[nodiscard]] std::vector<Selection> take();

private:
    std::shared_ptr<platform::Object> observer_;
    std::shared_ptr<std::vector<Selection>> selections_;
};

/// Acts whenever a notification is posted, while it lives.
class WhenPosted {
public:
    WhenPosted(const char* name, std::function<void()> act);
    ~WhenPosted();
    WhenPosted(const WhenPosted&) = delete;
    WhenPosted& operator=(const WhenPosted&) = delete;

private:
    std::shared_ptr<platform::Object> observer_;
};

/// A player whose view shows hot spots over a picture of one colour, grey by default.
class HotSpotScene : public HeadlessPlayer {
public:
    explicit HotSpotScene(platform::Size size = {320, 180}, double scale = 1.0);
    explicit HotSpotScene(const platform::ImagePtr& content);

    /// Shows these, in a drawer of their own, as the controller does.
    void showSpots(const ZNTHotSpotDrawer::HotSpots& spots,
                   const std::shared_ptr<ZNTHotSpotPickingPoint>& point = nullptr);
    [[nodiscard]] ZNTHotSpotDrawer& drawer();
    void advance(double seconds);
};

/// A hot spot of one colour.
[[nodiscard]] std::shared_ptr<ZNTHotSpot> spotAt(float vertical, float horizontal,
                                                 const std::string& name = "");
