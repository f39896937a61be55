#include "Platform/Foundation/KeyValueObserving.h"

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

using namespace platform;

namespace {

class Lamp final : public ObservableObject {
public:
    void turn(bool on) {
        isOn = on;
        didChangeValueForKey("isOn");
    }
    bool isOn = false;
};

class Watcher final : public KeyValueObserver {
public:
    void observeValueForKeyPath(std::string_view keyPath, const Object& ofObject) override {
        seen +=
            std::string(keyPath) + (dynamic_cast<const Lamp&>(ofObject).isOn ? " on;" : " off;");
        if (meanwhile)
            std::exchange(meanwhile, nullptr)();
    }
    std::string seen;
    std::function<void()> meanwhile;
};

struct Scene {
    std::shared_ptr<Lamp> lamp = make<Lamp>();
    std::shared_ptr<Watcher> watcher = std::make_shared<Watcher>();
    void watch(ObservingOptions options = ObservingOptions::New) {
        lamp->addObserver(watcher, "isOn", options);
    }
};

} // namespace

TEST(ObservedProperty, IsToldOfWithItsNewValue) {
    Scene s;
    s.watch();
    s.lamp->turn(true);
    s.lamp->turn(false);
    EXPECT_EQ(s.watcher->seen, "isOn on;isOn off;");
}

TEST(ObservedProperty, IsToldOfAtOnceWhenTheInitialValueIsWanted) {
    Scene s;
    s.watch(ObservingOptions::NewAndInitial);
    EXPECT_EQ(s.watcher->seen, "isOn off;");
}

TEST(ObservedProperty, IsNotMixedUpWithAnother) {
    Scene s;
    s.lamp->addObserver(s.watcher, "colour", ObservingOptions::New);
    s.lamp->turn(true);
    EXPECT_EQ(s.watcher->seen, "");
}

TEST(ObservedProperty, IsNoLongerToldOfOnceTheObserverIsRemoved) {
    Scene s;
    s.watch();
    s.lamp->removeObserver(s.watcher.get(), "colour");
    s.lamp->turn(true);
    s.lamp->removeObserver(s.watcher.get(), "isOn");
    s.lamp->turn(false);
    EXPECT_EQ(s.watcher->seen, "isOn on;");
}

TEST(ObservedProperty, IsToldToNobodyWhoHasGone) {
    Scene s;
    s.watch();
    s.watcher.reset();
    s.lamp->turn(true);
    EXPECT_TRUE(s.lamp->isOn);
}

TEST(ObservedProperty, MayLoseAnObserverWhileItIsTold) {
    Scene s;
    const auto second = std::make_shared<Watcher>();
    s.watch();
    s.lamp->addObserver(second, "isOn", ObservingOptions::New);
    s.watcher->meanwhile = [&] { s.lamp->removeObserver(second.get(), "isOn"); };
    s.lamp->turn(true);
    EXPECT_EQ(second->seen, "");
}

TEST(ObservedProperty, MayLoseItsObjectWhileItIsTold) {
    Scene s;
    const auto second = std::make_shared<Watcher>();
    s.watch();
    s.lamp->addObserver(second, "isOn", ObservingOptions::New);
    Lamp& lamp = *s.lamp;
    s.watcher->meanwhile = [&] { s.lamp.reset(); };
    lamp.turn(true);
    EXPECT_EQ(second->seen, "isOn on;");
}
