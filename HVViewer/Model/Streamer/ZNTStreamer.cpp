#include "HVViewer/Model/Streamer/ZNTStreamer.h"

#include "HVViewer/Utilities/ZNTMath.h"
#include "HVViewer/Utilities/ZNTUtilities.h"
#include "Platform/Foundation/Assertion.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Media/PlayerItem.h"
#include "Platform/Media/PlayerItemVideoOutput.h"

#include <cstdint>
#include <utility>

namespace {

constexpr const char* kFileName = "ZNTStreamer";
constexpr float kStartVolume = 0.6F;
constexpr double kTickSeconds = 1.0 / 60;
constexpr std::int32_t kTickTimescale = 1'000'000'000;

} // namespace

std::shared_ptr<ZNTStreamer> ZNTStreamer::streamerWithUrl(const std::optional<platform::URL>& url) {
    return platform::make<ZNTStreamer>(url);
}

ZNTStreamer::ZNTStreamer(const std::optional<platform::URL>& url) : sourceUrl_(url) {
    if (!url)
        platform::failAssertion(kFileName, __LINE__, "Invalid parameter not satisfying: url");
}

ZNTStreamer::~ZNTStreamer() {
    cleanUp();
}

void ZNTStreamer::init() {
    Object::init();
    setupPlayer();
}

void ZNTStreamer::setupPlayer() {
    const auto item = platform::PlayerItem::playerItemWithURL(*sourceUrl_);
    const auto player = platform::Player::playerWithPlayerItem(item);
    player->setVolume(kStartVolume);
    playerItem_ = item;
    player_ = player;
    const platform::SizePx size =
        item->tracks().empty() ? platform::SizePx{} : item->tracks().front().naturalSize;
    output_ = platform::make<platform::PlayerItemVideoOutput>(platform::PixelBufferAttributes{
        platform::PixelBuffer::kBiPlanarVideoRange, static_cast<double>(size.width),
        static_cast<double>(size.height)});
    playerItem_->addOutput(output_);
    addObservers();
}

void ZNTStreamer::addObservers() {
    if (timeObserver_)
        return;
    const auto item = player_->currentItem();
    const auto self = std::shared_ptr<KeyValueObserver>(shared(this));
    constexpr auto options = platform::ObservingOptions::NewAndInitial;
    item->addObserver(self, platform::kPlayerItemStatusKeyPath, options);
    auto& center = platform::NotificationCenter::defaultCenter();
    center.addObserver(
        shared(this), platform::PlayerItemFailedToPlayToEndTimeNotification,
        [this](const auto&) { playerFailed(); }, item.get());
    center.addObserver(
        shared(this), platform::PlayerItemDidPlayToEndTimeNotification,
        [this](const auto&) { playerPlayedToEnd(); }, item.get());
    if (ZNTUtilities::isIOS10())
        player_->addObserver(self, platform::kPlayerTimeControlStatusKeyPath, options);
    timeObserver_ = player_->addPeriodicTimeObserverForInterval(
        platform::MediaTime::makeWithSeconds(kTickSeconds, kTickTimescale),
        [weak = weak(this)](platform::MediaTime time) {
            if (const auto streamer = weak.lock())
                streamer->playerDidPlayedToTime(time);
        });
}

void ZNTStreamer::observeValueForKeyPath(std::string_view keyPath,
                                         const platform::Object& ofObject) {
    const auto self = shared(this); // a delegate may release the streamer
    if (&ofObject == playerItem_.get() && keyPath == platform::kPlayerItemStatusKeyPath)
        itemStatusDidChange();
    else if (&ofObject == player_.get() && keyPath == platform::kPlayerTimeControlStatusKeyPath)
        timeControlStatusDidChange();
}

void ZNTStreamer::itemStatusDidChange() {
    // From system version 10 on, the time control status reports loading.
    const bool tellsOfLoading = !ZNTUtilities::isIOS10();
    switch (playerItem_->status()) {
    case platform::PlayerItemStatus::Unknown:
        if (const auto to = delegate(); to && tellsOfLoading)
            to->streamerWillStartLoadingItem(*this);
        return;
    case platform::PlayerItemStatus::ReadyToPlay:
        if (const auto to = delegate(); to && tellsOfLoading)
            to->streamerDidFinishLoadingItem(*this);
        if (const auto seconds = std::exchange(seekWhenReady_, std::nullopt); seconds && player_)
            seekPlayer(*seconds);
        if (automaticallyPlayWhenReady_ && !isPaused())
            play();
        return;
    case platform::PlayerItemStatus::Failed:
        return playerFailed();
    }
}

void ZNTStreamer::timeControlStatusDidChange() {
    const auto to = delegate();
    if (!to)
        return;
    switch (player_->timeControlStatus()) {
    case platform::TimeControlStatus::Paused:
        return to->streamerDidPaused(*this);
    case platform::TimeControlStatus::WaitingToPlayAtSpecifiedRate:
        return to->streamerWillStartLoadingItem(*this);
    case platform::TimeControlStatus::Playing:
        return to->streamerDidFinishLoadingItem(*this);
    }
}

void ZNTStreamer::play() {
    paused_ = false;
    if (status() != platform::PlayerStatus::ReadyToPlay)
        return;
    player_->play();
    if (const auto to = delegate())
        to->streamerDidStartPlaying(*this);
}

void ZNTStreamer::pause() {
    paused_ = true;
    if (player_)
        player_->pause();
    if (const auto to = delegate())
        to->streamerDidPaused(*this);
}

void ZNTStreamer::seekToTime(double seconds) {
    if (!player_)
        return;
    // The duration of the item, and with it the timescale, is unknown until the item is ready.
    if (playerItem_->status() == platform::PlayerItemStatus::Unknown) {
        seekWhenReady_ = seconds;
        return;
    }
    player_->pause();
    seekPlayer(seconds);
    if (!isPaused())
        player_->play();
}

void ZNTStreamer::seekPlayer(double seconds) {
    const std::int32_t timescale = playerItem_->duration().timescale;
    player_->seekToTime(platform::MediaTime::makeWithSeconds(seconds, timescale));
}

void ZNTStreamer::setVolume(double volume) {
    // Comparisons with NaN are false.
    const double floor = volume > 0.0 ? volume : 0.0;
    volume_ = floor < 1.0 ? floor : 1.0;
    if (player_)
        player_->setVolume(static_cast<float>(volume_));
}

double ZNTStreamer::itemDuration() const {
    const auto item = player_ ? player_->currentItem() : nullptr;
    return (item ? item->duration() : platform::MediaTime{}).seconds();
}

platform::PlayerStatus ZNTStreamer::status() const {
    return player_ ? player_->status() : platform::PlayerStatus::Unknown;
}

void ZNTStreamer::playerDidPlayedToTime(platform::MediaTime time) {
    const auto self = shared(this);
    if (const auto to = delegate())
        to->didPlayedToTime(*this, time.seconds());
    const double hostTime = platform::currentMediaTime();
    const platform::MediaTime itemTime =
        output_ ? output_->itemTimeForHostTime(hostTime) : platform::MediaTime{};
    // Fetched again, because the tick may have released the delegate.
    const auto to = delegate();
    if (to && output_ && output_->hasNewPixelBufferForItemTime(itemTime))
        to->hasNewFrame(*this, output_->copyPixelBufferForItemTime(time));
}

void ZNTStreamer::playerFailed() {
    Dlog("Player failed to play");
    const auto item = player_ ? player_->currentItem() : nullptr;
    if (const auto to = delegate(); to && item)
        to->didFailToLoadItemWithError(
            *this, item->error().value_or(platform::Error{platform::ErrorCode::Unavailable,
                                                          "the player gave no reason"}));
}

void ZNTStreamer::playerPlayedToEnd() {
    const auto self = shared(this);
    player_->pause();
    player_->currentItem()->seekToTime(platform::kMediaTimeZero);
    if (const auto to = delegate())
        to->streamerDidFinishStreamingItem(*this);
}

void ZNTStreamer::cleanUp() {
    if (!player_)
        return;
    player_->pause();
    if (timeObserver_) {
        player_->currentItem()->removeObserver(this, platform::kPlayerItemStatusKeyPath);
        player_->removeTimeObserver(timeObserver_);
        if (ZNTUtilities::isIOS10())
            player_->removeObserver(this, platform::kPlayerTimeControlStatusKeyPath);
        timeObserver_.reset();
        platform::NotificationCenter::defaultCenter().removeObserver(this);
    }
    player_.reset();
    playerItem_.reset();
}
