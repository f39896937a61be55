#include "Backends/GStreamer/AudioOutput.h"

#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <string>

namespace platform {
namespace {

namespace fs = std::filesystem;

bool isThere(const fs::path& path) {
    std::error_code ignored;
    return fs::exists(path, ignored);
}

/// Whether PulseAudio or PipeWire is running.
bool hasSoundServer() {
    if (std::getenv("PULSE_SERVER"))
        return true;
    const char* const named = std::getenv("XDG_RUNTIME_DIR");
    const fs::path folder = named ? named : "/run/user/" + std::to_string(getuid());
    return isThere(folder / "pulse/native") || isThere(folder / "pipewire-0");
}

/// Whether this is an ALSA playback device: its name ends with a p.
bool isForPlaying(const fs::directory_entry& device) {
    const std::string name = device.path().filename().string();
    return name.starts_with("pcm") && name.ends_with('p');
}

bool hasSoundDevice() {
    std::error_code failure;
    const fs::directory_iterator devices("/dev/snd", failure);
    return std::any_of(begin(devices), end(devices), isForPlaying);
}

GstElement* makeSink() {
    // Checks first: without any sound output, `autoaudiosink` tries every sound library, and each
    // of them prints errors to standard error.
    if (hasSoundServer() || hasSoundDevice())
        if (GstElement* const sink = gst_element_factory_make("autoaudiosink", nullptr))
            return sink;
    GstElement* const silent = gst_element_factory_make("fakesink", nullptr);
    g_object_set(silent, "sync", TRUE, nullptr);
    return silent;
}

} // namespace

/// The output contains a volume element of its own. Workaround for GStreamer 1.22: for an audio
/// sink without a volume property, `playbin3` adds a volume element that it never frees, which
/// leaks 4 KiB for each video with sound. Remove it once the minimum version is free of the leak.
GstElement* makeAudioOutput() {
    GstElement* const sink = makeSink();
    GstElement* const volume = gst_element_factory_make("volume", nullptr);
    if (!volume)
        return sink;
    GstElement* const output = gst_bin_new(nullptr);
    gst_bin_add_many(GST_BIN(output), volume, sink, nullptr);
    gst_element_link(volume, sink);
    const GStreamerPtr<GstPad> in(gst_element_get_static_pad(volume, "sink"));
    gst_element_add_pad(output, gst_ghost_pad_new("sink", in.get()));
    return output;
}

} // namespace platform
