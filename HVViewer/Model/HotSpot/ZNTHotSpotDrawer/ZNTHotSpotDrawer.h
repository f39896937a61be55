#pragma once

#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/MarkerProgram.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Graphics/GLKMath.h"
#include "Platform/Graphics/MeshBuffers.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

class ZNTHotSpot;
class ZNTHotSpotPickingPoint;
class ZNTHotSpotPlaneVO;

namespace platform {
class GLContext;
class GLView;
class Timer;
} // namespace platform

/// Draws the hot spots of one display view over its scene, and finds the one under a point: each is
/// drawn in a colour that stands for its index, and the colour of one pixel is read back.
///
/// Owner:  the content drawer; context and view are held weakly. Made with `platform::make`.
/// Thread: main.
class ZNTHotSpotDrawer : public platform::Object {
public:
    using HotSpots = std::vector<std::shared_ptr<ZNTHotSpot>>;

    /// Errors: assertion failures without a context or a view.
    ZNTHotSpotDrawer(const std::shared_ptr<platform::GLContext>& context,
                     const std::shared_ptr<platform::GLView>& view,
                     std::shared_ptr<ZNTHotSpotPickingPoint> pickingPoint = nullptr);
    ~ZNTHotSpotDrawer() override;
    void init() override;

    /// A hot spot whose texture fails is left out, and its index goes to the next one. After the
    /// teardown nothing is added any more.
    void addHotSpot(const std::shared_ptr<ZNTHotSpot>& spot);
    /// Replaces the list; automatic picking starts anew in a later turn.
    void updateHotSpots(const HotSpots& spots);
    [[nodiscard]] const HotSpots& hotSpots() const { return hotSpots_; }

    /// Draws the markers over what is there; nothing for an empty list.
    void performDrawMarkersWithProjection(const GLKMatrix4& scene);
    /// Rebuilds the quad for a screen that has another shape by now.
    void screenShapeDidChange();

    /// Reports the hot spot under a point of the view, if there is one, by the selection
    /// notification. Indices above 205 cannot be told apart and are reported as 205 where that
    /// exists. Observers may change or end anything meanwhile: what is reported is what was drawn,
    /// and nothing where one of them has drawn the picking frame in place of the drawer.
    void objectPickTestForPixelAtX(int x, int y);
    /// Looks at the picking point, as the timer does every 0.33 s.
    void objecPickTestForPickingPoint();
    /// Switches automatic picking; the timer starts or stops in a later turn.
    void setEnableAutoPickingTest(bool enable);
    [[nodiscard]] bool enableAutoPickingTest() const { return enableAutoPickingTest_; }
    [[nodiscard]] std::shared_ptr<ZNTHotSpotPickingPoint> pickingPoint() const {
        return pickingPoint_;
    }
    /// Null: automatic picking looks nowhere. It takes effect when the list or the switch is set.
    void setPickingPoint(const std::shared_ptr<ZNTHotSpotPickingPoint>& point) {
        pickingPoint_ = point;
    }
    [[nodiscard]] bool isPickingAutomatically() const { return pickingTimer_ != nullptr; }
    /// What automatic picking saw last, and how many further times in a row.
    [[nodiscard]] std::uint32_t pickingHotSpotIndex() const { return pickingHotSpotIndex_; }
    [[nodiscard]] std::int64_t pickingOccurency() const { return pickingOccurency_; }

    /// Whether the next markers are drawn in the colours that tell them apart.
    [[nodiscard]] bool enableColor() const { return enableColor_; }
    [[nodiscard]] bool updateInProgress() const { return updateInProgress_; }
    /// The quad of all markers.
    [[nodiscard]] std::shared_ptr<ZNTHotSpotPlaneVO> hotSpotModel() const { return hotSpotModel_; }

    /// Deletes the GL objects that this drawer made, but for one buffer of 48 bytes, and ends
    /// automatic picking for good.
    void tearDownGL();

private:
    /// A hot spot in the colour of an index, whatever becomes of the list later.
    struct DrawnSpot {
        std::uint32_t index;
        std::shared_ptr<ZNTHotSpot> spot;
    };

    void setupGL();
    void bindBuffer();
    void deleteBuffers();
    void removeTextures();
    void drawMarker(ZNTHotSpot& spot, const GLKMatrix4& scene) const;
    void endColorPass();
    [[nodiscard]] std::optional<GLKVector4> snapshotDorPicking(platform::Point point);
    void pickAt(platform::Point point, bool tap);
    void detectSelectionFromTapColot(const GLKVector4& color, const std::vector<DrawnSpot>& drawn,
                                     bool tap);
    [[nodiscard]] bool dwellsOn(std::uint32_t index);
    void restartTimer(bool hasSpots);
    void warnOfPointOutside() const;

    MarkerProgram markerProgramm_;
    bool canDraw_ = false; // the program is there
    platform::MeshBuffers buffers_;
    std::uint32_t generation_ = 0; // of the context that holds them
    bool enableColor_ = false;
    std::uint32_t pickingHotSpotIndex_ = 0;
    std::int64_t pickingOccurency_ = 0;
    bool enableAutoPickingTest_ = true;
    bool updateInProgress_ = false;
    bool isTornDown_ = false;
    HotSpots hotSpots_;
    std::vector<DrawnSpot> drawnForPicking_; // by the last pass in picking colours
    std::weak_ptr<platform::GLContext> context_;
    std::weak_ptr<platform::GLView> glView_;
    std::shared_ptr<ZNTHotSpotPickingPoint> pickingPoint_;
    std::shared_ptr<platform::Timer> pickingTimer_;
    std::shared_ptr<ZNTHotSpotPlaneVO> hotSpotModel_;
    platform::Size modelScreen_;
};
