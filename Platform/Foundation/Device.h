#pragma once

#include "Platform/Foundation/Export.h"

#include <string>

namespace platform {

/// The machine that the library runs on, as far as its behaviour depends on it.
///
/// Thread: main.
class ZANTO_EXPORT Device {
public:
    [[nodiscard]] static Device& currentDevice();

    /// The version of the platform layer, "12.0" unless the host sets another. Versions below 10
    /// enable the events of older systems.
    [[nodiscard]] const std::string& systemVersion() const { return systemVersion_; }
    void setSystemVersion(std::string version);

private:
    std::string systemVersion_ = "12.0";
};

} // namespace platform
