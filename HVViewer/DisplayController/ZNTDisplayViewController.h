#pragma once

#include "HVViewer/Model/ContentType.h"
#include "HVViewer/Model/DisplayMode.h"
#include "HVViewer/Model/Streamer/StreamerDelegate.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Imaging/Image.h"
#include "Platform/Interface/ViewController.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

class ZNTDisplayView;
class ZNTHotSpot;
class ZNTHotSpotPickingPoint;
class ZNTStreamer;

namespace platform {
class DataTask;
class LayoutConstraint;
class TapGestureRecognizer;
struct Notification;
} // namespace platform

/// The player. An application gives it a panorama, puts it on the screen with a host, and overrides
/// its hooks.
///
/// ```cpp
/// auto player = platform::make<ZNTDisplayViewController>();
/// player->prepareImageWithUrl(platform::URL::fileURLWithPath("panorama.jpg"));
/// host->setRootViewController(player);
/// host->appear();
/// ```
///
/// A controller shows one image: only a video can replace an image that is being shown. Make a new
/// controller to show another image. Misuse is logged and changes nothing.
///
/// Owner:  the host application, as a `std::shared_ptr`. Release it before its host.
/// Thread: main.
class ZANTO_EXPORT ZNTDisplayViewController : public platform::ViewController,
                                              public StreamerDelegate {
public:
    ZNTDisplayViewController() = default;
    explicit ZNTDisplayViewController(const platform::Coder& coder);
    ZNTDisplayViewController(const std::string& nibName,
                             const std::shared_ptr<platform::Bundle>& bundle);
    ~ZNTDisplayViewController() override;
    void init() override;

    /// Shows an image that the caller already has, the next time that the view appears.
    ///
    /// Errors: logs an error if the image is null or if content is being displayed.
    void prepareImage(const platform::ImagePtr& image);
    /// Shows the image at a URL. A file is read and decoded inside the call; anything else is
    /// downloaded. `isLocal` says which; without it, file URLs are local.
    ///
    /// Errors: logs an error if there is no URL, if content is being displayed, or if a file cannot
    ///         be read or decoded (`srcImage()` is null then). A download that fails is reported by
    ///         `downloadImageFailedWithError`.
    void prepareImageWithUrl(const std::optional<platform::URL>& url);
    void prepareImageWithUrl(const std::optional<platform::URL>& url, bool isLocal);
    /// Plays the video at a URL, local or remote, as soon as it is ready. It replaces whatever is
    /// shown.
    ///
    /// Errors: logs an error if there is no URL. A video that cannot be played is reported by
    ///         `downloadVideoFailedWithError`.
    void prepareVideoWithUrl(const std::optional<platform::URL>& url);
    void prepareVideoWithUrl(const std::optional<platform::URL>& url, bool isLocal);
    /// Loads the content from its URL again: the video, or an image that has not arrived.
    void reloadContent();
    /// Passes an image that is ready to the view. This happens whenever the view appears.
    void prepareDisplayView();

    /// Playback control. Without a video these functions are no-ops, and numbers are 0.
    void play();
    void pause();
    /// Seeks to the exact frame, in seconds. A video that is playing goes on playing.
    void seekToTime(double seconds);
    /// Volume from 0 to 1; values outside are clamped. The getter returns the value that was set
    /// last, and 0 before that, although a video starts at 0.6.
    void setPlayerVolume(double volume);
    [[nodiscard]] double playerVolume() const;
    /// In seconds. NaN for a live stream and while the duration is unknown.
    [[nodiscard]] double videoDuration() const;

    /// Switches the display mode. The layout is animated for 0.3 s, and gestures in progress are
    /// cancelled. Before the view has loaded the mode is only stored and does not take effect: call
    /// this after that.
    void setDisplayMode(DisplayMode mode);
    /// Rotates the scene about its vertical axis, in all views. Call this after the view has
    /// loaded: before that the offset is only stored.
    ///
    /// Errors: logs an error and changes nothing if `radians` is not finite.
    void setSphericalOffset(float radians);
    [[nodiscard]] float sphericalOffset() const { return sphericalOffset_; }

    /// Replaces the hot spots that are drawn over the content. `pickingPoint` is where automatic
    /// picking looks; null disables it. Over a still image the hot spots appear when the view
    /// appears next or when the mode changes to side by side.
    void addHotSpots(const std::vector<std::shared_ptr<ZNTHotSpot>>& hotSpots,
                     const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint);
    [[nodiscard]] const std::vector<std::shared_ptr<ZNTHotSpot>>& hotSpots() const {
        return hotSpots_;
    }
    [[nodiscard]] std::shared_ptr<ZNTHotSpotPickingPoint> hotSpotPickingPoint() const {
        return hotSpotPickingPoint_;
    }
    /// Enables automatic picking: the hot spot that stays under the picking point for a while is
    /// reported. This takes effect when hot spots are shown next. Nothing is reported while the
    /// view is not on the screen. Call this after the view has loaded: before that the value is
    /// only stored and does not take effect.
    void setEnableHotSpotAutoPicking(bool enable);
    [[nodiscard]] bool enableHotSpotAutoPicking() const { return enableHotSpotAutoPicking_; }
    /// Reports hot spots that the user taps. This takes effect the next time that the view appears.
    void setEnableHotSpotTapDetection(bool enable) { enableHotSpotTapDetection_ = enable; }
    [[nodiscard]] bool enableHotSpotTapDetection() const { return enableHotSpotTapDetection_; }

    /// Switches for how the user can look around in the main view. Until the view has loaded the
    /// setters are no-ops and the getters return false. Device motion can be switched in the sphere
    /// mode only, and it is active only while a sensor is present. In side by side, device motion
    /// is always on while a sensor is present, and touches are always off.
    void turnOnDeviceMotionInterraction(bool on);
    void turnOnTouchMotionInterraction(bool on);
    void turnOnScaleInterraction(bool on);
    void setLockVerticalRotation(bool lock);
    [[nodiscard]] bool lockVerticalRotation() const;
    [[nodiscard]] bool deviceMotionAvailable() const;
    [[nodiscard]] bool deviceMotionIsOn() const;
    [[nodiscard]] bool touchMotionIsOn() const;
    [[nodiscard]] bool scaleIsOn() const;
    /// Shows what is behind the view where no content is drawn. Call this after the view has
    /// loaded: before that the value is only stored and does not take effect.
    void setEnableTransparentBackground(bool enable);
    [[nodiscard]] bool enableTransparentBackground() const { return enableTransparentBackground_; }

    [[nodiscard]] std::shared_ptr<ZNTDisplayView> displayView() const { return displayView_; }
    /// The right half in side by side. It is hidden in the other modes.
    [[nodiscard]] std::shared_ptr<ZNTDisplayView> virtualDisplayView() const {
        return virtualDisplayView_;
    }
    /// The layout constraints for one view and for two halves; empty until the view has loaded.
    using Constraints = std::vector<std::shared_ptr<platform::LayoutConstraint>>;
    [[nodiscard]] const Constraints& singleModeConstraints() const {
        return singleModeConstraints_;
    }
    [[nodiscard]] const Constraints& virtualModeConstraints() const {
        return virtualModeConstraints_;
    }
    [[nodiscard]] platform::ImagePtr srcImage() const { return srcImage_; }
    [[nodiscard]] const std::optional<platform::URL>& srcImageUrl() const { return srcImageUrl_; }
    [[nodiscard]] const std::optional<platform::URL>& srcVideoUrl() const { return srcVideoUrl_; }
    /// Null before the first video.
    [[nodiscard]] std::shared_ptr<ZNTStreamer> streamer() const { return streamer_; }
    /// The image download that started last, or null when none is in progress.
    [[nodiscard]] std::shared_ptr<platform::DataTask> imageDownloadTask() const {
        return imageDownloadTask_.lock();
    }
    [[nodiscard]] bool isLocalResource() const { return isLocalResource_; }
    [[nodiscard]] bool isReadyForDisplay() const { return isReadyForDisplay_; }
    [[nodiscard]] ContentType contentType() const { return contentType_; }
    [[nodiscard]] ContentType displayingContentType() const { return contentType_; }
    [[nodiscard]] DisplayMode currentMode() const { return currentMode_; }
    [[nodiscard]] DisplayMode currentVO() const { return currentMode_; }

    /// Hooks. The defaults do nothing, an override need not call them, and an override may release
    /// the controller. A download starts inside the call that requests it and later either fails or
    /// finishes. When it finishes with data that is not an image, there is no image.
    virtual void downloadImageStarted() {}
    virtual void downloadImageFinished() {}
    virtual void downloadImageFailedWithError(const platform::Error& /*error*/) {}
    /// The video cannot be played, or playback stopped before its end. Local files are reported
    /// here, too.
    virtual void downloadVideoFailedWithError(const platform::Error& /*error*/) {}
    virtual void videoPaused() {}
    virtual void videoStartedPlaying() {}
    virtual void videoDidEndPlaying() {}
    /// Loading or buffering begins, and ends.
    virtual void videoIsLoading() {}
    virtual void videoDidEndLoading() {}
    /// Called up to 60 times a second during playback.
    virtual void videoPlayedToTime(double /*seconds*/) {}
    /// A hot spot was tapped, or automatic picking found it, in this controller or in another one
    /// of the same host.
    virtual void detectPickedHotSpotObjectWithName(const std::string& /*name*/,
                                                   std::int64_t /*forIndex*/,
                                                   bool /*detectedByTap*/) {}

    void viewDidLoad() override;
    void viewWillAppear(bool animated) override;
    void viewDidAppear(bool animated) override;
    void viewDidDisappear(bool animated) override;
    void viewWillTransitionToSize(platform::Size size,
                                  const platform::TransitionCoordinator& transition) override;

private:
    void hasNewFrame(ZNTStreamer& streamer, const platform::PixelBufferPtr& buffer) override;
    void streamerWillStartLoadingItem(ZNTStreamer& streamer) override;
    void streamerDidFinishLoadingItem(ZNTStreamer& streamer) override;
    void didFailToLoadItemWithError(ZNTStreamer& streamer, const platform::Error& error) override;
    void streamerDidPaused(ZNTStreamer& streamer) override;
    void streamerDidStartPlaying(ZNTStreamer& streamer) override;
    void streamerDidFinishStreamingItem(ZNTStreamer& streamer) override;
    void didPlayedToTime(ZNTStreamer& streamer, double seconds) override;

    void setupDefaults();
    void showAgain();
    void createDisplayView();
    void createVirtualDisplayView();
    void updateConsraints();
    void showSecondView();
    void loadRemoteImage();
    void activateAudioSession();
    void setupStreamer();
    void showFrame(const platform::PixelBufferPtr& buffer);
    void showKeptFrame();
    void prepareHotSpotGestures();
    void displayViewDidDetectHotSpotTapGesture(const platform::TapGestureRecognizer& recognizer);
    void didDetectObjectPickingEvent(const platform::Notification& notification);
    [[nodiscard]] bool hasData() const;
    [[nodiscard]] bool isLocked() const;

    std::shared_ptr<ZNTDisplayView> displayView_;
    std::shared_ptr<ZNTDisplayView> virtualDisplayView_;
    platform::ImagePtr srcImage_;
    std::optional<platform::URL> srcImageUrl_;
    std::optional<platform::URL> srcVideoUrl_;
    std::shared_ptr<ZNTStreamer> streamer_;
    platform::PixelBufferPtr frameBuffer_; // the last frame, to redraw views of a paused video
    std::weak_ptr<platform::DataTask> imageDownloadTask_;
    bool isLocalResource_ = false;
    ContentType contentType_ = ContentType::Undefined;
    bool isReadyForDisplay_ = false;
    DisplayMode currentMode_ = DisplayMode::Sphere;
    bool enableTransparentBackground_ = false;
    float sphericalOffset_ = 0;
    std::vector<std::shared_ptr<ZNTHotSpot>> hotSpots_;
    std::shared_ptr<ZNTHotSpotPickingPoint> hotSpotPickingPoint_;
    bool enableHotSpotTapDetection_ = false;
    bool enableHotSpotAutoPicking_ = false;
    Constraints singleModeConstraints_;
    Constraints virtualModeConstraints_;
};
