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

/// The surface that shows the content: composes each frame's camera from the mode, its size and the
/// interactor, and has it drawn.
///
/// Owner:  the controller; it owns drawer, program and interactor. Made with `platform::make`.
/// Thread: main.
class ZNTDisplayView : public platform::GLView,
                       public platform::GLViewDelegate,
                       public InterractorDelegate {
public:
    using HotSpots = std::vector<std::shared_ptr<ZNTHotSpot>>;

    explicit ZNTDisplayView(platform::Rect frame);
    ~ZNTDisplayView() override;
    void init() override;

    /// Shows a still picture. Sets everything up anew: a one-shot operation.
    void displayImage(const platform::ImagePtr& image);
    /// The same with hot spots over it.
    void displayImage(const platform::ImagePtr& image,
                      const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint,
                      const HotSpots& hotSpots);

    /// Shows a frame of a video, and asks for one redraw. The first one sets everything up, also
    /// after a picture and in a context that has come in place of a lost one: given the last frame
    /// again, the view shows it again. Null draws the earlier frame.
    void displayCVPixelBuffer(const platform::PixelBufferPtr& buffer);
    /// The same with hot spots over it. Their textures are made anew only for another list or
    /// another point than was given last; the same hot spots in the same order are no change.
    void displayCVPixelBuffer(const platform::PixelBufferPtr& buffer,
                              const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint,
                              const HotSpots& hotSpots);

    /// Has the hot spot under a point of the view reported, in whole points.
    void objectPickTestForPixelAtX(int x, int y);
    /// The point that came with the hot spots that are shown; may be null.
    [[nodiscard]] std::shared_ptr<ZNTHotSpotPickingPoint> shownPickingPoint() const;
    /// Automatic picking: stored, and handed on when hot spots are attached.
    [[nodiscard]] bool enableAutoPicking() const { return enableAutoPicking_; }
    void setEnableAutoPicking(bool enable) { enableAutoPicking_ = enable; }
    /// Stops automatic picking while nobody sees the view, whatever is stored.
    void setAutoPickingSuspended(bool suspended);

    /// Switches the scene: the camera goes back to where the scene starts, and the mesh follows.
    void startRenderVO(DisplayMode mode);

    /// The interactor's switches. Device motion is switched in the sphere only; switching it off
    /// asks for one redraw.
    void turnOnDeviceMotionInterraction(bool on);
    void turnOnTouchMotionInterraction(bool on);
    void turnOnScaleInterraction(bool on);
    void setLockVerticalRotation(bool lock);
    [[nodiscard]] bool lockVerticalRotation() const;
    [[nodiscard]] bool deviceMotionAvailable() const;
    [[nodiscard]] bool deviceMotionIsOn() const;
    [[nodiscard]] bool touchMotionIsOn() const;
    [[nodiscard]] bool scaleIsOn() const;

    /// Vertical field of view in degrees, before the zoom.
    [[nodiscard]] double viewScale() const;
    /// Announces the size to come; it overrides the frame in the aspect ratio, but for mode 3.
    void willTransitionToSize(platform::Size size) { newSize_ = size; }

    /// A half of side by side that is hidden lets go of the device's attitude.
    void setHidden(bool hidden) override;
    void matrixUpdated() override;
    void drawInRect(platform::GLView& view, const platform::Rect& rect) override;
    void willMoveToSuperview(platform::View* newSuperview) override;

    [[nodiscard]] DisplayMode displayVO() const { return displayVO_; }
    [[nodiscard]] platform::Size newSize() const { return newSize_; }
    /// Radians about the model's z axis, after the interactor's rotation.
    [[nodiscard]] float initialRotationOffset() const { return initialRotationOffset_; }
    void setInitialRotationOffset(float radians);
    /// Clears to transparent black instead of opaque black; over what somebody else has drawn it
    /// does not clear but blends.
    [[nodiscard]] bool makeTransparent() const { return makeTransparent_; }
    void setMakeTransparent(bool transparent);
    [[nodiscard]] std::shared_ptr<ZNTDrawer> glDrawer() const { return glDrawer_; }
    [[nodiscard]] std::shared_ptr<ZNTProgram> glProgram() const { return glProgram_; }
    [[nodiscard]] std::shared_ptr<ZNTInterractor> interractor() const { return interractor_; }

    /// The camera of the last frame, and what it was made of.
    [[nodiscard]] const SceneCamera& camera() const { return camera_; }
    [[nodiscard]] const SceneCameraInputs& cameraInputs() const { return cameraInputs_; }
    [[nodiscard]] GLKMatrix4 modelViewProjectionMatrix() const {
        return camera_.modelViewProjection;
    }
    /// Composes the camera for the present state.
    void update();

private:
    void createInterractor();
    /// Both kinds of `displayImage`; `attach` runs once the drawer can take hot spots.
    void showImage(const platform::ImagePtr& image, const std::function<void()>& attach);
    /// Whether drawer and context can take a video's frames as they are.
    [[nodiscard]] bool isSetUpForVideo() const;
    /// What a first frame needs. False without a context.
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
