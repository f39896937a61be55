#include "HVViewer/Model/ZNTInterractor.h"

#include "HVViewer/Model/ZoomLimits.h"
#include "HVViewer/Utilities/ZNTMath.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Interface/Application.h"
#include "Platform/Interface/PanGestureRecognizer.h"
#include "Platform/Interface/PinchGestureRecognizer.h"
#include "Platform/Interface/View.h"
#include "Platform/Motion/MotionManager.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <numbers>
#include <utility>

using platform::Application;
using platform::GestureState;
using platform::InterfaceOrientation;
using platform::MainQueue;
using platform::Point;

namespace {

constexpr float kHalfTurn = std::numbers::pi_v<float>;
constexpr float kQuarterTurn = kHalfTurn / 2;
constexpr double kLittlePlanetScale = 0.8F;
constexpr std::size_t kTranslationX = 12;
constexpr std::size_t kTranslationY = 13;

/// The spring-back crosses its band in this many steps, within this total time.
constexpr double kSpringSteps = 20.0;
constexpr double kSpringSeconds = 0.1F;
/// The delay after which a rotated interface has its new frame.
constexpr platform::Instant kTurnTime = std::chrono::milliseconds(150);

double nativeWidth() {
    return platform::Screen::mainScreen().nativeBounds().size.width;
}

/// Without a screen width nothing can be rotated or clamped, and the division by it would leave
/// NaNs in the matrices.
bool hasScreen() {
    return nativeWidth() > 0;
}

/// Clamps the element to the range from -limit to limit. If the limit is NaN, every element other
/// than 0 becomes NaN.
void clampElement(float& element, double limit) {
    if (element > 0)
        element = static_cast<float>(element < limit ? element : limit);
    else if (element < 0)
        element = static_cast<float>(element > -limit ? element : -limit);
}

} // namespace

std::shared_ptr<ZNTInterractor>
ZNTInterractor::interractorWithView(const std::weak_ptr<platform::View>& view,
                                    const std::weak_ptr<InterractorDelegate>& delegate) {
    return platform::make<ZNTInterractor>(view, delegate);
}

ZNTInterractor::ZNTInterractor(std::weak_ptr<platform::View> view,
                               std::weak_ptr<InterractorDelegate> delegate)
    : view_(std::move(view)), delegate_(std::move(delegate)) {}

ZNTInterractor::~ZNTInterractor() {
    platform::NotificationCenter::defaultCenter().removeObserver(this);
    if (motionManager_)
        motionManager_->stopDeviceMotionUpdates();
}

void ZNTInterractor::init() {
    Object::init();
    initialSetup();
}

void ZNTInterractor::initialSetup() {
    platform::NotificationCenter::defaultCenter().addObserver(
        shared(this), platform::kWillChangeStatusBarFrame,
        [this](const platform::Notification& notification) {
            orientationWillChangeNotification(
                notification.value<platform::Rect>(platform::kStatusBarFrameUserInfoKey));
        });
    addGestures();
    setupDeviceMotion();
}

void ZNTInterractor::addGestures() {
    const auto view = view_.lock();
    if (!view)
        return;
    const auto pan = platform::make<platform::PanGestureRecognizer>(
        [weak = weak(this)](platform::PanGestureRecognizer& recognizer) {
            if (const auto self = weak.lock())
                self->handlePan(recognizer);
        });
    pan->setMaximumNumberOfTouches(1);
    const auto pinch = platform::make<platform::PinchGestureRecognizer>(
        [weak = weak(this)](platform::PinchGestureRecognizer& recognizer) {
            if (const auto self = weak.lock())
                self->handlePinch(recognizer);
        });
    view->addGestureRecognizer(pan);
    view->addGestureRecognizer(pinch);
}

void ZNTInterractor::setCurrentVO(DisplayMode mode) {
    // The reference points of gestures belong to the previous mode.
    if (const auto view = view_.lock())
        view->gestures().cancelTouches();
    if (mode == DisplayMode::SideBySide)
        turnDeviceMotionOn(true);
    else if (mode != DisplayMode::Sphere)
        turnDeviceMotionOn(false);
    currentVO_ = mode;
    scale_ = 1.0;
    animationsEnabled_ = true;
    viewMatrix_ = GLKMatrix4Identity;
    translationMatrix_ = GLKMatrix4Identity;
    rotationMatrix_ = GLKMatrix4Identity;
    if (mode == DisplayMode::LittlePlanet) {
        scale_ = kLittlePlanetScale;
        viewMatrix_ = GLKMatrix4MakeRotation(kQuarterTurn, 1, 0, 0);
    }
}

bool ZNTInterractor::isTouchMotionOn() const {
    return touchMotionOn_ && currentVO_ != DisplayMode::SideBySide;
}

bool ZNTInterractor::isScaleOn() const {
    return scaleOn_ && currentVO_ != DisplayMode::SideBySide;
}

double ZNTInterractor::minScale() const {
    return zoomLimitsOf(currentVO_).min;
}

double ZNTInterractor::maxScale() const {
    return zoomLimitsOf(currentVO_).max;
}

double ZNTInterractor::minAnimScale() const {
    return zoomLimitsOf(currentVO_).minAnim;
}

double ZNTInterractor::maxAnimScale() const {
    return zoomLimitsOf(currentVO_).maxAnim;
}

void ZNTInterractor::setNeedsUpdateMatrix() {
    const auto delegate = delegate_.lock();
    if (delegate && !isDeviceMotionOn())
        delegate->matrixUpdated();
}

// Drags and coasts

void ZNTInterractor::handlePan(const platform::PanGestureRecognizer& recognizer) {
    const auto view = recognizer.view();
    if (!isTouchMotionOn() || !view)
        return;
    const Point location = recognizer.locationInView(*view);
    switch (recognizer.state()) {
    case GestureState::Began:
        animationsEnabled_ = false;
        panLocation_ = location;
        break;
    case GestureState::Changed:
        animationsEnabled_ = false;
        if (currentVO_ == DisplayMode::Plane)
            translateMatrixToPoint(location);
        else
            rotateMatrixToPoint(location);
        panLocation_ = location;
        break;
    case GestureState::Ended:
        animationsEnabled_ = true;
        if (currentVO_ != DisplayMode::Plane) {
            const Point velocity = recognizer.velocityInView(*view);
            panVelocity_ = {velocity.x / VelocityDivideValue, velocity.y / VelocityDivideValue};
            animateRotation();
        }
        break;
    default:
        break;
    }
    setNeedsUpdateMatrix();
}

void ZNTInterractor::rotateMatrixToPoint(Point point) {
    if (!hasScreen())
        return;
    const double dx = (panLocation_.x - point.x) / scale_;
    const double dy = (panLocation_.y - point.y) / scale_;
    // Points divided by pixels: the denser the screen, the slower the rotation.
    const double yaw = DegToRad(ViewAngle / nativeWidth() * dx);
    const double pitch = DegToRad(ViewAngle / nativeWidth() * dy);
    if (!lockVerticalRotation_)
        viewMatrix_ = GLKMatrix4Rotate(viewMatrix_, static_cast<float>(pitch), 1, 0, 0);
    rotationMatrix_ = GLKMatrix4Rotate(rotationMatrix_, static_cast<float>(yaw), 0, 0, 1);
}

void ZNTInterractor::animateRotation() {
    if (!animationsEnabled_)
        return;
    // A zero delay means the next frame, so that there is one step per frame. The decay is per
    // step.
    MainQueue::main().asyncAfter(
        platform::Instant(0),
        [self = shared(this), share = VelocityDeltaCoef] { self->coast(share); });
}

void ZNTInterractor::coast(double share) {
    const Point v = panVelocity_;
    const bool isMoving = std::abs(v.x) > VelocityMinValue || std::abs(v.y) > VelocityMinValue;
    if (!isMoving)
        return;
    rotateMatrixToPoint({panLocation_.x + v.x * share, panLocation_.y + v.y * share});
    panVelocity_ = {v.x * (1 - share), v.y * (1 - share)};
    setNeedsUpdateMatrix();
    animateRotation();
}

// The flat image

void ZNTInterractor::translateMatrixToPoint(Point point) {
    if (!hasScreen())
        return;
    const double tx = (point.x - panLocation_.x) / scale_;
    const double ty = (panLocation_.y - point.y) / scale_;
    GLKMatrix4 moved =
        GLKMatrix4Translate(translationMatrix_, static_cast<float>(tx / nativeWidth()),
                            static_cast<float>(ty / nativeWidth()), 0);
    normalizeX(moved);
    normalizeY(moved);
    translationMatrix_ = moved;
}

void ZNTInterractor::normalizeX(GLKMatrix4& matrix) const {
    if (!hasScreen())
        return;
    const auto view = view_.lock();
    const platform::Size size = view ? view->frame().size : platform::Size{};
    double planeWidth = size.width * scale_;
    if (platform::isPortrait(Application::sharedApplication().statusBarOrientation()))
        planeWidth = size.height * (size.height / size.width) * scale_;
    // The value is below 0 in a window that is wider than high but still reported as portrait. NaN
    // is kept.
    const double limit = std::max((planeWidth - size.width) / planeWidth / 2.0, 0.0);
    if (scale_ < 1.0)
        matrix.m[kTranslationX] = 0;
    else
        clampElement(matrix.m[kTranslationX], limit);
}

void ZNTInterractor::normalizeY(GLKMatrix4& matrix) const {
    if (!hasScreen())
        return;
    const auto view = view_.lock();
    const double height = view ? view->frame().size.height : 0;
    const double planeHeight = height * scale_;
    const platform::Size native = platform::Screen::mainScreen().nativeBounds().size;
    const double ratio = std::ceil(native.width / native.height * 10) / 10;
    const double limit = (planeHeight - height) / planeHeight * ratio / 2.0;
    // Unlike in `normalizeX`, this includes a scale of 1, because the image is as high as the view.
    if (scale_ <= 1.0)
        matrix.m[kTranslationY] = 0;
    else
        clampElement(matrix.m[kTranslationY], limit);
}

// Pinches and the spring-back

void ZNTInterractor::handlePinch(platform::PinchGestureRecognizer& recognizer) {
    if (!isScaleOn())
        return;
    switch (recognizer.state()) {
    case GestureState::Began:
        animationsEnabled_ = false;
        recognizer.setScale(scale_);
        break;
    case GestureState::Changed:
        animationsEnabled_ = false;
        scale_ = std::max(std::min(recognizer.scale(), maxAnimScale()), minAnimScale());
        normalizeX(translationMatrix_);
        normalizeY(translationMatrix_);
        break;
    case GestureState::Ended:
        animationsEnabled_ = true;
        animateScale();
        break;
    default:
        break;
    }
    setNeedsUpdateMatrix();
}

void ZNTInterractor::animateScale() {
    if (!animationsEnabled_)
        return;
    // The band depends on whether the zoom is above or below 1, even if the zoom of the mode rests
    // below 1.
    const double band = scale_ > 1.0 ? maxAnimScale() - maxScale() : minScale() - minAnimScale();
    constexpr auto delay = static_cast<platform::Instant::rep>(kSpringSeconds / kSpringSteps * 1e9);
    MainQueue::main().asyncAfter(
        platform::Instant(delay),
        [self = shared(this), stride = band / kSpringSteps] { self->springBack(stride); });
}

void ZNTInterractor::springBack(double stride) {
    // The last step may overshoot the limit by less than a stride. The zoom stays there.
    if (scale_ > maxScale())
        scale_ = scale_ - stride;
    else if (scale_ < minScale())
        scale_ = scale_ + stride;
    else
        return;
    setNeedsUpdateMatrix();
    animateScale();
}

// Device motion

void ZNTInterractor::setupDeviceMotion() {
    motionManager_ = std::make_shared<platform::MotionManager>();
    motionManager_->setDeviceMotionUpdateInterval(0.0);
}

bool ZNTInterractor::isDeviceMotionAvailable() const {
    return motionManager_->isDeviceMotionAvailable();
}

bool ZNTInterractor::isDeviceMotionOn() const {
    return motionManager_->isDeviceMotionActive();
}

void ZNTInterractor::turnDeviceMotionOn(bool on) {
    if (!on)
        return motionManager_->stopDeviceMotionUpdates();
    motionManager_->startDeviceMotionUpdates([weak = weak(this)](const auto& motion) {
        if (const auto self = weak.lock())
            self->deviceMotionUpdated(motion.has_value());
    });
}

void ZNTInterractor::deviceMotionUpdated(bool hasSource) {
    // In side by side nothing else can rotate the camera, because touches are off.
    if (!hasSource && currentVO_ == DisplayMode::SideBySide)
        turnDeviceMotionOn(true);
    if (const auto delegate = delegate_.lock())
        delegate->matrixUpdated();
}

GLKMatrix4 ZNTInterractor::motionMatrix() const {
    const auto motion = motionManager_->deviceMotion();
    // Until there is a sample the quaternion is zero, which makes a matrix of NaNs.
    const platform::Attitude attitude = motion ? motion->attitude : platform::Attitude{0, 0, 0, 0};
    const auto x = static_cast<float>(attitude.x);
    const auto y = static_cast<float>(attitude.y);
    const auto z = static_cast<float>(attitude.z);
    const auto w = static_cast<float>(attitude.w);
    const auto turned = [](const GLKQuaternion& inverse, float radians) {
        return GLKMatrix4Rotate(GLKMatrix4MakeWithQuaternion(inverse), radians, 0, 0, 1);
    };
    // The inverse of the device's rotation, in the axes of the current interface orientation.
    switch (Application::sharedApplication().statusBarOrientation()) {
    case InterfaceOrientation::LandscapeLeft:
        return turned(GLKQuaternionMake(-y, x, -z, w), -kQuarterTurn);
    case InterfaceOrientation::LandscapeRight:
        return turned(GLKQuaternionMake(y, -x, -z, w), kQuarterTurn);
    case InterfaceOrientation::PortraitUpsideDown:
        return turned(GLKQuaternionMake(x, y, -z, w), kHalfTurn);
    case InterfaceOrientation::Portrait:
    case InterfaceOrientation::Unknown:
        break;
    }
    return GLKMatrix4MakeWithQuaternion(GLKQuaternionMake(-x, -y, -z, w));
}

void ZNTInterractor::orientationWillChangeNotification(const platform::Rect& newFrame) {
    if (newFrame == Application::sharedApplication().statusBarFrame())
        return;
    MainQueue::main().asyncAfter(kTurnTime, [self = shared(this)] {
        self->normalizeX(self->translationMatrix_);
        self->normalizeY(self->translationMatrix_);
        self->setNeedsUpdateMatrix();
    });
}
