#include "Platform/Media/Player.h"

#include "Platform/Foundation/Environment.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Media/PlayerItem.h"

#include <algorithm>
#include <utility>

namespace platform {

std::shared_ptr<Player> Player::playerWithPlayerItem(const std::shared_ptr<PlayerItem>& item) {
    return make<Player>(item);
}

Player::~Player() {
    if (item_ && item_->pipeline())
        item_->pipeline()->pause();
}

void Player::init() {
    ObservableObject::init();
    if (item_)
        item_->load(weak(this));
    std::erase_if(alive(), [](const auto& player) { return player.expired(); });
    alive().push_back(weak(this));
}

std::vector<std::weak_ptr<Player>>& Player::alive() {
    using Players = std::vector<std::weak_ptr<Player>>;
    return Environment::current().part<Players>();
}

void Player::catchUp() {
    // A copy, because a tick may create or destroy players.
    const auto players = alive();
    for (const auto& player : players) {
        const auto self = player.lock();
        if (self && self->isRunning_ && self->currentTime() != self->lastTick_)
            self->tick(Ticks::All);
    }
}

bool Player::isAnyBehind() {
    return std::any_of(alive().begin(), alive().end(), [](const auto& player) {
        const auto self = player.lock();
        return self && self->item_ && self->item_->pipeline() &&
               (self->awaitsDecoder_ || self->awaitsJump_ || self->item_->isSeeking());
    });
}

MediaTime Player::currentTime() const {
    return item_ ? item_->currentTime() : MediaTime{};
}

void Player::play() {
    if (!item_ || !item_->pipeline() || wantsToPlay_)
        return;
    wantsToPlay_ = true;
    announce(TimeControlStatus::WaitingToPlayAtSpecifiedRate);
    item_->pipeline()->play();
}

void Player::pause() {
    if (!std::exchange(wantsToPlay_, false))
        return;
    isRunning_ = false;
    if (item_->pipeline())
        item_->pipeline()->pause();
    announce(TimeControlStatus::Paused);
    timeDidJump();
}

void Player::seekToTime(MediaTime target) {
    if (!item_)
        return;
    item_->seekToTime(target);
    if (item_->isSeeking())
        awaitsDecoder_.reset(); // it waits for a time before the seek
}

void Player::setVolume(float volume) {
    volume_ = volume;
    if (item_ && item_->pipeline())
        item_->pipeline()->setVolume(volume);
}

void Player::announce(TimeControlStatus status) {
    if (std::exchange(announced_, status) == status)
        return;
    MainQueue::main().async([weak = weak(this), status] {
        const auto self = weak.lock();
        if (!self)
            return;
        self->timeControlStatus_ = status;
        self->didChangeValueForKey(kPlayerTimeControlStatusKeyPath);
    });
}

// Notifications from the item

void Player::itemIsReady() {
    status_ = PlayerStatus::ReadyToPlay;
    if (item_->pipeline())
        item_->pipeline()->setVolume(volume_);
}

void Player::itemDidFail() {
    isRunning_ = false;
    wantsToPlay_ = false;
    announce(TimeControlStatus::Paused);
}

void Player::itemDidStart() {
    if (!wantsToPlay_)
        return;
    announce(TimeControlStatus::Playing);
    isRunning_ = true;
    runFrames();
    timeDidJump();
}

void Player::itemDidStall() {
    isRunning_ = false;
    if (wantsToPlay_)
        announce(TimeControlStatus::WaitingToPlayAtSpecifiedRate);
}

void Player::itemWillEnd() {
    isRunning_ = false;
    tick(Ticks::All);
}

void Player::itemDidEnd() {
    // An observer of the end may have paused already, and nothing else is left to do.
    if (!item_->isSeeking())
        pause();
}

void Player::itemDidDecode() {
    if (const auto waiting = std::exchange(awaitsDecoder_, std::nullopt))
        tick(*waiting);
}

// Time

void Player::timeDidJump() {
    if (std::exchange(awaitsJump_, true))
        return;
    // In a loop iteration of its own, so that no block runs inside the call that made time jump.
    MainQueue::main().async([weak = weak(this)] {
        if (const auto self = weak.lock())
            self->jumpDidCome();
    });
}

/// Ticks once for a seek and the start that follows it, and always after the notification of the
/// status, however soon the frame was decoded.
void Player::jumpDidCome() {
    awaitsJump_ = false;
    if (announced_ != timeControlStatus_)
        return timeDidJump();
    tick(Ticks::All);
}

void Player::runFrames() {
    if (std::exchange(awaitsFrame_, true))
        return;
    MainQueue::main().asyncAfter(Instant(0), [weak = weak(this)] {
        if (const auto self = weak.lock())
            self->frameDidCome();
    });
}

void Player::frameDidCome() {
    awaitsFrame_ = false;
    if (!isRunning_)
        return;
    runFrames();
    tick(Ticks::Due);
}

void Player::tick(Ticks which) {
    // During a seek there is no frame for the current time; the end of the seek ticks.
    if (!item_ || item_->isSeeking())
        return;
    if (!item_->isDecodedToPresent()) {
        awaitsDecoder_ = awaitsDecoder_ == Ticks::All ? Ticks::All : which;
        return;
    }
    callBlocks(which);
}

void Player::callBlocks(Ticks which) {
    const auto self = shared(this); // a block may release the player
    const MediaTime time = lastTick_ = currentTime();
    const FrameGrid grid = MainQueue::main().frameGrid();
    const Instant now = MainQueue::main().now();
    const Instant refresh = grid.after(now) - grid.atOrBefore(now);
    const auto blocks = blocks_;
    for (const auto& periodic : blocks) {
        if (which == Ticks::Due && --periodic->framesToGo > 0)
            continue;
        // Counts whole frames, because a comparison of times would skip a frame now and then.
        periodic->framesToGo = static_cast<int>(
            std::max<Instant::rep>(1, (periodic->interval + refresh / 8) / refresh));
        if (std::ranges::find(blocks_, periodic) != blocks_.end())
            periodic->block(time);
    }
}

Player::TimeObserver
Player::addPeriodicTimeObserverForInterval(MediaTime interval,
                                           std::function<void(MediaTime)> block) {
    auto periodic = std::make_shared<PeriodicBlock>();
    periodic->interval = interval.isNumeric() ? interval.instant() : Instant(0);
    periodic->block = std::move(block);
    blocks_.push_back(periodic);
    return periodic;
}

void Player::removeTimeObserver(const TimeObserver& observer) {
    std::erase_if(blocks_, [&](const auto& periodic) { return periodic == observer; });
}

} // namespace platform
