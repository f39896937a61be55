#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"

#include "HVViewer/DisplayController/DisplayView/HVVProgram/ZNTProgram.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotDrawer.h"
#include "HVViewer/Model/ZNTInterractor.h"
#include "HVViewer/Utilities/ZNTMath.h"
#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Graphics/GLContext.h"
#include "Platform/Graphics/GLStateScope.h"
#include "Platform/Interface/Application.h"

#include <GLES2/gl2.h>

namespace {

/// The context handle that all display views of an environment share. The destructor of any view
/// resets it. Other views keep their own reference, and the next view that needs a context makes a
/// new handle to the same GL context.
std::shared_ptr<platform::GLContext>& sharedContext() {
    return platform::Environment::current().part<std::shared_ptr<platform::GLContext>>();
}

} // namespace

ZNTDisplayView::ZNTDisplayView(platform::Rect frame) : GLView(frame) {}

ZNTDisplayView::~ZNTDisplayView() {
    platform::NotificationCenter::defaultCenter().removeObserver(this);
    sharedContext().reset();
}

void ZNTDisplayView::init() {
    GLView::init();
    createInterractor();
}

void ZNTDisplayView::createInterractor() {
    interractor_ = ZNTInterractor::interractorWithView(weak(this), weak(this));
}

void ZNTDisplayView::configureDefaultParameters() {
    if (!platform::GLContext::setCurrentContext(sharedContext()))
        sharedContext() = platform::GLContext::create();
    // Keeps the context alive, because the previous drawer holds it weakly and needs it to delete
    // its GL objects.
    const auto earlier = context();
    setDelegate(weak(this));
    setContext(sharedContext());
    glDrawer_ = platform::make<ZNTDrawer>();
}

void ZNTDisplayView::prepareGLWithType(ContentType type) {
    if (!platform::GLContext::setCurrentContext(context()))
        return;
    glProgram_ = std::make_shared<ZNTProgram>();
    glProgram_->buildProgramWithUniforms(uniformsObj_, ZNTDrawer::textureCoordinatePointer(), type);
    glDrawer_->bindBuffers();
}

void ZNTDisplayView::displayImage(const platform::ImagePtr& image) {
    showImage(image, [] {});
}

void ZNTDisplayView::displayImage(const platform::ImagePtr& image,
                                  const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint,
                                  const HotSpots& hotSpots) {
    showImage(image, [&] { glDrawer_->attachPickingPoint(pickingPoint, hotSpots); });
    if (const auto hotSpotDrawer = glDrawer_ ? glDrawer_->hotSpotGLDrawer() : nullptr) {
        interractor_->updateWithControlDrawer(hotSpotDrawer);
        handOnAutoPicking();
    }
}

void ZNTDisplayView::displayCVPixelBuffer(const platform::PixelBufferPtr& buffer) {
    const platform::GLStateScope applicationState;
    if (isSetUpForVideo() || prepareForVideo())
        showFrame(buffer);
}

void ZNTDisplayView::displayCVPixelBuffer(
    const platform::PixelBufferPtr& buffer,
    const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint, const HotSpots& hotSpots) {
    const platform::GLStateScope applicationState;
    if (!isSetUpForVideo() && !prepareForVideo())
        return;
    showHotSpots(pickingPoint, hotSpots);
    showFrame(buffer);
}

bool ZNTDisplayView::isSetUpForVideo() const {
    return platform::GLContext::setCurrentContext(context()) && glDrawer_ &&
           glDrawer_->contentType() == ContentType::Video;
}

bool ZNTDisplayView::prepareForVideo() {
    configureDefaultParameters();
    if (!context())
        return false;
    glProgram_.reset(); // made for an image, or lost with its context
    glDrawer_->setupDrawerWithType(ContentType::Video, shared(this));
    glDrawer_->changeRenderingVO(displayVO_);
    return true;
}

void ZNTDisplayView::showHotSpots(const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint,
                                  const HotSpots& hotSpots) {
    const bool isAttached = glDrawer_->hotSpotGLDrawer() != nullptr;
    const bool isSame =
        glDrawer_->pickingPoint() == pickingPoint && glDrawer_->givenHotSpots() == hotSpots;
    if (isAttached && isSame)
        return;
    if (isAttached) {
        glDrawer_->setPickingPoint(pickingPoint);
        glDrawer_->updateHotSpots(hotSpots);
    } else {
        glDrawer_->attachPickingPoint(pickingPoint, hotSpots);
        interractor_->updateWithControlDrawer(glDrawer_->hotSpotGLDrawer());
    }
    handOnAutoPicking();
}

void ZNTDisplayView::handOnAutoPicking() {
    if (const auto hotSpotDrawer = glDrawer_ ? glDrawer_->hotSpotGLDrawer() : nullptr)
        hotSpotDrawer->setEnableAutoPickingTest(enableAutoPicking_ && !isAutoPickingSuspended_);
}

void ZNTDisplayView::setAutoPickingSuspended(bool suspended) {
    if (suspended == isAutoPickingSuspended_)
        return;
    isAutoPickingSuspended_ = suspended;
    handOnAutoPicking();
}

void ZNTDisplayView::showFrame(const platform::PixelBufferPtr& buffer) {
    glDrawer_->drawCVPixelBuffer(buffer, uniformsObj_);
    if (!glProgram_)
        prepareGLWithType(ContentType::Video);
    setNeedsDisplay();
}

void ZNTDisplayView::objectPickTestForPixelAtX(int x, int y) {
    if (const auto hotSpotDrawer = glDrawer_ ? glDrawer_->hotSpotGLDrawer() : nullptr)
        hotSpotDrawer->objectPickTestForPixelAtX(x, y);
}

std::shared_ptr<ZNTHotSpotPickingPoint> ZNTDisplayView::shownPickingPoint() const {
    return glDrawer_ ? glDrawer_->pickingPoint() : nullptr;
}

void ZNTDisplayView::showImage(const platform::ImagePtr& image,
                               const std::function<void()>& attach) {
    const platform::GLStateScope applicationState;
    const auto earlier = glDrawer_;
    configureDefaultParameters();
    if (!context())
        return;
    glDrawer_->setupDrawerWithType(ContentType::Photo, shared(this));
    attach();
    glDrawer_->changeRenderingVO(displayVO_);
    glDrawer_->drawImage(image);
    prepareGLWithType(ContentType::Photo);
    // The previous drawer is released after the new one shares its textures, so that showing the
    // same image again neither decodes nor uploads it.
    platform::MainQueue::main().async([earlier] {});
}

void ZNTDisplayView::startRenderVO(DisplayMode mode) {
    displayVO_ = mode;
    interractor_->setCurrentVO(mode);
    const platform::GLStateScope applicationState;
    if (glDrawer_)
        glDrawer_->changeRenderingVO(mode);
}

void ZNTDisplayView::turnOnDeviceMotionInterraction(bool on) {
    if (displayVO_ != DisplayMode::Sphere)
        return;
    const bool wasOn = deviceMotionIsOn();
    interractor_->turnDeviceMotionOn(on);
    // Without device motion no sample requests the frame. With it, the first sample does.
    if (wasOn && !on)
        setNeedsDisplay();
}

void ZNTDisplayView::turnOnTouchMotionInterraction(bool on) {
    interractor_->turnTouchMotionOn(on);
}

void ZNTDisplayView::turnOnScaleInterraction(bool on) {
    interractor_->turnScaleOn(on);
}

void ZNTDisplayView::setLockVerticalRotation(bool lock) {
    if (lock == lockVerticalRotation())
        return;
    interractor_->setLockVerticalRotation(lock);
    setNeedsDisplay();
}

bool ZNTDisplayView::lockVerticalRotation() const {
    return interractor_->lockVerticalRotation();
}

bool ZNTDisplayView::deviceMotionAvailable() const {
    return interractor_->isDeviceMotionAvailable() && displayVO_ == DisplayMode::Sphere;
}

bool ZNTDisplayView::deviceMotionIsOn() const {
    return interractor_->isDeviceMotionOn();
}

bool ZNTDisplayView::touchMotionIsOn() const {
    return interractor_->isTouchMotionOn();
}

bool ZNTDisplayView::scaleIsOn() const {
    return interractor_->isScaleOn();
}

double ZNTDisplayView::viewScale() const {
    return fieldOfViewDegrees(displayVO_,
                              platform::Application::sharedApplication().statusBarOrientation());
}

void ZNTDisplayView::setInitialRotationOffset(float radians) {
    if (radians == initialRotationOffset_)
        return;
    initialRotationOffset_ = radians;
    setNeedsDisplay();
}

void ZNTDisplayView::setMakeTransparent(bool transparent) {
    if (transparent == makeTransparent_)
        return;
    makeTransparent_ = transparent;
    setNeedsDisplay();
}

void ZNTDisplayView::setHidden(bool hidden) {
    const bool wasHidden = isHidden();
    GLView::setHidden(hidden);
    // Otherwise sensors would run without any use, and the cameras of the two halves could diverge.
    if (hidden != wasHidden && displayVO_ == DisplayMode::SideBySide)
        interractor_->turnDeviceMotionOn(!hidden);
}

void ZNTDisplayView::matrixUpdated() {
    if (!isHidden())
        setNeedsDisplay();
}

void ZNTDisplayView::willMoveToSuperview(platform::View* newSuperview) {
    GLView::willMoveToSuperview(newSuperview);
    auto& center = platform::NotificationCenter::defaultCenter();
    if (newSuperview)
        center.addObserver(shared(this), platform::kDidChangeStatusBarFrame,
                           [this](const auto&) { orientationDidChangedNotification(); });
    else
        center.removeObserver(this);
    setOpaque(false);
    setBackgroundColor(platform::kClearColor);
}

void ZNTDisplayView::orientationDidChangedNotification() {
    if (glDrawer_)
        glDrawer_->screenShapeDidChange();
    display();
}

void ZNTDisplayView::update() {
    cameraInputs_.mode = displayVO_;
    cameraInputs_.orientation = platform::Application::sharedApplication().statusBarOrientation();
    const bool announced = newSize_ != platform::Size{} && displayVO_ != DisplayMode::SideBySide;
    cameraInputs_.size = announced ? newSize_ : frame().size;
    cameraInputs_.farZ = FarZ();
    cameraInputs_.scale = interractor_->scale();
    // A coast that continues in side by side would rotate only one of the halves, so both ignore
    // it.
    const bool isHalf = displayVO_ == DisplayMode::SideBySide;
    cameraInputs_.view = isHalf ? GLKMatrix4Identity : interractor_->viewMatrix();
    cameraInputs_.rotation = isHalf ? GLKMatrix4Identity : interractor_->rotationMatrix();
    cameraInputs_.translation = interractor_->translationMatrix();
    cameraInputs_.motion.reset();
    if (interractor_->isDeviceMotionOn())
        cameraInputs_.motion = interractor_->motionMatrix();
    cameraInputs_.rotationOffset = initialRotationOffset_;
    camera_ = composeCamera(cameraInputs_);
}

void ZNTDisplayView::clearFrame(platform::GLView& view) const {
    if (makeTransparent_)
        view.setOpaque(false);
    if (makeTransparent_ && view.isDrawnOverContent()) {
        // The framebuffer already contains what is behind the view, so the content is blended over
        // it.
        glEnable(GL_BLEND);
        glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA);
        return;
    }
    glClearColor(0, 0, 0, makeTransparent_ ? 0.0F : 1.0F);
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

void ZNTDisplayView::drawInRect(platform::GLView& view, const platform::Rect& /*rect*/) {
    update();
    clearFrame(view);
    glDisable(GL_SCISSOR_TEST);
    if (glDrawer_ && glProgram_)
        glDrawer_->performBufferDrawingWithUniforms(uniformsObj_, camera_.modelViewProjection,
                                                    glProgram_->programName());
    if (const auto hotSpotDrawer = glDrawer_ ? glDrawer_->hotSpotGLDrawer() : nullptr)
        hotSpotDrawer->performDrawMarkersWithProjection(camera_.modelViewProjection);
    glEnable(GL_SCISSOR_TEST);
}
