#include "Apps/Player/Controls/Controls.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace std::chrono_literals;
using platform::Instant;
using platform::Point;
using platform::TouchKind;
using platform::TouchPhase;

namespace {

/// Writes down what it is asked for.
class FakeClient final : public ControlsClient {
public:
    [[nodiscard]] ControlsState state() const override { return now; }
    void perform(WindowAction action) override {
        actions.push_back(action);
        if (action == WindowAction::ToggleHelp)
            now.showsHelp = !now.showsHelp;
    }
    void seekTo(double seconds) override { seeks.push_back(seconds); }
    void setVolume(double volume) override { volumes.push_back(volume); }
    void cancelLoading() override { ++cancels; }
    void dismissMessage() override { ++dismissals; }

    ControlsState now;
    std::vector<WindowAction> actions;
    std::vector<double> seeks;
    std::vector<double> volumes;
    int cancels = 0;
    int dismissals = 0;
};

class ControlsTest : public ::testing::Test {
protected:
    ControlsTest() {
        controls_.setSize(kSize);
        client_.now.video = ControlsState::Video{true, 5, 20, 0.6};
    }

    bool touch(TouchPhase phase, Point place, std::int64_t id = 1,
               TouchKind kind = TouchKind::Finger) {
        return controls_.touch({phase, id, place, kind, now_}, now_);
    }
    bool tap(Point place, TouchKind kind = TouchKind::Finger) {
        const bool isTaken = touch(TouchPhase::Down, place, 1, kind);
        touch(TouchPhase::Up, place, 1, kind);
        return isTaken;
    }
    /// Has them there, fully.
    void show() {
        controls_.show(now_);
        now_ += 1s;
    }
    [[nodiscard]] Point middleOf(Control control) {
        const auto layout = layOutControls(kSize, client_.now);
        const auto* const area = layout.areaOf(control);
        return {area->origin.x + area->size.width / 2, area->origin.y + area->size.height / 2};
    }
    static Point middleOf(const ControlsLayout::Place& place) {
        return {place.area.origin.x + place.area.size.width / 2,
                place.area.origin.y + place.area.size.height / 2};
    }

    static constexpr platform::Size kSize{800, 450};
    static constexpr Point kPicture{400, 150};
    FakeClient client_;
    Controls controls_{client_};
    Instant now_ = 10s;
};

} // namespace

TEST_F(ControlsTest, AreNotThereAtFirst) {
    EXPECT_TRUE(controls_.picture(now_).isEmpty());
    EXPECT_FALSE(controls_.nextChange(now_));
}

TEST_F(ControlsTest, AppearWhenTheMouseMovesAndFade) {
    controls_.pointAt(kPicture, now_);
    EXPECT_EQ(controls_.picture(now_ + 1s).opacity, 1);
    EXPECT_EQ(controls_.picture(now_ + 4s).opacity, 0);
}

TEST_F(ControlsTest, AppearWhenAFingerComesDownAndLeaveItToThePicture) {
    EXPECT_FALSE(touch(TouchPhase::Down, kPicture));
    EXPECT_EQ(controls_.picture(now_ + 1s).opacity, 1);
}

TEST_F(ControlsTest, GoWithATapOnThePicture) {
    show();
    EXPECT_FALSE(tap(kPicture));
    EXPECT_EQ(controls_.picture(now_ + 1s).opacity, 0);
}

TEST_F(ControlsTest, StayWithTheTapThatShowedThem) {
    tap(kPicture);
    EXPECT_EQ(controls_.picture(now_ + 1s).opacity, 1);
}

TEST_F(ControlsTest, StayWithADragAndWithAClickOnThePicture) {
    show();
    touch(TouchPhase::Down, kPicture);
    touch(TouchPhase::Move, {460, 150});
    touch(TouchPhase::Up, {460, 150});
    EXPECT_EQ(controls_.picture(now_ + 1s).opacity, 1) << "a drag";
    tap(kPicture, TouchKind::Mouse);
    EXPECT_EQ(controls_.picture(now_ + 1s).opacity, 1) << "a click";
}

TEST_F(ControlsTest, TakeNoTouchWhileTheyAreNotThere) {
    EXPECT_FALSE(tap(middleOf(Control::Playback)));
    EXPECT_TRUE(client_.actions.empty());
}

TEST_F(ControlsTest, DoWhatTheirButtonsAreFor) {
    show();
    const std::vector<std::pair<Control, WindowAction>> buttons{
        {Control::Playback, WindowAction::TogglePlayback},
        {Control::Mute, WindowAction::ToggleMute},
        {Control::Plane, WindowAction::ShowPlane},
        {Control::Sphere, WindowAction::ShowSphere},
        {Control::LittlePlanet, WindowAction::ShowLittlePlanet},
        {Control::SideBySide, WindowAction::ShowSideBySide},
        {Control::DeviceMotion, WindowAction::ToggleDeviceMotion},
        {Control::Screenshot, WindowAction::TakeScreenshot},
        {Control::FullScreen, WindowAction::ToggleFullScreen}};
    for (const auto& [control, action] : buttons) {
        client_.actions.clear();
        EXPECT_TRUE(tap(middleOf(control)));
        EXPECT_EQ(client_.actions, std::vector{action});
    }
}

TEST_F(ControlsTest, ActWhenTheFingerIsLiftedOverTheButton) {
    show();
    const Point place = middleOf(Control::Playback);
    touch(TouchPhase::Down, place);
    EXPECT_TRUE(client_.actions.empty());
    EXPECT_EQ(controls_.picture(now_).pressed, Control::Playback);
    touch(TouchPhase::Up, {place.x + 10, place.y});
    EXPECT_EQ(client_.actions.size(), 1U);
}

TEST_F(ControlsTest, DoNothingWhenTheFingerIsLiftedElsewhereOrLost) {
    show();
    touch(TouchPhase::Down, middleOf(Control::Playback));
    touch(TouchPhase::Up, kPicture);
    touch(TouchPhase::Down, middleOf(Control::Playback));
    touch(TouchPhase::Cancel, middleOf(Control::Playback));
    EXPECT_TRUE(client_.actions.empty());
    EXPECT_FALSE(controls_.picture(now_).pressed);
}

TEST_F(ControlsTest, TakeTouchesBetweenTheButtons) {
    show();
    const auto layout = layOutControls(kSize, client_.now);
    EXPECT_TRUE(tap({layout.panel.origin.x + 1, layout.panel.origin.y + 1}));
    EXPECT_TRUE(client_.actions.empty());
}

TEST_F(ControlsTest, HaveOneFingerPressAtATime) {
    show();
    touch(TouchPhase::Down, middleOf(Control::Playback), 1);
    EXPECT_TRUE(touch(TouchPhase::Down, middleOf(Control::Mute), 2));
    touch(TouchPhase::Up, middleOf(Control::Mute), 2);
    touch(TouchPhase::Up, middleOf(Control::Playback), 1);
    EXPECT_EQ(client_.actions, std::vector{WindowAction::TogglePlayback});
}

TEST_F(ControlsTest, SeekWithTheFingerOnTheBar) {
    show();
    const Point middle = middleOf(Control::SeekBar);
    touch(TouchPhase::Down, middle);
    touch(TouchPhase::Move, {kSize.width, middle.y});
    touch(TouchPhase::Move, {0, 0});
    touch(TouchPhase::Up, {0, 0});
    ASSERT_EQ(client_.seeks.size(), 3U);
    EXPECT_NEAR(client_.seeks[0], 10, 0.01);
    EXPECT_EQ(client_.seeks[1], 20);
    EXPECT_EQ(client_.seeks[2], 0);
}

TEST_F(ControlsTest, TellTheTimeUnderTheMouseOnTheSeekBar) {
    show();
    controls_.pointAt(middleOf(Control::SeekBar), now_);
    EXPECT_TRUE(controls_.isOutdated(now_));
    EXPECT_EQ(controls_.picture(now_).seekPoint, 0.5);
    controls_.pointAt(middleOf(Control::Playback), now_);
    EXPECT_EQ(controls_.picture(now_).seekPoint, std::nullopt);
}

TEST_F(ControlsTest, TellTheTimeUnderAFingerOnTheSeekBarUntilItIsLifted) {
    show();
    touch(TouchPhase::Down, middleOf(Control::SeekBar));
    EXPECT_EQ(controls_.picture(now_).seekPoint, 0.5);
    touch(TouchPhase::Move, {0, 0});
    EXPECT_EQ(controls_.picture(now_).seekPoint, 0);
    touch(TouchPhase::Up, {0, 0});
    EXPECT_EQ(controls_.picture(now_).seekPoint, std::nullopt);
}

TEST_F(ControlsTest, SetTheVolumeWithTheFingerOnItsBar) {
    show();
    const Point middle = middleOf(Control::VolumeBar);
    touch(TouchPhase::Down, middle);
    touch(TouchPhase::Move, {kSize.width, middle.y});
    touch(TouchPhase::Up, {kSize.width, middle.y});
    ASSERT_EQ(client_.volumes.size(), 2U);
    EXPECT_NEAR(client_.volumes[0], 0.5, 0.01);
    EXPECT_EQ(client_.volumes[1], 1);
}

TEST_F(ControlsTest, StayWhileAFingerPressesOrTheMouseIsOnThem) {
    show();
    touch(TouchPhase::Down, middleOf(Control::SeekBar));
    EXPECT_EQ(controls_.picture(now_ + 100s).opacity, 1);
    now_ += 100s;
    touch(TouchPhase::Up, middleOf(Control::SeekBar));
    controls_.pointAt(middleOf(Control::Mute), now_);
    EXPECT_EQ(controls_.picture(now_ + 100s).opacity, 1);
    EXPECT_EQ(controls_.picture(now_ + 100s).pointedAt, Control::Mute);
    EXPECT_FALSE(controls_.nextChange(now_ + 100s)) << "nothing moves";
    now_ += 100s;
    controls_.pointAt(std::nullopt, now_);
    EXPECT_EQ(controls_.picture(now_ + 4s).opacity, 0);
}

TEST_F(ControlsTest, AreOutdatedByWhatChangesThem) {
    show();
    (void)controls_.picture(now_);
    EXPECT_FALSE(controls_.isOutdated(now_));
    controls_.pointAt(kPicture, now_);
    EXPECT_FALSE(controls_.isOutdated(now_)) << "the mouse is on nothing of theirs";
    controls_.pointAt(middleOf(Control::Mute), now_);
    EXPECT_TRUE(controls_.isOutdated(now_));
}

TEST_F(ControlsTest, SpeakOfLoadingOnceItTakesLong) {
    client_.now.loading = ControlsState::Loading{"Opening", 0.5};
    EXPECT_EQ(controls_.nextChange(now_), now_ + 300ms);
    EXPECT_FALSE(controls_.picture(now_ + 299ms).showsLoading);
    EXPECT_TRUE(controls_.picture(now_ + 300ms).showsLoading);
    EXPECT_FALSE(controls_.nextChange(now_ + 300ms)) << "its bar does not move by itself";
    client_.now.loading.reset();
    EXPECT_TRUE(controls_.isSeen(now_ + 400ms)) << "it has to be taken away";
    EXPECT_TRUE(controls_.picture(now_ + 400ms).isEmpty());
    EXPECT_FALSE(controls_.isSeen(now_ + 400ms));
}

TEST_F(ControlsTest, MoveTheBarThatNobodyKnowsTheLengthOf) {
    client_.now.loading = ControlsState::Loading{"Opening", {}};
    (void)controls_.nextChange(now_);
    (void)controls_.picture(now_ + 300ms);
    EXPECT_EQ(controls_.nextChange(now_ + 300ms), now_ + 350ms);
    EXPECT_FALSE(controls_.isOutdated(now_ + 349ms));
    EXPECT_TRUE(controls_.isOutdated(now_ + 350ms));
}

TEST_F(ControlsTest, CancelLoadingOnceItIsSpokenOf) {
    client_.now.loading = ControlsState::Loading{"Opening", 0.5};
    const auto layout = layOutControls(kSize, client_.now);
    (void)controls_.picture(now_);
    EXPECT_FALSE(tap(middleOf(*layout.cancel)));
    EXPECT_EQ(client_.cancels, 0);
    now_ += 300ms;
    EXPECT_TRUE(tap(middleOf(*layout.cancel)));
    EXPECT_EQ(client_.cancels, 1);
}

TEST_F(ControlsTest, PutAMessageAwayWithItsCrossOnly) {
    client_.now.message = "there is no such file";
    const auto layout = layOutControls(kSize, client_.now);
    EXPECT_FALSE(controls_.picture(now_).isEmpty());
    EXPECT_TRUE(tap({layout.message.origin.x + 5, layout.message.origin.y + 5}));
    EXPECT_EQ(client_.dismissals, 0);
    EXPECT_TRUE(tap(middleOf(*layout.dismiss)));
    EXPECT_EQ(client_.dismissals, 1);
}

TEST_F(ControlsTest, PutTheHelpAwayWithATapAnywhere) {
    client_.now.showsHelp = true;
    EXPECT_FALSE(controls_.picture(now_).isEmpty());
    EXPECT_TRUE(tap(kPicture));
    EXPECT_EQ(client_.actions, std::vector{WindowAction::ToggleHelp});
    EXPECT_TRUE(controls_.picture(now_).isEmpty());
}

TEST_F(ControlsTest, HaveNothingToPressWhereThereIsNoRoom) {
    controls_.setSize({20, 20});
    show();
    EXPECT_FALSE(tap({10, 10}));
    EXPECT_TRUE(client_.actions.empty());
}
