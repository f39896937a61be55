#include "Backends/GStreamer/GStreamerLibrary.h"

#include <mutex>

namespace platform {

void startGStreamer() {
    static std::once_flag once;
    // No arguments are passed, because GStreamer must not parse the application's command line.
    std::call_once(once, [] { gst_init_check(nullptr, nullptr, nullptr); });
}

} // namespace platform
