#include "Platform/Foundation/Device.h"

#include <utility>

namespace platform {

Device& Device::currentDevice() {
    static Device device;
    return device;
}

void Device::setSystemVersion(std::string version) {
    systemVersion_ = std::move(version);
}

} // namespace platform
