#pragma once

#include "HVViewer/Model/Streamer/StreamerDelegate.h"
#include "Platform/Foundation/Export.h"
#include "Platform/Foundation/KeyValueObserving.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Media/MediaTime.h"
#include "Platform/Media/Player.h"

#include <memory>
#include <optional>
#include <string_view>

namespace platform {
class PlayerItem;
class PlayerItemVideoOutput;
} // namespace platform

/// Plays the video at one URL and sends its frames and events to one delegate. Make a new streamer
/// for another URL.
///
/// Owner:  the controller. The delegate is held weakly. Create it with `streamerWithUrl`.
/// Thread: main.
class ZANTO_EXPORT ZNTStreamer : public platform::Object, public platform::KeyValueObserver {
public:
    /// Errors: throws `AssertionFailure` without a URL.
    [[nodiscard]] static std::shared_ptr<ZNTStreamer>
    streamerWithUrl(const std::optional<platform::URL>& url);
    explicit ZNTStreamer(const std::optional<platform::URL>& url);
    ~ZNTStreamer() override;
    void init() override;

    /// Starts playback. If the player is not ready, playback starts as soon as it is, provided that
    /// `automaticallyPlayWhenReady` is set.
    void play();
    void pause();
    /// Seeks to a position in seconds, without a notification. A video that is playing goes on
    /// playing. Before the item is ready the position is only stored, and the last one is applied
    /// when the item becomes ready, before playback starts.
    void seekToTime(double seconds);
    /// Values outside of 0 to 1 are clamped; NaN becomes 0.
    void setVolume(double volume);
    /// The value that was set last, or 0 before that, although the player starts at 0.6.
    [[nodiscard]] double volume() const { return volume_; }
    /// In seconds. NaN for a live stream and while the duration is unknown.
    [[nodiscard]] double itemDuration() const;
    /// The status of the player; `Unknown` if there is no player.
    [[nodiscard]] platform::PlayerStatus status() const;
    /// Stops playback and releases the player and its item. The delegate receives no more events.
    /// Idempotent.
    void cleanUp();

    [[nodiscard]] const std::optional<platform::URL>& sourceUrl() const { return sourceUrl_; }
    [[nodiscard]] std::shared_ptr<StreamerDelegate> delegate() const { return delegate_.lock(); }
    void setDelegate(const std::weak_ptr<StreamerDelegate>& delegate) { delegate_ = delegate; }
    [[nodiscard]] bool automaticallyPlayWhenReady() const { return automaticallyPlayWhenReady_; }
    void setAutomaticallyPlayWhenReady(bool play) { automaticallyPlayWhenReady_ = play; }
    /// Whether a pause was requested. The video may stand still for other reasons.
    [[nodiscard]] bool isPaused() const { return paused_; }
    /// The player and the item are null after `cleanUp()`; the output is not.
    [[nodiscard]] std::shared_ptr<platform::Player> player() const { return player_; }
    [[nodiscard]] std::shared_ptr<platform::PlayerItem> playerItem() const { return playerItem_; }
    [[nodiscard]] std::shared_ptr<platform::PlayerItemVideoOutput> output() const {
        return output_;
    }

    /// The handle of the periodic time observer; null while the player is not observed.
    [[nodiscard]] platform::Player::TimeObserver timeObserver() const { return timeObserver_; }

    void observeValueForKeyPath(std::string_view keyPath,
                                const platform::Object& ofObject) override;

private:
    void setupPlayer();
    void addObservers();
    void itemStatusDidChange();
    void timeControlStatusDidChange();
    void seekPlayer(double seconds);
    void playerDidPlayedToTime(platform::MediaTime time);
    void playerFailed();
    void playerPlayedToEnd();

    std::optional<platform::URL> sourceUrl_;
    std::weak_ptr<StreamerDelegate> delegate_;
    double volume_ = 0;
    bool automaticallyPlayWhenReady_ = false;
    bool paused_ = false;
    std::optional<double> seekWhenReady_;
    std::shared_ptr<platform::Player> player_;
    std::shared_ptr<platform::PlayerItem> playerItem_;
    std::shared_ptr<platform::PlayerItemVideoOutput> output_;
    platform::Player::TimeObserver timeObserver_;
};
