#pragma once

#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/KeyValueObserving.h"
#include "Platform/Media/MediaTime.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace platform {

class PlayerItem;

enum class PlayerStatus : std::int64_t { Unknown = 0, ReadyToPlay = 1, Failed = 2 };

/// Whether time runs: not requested; requested, but not yet or no longer possible; running.
enum class TimeControlStatus : std::int64_t {
    Paused = 0,
    WaitingToPlayAtSpecifiedRate = 1,
    Playing = 2,
};

/// The key path under which a player's time control status is observed. Every start passes through
/// waiting. Observers are notified of each change in a loop iteration of its own, in which the
/// property has its new value.
inline constexpr const char* kPlayerTimeControlStatusKeyPath = "timeControlStatus";

/// Plays one item.
///
/// Owner:  its creator, with `playerWithPlayerItem`; the destructor stops everything.
/// Thread: main. No call waits.
class ZANTO_EXPORT Player final : public ObservableObject {
public:
    [[nodiscard]] static std::shared_ptr<Player>
    playerWithPlayerItem(const std::shared_ptr<PlayerItem>& item);
    explicit Player(std::shared_ptr<PlayerItem> item) : item_(std::move(item)) {}
    ~Player() override;
    void init() override;

    [[nodiscard]] std::shared_ptr<PlayerItem> currentItem() const { return item_; }
    [[nodiscard]] PlayerStatus status() const { return status_; }
    [[nodiscard]] TimeControlStatus timeControlStatus() const { return timeControlStatus_; }
    [[nodiscard]] MediaTime currentTime() const;

    void play();
    void pause();
    /// See `PlayerItem::seekToTime`.
    void seekToTime(MediaTime target);

    /// For a host that takes a snapshot between two frame times: every player whose time runs ticks
    /// for the present, at once or, where its frame is not decoded yet, in a later loop iteration.
    static void catchUp();
    /// Whether a player has yet to tick for the present.
    [[nodiscard]] static bool isAnyBehind();

    /// Linear, 0 to 1.
    [[nodiscard]] float volume() const { return volume_; }
    void setVolume(float volume);

    /// Identifies a block that is called periodically; pass it to `removeTimeObserver` to end the
    /// calls.
    using TimeObserver = std::shared_ptr<const void>;
    /// Calls the block with the playback time: at frame times, about once per `interval`, while
    /// time runs, and whenever time starts, stops or jumps.
    [[nodiscard]] TimeObserver
    addPeriodicTimeObserverForInterval(MediaTime interval, std::function<void(MediaTime)> block);
    void removeTimeObserver(const TimeObserver& observer);

private:
    struct PeriodicBlock {
        Instant interval{};
        std::function<void(MediaTime)> block;
        int framesToGo = 0;
    };

    friend class PlayerItem;
    void itemIsReady();
    void itemDidFail();
    void itemDidStart();
    void itemDidStall();
    void itemWillEnd();
    void itemDidEnd();
    void itemDidDecode();
    void timeDidJump();
    void jumpDidCome();

    [[nodiscard]] static std::vector<std::weak_ptr<Player>>& alive();
    void announce(TimeControlStatus status);
    void runFrames();
    void frameDidCome();
    /// Calls all blocks or those that are due, once it is known which frame is the present one.
    enum class Ticks { Due, All };
    void tick(Ticks which);
    void callBlocks(Ticks which);

    std::shared_ptr<PlayerItem> item_;
    PlayerStatus status_ = PlayerStatus::Unknown;
    TimeControlStatus timeControlStatus_ = TimeControlStatus::Paused;
    TimeControlStatus announced_ =
        TimeControlStatus::Paused; // the latest status that has been queued
    float volume_ = 1.0F;
    bool wantsToPlay_ = false;
    bool isRunning_ = false;             // time runs
    bool awaitsFrame_ = false;           // a call at the next frame time is queued
    bool awaitsJump_ = false;            // a loop iteration for a jump is queued
    std::optional<Ticks> awaitsDecoder_; // a tick that waits for its frame to be decoded
    MediaTime lastTick_;
    std::vector<std::shared_ptr<PeriodicBlock>> blocks_;
};

} // namespace platform
