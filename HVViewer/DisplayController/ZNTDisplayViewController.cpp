#include "HVViewer/DisplayController/ZNTDisplayViewController.h"

#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpot.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "HVViewer/Utilities/ZNTMath.h"
#include "HVViewer/Utilities/ZNTUtilities.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Interface/LayoutConstraint.h"
#include "Platform/Interface/TapGestureRecognizer.h"

#include <algorithm>

namespace {

// How views line up across a row's axis.
constexpr unsigned kAlignTopAndBottom = 24;
constexpr unsigned kAlignLeadingAndTrailing = 96;
constexpr unsigned kAlignCenterY = 1024;

constexpr platform::Instant kLayoutTime = std::chrono::milliseconds(300);

using ViewsByName = std::map<std::string, std::shared_ptr<platform::View>>;

void append(std::vector<std::shared_ptr<platform::LayoutConstraint>>& constraints,
            const char* format, unsigned options, const ViewsByName& views) {
    const auto more =
        platform::LayoutConstraint::constraintsWithVisualFormat(format, options, views);
    constraints.insert(constraints.end(), more.begin(), more.end());
}

} // namespace

ZNTDisplayViewController::ZNTDisplayViewController(const platform::Coder& coder)
    : ViewController(coder) {}

ZNTDisplayViewController::ZNTDisplayViewController(const std::string& nibName,
                                                   const std::shared_ptr<platform::Bundle>& bundle)
    : ViewController(nibName, bundle) {}

ZNTDisplayViewController::~ZNTDisplayViewController() {
    if (const auto task = imageDownloadTask())
        task->cancel();
}

void ZNTDisplayViewController::init() {
    ViewController::init();
    setupDefaults();
}

void ZNTDisplayViewController::setupDefaults() {
    contentType_ = ContentType::Undefined;
    isReadyForDisplay_ = false;
    currentMode_ = DisplayMode::Sphere;
    platform::NotificationCenter::defaultCenter().addObserver(
        shared(this), platform::kGLContextWasReplaced, [this](const auto&) { showAgain(); });
    platform::NotificationCenter::defaultCenter().addObserver(
        shared(this), ZNTHotSpotDrawerDetectHotSpotSelection,
        [this](const platform::Notification& notification) {
            didDetectObjectPickingEvent(notification);
        });
}

void ZNTDisplayViewController::showAgain() {
    if (displayView_ && displayView_->glDrawer())
        prepareDisplayView();
}

bool ZNTDisplayViewController::hasData() const {
    return srcImage_ || srcImageUrl_;
}

bool ZNTDisplayViewController::isLocked() const {
    return hasData() && isReadyForDisplay_;
}

void ZNTDisplayViewController::prepareImage(const platform::ImagePtr& image) {
    const auto refuse = [this](const std::string& why) {
        platform::log(platform::LogLevel::Error, "Error in class \"" + className() + "\"" + why);
    };
    if (isLocked())
        return refuse(". Datar is already displaying. You can not change data");
    if (!image)
        return refuse(" for selector \"prepareImage:\". Image can not be nil");
    contentType_ = ContentType::Photo;
    srcImage_ = image;
    isLocalResource_ = true;
    isReadyForDisplay_ = true;
}

void ZNTDisplayViewController::prepareImageWithUrl(const std::optional<platform::URL>& url) {
    prepareImageWithUrl(url, url && url->isFileURL());
}

void ZNTDisplayViewController::prepareImageWithUrl(const std::optional<platform::URL>& url,
                                                   bool isLocal) {
    if (isLocked())
        return Dlog("Error in class \"%s\". Data is already displaying. You can not change data",
                    className().c_str());
    if (!url)
        return Dlog("Error in class \"%s\" for selector \"%s\". Url can not be nil",
                    className().c_str(), "prepareImageWithUrl:");
    contentType_ = ContentType::Photo;
    srcImageUrl_ = url;
    isLocalResource_ = isLocal;
    isReadyForDisplay_ = isLocal;
    if (isLocal)
        srcImage_ = platform::Image::imageWithContentsOfFile(url->path());
    else
        loadRemoteImage();
}

void ZNTDisplayViewController::loadRemoteImage() {
    const auto url = srcImageUrl_; // the hook may ask for another
    downloadImageStarted();
    imageDownloadTask_ = ZNTUtilities::downloadImageWithUrl(
        url, [weak = weak(this)](const platform::ImagePtr& image,
                                 const std::optional<platform::Error>& error) {
            const auto self = weak.lock();
            if (!self)
                return;
            if (error)
                return self->downloadImageFailedWithError(*error);
            self->srcImage_ = image;
            self->isReadyForDisplay_ = image != nullptr;
            self->isLocalResource_ = image != nullptr;
            self->prepareDisplayView();
            self->downloadImageFinished();
        });
}

void ZNTDisplayViewController::prepareDisplayView() {
    if (!isReadyForDisplay_ || !srcImage_ || !displayView_)
        return;
    if (hotSpotPickingPoint_)
        hotSpotPickingPoint_->markSBSModeActive(currentMode_ == DisplayMode::SideBySide);
    displayView_->displayImage(srcImage_, hotSpotPickingPoint_, hotSpots_);
    if (virtualDisplayView_ && currentMode_ == DisplayMode::SideBySide)
        virtualDisplayView_->displayImage(srcImage_, hotSpotPickingPoint_, hotSpots_);
}

void ZNTDisplayViewController::addHotSpots(
    const std::vector<std::shared_ptr<ZNTHotSpot>>& hotSpots,
    const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint) {
    hotSpots_ = hotSpots;
    hotSpotPickingPoint_ = pickingPoint;
}

void ZNTDisplayViewController::setEnableHotSpotAutoPicking(bool enable) {
    enableHotSpotAutoPicking_ = enable;
    if (displayView_)
        displayView_->setEnableAutoPicking(enable);
}

void ZNTDisplayViewController::prepareHotSpotGestures() {
    for (const auto& view : {displayView_, virtualDisplayView_}) {
        view->addGestureRecognizer(platform::make<platform::TapGestureRecognizer>(
            [weak = weak(this)](platform::TapGestureRecognizer& recognizer) {
                if (const auto self = weak.lock())
                    self->displayViewDidDetectHotSpotTapGesture(recognizer);
            }));
    }
}

void ZNTDisplayViewController::displayViewDidDetectHotSpotTapGesture(
    const platform::TapGestureRecognizer& recognizer) {
    // In the main view's points also for a tap on the other one.
    const platform::Point point = recognizer.locationInView(*displayView_);
    const auto whole = [](double value) { return static_cast<int>(std::max(value, 0.0)); };
    displayView_->objectPickTestForPixelAt(whole(point.x), whole(point.y));
}

void ZNTDisplayViewController::didDetectObjectPickingEvent(
    const platform::Notification& notification) {
    platform::MainQueue::main().async([weak = weak(this), notification] {
        const auto self = weak.lock();
        if (!self)
            return;
        self->detectPickedHotSpotObjectWithName(
            notification.value<std::string>(ZNTHotSpotDrawerHotSpotNameKey),
            notification.value<std::int64_t>(ZNTHotSpotDrawerHotSpotIndexKey),
            notification.value<bool>(ZNTHotSpotDrawerTapKey));
    });
}

void ZNTDisplayViewController::setDisplayMode(DisplayMode mode) {
    if (mode == currentMode_)
        return;
    currentMode_ = mode;
    if (hotSpotPickingPoint_)
        hotSpotPickingPoint_->markSBSModeActive(mode == DisplayMode::SideBySide);
    if (!displayView_)
        return;
    // The view may still look at an earlier point.
    if (const auto point = displayView_->shownPickingPoint())
        point->markSBSModeActive(mode == DisplayMode::SideBySide);
    if (mode == DisplayMode::SideBySide)
        showSecondView();
    else
        virtualDisplayView_->setHidden(true);
    updateConsraints();
    displayView_->display();
    displayView_->startRenderVO(mode);
}

void ZNTDisplayViewController::showSecondView() {
    virtualDisplayView_->setHidden(false);
    prepareDisplayView();
    virtualDisplayView_->startRenderVO(currentMode_);
    virtualDisplayView_->display();
}

void ZNTDisplayViewController::setSphericalOffset(float radians) {
    sphericalOffset_ = radians;
    if (!displayView_)
        return;
    displayView_->setInitialRotationOffset(radians);
    virtualDisplayView_->setInitialRotationOffset(radians);
}

void ZNTDisplayViewController::turnOnDeviceMotionInterraction(bool on) {
    if (displayView_)
        displayView_->turnOnDeviceMotionInterraction(on);
}

void ZNTDisplayViewController::turnOnTouchMotionInterraction(bool on) {
    if (displayView_)
        displayView_->turnOnTouchMotionInterraction(on);
}

void ZNTDisplayViewController::turnOnScaleInterraction(bool on) {
    if (displayView_)
        displayView_->turnOnScaleInterraction(on);
}

void ZNTDisplayViewController::setLockVerticalRotation(bool lock) {
    if (displayView_)
        displayView_->setLockVerticalRotation(lock);
}

bool ZNTDisplayViewController::lockVerticalRotation() const {
    return displayView_ && displayView_->lockVerticalRotation();
}

bool ZNTDisplayViewController::deviceMotionAvailable() const {
    return displayView_ && displayView_->deviceMotionAvailable();
}

bool ZNTDisplayViewController::deviceMotionIsOn() const {
    return displayView_ && displayView_->deviceMotionIsOn();
}

bool ZNTDisplayViewController::touchMotionIsOn() const {
    return displayView_ && displayView_->touchMotionIsOn();
}

bool ZNTDisplayViewController::scaleIsOn() const {
    return displayView_ && displayView_->scaleIsOn();
}

void ZNTDisplayViewController::setEnableTransparentBackground(bool enable) {
    enableTransparentBackground_ = enable;
    if (!isViewLoaded())
        return;
    const platform::Color color = enable ? platform::kClearColor : platform::kBlackColor;
    view()->setBackgroundColor(color);
    displayView_->setBackgroundColor(color);
    virtualDisplayView_->setBackgroundColor(color);
    displayView_->setMakeTransparent(enable);
    virtualDisplayView_->setMakeTransparent(enable);
}

void ZNTDisplayViewController::createDisplayView() {
    displayView_ = platform::make<ZNTDisplayView>(view()->frame());
    view()->insertSubview(displayView_, 0);
    displayView_->setTranslatesAutoresizingMaskIntoConstraints(false);
    const ViewsByName views{{"hvView", displayView_}};
    append(singleModeConstraints_, "V:|[hvView]|", kAlignTopAndBottom, views);
    append(singleModeConstraints_, "H:|[hvView]|", kAlignLeadingAndTrailing, views);
    updateConsraints();
}

void ZNTDisplayViewController::createVirtualDisplayView() {
    virtualDisplayView_ = platform::make<ZNTDisplayView>(view()->frame());
    virtualDisplayView_->setTranslatesAutoresizingMaskIntoConstraints(false);
    view()->insertSubview(virtualDisplayView_, 0);
    virtualDisplayView_->setHidden(true);
    const ViewsByName views{
        {"hvView", displayView_}, {"virtualHvView", virtualDisplayView_}, {"superview", view()}};
    append(virtualModeConstraints_, "V:|[hvView]|", kAlignTopAndBottom, views);
    append(virtualModeConstraints_, "V:|[virtualHvView]|", kAlignTopAndBottom, views);
    append(virtualModeConstraints_, "|[hvView(==virtualHvView)]-2-[virtualHvView]|", kAlignCenterY,
           views);
    updateConsraints();
}

void ZNTDisplayViewController::updateConsraints() {
    const bool isDouble = currentMode_ == DisplayMode::SideBySide;
    const Constraints& on = isDouble ? virtualModeConstraints_ : singleModeConstraints_;
    const Constraints& off = isDouble ? singleModeConstraints_ : virtualModeConstraints_;
    view()->layoutIfNeeded();
    platform::View::animateWithDuration(kLayoutTime, [&] {
        platform::LayoutConstraint::deactivateConstraints(off);
        platform::LayoutConstraint::activateConstraints(on);
        view()->layoutIfNeeded();
    });
}

void ZNTDisplayViewController::viewDidLoad() {
    ViewController::viewDidLoad();
    createDisplayView();
    createVirtualDisplayView();
}

void ZNTDisplayViewController::viewWillAppear(bool animated) {
    ViewController::viewWillAppear(animated);
    prepareDisplayView();
    if (enableHotSpotTapDetection_)
        prepareHotSpotGestures();
}

void ZNTDisplayViewController::viewDidAppear(bool animated) {
    ViewController::viewDidAppear(animated);
    if (!hasData())
        Dlog("Error in class \"%s\". No data to display. Use prepare method for setup.",
             className().c_str());
}

void ZNTDisplayViewController::viewWillTransitionToSize(
    platform::Size size, const platform::TransitionCoordinator& transition) {
    ViewController::viewWillTransitionToSize(size, transition);
    if (displayView_)
        displayView_->willTransitionToSize(size);
}
