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

/// Turns a video's address into pictures and events, for one delegate. It serves one address: for
/// another a new one is made.
///
/// Owner:  the controller; the delegate is held weakly. Made with `streamerWithUrl`.
/// Thread: main.
class ZANTO_EXPORT ZNTStreamer : public platform::Object, public platform::KeyValueObserver {
public:
    /// Errors: an assertion failure without an address.
    [[nodiscard]] static std::shared_ptr<ZNTStreamer>
    streamerWithUrl(const std::optional<platform::URL>& url);
    explicit ZNTStreamer(const std::optional<platform::URL>& url);
    ~ZNTStreamer() override;
    void init() override;

    /// Starts if the player is ready; if not, the wish is noted.
    void play();
    void pause();
    /// In seconds. What plays goes on playing; nobody is told. Before the item is ready the
    /// position is kept and sought as soon as it is, before it starts to play; the last one counts.
    void seekToTime(double seconds);
    /// Held within 0 and 1; a NaN is 0.
    void setVolume(double volume);
    /// What was set last, 0 at first, while the player starts at 0.6.
    [[nodiscard]] double volume() const { return volume_; }
    /// In seconds. NaN while it is not known, and for a live stream.
    [[nodiscard]] double itemDuration() const;
    /// The player's; unknown without one.
    [[nodiscard]] platform::PlayerStatus status() const;
    /// Ends everything; the delegate hears nothing of the player any more. Twice does no harm.
    void cleanUp();

    [[nodiscard]] const std::optional<platform::URL>& sourceUrl() const { return sourceUrl_; }
    [[nodiscard]] std::shared_ptr<StreamerDelegate> delegate() const { return delegate_.lock(); }
    void setDelegate(const std::weak_ptr<StreamerDelegate>& delegate) { delegate_ = delegate; }
    [[nodiscard]] bool automaticallyPlayWhenReady() const { return automaticallyPlayWhenReady_; }
    void setAutomaticallyPlayWhenReady(bool play) { automaticallyPlayWhenReady_ = play; }
    /// Whether a pause was asked for, which is not whether time stands still.
    [[nodiscard]] bool isPaused() const { return paused_; }
    /// Null after `cleanUp()`, as is the item; the output stays.
    [[nodiscard]] std::shared_ptr<platform::Player> player() const { return player_; }
    [[nodiscard]] std::shared_ptr<platform::PlayerItem> playerItem() const { return playerItem_; }
    [[nodiscard]] std::shared_ptr<platform::PlayerItemVideoOutput> output() const {
        return output_;
    }

    /// What stands for the ticks that the player is asked for; null while nothing is observed.
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
