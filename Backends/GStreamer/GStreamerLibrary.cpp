#include "Backends/GStreamer/GStreamerLibrary.h"

#include <mutex>

namespace platform {

void startGStreamer() {
    static std::once_flag once;
    // Without arguments: the application's command line is not the library's.
    std::call_once(once, [] { gst_init_check(nullptr, nullptr, nullptr); });
}

} // namespace platform
