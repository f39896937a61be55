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

/// Draws the hot spots of one display view over its scene, and finds the hot spot at a point by
/// colour picking: each hot spot is drawn in a colour that encodes its index, and the colour of one
/// pixel is read back.
///
/// Owner:  the content drawer. Context and view are held weakly. Create it with `platform::make`.
/// Thread: main.
class ZNTHotSpotDrawer : public platform::Object {
public:
    using HotSpots = std::vector<std::shared_ptr<ZNTHotSpot>>;

    /// Errors: throws `AssertionFailure` without a context or a view.
    ZNTHotSpotDrawer(const std::shared_ptr<platform::GLContext>& context,
                     const std::shared_ptr<platform::GLView>& view,
                     std::shared_ptr<ZNTHotSpotPickingPoint> pickingPoint = nullptr);
    ~ZNTHotSpotDrawer() override;
    void init() override;

    /// Adds a hot spot and assigns its index. A hot spot whose texture fails is left out, and its
    /// index goes to the next one. After `tearDownGL` this is a no-op.
    void addHotSpot(const std::shared_ptr<ZNTHotSpot>& spot);
    /// Replaces the list. Automatic picking restarts in a later iteration of the main queue.
    void updateHotSpots(const HotSpots& spots);
    [[nodiscard]] const HotSpots& hotSpots() const { return hotSpots_; }

    /// Draws the markers over the current framebuffer content. A no-op if the list is empty.
    void performDrawMarkersWithProjection(const GLKMatrix4& scene);
    /// Rebuilds the quad if the shape of the screen has changed.
    void screenShapeDidChange();

    /// Reports the hot spot at a point of the view, if there is one, by posting the selection
    /// notification. Indices above 205 have the same colour and are reported as 205 if that index
    /// exists. Observers may change or destroy anything meanwhile: the report describes what was
    /// drawn. If an observer draws a frame during the picking pass, nothing is reported.
    void objectPickTestForPixelAtX(int x, int y);
    /// Checks the picking point once; the timer calls this every 0.33 s.
    void objecPickTestForPickingPoint();
    /// Switches automatic picking. The timer starts or stops in a later iteration of the main
    /// queue.
    void setEnableAutoPickingTest(bool enable);
    [[nodiscard]] bool enableAutoPickingTest() const { return enableAutoPickingTest_; }
    [[nodiscard]] std::shared_ptr<ZNTHotSpotPickingPoint> pickingPoint() const {
        return pickingPoint_;
    }
    /// Null disables automatic picking. A new point takes effect when the list or the switch is set
    /// next.
    void setPickingPoint(const std::shared_ptr<ZNTHotSpotPickingPoint>& point) {
        pickingPoint_ = point;
    }
    [[nodiscard]] bool isPickingAutomatically() const { return pickingTimer_ != nullptr; }
    /// The index that automatic picking found last, and how many more times in a row it found it.
    [[nodiscard]] std::uint32_t pickingHotSpotIndex() const { return pickingHotSpotIndex_; }
    [[nodiscard]] std::int64_t pickingOccurency() const { return pickingOccurency_; }

    /// Whether the next markers are drawn in their picking colours.
    [[nodiscard]] bool enableColor() const { return enableColor_; }
    [[nodiscard]] bool updateInProgress() const { return updateInProgress_; }
    /// The quad that all markers share.
    [[nodiscard]] std::shared_ptr<ZNTHotSpotPlaneVO> hotSpotModel() const { return hotSpotModel_; }

    /// Ends automatic picking permanently and deletes the GL objects that this drawer made, except
    /// for one buffer of 48 bytes.
    void tearDownGL();

private:
    /// A hot spot and the index that it was drawn with, independent of later changes to the list.
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
    bool canDraw_ = false; // whether the program could be built
    platform::MeshBuffers buffers_;
    std::uint32_t generation_ = 0; // of the GL context that holds the buffers
    bool enableColor_ = false;
    std::uint32_t pickingHotSpotIndex_ = 0;
    std::int64_t pickingOccurency_ = 0;
    bool enableAutoPickingTest_ = true;
    bool updateInProgress_ = false;
    bool isTornDown_ = false;
    HotSpots hotSpots_;
    std::vector<DrawnSpot> drawnForPicking_; // in the last picking pass
    std::weak_ptr<platform::GLContext> context_;
    std::weak_ptr<platform::GLView> glView_;
    std::shared_ptr<ZNTHotSpotPickingPoint> pickingPoint_;
    std::shared_ptr<platform::Timer> pickingTimer_;
    std::shared_ptr<ZNTHotSpotPlaneVO> hotSpotModel_;
    platform::Size modelScreen_;
};
