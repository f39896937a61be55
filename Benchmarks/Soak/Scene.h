#pragma once

#include "Benchmarks/Soak/Dice.h"
#include "Benchmarks/Soak/GLCensus.h"
#include "Benchmarks/Soak/Media.h"
#include "Benchmarks/Soak/Visitor.h"
#include "Hosts/Headless/HeadlessHost.h"

#include <chrono>
#include <memory>
#include <string>

/// A host, its screen and its current controller, on which the moves act.
///
/// Thread: main. Only one scene may exist at a time.
class Scene {
public:
    Scene(const Media& media, Events& events, Dice& dice, zanto::HeadlessHostOptions::Time time);
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    [[nodiscard]] const Media& media() const { return media_; }
    [[nodiscard]] Dice& dice() { return dice_; }
    [[nodiscard]] zanto::HeadlessHost& host() { return *host_; }
    [[nodiscard]] zanto::EmbeddedHost& embedded() { return host_->embedded(); }
    [[nodiscard]] Visitor& player() { return *player_; }

    /// Destroys the controller in whatever state it is, and makes another.
    void replacePlayer();
    void resize(platform::Size size, double scale);
    [[nodiscard]] platform::Size size() const { return size_; }
    void appear();
    void disappear();
    [[nodiscard]] bool isVisible() const { return isVisible_; }
    /// Sends a touch event of one finger, now, at a fraction of the screen.
    void touch(platform::TouchPhase phase, std::int64_t finger, platform::Point fraction);
    void run(std::chrono::milliseconds duration);

    /// Shows the same small image on the same screen, waits until nothing is pending, and counts GL
    /// objects.
    ///
    /// Errors: throws an exception if pending work does not end.
    GLCensus censusAtSmallPicture();
    /// The same without a controller.
    GLCensus censusWithoutPlayer();

private:
    void settle();

    const Media& media_;
    Events& events_;
    Dice& dice_;
    std::unique_ptr<zanto::HeadlessHost> host_;
    std::shared_ptr<Visitor> player_;
    platform::ImagePtr smallPicture_;
    platform::Size size_;
    bool isVisible_ = false;
};
