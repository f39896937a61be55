#include "Tests/Support/VirtualDisplay.h"

namespace tests {

using namespace std::chrono_literals;

VirtualDisplay::VirtualDisplay()
    // Without -noreset the server starts anew when its only client goes, under one that is coming.
    : server_({"Xvfb", "-displayfd", "1", "-screen", "0", "1600x1000x24", "-noreset", "-nolisten",
               "tcp"},
              {}, ChildProcess::StandardError::Dropped) {}

std::unique_ptr<VirtualDisplay> VirtualDisplay::start() {
    std::unique_ptr<VirtualDisplay> display(new VirtualDisplay());
    // The server names its display once it takes connections.
    const auto number = display->server_.readLine(30s);
    if (!number)
        return nullptr;
    display->name_ = ":" + *number;
    return display;
}

} // namespace tests
