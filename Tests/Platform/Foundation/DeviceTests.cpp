#include "Platform/Foundation/Device.h"

#include <gtest/gtest.h>

using platform::Device;

TEST(Device, IsOfVersionTwelveUnlessTheHostSaysOtherwise) {
    EXPECT_EQ(Device().systemVersion(), "12.0");
}

TEST(Device, TakesTheVersionOfTheHost) {
    Device device;
    device.setSystemVersion("9.3.5");
    EXPECT_EQ(device.systemVersion(), "9.3.5");
}

TEST(Device, IsOneForTheProcess) {
    EXPECT_EQ(&Device::currentDevice(), &Device::currentDevice());
    EXPECT_EQ(Device::currentDevice().systemVersion(), "12.0");
}
