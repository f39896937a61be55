#pragma once

#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <cstdint>
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

/// A player whose view shows hot spots over a grey picture.
class HotSpotScene : public HeadlessPlayer {
public:
    explicit HotSpotScene(platform::Size size = {320, 180}, double scale = 1.0);

    /// Shows these, in a drawer of their own, as the controller does.
    void showSpots(const ZNTHotSpotDrawer::HotSpots& spots,
                   const std::shared_ptr<ZNTHotSpotPickingPoint>& point = nullptr);
    [[nodiscard]] ZNTHotSpotDrawer& drawer();
    void advance(double seconds);
};

/// A hot spot of one colour.
[[nodiscard]] std::shared_ptr<ZNTHotSpot> spotAt(float vertical, float horizontal,
                                                 const std::string& name = "");
