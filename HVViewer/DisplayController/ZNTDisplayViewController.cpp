#include "HVViewer/DisplayController/ZNTDisplayViewController.h"

#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/Utilities/ZNTMath.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Graphics/GLDevice.h"
#include "Platform/Interface/LayoutConstraint.h"

namespace {

// How views line up across a row's axis.
constexpr unsigned kAlignTopAndBottom = 24;
constexpr unsigned kAlignLeadingAndTrailing = 96;

} // namespace

ZNTDisplayViewController::ZNTDisplayViewController(const platform::Coder& coder)
    : ViewController(coder) {}

ZNTDisplayViewController::ZNTDisplayViewController(const std::string& nibName,
                                                   const std::shared_ptr<platform::Bundle>& bundle)
    : ViewController(nibName, bundle) {}

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
    downloadImageStarted();
    // Completions never run inside the call that started them, not even a refusal.
    platform::MainQueue::main().async(
        [weak = weak(this), work = platform::MainQueue::main().beginWork()] {
            if (const auto self = weak.lock())
                self->downloadImageFailedWithError({platform::ErrorCode::Unavailable,
                                                    "this build reads pictures from files only"});
        });
}

void ZNTDisplayViewController::prepareDisplayView() {
    if (!isReadyForDisplay_ || !srcImage_ || !displayView_)
        return;
    displayView_->displayImage(srcImage_);
}

void ZNTDisplayViewController::setDisplayMode(DisplayMode mode) {
    if (mode == currentMode_)
        return;
    currentMode_ = mode;
    if (!displayView_)
        return;
    updateConsraints();
    displayView_->display();
    displayView_->startRenderVO(mode);
}

void ZNTDisplayViewController::setEnableTransparentBackground(bool enable) {
    enableTransparentBackground_ = enable;
    if (!isViewLoaded())
        return;
    const platform::Color color = enable ? platform::kClearColor : platform::kBlackColor;
    view()->setBackgroundColor(color);
    displayView_->setBackgroundColor(color);
    displayView_->setMakeTransparent(enable);
}

void ZNTDisplayViewController::createDisplayView() {
    displayView_ = platform::make<ZNTDisplayView>(view()->frame());
    view()->insertSubview(displayView_, 0);
    displayView_->setTranslatesAutoresizingMaskIntoConstraints(false);
    const std::map<std::string, std::shared_ptr<platform::View>> views{{"hvView", displayView_}};
    singleModeConstraints_ = platform::LayoutConstraint::constraintsWithVisualFormat(
        "V:|[hvView]|", kAlignTopAndBottom, views);
    const auto across = platform::LayoutConstraint::constraintsWithVisualFormat(
        "H:|[hvView]|", kAlignLeadingAndTrailing, views);
    singleModeConstraints_.insert(singleModeConstraints_.end(), across.begin(), across.end());
    updateConsraints();
}

void ZNTDisplayViewController::updateConsraints() {
    platform::LayoutConstraint::activateConstraints(singleModeConstraints_);
    view()->layoutIfNeeded();
}

void ZNTDisplayViewController::viewDidLoad() {
    ViewController::viewDidLoad();
    createDisplayView();
}

void ZNTDisplayViewController::viewWillAppear(bool animated) {
    ViewController::viewWillAppear(animated);
    prepareDisplayView();
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
