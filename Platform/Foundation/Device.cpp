#include "Platform/Foundation/Device.h"

#include "Platform/Foundation/Environment.h"

#include <utility>

namespace platform {

Device& Device::currentDevice() {
    return Environment::current().part<Device>();
}

void Device::setSystemVersion(std::string version) {
    systemVersion_ = std::move(version);
}

} // namespace platform
