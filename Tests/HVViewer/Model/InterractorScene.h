#pragma once

#include "HVViewer/Model/ZNTInterractor.h"
#include "Hosts/Headless/HeadlessHost.h"
#include "Platform/Interface/View.h"

#include <memory>

/// Counts what an interactor tells.
class CountingDelegate final : public platform::Object, public InterractorDelegate {
public:
    void matrixUpdated() override { ++updates; }
    int updates = 0;
};

/// An interactor on a view of its own, in virtual time. The screen is the view.
class InterractorScene {
public:
    explicit InterractorScene(platform::Size size = {320, 180}, double scale = 1.0);

    [[nodiscard]] zanto::HeadlessHost& host() { return *host_; }
    [[nodiscard]] ZNTInterractor& camera() { return *camera_; }
    [[nodiscard]] platform::View& view() { return *view_; }
    /// What the delegate was told since the last question.
    int updates();
    /// Lets go of the interactor; what still holds it is told by the pointer.
    [[nodiscard]] std::weak_ptr<ZNTInterractor> release();
    void releaseView() { view_.reset(); }
    void releaseDelegate() { delegate_.reset(); }

    void advance(platform::Instant span);
    /// Goes on by so many frames of a sixtieth of a second.
    void advanceFrames(int frames);

    /// A finger that drags from its first move on.
    void down(platform::Point point, std::int64_t finger = 1);
    void move(platform::Point point, std::int64_t finger = 1);
    void up(platform::Point point, std::int64_t finger = 1);
    /// Down at `from`, a move that begins the drag there, one to `to`; the finger stays down.
    void drag(platform::Point from, platform::Point to);
    /// A drag to the right at so many points per second, which ends at full speed.
    void flick(double pointsPerSecond);
    /// The same in any direction, from the middle.
    void fling(platform::Point pointsPerSecond);
    /// Two fingers that spread by a factor and stay down; then lifted.
    void pinch(double factor);
    void liftPinch();

private:
    void touch(platform::TouchPhase phase, platform::Point point, std::int64_t finger);

    std::unique_ptr<zanto::HeadlessHost> host_;
    std::shared_ptr<platform::View> view_;
    std::shared_ptr<CountingDelegate> delegate_;
    std::shared_ptr<ZNTInterractor> camera_;
    double pinchDistance_ = 0;
};

/// A quarter of a turn as the camera's single precision has it.
inline constexpr float kQuarterTurn = 1.5707963705062866F;

/// Whether all elements agree to a few units of the last place of numbers around 1.
[[nodiscard]] bool areNear(const GLKMatrix4& one, const GLKMatrix4& other);
[[nodiscard]] bool areEqual(const GLKMatrix4& one, const GLKMatrix4& other);

/// What a drag by so many points to the left turns the camera by, and one up, on a screen that is
/// 180 pixels wide in portrait, at a zoom of 1.
[[nodiscard]] GLKMatrix4 yawOf(double points);
[[nodiscard]] GLKMatrix4 pitchOf(double points);
