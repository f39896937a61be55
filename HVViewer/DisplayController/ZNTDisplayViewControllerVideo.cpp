// The controller's video playback: the streamer, its controls, and the path of its frames and
// events to the views and the hooks.

#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/DisplayController/ZNTDisplayViewController.h"
#include "HVViewer/Model/HotSpot/ZNTHotSpotPickingPoint.h"
#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "HVViewer/Utilities/ZNTMath.h"
#include "Platform/Foundation/Environment.h"
#include "Platform/Media/AudioSession.h"

void ZNTDisplayViewController::prepareVideoWithUrl(const std::optional<platform::URL>& url) {
    const platform::Environment::Scope scope(*environment());
    if (streamer_)
        streamer_->cleanUp();
    prepareVideoWithUrl(url, url && url->isFileURL());
}

void ZNTDisplayViewController::prepareVideoWithUrl(const std::optional<platform::URL>& url,
                                                   bool isLocal) {
    const platform::Environment::Scope scope(*environment());
    if (!url)
        return Dlog("Error in class \"%s\" for selector \"%s\". Url can not be nil",
                    className().c_str(), "prepareVideoWithUrl:");
    const auto alive = shared(this); // `videoPaused` may release the last reference
    contentType_ = ContentType::Video;
    srcVideoUrl_ = url;
    isLocalResource_ = isLocal;
    isReadyForDisplay_ = true;
    activateAudioSession();
    setupStreamer();
}

void ZNTDisplayViewController::activateAudioSession() {
    auto& session = platform::AudioSession::sharedInstance();
    const auto report = [](const std::optional<platform::Error>& error) {
        if (error)
            Dlog("error %s", error->detail.c_str());
    };
    report(session.setCategory(platform::kAudioSessionCategoryPlayback));
    report(
        session.setActive(true, platform::AudioSession::ActiveOptions::NotifyOthersOnDeactivation));
}

void ZNTDisplayViewController::setupStreamer() {
    if (streamer_) {
        streamer_->pause();
        streamer_->cleanUp();
    }
    streamer_ = ZNTStreamer::streamerWithUrl(srcVideoUrl_);
    streamer_->setDelegate(weak(static_cast<StreamerDelegate*>(this)));
    streamer_->setAutomaticallyPlayWhenReady(true);
}

// Playback

void ZNTDisplayViewController::play() {
    const platform::Environment::Scope scope(*environment());
    if (streamer_)
        streamer_->play();
}

void ZNTDisplayViewController::pause() {
    const platform::Environment::Scope scope(*environment());
    if (streamer_)
        streamer_->pause();
}

void ZNTDisplayViewController::seekToTime(double seconds) {
    const platform::Environment::Scope scope(*environment());
    if (streamer_)
        streamer_->seekToTime(seconds);
}

void ZNTDisplayViewController::setPlayerVolume(double volume) {
    const platform::Environment::Scope scope(*environment());
    if (streamer_)
        streamer_->setVolume(volume);
}

double ZNTDisplayViewController::playerVolume() const {
    return streamer_ ? streamer_->volume() : 0;
}

double ZNTDisplayViewController::videoDuration() const {
    return streamer_ ? streamer_->itemDuration() : 0;
}

// Frames

void ZNTDisplayViewController::hasNewFrame(ZNTStreamer& /*streamer*/,
                                           const platform::PixelBufferPtr& buffer) {
    if (!buffer)
        return;
    showFrame(buffer);
    frameBuffer_ = buffer;
}

void ZNTDisplayViewController::showFrame(const platform::PixelBufferPtr& buffer) {
    if (hotSpotPickingPoint_)
        hotSpotPickingPoint_->markSBSModeActive(currentMode_ == DisplayMode::SideBySide);
    if (displayView_)
        displayView_->displayCVPixelBuffer(buffer, hotSpotPickingPoint_, hotSpots_);
    if (virtualDisplayView_ && currentMode_ == DisplayMode::SideBySide)
        virtualDisplayView_->displayCVPixelBuffer(buffer, hotSpotPickingPoint_, hotSpots_);
}

void ZNTDisplayViewController::showKeptFrame() {
    if (frameBuffer_)
        showFrame(frameBuffer_);
}

// Events

void ZNTDisplayViewController::streamerWillStartLoadingItem(ZNTStreamer& /*streamer*/) {
    videoIsLoading();
}

void ZNTDisplayViewController::streamerDidFinishLoadingItem(ZNTStreamer& /*streamer*/) {
    videoDidEndLoading();
}

void ZNTDisplayViewController::didFailToLoadItemWithError(ZNTStreamer& /*streamer*/,
                                                          const platform::Error& error) {
    downloadVideoFailedWithError(error);
}

void ZNTDisplayViewController::streamerDidPaused(ZNTStreamer& /*streamer*/) {
    videoPaused();
}

void ZNTDisplayViewController::streamerDidStartPlaying(ZNTStreamer& /*streamer*/) {
    videoStartedPlaying();
}

void ZNTDisplayViewController::streamerDidFinishStreamingItem(ZNTStreamer& /*streamer*/) {
    videoDidEndPlaying();
}

void ZNTDisplayViewController::didPlayedToTime(ZNTStreamer& /*streamer*/, double seconds) {
    videoPlayedToTime(seconds);
}
