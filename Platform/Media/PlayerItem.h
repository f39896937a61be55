#pragma once

#include "Platform/Foundation/KeyValueObserving.h"
#include "Platform/Foundation/Result.h"
#include "Platform/Foundation/URL.h"
#include "Platform/Media/MediaPipeline.h"
#include "Platform/Media/MediaTime.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace platform {

class Player;
class PlayerItemVideoOutput;

enum class PlayerItemStatus : std::int64_t { Unknown = 0, ReadyToPlay = 1, Failed = 2 };

/// Posted by an item that was ready and cannot go on, and by one that has played to its end.
inline constexpr const char* PlayerItemFailedToPlayToEndTimeNotification =
    "PlayerItemFailedToPlayToEndTimeNotification";
inline constexpr const char* PlayerItemDidPlayToEndTimeNotification =
    "PlayerItemDidPlayToEndTimeNotification";

/// The key path under which an item's status is observed.
inline constexpr const char* kPlayerItemStatusKeyPath = "status";

/// One of the streams of an item's media.
struct AssetTrack {
    SizePx naturalSize;
};

/// Media to be played once. It begins to load when a player is created with it.
///
/// Owner:  its creator and the player. Created with `playerItemWithURL`.
/// Thread: main.
class PlayerItem final : public ObservableObject, public MediaPipelineListener {
public:
    [[nodiscard]] static std::shared_ptr<PlayerItem> playerItemWithURL(const URL& url);
    using PipelineOpener = std::function<std::unique_ptr<MediaPipeline>(
        const URL&, MediaPacing, std::weak_ptr<MediaPipelineListener>)>;
    explicit PlayerItem(URL url, PipelineOpener open = openMediaPipeline)
        : url_(std::move(url)), open_(std::move(open)) {}

    [[nodiscard]] PlayerItemStatus status() const { return status_; }
    /// Why it cannot be played; `nullopt` while nothing has failed.
    [[nodiscard]] const std::optional<Error>& error() const { return error_; }
    /// Indefinite until the media is open, and for a live stream. It grows during playback if the
    /// media's header does not contain it.
    [[nodiscard]] MediaTime duration() const { return duration_; }
    /// Empty until the media is open.
    [[nodiscard]] const std::vector<AssetTrack>& tracks() const { return tracks_; }

    /// From now on the output provides the item's frames.
    void addOutput(const std::shared_ptr<PlayerItemVideoOutput>& output);

    /// Seeks to the exact frame. `currentTime()` is the target at once; the player's time observers
    /// are called once the target's frame is decoded.
    ///
    /// Errors: a log line and no effect for a time that is not numeric and before the item is
    ///         ready.
    void seekToTime(MediaTime target);
    /// The playback position, or the target of a seek in progress.
    [[nodiscard]] MediaTime currentTime() const;
    /// The playback position when the host's clock shows that many seconds.
    [[nodiscard]] MediaTime timeAtHostTime(double hostSeconds) const;
    /// The newest frame whose time has come; `nullopt` during a seek.
    [[nodiscard]] std::optional<MediaFrame> frameAt(MediaTime itemTime);

private:
    friend class Player;
    /// For the player that plays the item.
    void load(const std::weak_ptr<Player>& player);
    [[nodiscard]] MediaPipeline* pipeline() const { return pipeline_.get(); }
    [[nodiscard]] bool isSeeking() const { return seekTarget_.has_value(); }
    /// Whether it is known which frame is the present one, see `MediaPipeline::isDecodedTo`.
    [[nodiscard]] bool isDecodedToPresent();

    void mediaIsReady(const MediaDescription& media) override;
    void mediaDurationDidChange(Instant duration) override;
    void mediaDidFail(const Error& error) override;
    void mediaDidStart() override;
    void mediaDidStall() override;
    void mediaDidSeek() override;
    void mediaDidEnd() override;
    void mediaDidDecode() override;
    void setStatus(PlayerItemStatus status);

    URL url_;
    PipelineOpener open_;
    std::weak_ptr<Player> player_;
    PlayerItemStatus status_ = PlayerItemStatus::Unknown;
    std::optional<Error> error_;
    MediaTime duration_;
    std::vector<AssetTrack> tracks_;
    std::vector<std::shared_ptr<PlayerItemVideoOutput>> outputs_;
    std::optional<Instant> seekTarget_; // of the seek in progress
    std::unique_ptr<MediaPipeline> pipeline_;
};

} // namespace platform
