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

/// The player: give it a panorama, put it on screen with a host, and override the hooks.
///
/// ```cpp
/// auto player = platform::make<ZNTDisplayViewController>();
/// player->prepareImageWithUrl(platform::URL::fileURLWithPath("panorama.jpg"));
/// host->setRootViewController(player);
/// host->appear();
/// ```
///
/// Content is given once: a picture that is being shown cannot be replaced but by a video, a new
/// controller shows another. Misuse is logged and changes nothing.
///
/// Owner:  the host application, as a `std::shared_ptr`; release it before its host goes.
/// Thread: main, hooks included.
class ZANTO_EXPORT ZNTDisplayViewController : public platform::ViewController,
                                              public StreamerDelegate {
public:
    ZNTDisplayViewController() = default;
    explicit ZNTDisplayViewController(const platform::Coder& coder);
    ZNTDisplayViewController(const std::string& nibName,
                             const std::shared_ptr<platform::Bundle>& bundle);
    ~ZNTDisplayViewController() override;
    void init() override;

    /// Shows a picture that the caller has, from the next appearance on.
    ///
    /// Errors: a log line for null and while content is displayed.
    void prepareImage(const platform::ImagePtr& image);
    /// Shows a picture from an address; a file's is read and decoded in the call, another is
    /// downloaded.
    ///
    /// Errors: a log line for no address, while content is displayed, and for a file that cannot be
    ///         read or decoded (`srcImage()` stays null then); `downloadImageFailedWithError` for
    ///         a download that fails.
    void prepareImageWithUrl(const std::optional<platform::URL>& url);
    void prepareImageWithUrl(const std::optional<platform::URL>& url, bool isLocal);
    /// Plays a video from a file or an address, in place of whatever is shown, as soon as it is
    /// ready.
    ///
    /// Errors: a log line for no address; `downloadVideoFailedWithError` for what cannot be played.
    void prepareVideoWithUrl(const std::optional<platform::URL>& url);
    void prepareVideoWithUrl(const std::optional<platform::URL>& url, bool isLocal);
    /// Loads the content again from its address: the video, or a picture that has not arrived.
    void reloadContent();
    /// Hands a picture that is ready to the view. Appearing does it.
    void prepareDisplayView();

    /// Playback; without a video nothing happens, and the numbers are 0.
    void play();
    void pause();
    /// In seconds, to the very picture. What plays goes on playing.
    void seekToTime(double seconds);
    /// 0 to 1. It answers what was set last, and 0 before; videos start at 0.6.
    void setPlayerVolume(double volume);
    [[nodiscard]] double playerVolume() const;
    /// In seconds; NaN until it is known, and for a live stream.
    [[nodiscard]] double videoDuration() const;

    /// Switches the display mode, at any moment; the layout follows within 0.3 s. Gestures that are
    /// running are cancelled. Before the view has loaded the mode is only noted: set it afterwards.
    void setDisplayMode(DisplayMode mode);
    /// Turns the scene by so many radians about its vertical, in all views.
    ///
    /// Errors: a log line for radians that are not finite; nothing changes then.
    void setSphericalOffset(float radians);
    [[nodiscard]] float sphericalOffset() const { return sphericalOffset_; }

    /// Places hot spots over the content, in place of earlier ones, and says where automatic
    /// picking looks (null: nowhere). A still picture shows them when the view appears next or side
    /// by side is entered.
    void addHotSpots(const std::vector<std::shared_ptr<ZNTHotSpot>>& hotSpots,
                     const std::shared_ptr<ZNTHotSpotPickingPoint>& pickingPoint);
    [[nodiscard]] const std::vector<std::shared_ptr<ZNTHotSpot>>& hotSpots() const {
        return hotSpots_;
    }
    [[nodiscard]] std::shared_ptr<ZNTHotSpotPickingPoint> hotSpotPickingPoint() const {
        return hotSpotPickingPoint_;
    }
    /// Reports what is under the picking point once it has been looked at for a while; from the
    /// next time on that hot spots are shown. A view that has disappeared reports nothing. Until
    /// the view has loaded it is stored and reaches nobody: set it afterwards.
    void setEnableHotSpotAutoPicking(bool enable);
    [[nodiscard]] bool enableHotSpotAutoPicking() const { return enableHotSpotAutoPicking_; }
    /// Reports what is tapped; from the next appearance on.
    void setEnableHotSpotTapDetection(bool enable) { enableHotSpotTapDetection_ = enable; }
    [[nodiscard]] bool enableHotSpotTapDetection() const { return enableHotSpotTapDetection_; }

    /// How people may look around, in the main view; until that has loaded nothing happens and
    /// nothing is on. Device motion steers the sphere only, from when a sensor arrives until it
    /// goes away; side by side it is on while there is one, and touches are off, whatever is set
    /// here.
    void turnOnDeviceMotionInterraction(bool on);
    void turnOnTouchMotionInterraction(bool on);
    void turnOnScaleInterraction(bool on);
    void setLockVerticalRotation(bool lock);
    [[nodiscard]] bool lockVerticalRotation() const;
    [[nodiscard]] bool deviceMotionAvailable() const;
    [[nodiscard]] bool deviceMotionIsOn() const;
    [[nodiscard]] bool touchMotionIsOn() const;
    [[nodiscard]] bool scaleIsOn() const;
    /// Lets what lies behind shine through where no content is drawn. Stored, but given to the view
    /// only once that has loaded: set it afterwards.
    void setEnableTransparentBackground(bool enable);
    [[nodiscard]] bool enableTransparentBackground() const { return enableTransparentBackground_; }

    [[nodiscard]] std::shared_ptr<ZNTDisplayView> displayView() const { return displayView_; }
    /// The right half of side by side; hidden in the other modes.
    [[nodiscard]] std::shared_ptr<ZNTDisplayView> virtualDisplayView() const {
        return virtualDisplayView_;
    }
    /// How the views lie, in one half and in two; empty until the view has loaded.
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
    /// The download of a picture while one is under way; of several the one begun last.
    [[nodiscard]] std::shared_ptr<platform::DataTask> imageDownloadTask() const {
        return imageDownloadTask_.lock();
    }
    [[nodiscard]] bool isLocalResource() const { return isLocalResource_; }
    [[nodiscard]] bool isReadyForDisplay() const { return isReadyForDisplay_; }
    [[nodiscard]] ContentType contentType() const { return contentType_; }
    [[nodiscard]] ContentType displayingContentType() const { return contentType_; }
    [[nodiscard]] DisplayMode currentMode() const { return currentMode_; }
    [[nodiscard]] DisplayMode currentVO() const { return currentMode_; }

    /// Hooks, empty here; an override need not call them, and may release the controller. A
    /// download starts inside the call that asks for it, and later either fails or finishes;
    /// without a picture when what came is none.
    virtual void downloadImageStarted() {}
    virtual void downloadImageFinished() {}
    virtual void downloadImageFailedWithError(const platform::Error& /*error*/) {}
    /// The address cannot be played, or not on to its end; local files come here too.
    virtual void downloadVideoFailedWithError(const platform::Error& /*error*/) {}
    virtual void videoPaused() {}
    virtual void videoStartedPlaying() {}
    virtual void videoDidEndPlaying() {}
    /// Loading or buffering begins, and ends.
    virtual void videoIsLoading() {}
    virtual void videoDidEndLoading() {}
    /// Up to 60 times a second while it plays.
    virtual void videoPlayedToTime(double /*seconds*/) {}
    /// A hot spot was tapped or looked at, in this controller or in any other of the process.
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
    platform::PixelBufferPtr frameBuffer_; // the last one, for views that change while paused
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
