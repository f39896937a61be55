#pragma once

#include "Apps/Player/Controls/Control.h"
#include "Apps/Player/Output/Trace.h"
#include "Apps/Player/Output/TracedController.h"
#include "Apps/Player/Window/PlayWindow.h"
#include "Apps/Player/Window/Session.h"
#include "Tests/Hosts/SDL/SDLScene.h"
#include "Tests/Support/TemporaryFolder.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <string>

/// The program's window for one test, 640 by 360 points, with the controls and all; its clock
/// stands unless the test moves it.
class PlayScene {
public:
    enum class Time { Standing, Real };
    explicit PlayScene(Time time = Time::Standing);
    ~PlayScene();
    PlayScene(const PlayScene&) = delete;
    PlayScene& operator=(const PlayScene&) = delete;

    /// A picture of one grey, as a file.
    [[nodiscard]] std::string greyFile(const std::string& name, std::uint8_t grey) const;
    /// Opens the first content and has the window appear.
    void open(const std::string& input);
    /// Has what is done written into a file, from `open` on.
    void record(const std::string& path);

    [[nodiscard]] SDLScene& scene() { return *scene_; }
    [[nodiscard]] zanto::SDLHost& host() { return scene_->host(); }
    [[nodiscard]] Session& session() { return *session_; }
    [[nodiscard]] TracedController& controller() { return *session_->controller(); }
    [[nodiscard]] const tests::TemporaryFolder& folder() const { return folder_; }
    void endRecording();

    /// Takes turns while a standing clock goes on by that long, a frame at a time.
    void pass(platform::Instant span);
    /// Takes turns until it is so, for ten seconds of the machine's at most.
    [[nodiscard]] bool becomesTrue(const std::function<bool()>& isSo);

    void movePointer(platform::Point place) const;
    void click(platform::Point place) const;
    void tapFinger(platform::Point place) const;
    void drop(const std::string& what, Uint32 type = SDL_DROPFILE) const;
    /// The middle of a control in a window of that size, with what the state has.
    [[nodiscard]] platform::Point middleOf(Control control) const;

    /// The grey of the window there, and of the picture beneath whatever is drawn over it.
    [[nodiscard]] int grey(platform::Point place);
    [[nodiscard]] int greyBeneath(platform::Point place);

    static constexpr platform::Size kSize{640, 360};
    /// On the bar, where there is nothing to press for a picture.
    static constexpr platform::Point kBar{320, 316};
    static constexpr platform::Point kPicture{320, 100};

private:
    void pushButton(Uint32 type, platform::Point place) const;

    tests::TemporaryFolder folder_;
    std::unique_ptr<SDLScene> scene_;
    std::shared_ptr<platform::VirtualClock> clock_ = std::make_shared<platform::VirtualClock>();
    std::unique_ptr<Trace> trace_;
    std::shared_ptr<Session> session_;
    PlayExtras extras_;
    std::unique_ptr<PlayWindow> window_;
};
