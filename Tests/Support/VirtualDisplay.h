#pragma once

#include "Tests/Support/ChildProcess.h"

#include <memory>
#include <string>

namespace tests {

/// An X server that keeps its screen in memory, on a display of its own.
class VirtualDisplay {
public:
    /// Null where Xvfb is missing or does not come up.
    [[nodiscard]] static std::unique_ptr<VirtualDisplay> start();

    /// What DISPLAY has to say.
    [[nodiscard]] const std::string& name() const { return name_; }

private:
    VirtualDisplay();
    ChildProcess server_;
    std::string name_;
};

} // namespace tests
