#include "HVViewer/DisplayController/ZNTDisplayViewController.h"

#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotDrawer/ZNTHotSpotNotifications.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "HVViewer/Utilities/ZNTMath.h"
#include "HVViewer/Utilities/ZNTUtilities.h"
#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Media/AudioSession.h"

ZNTDisplayViewController::ZNTDisplayViewController(const platform::Coder& coder)
    : ViewController(coder) {}

ZNTDisplayViewController::ZNTDisplayViewController(const std::string& nibName,
                                                   const std::shared_ptr<platform::Bundle>& bundle)
    : ViewController(nibName, bundle) {}

ZNTDisplayViewController::~ZNTDisplayViewController() {
    if (const auto task = imageDownloadTask())
        task->cancel();
    if (streamer_)
        streamer_->cleanUp();
    platform::AudioSession::sharedInstance().setActive(false);
    platform::NotificationCenter::defaultCenter().removeObserver(this);
}

void ZNTDisplayViewController::init() {
    ViewController::init();
    setupDefaults();
}

void ZNTDisplayViewController::setupDefaults() {
    contentType_ = ContentType::Undefined;
    isReadyForDisplay_ = false;
    currentMode_ = DisplayMode::Sphere;
    enableHotSpotTapDetection_ = false;
    platform::NotificationCenter::defaultCenter().addObserver(
        shared(this), platform::kGLContextWasReplaced, [this](const auto&) { showAgain(); });
    platform::NotificationCenter::defaultCenter().addObserver(
        shared(this), ZNTHotSpotDrawerDetectHotSpotSelection,
        [this](const platform::Notification& notification) {
            didDetectObjectPickingEvent(notification);
        });
}

void ZNTDisplayViewController::showAgain() {
    if (!displayView_ || !displayView_->glDrawer())
        return;
    prepareDisplayView();
    showKeptFrame();
}

bool ZNTDisplayViewController::hasData() const {
    return srcImage_ || srcImageUrl_ || srcVideoUrl_;
}

bool ZNTDisplayViewController::isLocked() const {
    return hasData() && isReadyForDisplay_;
}

void ZNTDisplayViewController::prepareImage(const platform::ImagePtr& image) {
    const platform::Environment::Scope scope(*environment());
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
    const platform::Environment::Scope scope(*environment());
    prepareImageWithUrl(url, url && url->isFileURL());
}

void ZNTDisplayViewController::prepareImageWithUrl(const std::optional<platform::URL>& url,
                                                   bool isLocal) {
    const platform::Environment::Scope scope(*environment());
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
    const auto alive = shared(this); // the hook may release the last reference
    const auto url = srcImageUrl_;   // and may request another image
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
            // If a video was prepared meanwhile, it is shown regardless of the image.
            self->isReadyForDisplay_ = image || self->contentType_ == ContentType::Video;
            self->isLocalResource_ = image != nullptr;
            self->prepareDisplayView();
            self->downloadImageFinished();
        });
}

void ZNTDisplayViewController::reloadContent() {
    const platform::Environment::Scope scope(*environment());
    // An image that failed before the video is not what is shown.
    if (contentType_ == ContentType::Video)
        prepareVideoWithUrl(srcVideoUrl_);
    else if (srcImageUrl_ && !srcImage_)
        prepareImageWithUrl(srcImageUrl_);
}

void ZNTDisplayViewController::prepareDisplayView() {
    const platform::Environment::Scope scope(*environment());
    // A video replaces the image only with its first frame.
    const bool showsVideo = frameBuffer_ != nullptr;
    if (!isReadyForDisplay_ || !srcImage_ || !displayView_ || showsVideo)
        return;
    if (hotSpotPickingPoint_)
        hotSpotPickingPoint_->markSBSModeActive(currentMode_ == DisplayMode::SideBySide);
    displayView_->displayImage(srcImage_, hotSpotPickingPoint_, hotSpots_);
    if (virtualDisplayView_ && currentMode_ == DisplayMode::SideBySide)
        virtualDisplayView_->displayImage(srcImage_, hotSpotPickingPoint_, hotSpots_);
}

void ZNTDisplayViewController::viewDidLoad() {
    ViewController::viewDidLoad();
    createDisplayView();
    createVirtualDisplayView();
}

void ZNTDisplayViewController::viewWillAppear(bool animated) {
    ViewController::viewWillAppear(animated);
    if (displayView_)
        displayView_->setAutoPickingSuspended(false);
    prepareDisplayView();
    showKeptFrame();
    if (enableHotSpotTapDetection_)
        prepareHotSpotGestures();
}

void ZNTDisplayViewController::viewDidAppear(bool animated) {
    ViewController::viewDidAppear(animated);
    if (!hasData())
        Dlog("Error in class \"%s\". No data to display. Use prepare method for setup.",
             className().c_str());
}

void ZNTDisplayViewController::viewDidDisappear(bool animated) {
    ViewController::viewDidDisappear(animated);
    if (displayView_)
        displayView_->setAutoPickingSuspended(true);
}

void ZNTDisplayViewController::viewWillTransitionToSize(
    platform::Size size, const platform::TransitionCoordinator& transition) {
    ViewController::viewWillTransitionToSize(size, transition);
    if (displayView_)
        displayView_->willTransitionToSize(size);
}
