#include "Backends/GStreamer/Playbin.h"

#include "Backends/GStreamer/AudioOutput.h"
#include "Backends/GStreamer/EarlyEnds.h"
#include "Backends/GStreamer/OpenPlaybins.h"
#include "Backends/GStreamer/PipelineErrors.h"
#include "Backends/GStreamer/PipelineParts.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>

namespace platform {
namespace {

constexpr const char* kUserAgent = "ZantoPlayerFramework";

gint64 toClockTime(Instant instant) {
    return static_cast<gint64>(instant.count());
}

/// Sets a property if the source element has it; not every source has every property.
template <class Value>
void setIfThere(GstElement* element, const char* name, Value value) {
    if (g_object_class_find_property(G_OBJECT_GET_CLASS(element), name))
        g_object_set(element, name, value, nullptr);
}

/// Counts the data of a source. GStreamer keeps a whole playlist in memory, however long it gets,
/// so an endless playlist must be detected here.
struct Feed {
    Playbin* playbin;
    std::string beginning = {};
    std::uint64_t bytes = 0;

    void take(GstBuffer* buffer) {
        constexpr std::size_t kEnoughToTell = 1024;
        const std::size_t known = beginning.size();
        if (known < kEnoughToTell) {
            beginning.resize(kEnoughToTell);
            beginning.resize(known + gst_buffer_extract(buffer, 0, beginning.data() + known,
                                                        kEnoughToTell - known));
        }
        bytes += gst_buffer_get_size(buffer);
    }
    [[nodiscard]] bool isEndlessPlaylist() const {
        constexpr std::uint64_t kMostBytes = std::uint64_t{16} << 20U;
        return bytes > kMostBytes && isPlaylist(beginning);
    }
};

GStreamerPtr<gchar> addressOf(const URL& url) {
    if (!url.isFileURL())
        return GStreamerPtr<gchar>(g_strdup(url.absoluteString().c_str()));
    return GStreamerPtr<gchar>(gst_filename_to_uri(url.path().c_str(), nullptr));
}

bool isKnownScheme(const URL& url) {
    return url.isFileURL() || url.scheme() == "http" || url.scheme() == "https";
}

} // namespace

PipelineLimits& pipelineLimits() {
    static PipelineLimits limits;
    return limits;
}

std::shared_ptr<Playbin> Playbin::open(const URL& url, Kind kind, PipelineEventSink events) {
    auto playbin = std::make_shared<Playbin>(url, kind, std::move(events));
    OpenPlaybins::shared().add(playbin);
    // The raw pointer stays valid until the last block, because that block owns the object.
    playbin->worker_.async([self = playbin.get()] { self->start(); });
    return playbin;
}

Playbin::Playbin(URL url, Kind kind, PipelineEventSink events)
    : url_(std::move(url)), pacing_(kind.pacing),
      withSound_(kind.withSound || kind.pacing == MediaPacing::Machine), limits_(pipelineLimits()),
      events_(std::move(events)) {}

void Playbin::close() {
    isClosed_ = true;
    OpenPlaybins::shared().remove(this);
    worker_.finish([self = shared_from_this()] { self->stop(); });
}

void Playbin::post(PipelineEvent event) {
    if (!isClosed_)
        events_(std::move(event));
}

void Playbin::start() {
    if (!isKnownScheme(url_))
        return explain({ErrorCode::Unsupported,
                        "addresses of the kind '" + url_.scheme() + "' are not played"},
                       false);
    if (const auto refusal = isRemote() ? std::nullopt : fileRefusal(url_.path()))
        return explain(*refusal, false);
    startGStreamer();
    if (!build())
        return explain({ErrorCode::Unavailable, "parts of the media library are not installed"},
                       false);
    // Host-paced frames are pulled one by one, so the pipeline need not run in real time.
    const GstState state = pacing_ == MediaPacing::Machine ? GST_STATE_PAUSED : GST_STATE_PLAYING;
    if (gst_element_set_state(pipeline_.get(), state) == GST_STATE_CHANGE_FAILURE)
        explain({ErrorCode::Unreadable, "it cannot be opened"}, isRemote());
}

bool Playbin::build() {
    GstElement* const playbin = gst_element_factory_make("playbin3", nullptr);
    if (!playbin)
        return false;
    pipeline_.reset(static_cast<GstElement*>(gst_object_ref_sink(playbin)));
    videoSink_ = std::make_unique<VideoSink>(pacing_, [this] { pictureArrived(); });
    const bool paced = pacing_ == MediaPacing::Machine;
    gst_util_set_object_arg(G_OBJECT(playbin), "flags",
                            paced        ? "video+audio+soft-volume+buffering"
                            : withSound_ ? "video+audio"
                                         : "video");
    g_object_set(playbin, "uri", addressOf(url_).get(), "video-sink", videoSink_->element(),
                 nullptr);
    if (withSound_)
        g_object_set(playbin, "audio-sink",
                     paced ? makeAudioOutput() : gst_element_factory_make("fakesink", nullptr),
                     nullptr);
    const auto onSource = +[](GstElement*, GstElement* source, gpointer self) {
        static_cast<Playbin*>(self)->setUpSource(source);
    };
    g_signal_connect(playbin, "source-setup", G_CALLBACK(onSource), this);
    holdEarlyEnds(playbin);
    kindSearch_ = KindSearch::in(playbin);
    playlists_ = PlaylistReaders::in(playbin);
    listenToBus(playbin, *this);
    return true;
}

void Playbin::setUpSource(GstElement* source) {
    startDecoder(pipeline_.get());
    setIfThere(source, "user-agent", kUserAgent);
    setIfThere(source, "timeout", static_cast<guint>(limits_.request.count()));
    setIfThere(source, "retries", limits_.retries);
    const GStreamerPtr<GstPad> pad(gst_element_get_static_pad(source, "src"));
    if (!pad)
        return;
    const auto onData = +[](GstPad*, GstPadProbeInfo* info, gpointer data) {
        auto* const feed = static_cast<Feed*>(data);
        feed->playbin->sawLife();
        feed->take(GST_PAD_PROBE_INFO_BUFFER(info));
        if (!feed->isEndlessPlaylist())
            return GST_PAD_PROBE_OK;
        feed->playbin->explain({ErrorCode::TooLarge, "its playlist is too large"}, false);
        return GST_PAD_PROBE_DROP;
    };
    gst_pad_add_probe(pad.get(), GST_PAD_PROBE_TYPE_BUFFER, onData, new Feed{this},
                      [](gpointer data) { delete static_cast<Feed*>(data); });
}

void Playbin::describe() {
    worker_.async([this] { queryMedia(); });
}

void Playbin::queryMedia() {
    isOpen_ = true;
    pipeline_event::Described found;
    found.duration = duration();
    found.hasSound = hasSound_;
    found.hasVideo = hasVideo_;
    found.sink = videoSink_->newSinkReference();
    // A film of still images has a duration, a single image has none.
    found.isStill = isStill_ && !found.duration;
    // In a transport stream, timestamps start before the first frame. For playlists, the playlist
    // demuxer corrects that.
    found.startsLate = !isRemote() && hasPart(pipeline_.get(), "tsdemux");
    {
        const std::scoped_lock lock(mutex_);
        found.missingDecoder = missingDecoder_;
    }
    post(std::move(found));
}

std::optional<Instant> Playbin::duration() {
    gint64 duration = -1;
    if (!gst_element_query_duration(pipeline_.get(), GST_FORMAT_TIME, &duration) || duration < 0)
        return std::nullopt;
    return Instant(duration);
}

void Playbin::askDuration() {
    if (isDurationAsked_.exchange(true))
        return;
    worker_.async([this] {
        isDurationAsked_ = false;
        if (isOpen_)
            post(pipeline_event::DurationKnown{duration()});
    });
}

void Playbin::setPlaying(bool playing, int order) {
    worker_.async([this, playing, order] {
        order_ = order;
        if (!pipeline_)
            return;
        gst_element_set_state(pipeline_.get(), playing ? GST_STATE_PLAYING : GST_STATE_PAUSED);
    });
}

void Playbin::setVolume(double volume) {
    worker_.async([this, volume] {
        if (pipeline_)
            g_object_set(pipeline_.get(), "volume", volume, nullptr);
    });
}

void Playbin::seek(const SeekTarget& target) {
    worker_.async([this, target] { seekNow(target); });
}

void Playbin::seekNow(const SeekTarget& target) {
    const auto known = duration();
    const bool isHeld = target.pictureLength && known;
    const Instant to = isHeld ? std::min(target.time, *known) : target.time;
    const Instant reached =
        isHeld ? std::clamp(*known - *target.pictureLength, Instant::zero(), to) : to;
    post(pipeline_event::SeekBegun{flushes(), to, known});
    std::string obstacle = seekObstacle();
    constexpr auto kFlags = static_cast<GstSeekFlags>(GST_SEEK_FLAG_FLUSH | GST_SEEK_FLAG_ACCURATE);
    if (obstacle.empty()) {
        playlists_->quieten();
        playlists_->goOn();
        setSettled(false);
        if (!gst_element_seek_simple(pipeline_.get(), GST_FORMAT_TIME, kFlags,
                                     toClockTime(reached + target.origin)))
            obstacle = "the media cannot be moved about in";
    }
    if (obstacle.empty())
        return;
    setSettled(true);
    post(pipeline_event::SeekRefused{std::move(obstacle)});
}

/// Checks first, because a seek that fails on its way to the server ends playback altogether.
std::string Playbin::seekObstacle() {
    if (isAnswered_ && !handsOutParts_)
        return "the server does not hand out parts of the file";
    const GStreamerPtr<GstQuery> query(gst_query_new_seeking(GST_FORMAT_TIME));
    gboolean seekable = FALSE;
    if (gst_element_query(pipeline_.get(), query.get()))
        gst_query_parse_seeking(query.get(), nullptr, &seekable, nullptr, nullptr);
    return seekable ? "" : "the media cannot be moved about in";
}

void Playbin::beginWait(int wait) {
    wait_ = wait;
    worker_.async([this, wait, silence = pipelineLimits().silence] {
        lastLife_ = life_;
        lastLifeAt_ = std::chrono::steady_clock::now();
        isIdle_ = false;
        checkLife(wait, silence);
    });
}

void Playbin::endWait() {
    wait_ = 0;
}

void Playbin::checkLife(int wait, std::chrono::milliseconds silence) {
    if (wait_ != wait || !pipeline_)
        return;
    const auto now = std::chrono::steady_clock::now();
    if (life_ != lastLife_) {
        lastLife_ = life_;
        lastLifeAt_ = now;
        isIdle_ = false;
    } else if (!isRemote() && !isAtWork(pipeline_.get())) {
        // The bus may be about to deliver an error message, so give up only when this has lasted
        // for a while.
        if (isIdle_)
            return giveUp(wait);
        isIdle_ = true;
    } else if (now - lastLifeAt_ >= silence) {
        return post(pipeline_event::Silent{wait});
    }
    constexpr std::chrono::milliseconds kOften{250};
    worker_.asyncAfter(std::min(kOften, silence),
                       [this, wait, silence] { checkLife(wait, silence); });
}

void Playbin::giveUp(int wait) {
    if (isOpen_)
        return post(pipeline_event::Silent{wait});
    explain({ErrorCode::Corrupt, "the file is damaged or cut short"}, false);
}

std::optional<ClockReading> Playbin::reading() const {
    return videoSink_->reading();
}

/// Reports only the first failure: it is the cause, and later ones are its consequences.
void Playbin::explain(const Error& error, bool mayBeUnreachable) {
    if (hasFailed_.exchange(true))
        return;
    const auto cause = mayBeUnreachable ? connectionError(url_) : std::nullopt;
    post(pipeline_event::Failed{cause.value_or(error)});
}

/// Stops the pipeline.
///
/// Workaround for GStreamer 1.22. Symptoms: stopping an HTTP source while its server's response
/// arrives crashes the process; stopping a playlist demuxer before its thread has started blocks
/// forever, because the stop waits for that thread. This function therefore first waits on the
/// worker until opening or the last seek has succeeded or failed, for 500 ms at most, and until the
/// playlist demuxers are quiet. Remove the wait once the minimum GStreamer version is free of both
/// faults.
void Playbin::stop() {
    constexpr std::chrono::milliseconds kLongest{500};
    if (std::unique_lock lock(mutex_); pipeline_)
        settled_.wait_for(lock, kLongest, [this] { return isSettled_; });
    if (playlists_)
        playlists_->quieten();
    if (!pipeline_)
        return;
    kindSearch_->end();
    gst_element_set_state(pipeline_.get(), GST_STATE_NULL);
    stopListening(pipeline_.get());
    videoSink_.reset();
    pipeline_.reset();
}

void Playbin::setSettled(bool isSettled) {
    const std::scoped_lock lock(mutex_);
    isSettled_ = isSettled;
    if (isSettled)
        settled_.notify_all();
}

/// If there is only sound, no sink of ours counts flushes; but then each seek ends with a preroll.
int Playbin::flushes() const {
    return hasVideo_ ? videoSink_->flushes() : prerolls_.load();
}

void Playbin::didPreroll() {
    setSettled(true);
    ++prerolls_;
    post(pipeline_event::Prerolled{flushes()});
}

void Playbin::isPlaying() {
    post(pipeline_event::Playing{order_});
}

void Playbin::streamsEnded() {
    post(pipeline_event::StreamsEnded{});
}

void Playbin::buffered(int percent) {
    const bool isShort = percent < 100;
    if (isShort_.exchange(isShort) != isShort)
        post(pipeline_event::Buffered{!isShort});
}

void Playbin::overtookItself(const GError& error) {
    if (isOpen_)
        return failed(error);
    setSettled(true);
    if (!hasFailed_.exchange(true))
        post(pipeline_event::Overtaken{inWordsOf(error)});
}

void Playbin::failed(const GError& error) {
    setSettled(true);
    const Error inWords = inWordsOf(error);
    // Reported before the end of the video stream, which is the next thing to happen.
    if (!isRemote() || httpStatus_ != 0)
        return explain(inWords, false);
    // Finding out why a server cannot be reached needs the network and may take long, so the worker
    // does it.
    worker_.async([this, inWords] { explain(inWords, true); });
}

/// If a decoder is known to be missing, that says more than the error that results from it.
Error Playbin::inWordsOf(const GError& error) {
    const std::scoped_lock lock(mutex_);
    return missingDecoder_.empty() ? pipelineError(error, {httpStatus_, isRemote(), isOpen_})
                                   : missingDecoderError(missingDecoder_);
}

void Playbin::foundStreams(bool hasSound, bool hasVideo, bool isStill) {
    hasSound_ = hasSound;
    hasVideo_ = hasVideo;
    isStill_ = isStill;
    if (hasVideo || withSound_ || hasFailed_.exchange(true))
        return;
    setSettled(true);
    post(pipeline_event::SoundLeftOut{});
}

void Playbin::missesDecoder(const std::string& description) {
    const std::scoped_lock lock(mutex_);
    if (missingDecoder_.empty())
        missingDecoder_ = description;
}

void Playbin::answered(int httpStatus, bool handsOutParts) {
    httpStatus_ = httpStatus;
    handsOutParts_ = handsOutParts;
    isAnswered_ = true;
}

void Playbin::pictureArrived() {
    sawLife();
    // In machine-paced playback, the display pulls frames at its own rate and needs no report.
    if (pacing_ == MediaPacing::Host && !isPictureReported_.exchange(true))
        post(pipeline_event::PictureArrived{});
}

} // namespace platform
