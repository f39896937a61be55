#pragma once

#include "HVViewer/DisplayController/DisplayView/HVVProgram/UniformTable.h"
#include "HVViewer/DisplayController/DisplayView/SceneCamera.h"
#include "HVViewer/Model/ContentType.h"
#include "HVViewer/Model/DisplayMode.h"
#include "HVViewer/Model/InterractorDelegate.h"
#include "Platform/Graphics/GLKMath.h"
#include "Platform/Imaging/PixelBuffer.h"
#include "Platform/Interface/GLView.h"

#include <functional>
#include <memory>
#include <vector>

class ZNTDrawer;
class ZNTHotSpot;
class ZNTHotSpotPickingPoint;
class ZNTInterractor;
class ZNTProgram;

/// The view that shows the content. It computes the camera of each frame from the display mode, its
/// own size and the interactor, and has the drawer draw the frame.
///
/// Owner:  the controller. The view owns the drawer, the program and the interactor. Create it with
///         `platform::make`.
/// Thread: main.
class ZNTDisplayView : public platform::GLView,
                       public platform::GLViewDelegate,
                       public InterractorDelegate {
public:
    using HotSpots = std::vector<std::shared_ptr<ZNTHotSpot>>;

    explicit ZNTDisplayView(platform::Rect frame);
    ~ZNTDisplayView() override;
    void init() override;

    /// Shows a still image. Each call makes a new drawer and a new program.
    void displayImage(const platform::ImagePtr& image);
    /// The same, with hot spots over the image.
    void displayImage(const platform::ImagePtr& image,
                      const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint,
                      const HotSpots& hotSpots);

    /// Shows a video frame and requests one redraw. The first frame, the first one after an image
    /// and the first one in a new GL context set up the drawer; after a context loss, pass the last
    /// frame again. Null keeps the previous frame.
    void displayCVPixelBuffer(const platform::PixelBufferPtr& buffer);
    /// The same, with hot spots over the frame. Their textures are made again only if the list or
    /// the point differs from the previous call; the same hot spots in the same order are not a
    /// change.
    void displayCVPixelBuffer(const platform::PixelBufferPtr& buffer,
                              const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint,
                              const HotSpots& hotSpots);

    /// Reports the hot spot at a point of the view, in whole points.
    void objectPickTestForPixelAtX(int x, int y);
    /// The picking point that was passed with the hot spots that are shown; may be null.
    [[nodiscard]] std::shared_ptr<ZNTHotSpotPickingPoint> shownPickingPoint() const;
    /// Automatic picking. The value is stored and takes effect when hot spots are attached next.
    [[nodiscard]] bool enableAutoPicking() const { return enableAutoPicking_; }
    void setEnableAutoPicking(bool enable) { enableAutoPicking_ = enable; }
    /// Stops automatic picking while the view is not on the screen, regardless of the stored value.
    void setAutoPickingSuspended(bool suspended);

    /// Switches the display mode, which resets the camera to the start of that mode and changes the
    /// mesh.
    void startRenderVO(DisplayMode mode);

    /// The switches of the interactor. Device motion can be switched in the sphere mode only;
    /// switching it off requests one redraw.
    void turnOnDeviceMotionInterraction(bool on);
    void turnOnTouchMotionInterraction(bool on);
    void turnOnScaleInterraction(bool on);
    void setLockVerticalRotation(bool lock);
    [[nodiscard]] bool lockVerticalRotation() const;
    [[nodiscard]] bool deviceMotionAvailable() const;
    [[nodiscard]] bool deviceMotionIsOn() const;
    [[nodiscard]] bool touchMotionIsOn() const;
    [[nodiscard]] bool scaleIsOn() const;

    /// The vertical field of view in degrees, before the zoom is applied.
    [[nodiscard]] double viewScale() const;
    /// Announces a future size. Until it changes, the aspect ratio follows it instead of the frame,
    /// except in side by side.
    void willTransitionToSize(platform::Size size) { newSize_ = size; }

    /// Switches device motion off for a half of side by side that is hidden, and on again when it
    /// is shown.
    void setHidden(bool hidden) override;
    void matrixUpdated() override;
    void drawInRect(platform::GLView& view, const platform::Rect& rect) override;
    void willMoveToSuperview(platform::View* newSuperview) override;

    [[nodiscard]] DisplayMode displayVO() const { return displayVO_; }
    [[nodiscard]] platform::Size newSize() const { return newSize_; }
    /// Radians about the model's z axis, applied after the rotation of the interactor.
    [[nodiscard]] float initialRotationOffset() const { return initialRotationOffset_; }
    void setInitialRotationOffset(float radians);
    /// When set, the view clears to transparent black instead of opaque black. If another view has
    /// drawn behind it, it blends instead of clearing.
    [[nodiscard]] bool makeTransparent() const { return makeTransparent_; }
    void setMakeTransparent(bool transparent);
    [[nodiscard]] std::shared_ptr<ZNTDrawer> glDrawer() const { return glDrawer_; }
    [[nodiscard]] std::shared_ptr<ZNTProgram> glProgram() const { return glProgram_; }
    [[nodiscard]] std::shared_ptr<ZNTInterractor> interractor() const { return interractor_; }

    /// The camera of the last frame, and its inputs.
    [[nodiscard]] const SceneCamera& camera() const { return camera_; }
    [[nodiscard]] const SceneCameraInputs& cameraInputs() const { return cameraInputs_; }
    [[nodiscard]] GLKMatrix4 modelViewProjectionMatrix() const {
        return camera_.modelViewProjection;
    }
    /// Computes the camera for the current state.
    void update();

private:
    void createInterractor();
    /// The common part of both overloads of `displayImage`. `attach` runs once the drawer can
    /// accept hot spots.
    void showImage(const platform::ImagePtr& image, const std::function<void()>& attach);
    /// Whether the drawer and the context are ready for video frames.
    [[nodiscard]] bool isSetUpForVideo() const;
    /// Makes a drawer for video. Returns false without a context.
    bool prepareForVideo();
    void showFrame(const platform::PixelBufferPtr& buffer);
    void showHotSpots(const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint,
                      const HotSpots& hotSpots);
    void handOnAutoPicking();
    void configureDefaultParameters();
    void prepareGLWithType(ContentType type);
    void orientationDidChangedNotification();
    void clearFrame(platform::GLView& view) const;

    UniformTable uniformsObj_{};
    DisplayMode displayVO_ = DisplayMode::Sphere;
    platform::Size newSize_;
    float initialRotationOffset_ = 0;
    bool makeTransparent_ = false;
    bool enableAutoPicking_ = false;
    bool isAutoPickingSuspended_ = false;
    SceneCameraInputs cameraInputs_;
    SceneCamera camera_;
    std::shared_ptr<ZNTInterractor> interractor_;
    std::shared_ptr<ZNTDrawer> glDrawer_;
    std::shared_ptr<ZNTProgram> glProgram_;
};
