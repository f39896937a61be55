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

/// One of the streams that an item's media is made of.
struct AssetTrack {
    SizePx naturalSize;
};

/// Something to be played, once: it begins to load when a player takes it.
///
/// Owner:  whoever made it, and the player. Made with `playerItemWithURL`.
/// Thread: main.
class PlayerItem final : public ObservableObject, public MediaPipelineListener {
public:
    [[nodiscard]] static std::shared_ptr<PlayerItem> playerItemWithURL(const URL& url);
    using PipelineOpener = std::function<std::unique_ptr<MediaPipeline>(
        const URL&, MediaPacing, std::weak_ptr<MediaPipelineListener>)>;
    explicit PlayerItem(URL url, PipelineOpener open = openMediaPipeline)
        : url_(std::move(url)), open_(std::move(open)) {}

    [[nodiscard]] PlayerItemStatus status() const { return status_; }
    /// Why it cannot be played; none while nothing has gone wrong.
    [[nodiscard]] const std::optional<Error>& error() const { return error_; }
    /// Indefinite until the media is open, and for a live stream. It grows while media is played
    /// whose header does not say how long it is.
    [[nodiscard]] MediaTime duration() const { return duration_; }
    /// Empty until the media is open.
    [[nodiscard]] const std::vector<AssetTrack>& tracks() const { return tracks_; }

    /// An output gives the item's pictures from then on.
    void addOutput(const std::shared_ptr<PlayerItemVideoOutput>& output);

    /// Accurate; the player's time follows once the target's picture is there.
    ///
    /// Errors: a log line, and no effect, for what is no time and before the item is ready.
    void seekToTime(MediaTime target);
    /// Where playback is; the target of a seek that is under way.
    [[nodiscard]] MediaTime currentTime() const;
    /// Where playback is when the host's clock shows that many seconds.
    [[nodiscard]] MediaTime timeAtHostTime(double hostSeconds) const;
    /// The newest picture whose time has come.
    [[nodiscard]] std::optional<MediaFrame> frameAt(MediaTime itemTime);

private:
    friend class Player;
    /// For the player that takes the item.
    void load(const std::weak_ptr<Player>& player);
    [[nodiscard]] MediaPipeline* pipeline() const { return pipeline_.get(); }
    [[nodiscard]] bool isSeeking() const { return seekTarget_.has_value(); }
    /// Whether the picture of the present is settled, see `MediaPipeline::isDecodedTo`.
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
    std::optional<Instant> seekTarget_; // of the seek under way
    std::unique_ptr<MediaPipeline> pipeline_;
};

} // namespace platform
