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

/// The camera of one display view. It converts touches and the attitude of the device into the
/// matrices and the zoom that frames are drawn with.
///
/// A drag rotates the sphere, which coasts on after the finger lifts, or moves the flat image. A
/// pinch zooms; beyond the limits of the mode the zoom springs back when the fingers lift. While
/// device motion is on, the attitude is applied between the yaw and the pitch of the touches, and
/// each attitude sample requests a frame.
///
/// Owner:  the display view, which the interactor holds weakly, as view and as delegate. A queued
///         step of a coast or a spring-back keeps the interactor alive until it has run.
/// Thread: main.
class ZNTInterractor final : public platform::Object {
public:
    [[nodiscard]] static std::shared_ptr<ZNTInterractor>
    interractorWithView(const std::weak_ptr<platform::View>& view,
                        const std::weak_ptr<InterractorDelegate>& delegate);
    ZNTInterractor(std::weak_ptr<platform::View> view, std::weak_ptr<InterractorDelegate> delegate);
    ~ZNTInterractor() override;
    void init() override;

    /// The display mode. The setter resets the camera to the start of that mode and does not notify
    /// the delegate. It cancels gestures in progress, and fingers that are down are ignored until
    /// they are put down again. A coast continues on the new matrices. The plane and the little
    /// planet switch device motion off, side by side switches it on, and the sphere leaves it as it
    /// is.
    [[nodiscard]] DisplayMode currentVO() const { return currentVO_; }
    void setCurrentVO(DisplayMode mode);

    /// Whether drags rotate the camera horizontally only.
    [[nodiscard]] bool lockVerticalRotation() const { return lockVerticalRotation_; }
    void setLockVerticalRotation(bool lock) { lockVerticalRotation_ = lock; }
    /// Whether coasts and spring-backs may run. The start of a gesture stops them, its end allows
    /// them.
    [[nodiscard]] bool animationsEnabled() const { return animationsEnabled_; }
    void setAnimationsEnabled(bool enabled) { animationsEnabled_ = enabled; }
    /// The switches that the host application sets. In side by side the getters return false
    /// regardless.
    void turnTouchMotionOn(bool on) { touchMotionOn_ = on; }
    void turnScaleOn(bool on) { scaleOn_ = on; }
    [[nodiscard]] bool isTouchMotionOn() const;
    [[nodiscard]] bool isScaleOn() const;

    [[nodiscard]] bool isDeviceMotionAvailable() const;
    [[nodiscard]] bool isDeviceMotionOn() const;
    /// Without a sensor, device motion stays off until one appears. If the sensor disappears,
    /// device motion is switched off, except in side by side, which keeps the request until the
    /// mode changes.
    void turnDeviceMotionOn(bool on);

    /// The zoom factor; 1 is neutral. The field of view is divided by it.
    [[nodiscard]] double scale() const { return scale_; }
    void setScale(double scale) { scale_ = scale; }
    /// The zoom limits of the current mode: where the zoom rests, and how far fingers can pull it.
    [[nodiscard]] double minScale() const;
    [[nodiscard]] double maxScale() const;
    [[nodiscard]] double minAnimScale() const;
    [[nodiscard]] double maxAnimScale() const;

    /// The last position of the finger, in points. The next step of a drag or coast starts from it.
    [[nodiscard]] platform::Point panLocation() const { return panLocation_; }
    void setPanLocation(platform::Point location) { panLocation_ = location; }
    /// The remaining velocity of a coast, in points per step. Each step uses a fixed share of it.
    [[nodiscard]] platform::Point panVelocity() const { return panVelocity_; }
    void setPanVelocity(platform::Point velocity) { panVelocity_ = velocity; }

    /// The accumulated yaw: rotations about the model's z axis.
    [[nodiscard]] GLKMatrix4 rotationMatrix() const { return rotationMatrix_; }
    void setRotationMatrix(const GLKMatrix4& matrix) { rotationMatrix_ = matrix; }
    /// The accumulated pitch: rotations about the x axis, which can go over the poles.
    [[nodiscard]] GLKMatrix4 viewMatrix() const { return viewMatrix_; }
    void setViewMatrix(const GLKMatrix4& matrix) { viewMatrix_ = matrix; }
    /// The translation of the flat image.
    [[nodiscard]] GLKMatrix4 translationMatrix() const { return translationMatrix_; }
    void setTranslationMatrix(const GLKMatrix4& matrix) { translationMatrix_ = matrix; }
    /// The attitude of the device as a rotation of the scene, for the current interface
    /// orientation. The getter computes it at every call and returns NaNs before the first sample;
    /// a value that is set is never used.
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

    /// Notifies the delegate that the camera has changed. A no-op while device motion is on,
    /// because the attitude samples notify it.
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
