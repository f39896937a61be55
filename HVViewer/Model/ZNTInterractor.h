#pragma once

#include "HVViewer/Model/DisplayMode.h"
#include "HVViewer/Model/InterractorDelegate.h"
#include "Platform/Foundation/Geometry.h"
#include "Platform/Foundation/Object.h"
#include "Platform/Graphics/GLKMath.h"

#include <memory>

class ZNTHotSpotDrawer;

namespace platform {
class MotionManager;
class PanGestureRecognizer;
class PinchGestureRecognizer;
class View;
} // namespace platform

/// The camera of one display view: turns touches and the device's attitude into the matrices and
/// the zoom that its frames are drawn with.
///
/// A drag turns the sphere and coasts on after the finger lifts, or slides the flat picture; a
/// pinch zooms, and springs back when it is let go beyond the mode's limits. While the device
/// steers, the attitude comes in front of what the fingers have turned, and its samples ask for the
/// frames.
///
/// Owner:  made and held by the display view, which it refers to weakly, as view and as delegate.
///         A step of a coast or a spring-back that is queued holds it until it has run.
/// Thread: main.
class ZNTInterractor final : public platform::Object {
public:
    [[nodiscard]] static std::shared_ptr<ZNTInterractor>
    interractorWithView(const std::weak_ptr<platform::View>& view,
                        const std::weak_ptr<InterractorDelegate>& delegate);
    ZNTInterractor(std::weak_ptr<platform::View> view, std::weak_ptr<InterractorDelegate> delegate);
    ~ZNTInterractor() override;
    void init() override;

    /// The scene that is looked at. Setting it turns the camera back to where that scene starts and
    /// notifies no delegate; the plane and the little planet switch the device's attitude off, side
    /// by side switches it on, the sphere leaves it. Gestures that are running are cancelled, and
    /// the view's fingers count again once they are put down anew. A coast continues on the new
    /// matrices.
    [[nodiscard]] DisplayMode currentVO() const { return currentVO_; }
    void setCurrentVO(DisplayMode mode);

    /// Drags turn the camera sideways only.
    [[nodiscard]] bool lockVerticalRotation() const { return lockVerticalRotation_; }
    void setLockVerticalRotation(bool lock) { lockVerticalRotation_ = lock; }
    /// Whether coasts and spring-backs may go on; a gesture stops them, its end allows them.
    [[nodiscard]] bool animationsEnabled() const { return animationsEnabled_; }
    void setAnimationsEnabled(bool enabled) { animationsEnabled_ = enabled; }
    /// What the host wants of touches; side by side there are none whatever it wants.
    void turnTouchMotionOn(bool on) { touchMotionOn_ = on; }
    void turnScaleOn(bool on) { scaleOn_ = on; }
    [[nodiscard]] bool isTouchMotionOn() const;
    [[nodiscard]] bool isScaleOn() const;

    [[nodiscard]] bool isDeviceMotionAvailable() const;
    [[nodiscard]] bool isDeviceMotionOn() const;
    /// Without a source, device motion is off until one arrives; what was asked for holds then. A
    /// source that goes away ends it, except in side by side, which asks for it until it is left.
    void turnDeviceMotionOn(bool on);

    /// Zoom factor, 1 is neutral; the field of view is divided by it.
    [[nodiscard]] double scale() const { return scale_; }
    void setScale(double scale) { scale_ = scale; }
    /// Where the zoom rests, and how far fingers can pull it, in the present mode.
    [[nodiscard]] double minScale() const;
    [[nodiscard]] double maxScale() const;
    [[nodiscard]] double minAnimScale() const;
    [[nodiscard]] double maxAnimScale() const;

    /// The finger's last place, from which the next step turns; points.
    [[nodiscard]] platform::Point panLocation() const { return panLocation_; }
    void setPanLocation(platform::Point location) { panLocation_ = location; }
    /// What is left of the coast: points per step, before the step's share is taken.
    [[nodiscard]] platform::Point panVelocity() const { return panVelocity_; }
    void setPanVelocity(platform::Point velocity) { panVelocity_ = velocity; }

    /// Accumulated yaw: turns about the model's z axis.
    [[nodiscard]] GLKMatrix4 rotationMatrix() const { return rotationMatrix_; }
    void setRotationMatrix(const GLKMatrix4& matrix) { rotationMatrix_ = matrix; }
    /// Accumulated pitch: turns about x, over the poles too.
    [[nodiscard]] GLKMatrix4 viewMatrix() const { return viewMatrix_; }
    void setViewMatrix(const GLKMatrix4& matrix) { viewMatrix_ = matrix; }
    /// Offset of the flat picture.
    [[nodiscard]] GLKMatrix4 translationMatrix() const { return translationMatrix_; }
    void setTranslationMatrix(const GLKMatrix4& matrix) { translationMatrix_ = matrix; }
    /// The device's attitude as a rotation of the scene, for the way the screen is held now;
    /// computed anew at every call, NaNs before the first sample. What is set is never read back.
    [[nodiscard]] GLKMatrix4 motionMatrix() const;
    void setMotionMatrix(const GLKMatrix4& matrix) { motionMatrix_ = matrix; }

    [[nodiscard]] std::shared_ptr<platform::View> interractionView() const { return view_.lock(); }
    [[nodiscard]] std::shared_ptr<platform::MotionManager> motionManager() const {
        return motionManager_;
    }
    [[nodiscard]] std::shared_ptr<ZNTHotSpotDrawer> controlDrawer() const {
        return controlDrawer_.lock();
    }
    void updateWithControlDrawer(const std::weak_ptr<ZNTHotSpotDrawer>& drawer) {
        controlDrawer_ = drawer;
    }

    /// Tells the delegate that the camera has changed, unless the device steers: its samples do.
    void setNeedsUpdateMatrix();

private:
    void initialSetup();
    void addGestures();
    void setupDeviceMotion();
    void deviceMotionUpdated(bool hasSource);
    void handlePan(const platform::PanGestureRecognizer& recognizer);
    void handlePinch(platform::PinchGestureRecognizer& recognizer);
    void rotateMatrixToPoint(platform::Point point);
    void translateMatrixToPoint(platform::Point point);
    void normalizeX(GLKMatrix4& matrix) const;
    void normalizeY(GLKMatrix4& matrix) const;
    void animateRotation();
    void coast(double share);
    void animateScale();
    void springBack(double stride);
    void orientationWillChangeNotification(const platform::Rect& newFrame);

    bool lockVerticalRotation_ = false;
    bool animationsEnabled_ = true;
    bool touchMotionOn_ = true;
    bool scaleOn_ = true;
    double scale_ = 1.0;
    std::weak_ptr<platform::View> view_;
    std::weak_ptr<InterractorDelegate> delegate_;
    std::shared_ptr<platform::MotionManager> motionManager_;
    DisplayMode currentVO_ = DisplayMode::Sphere;
    std::weak_ptr<ZNTHotSpotDrawer> controlDrawer_;
    platform::Point panLocation_;
    platform::Point panVelocity_;
    GLKMatrix4 motionMatrix_ = GLKMatrix4Identity;
    GLKMatrix4 rotationMatrix_ = GLKMatrix4Identity;
    GLKMatrix4 viewMatrix_ = GLKMatrix4Identity;
    GLKMatrix4 translationMatrix_ = GLKMatrix4Identity;
};
