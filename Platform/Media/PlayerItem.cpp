#include "Platform/Media/PlayerItem.h"

#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Media/Player.h"
#include "Platform/Media/PlayerItemVideoOutput.h"

#include <algorithm>
#include <string>

namespace platform {

std::shared_ptr<PlayerItem> PlayerItem::playerItemWithURL(const URL& url) {
    return make<PlayerItem>(url);
}

void PlayerItem::load(const std::weak_ptr<Player>& player) {
    player_ = player;
    if (pipeline_ || error_)
        return;
    const bool isVirtual = MainQueue::main().isTimeVirtual();
    pipeline_ = open_(url_, isVirtual ? MediaPacing::Host : MediaPacing::Machine,
                      weak(static_cast<MediaPipelineListener*>(this)));
}

void PlayerItem::addOutput(const std::shared_ptr<PlayerItemVideoOutput>& output) {
    outputs_.push_back(output);
    output->attachToItem(weak(this));
}

void PlayerItem::seekToTime(MediaTime target) {
    const bool isReady = status_ == PlayerItemStatus::ReadyToPlay && pipeline_;
    if (!isReady || !target.isNumeric()) {
        log(LogLevel::Warning,
            "player: seek refused, " +
                std::string(isReady ? "the target is no time" : "nothing is open to be played") +
                "; staying at " + std::to_string(currentTime().seconds()) + " s");
        return;
    }
    seekTarget_ = std::max(target.instant(), Instant(0));
    pipeline_->seek(*seekTarget_);
}

MediaTime PlayerItem::currentTime() const {
    return timeAtHostTime(currentMediaTime());
}

MediaTime PlayerItem::timeAtHostTime(double hostSeconds) const {
    if (seekTarget_)
        return MediaTime::make(*seekTarget_);
    if (!pipeline_)
        return kMediaTimeZero;
    return MediaTime::make(pipeline_->positionAt(fromSeconds(hostSeconds)));
}

std::optional<MediaFrame> PlayerItem::frameAt(MediaTime itemTime) {
    if (!pipeline_ || !itemTime.isNumeric() || seekTarget_)
        return std::nullopt;
    return pipeline_->frameAt(itemTime.instant());
}

bool PlayerItem::isDecodedToPresent() {
    return !pipeline_ || pipeline_->isDecodedTo(currentTime().instant());
}

void PlayerItem::setStatus(PlayerItemStatus status) {
    status_ = status;
    didChangeValueForKey(kPlayerItemStatusKeyPath);
}

void PlayerItem::mediaIsReady(const MediaDescription& media) {
    tracks_ = {{media.naturalSize}};
    if (media.duration)
        duration_ = MediaTime::make(*media.duration);
    // The player is notified first, so that observers of the item's status can play at once.
    if (const auto player = player_.lock())
        player->itemIsReady();
    setStatus(PlayerItemStatus::ReadyToPlay);
}

void PlayerItem::mediaDurationDidChange(Instant duration) {
    duration_ = MediaTime::make(duration);
}

void PlayerItem::mediaDidFail(const Error& error) {
    error_ = error;
    seekTarget_.reset();
    const auto self = shared(this);
    // The pipeline is the caller, so it is destroyed in a later loop iteration.
    MainQueue::main().async([pipeline = std::shared_ptr(std::move(pipeline_))] {});
    if (const auto player = player_.lock())
        player->itemDidFail();
    if (status_ == PlayerItemStatus::ReadyToPlay)
        NotificationCenter::defaultCenter().post(PlayerItemFailedToPlayToEndTimeNotification, {},
                                                 this);
    else
        setStatus(PlayerItemStatus::Failed);
}

void PlayerItem::mediaDidStart() {
    if (const auto player = player_.lock())
        player->itemDidStart();
}

void PlayerItem::mediaDidStall() {
    if (const auto player = player_.lock())
        player->itemDidStall();
}

void PlayerItem::mediaDidSeek() {
    seekTarget_.reset();
    if (const auto player = player_.lock())
        player->timeDidJump();
}

void PlayerItem::mediaDidEnd() {
    const auto self = shared(this);
    if (const auto player = player_.lock())
        player->itemWillEnd();
    NotificationCenter::defaultCenter().post(PlayerItemDidPlayToEndTimeNotification, {}, this);
    if (const auto player = player_.lock())
        player->itemDidEnd();
}

void PlayerItem::mediaDidDecode() {
    if (const auto player = player_.lock())
        player->itemDidDecode();
}

} // namespace platform
