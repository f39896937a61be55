#include "Tests/Apps/Player/Window/PlayScene.h"

#include "Apps/Player/Contents/HotSpotFile.h"
#include "Apps/Player/Controls/ControlsLayout.h"
#include "Apps/Player/Window/WindowRecording.h"
#include "HVViewer/Model/Streamer/ZNTStreamer.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Imaging/ImageEncoder.h"
#include "Platform/Motion/AttitudeTracePlayer.h"
#include "Tests/Support/HeadlessPlayer.h"

#include <chrono>
#include <utility>

using namespace std::chrono_literals;
using platform::Point;

namespace {

constexpr platform::Instant kFrame = 17ms;

} // namespace

PlayScene::PlayScene(Time time)
    : scene_(std::make_unique<SDLScene>(kSize)), trace_(std::move(Trace::create("").value())) {
    if (time == Time::Standing)
        platform::MainQueue::main().setClock(clock_);
    session_ = platform::make<Session>(host(), *trace_);
}

PlayScene::~PlayScene() {
    window_.reset();
    scene_->embedded().setRootViewController(nullptr);
    session_.reset();
}

std::string PlayScene::greyFile(const std::string& name, std::uint8_t grey) const {
    return folder_.add(name, platform::encodePng(*flatPicture(64, 32, grey, grey, grey)).value());
}

void PlayScene::record(const std::string& path) {
    extras_.recording = std::move(WindowRecording::create(path).value());
}

void PlayScene::endRecording() {
    (void)extras_.recording->end();
}

void PlayScene::open(const std::string& input) {
    session_->open(input);
    scene_->embedded().setRootViewController(session_->controller());
    window_ = std::make_unique<PlayWindow>(host(), *session_, extras_, input);
    window_->begin();
    pass(100ms);
}

void PlayScene::pass(platform::Instant span) {
    const platform::Instant end = clock_->now() + span;
    do {
        clock_->advanceTo(std::min(clock_->now() + kFrame, end));
        host().turn(0ms);
    } while (clock_->now() < end);
    host().turn(0ms); // an earlier wait of SDL's may have left a mark in the queue
}

bool PlayScene::becomesTrue(const std::function<bool()>& isSo) {
    const auto end = std::chrono::steady_clock::now() + 10s;
    while (!isSo()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        host().turn(5ms);
    }
    return true;
}

void PlayScene::movePointer(Point place) const {
    scene_->pushMotion(static_cast<int>(place.x), static_cast<int>(place.y));
}

void PlayScene::pushButton(Uint32 type, Point place) const {
    scene_->pushButton(type, static_cast<int>(place.x), static_cast<int>(place.y));
}

void PlayScene::click(Point place) const {
    movePointer(place);
    pushButton(SDL_MOUSEBUTTONDOWN, place);
    pushButton(SDL_MOUSEBUTTONUP, place);
}

void PlayScene::tapFinger(Point place) const {
    for (const SDL_EventType type : {SDL_FINGERDOWN, SDL_FINGERUP}) {
        SDL_Event event{};
        event.type = type;
        event.tfinger.windowID = scene_->windowId();
        event.tfinger.touchId = 1;
        event.tfinger.x = static_cast<float>(place.x / kSize.width);
        event.tfinger.y = static_cast<float>(place.y / kSize.height);
        SDL_PushEvent(&event);
    }
}

void PlayScene::drop(const std::string& what, Uint32 type) const {
    for (const Uint32 kind :
         {static_cast<Uint32>(SDL_DROPBEGIN), type, static_cast<Uint32>(SDL_DROPCOMPLETE)}) {
        SDL_Event event{};
        event.type = kind;
        event.drop.windowID = scene_->windowId();
        event.drop.file = kind == type ? SDL_strdup(what.c_str()) : nullptr;
        SDL_PushEvent(&event);
    }
}

Point PlayScene::middleOf(Control control) const {
    ControlsState state;
    if (session_->controller()->streamer())
        state.video = ControlsState::Video{true, 0, 1, 1};
    if (session_->progress())
        state.loading = ControlsState::Loading{};
    const auto layout = layOutControls(kSize, state);
    const auto* const found = layout.areaOf(control);
    const platform::Rect area = control == Control::CancelLoading && layout.cancel
                                    ? layout.cancel->area
                                    : (found ? *found : platform::Rect());
    return {area.origin.x + area.size.width / 2, area.origin.y + area.size.height / 2};
}

int PlayScene::grey(Point place) {
    return colourAt(*scene_->windowPicture(), static_cast<int>(place.x),
                    static_cast<int>(place.y))[0];
}

int PlayScene::greyBeneath(Point place) {
    return colourAt(*scene_->embedded().snapshot(1).value(), static_cast<int>(place.x),
                    static_cast<int>(place.y))[0];
}
