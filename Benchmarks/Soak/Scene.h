#pragma once

#include "Benchmarks/Soak/Dice.h"
#include "Benchmarks/Soak/GLCensus.h"
#include "Benchmarks/Soak/Media.h"
#include "Benchmarks/Soak/Visitor.h"
#include "Hosts/Headless/HeadlessHost.h"

#include <chrono>
#include <memory>
#include <string>

/// A host, its screen, and the controller of the moment: what the moves are made on.
///
/// Thread: one. One scene at a time.
class Scene {
public:
    Scene(const Media& media, Events& events, Dice& dice, HeadlessHostOptions::Time time);
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    [[nodiscard]] const Media& media() const { return media_; }
    [[nodiscard]] Dice& dice() { return dice_; }
    [[nodiscard]] HeadlessHost& host() { return *host_; }
    [[nodiscard]] EmbeddedHost& embedded() { return host_->embedded(); }
    [[nodiscard]] Visitor& player() { return *player_; }

    /// Lets go of the controller in whatever state it is, and puts another in its place.
    void replacePlayer();
    void resize(platform::Size size, double scale);
    [[nodiscard]] platform::Size size() const { return size_; }
    void appear();
    void disappear();
    [[nodiscard]] bool isVisible() const { return isVisible_; }
    /// One finger's news, now, at a fraction of the screen.
    void touch(platform::TouchPhase phase, std::int64_t finger, platform::Point fraction);
    void run(std::chrono::milliseconds duration);

    /// Shows the same small picture on the same screen and lets everything come to rest.
    ///
    /// Errors: an exception when it does not come to rest.
    GLCensus censusAtSmallPicture();
    /// Without any controller.
    GLCensus censusWithoutPlayer();

private:
    void settle();

    const Media& media_;
    Events& events_;
    Dice& dice_;
    std::unique_ptr<HeadlessHost> host_;
    std::shared_ptr<Visitor> player_;
    platform::ImagePtr smallPicture_;
    platform::Size size_;
    bool isVisible_ = false;
};
