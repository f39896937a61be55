#include "Apps/Player/Rendering/Render.h"

#include "Apps/Player/Contents/Content.h"
#include "Apps/Player/Contents/HotSpotFile.h"
#include "Apps/Player/Contents/HotSpots.h"
#include "Apps/Player/Output/LogTap.h"
#include "Apps/Player/Output/PictureOutput.h"
#include "Apps/Player/Output/Trace.h"
#include "Apps/Player/Output/TracedController.h"
#include "Apps/Player/Scripts/ActionScript.h"
#include "Apps/Player/Terminal/Message.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDisplayView.h"
#include "HVViewer/DisplayController/DisplayView/ZNTDrawer.h"
#include "Hosts/Headless/HeadlessHost.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <utility>

namespace {

/// Thrown to end the run early, after the reason has been printed.
struct Stop {
    ExitCode code;
};

bool namesItsPictures(const std::vector<Action>& actions) {
    return std::any_of(actions.begin(), actions.end(),
                       [](const Action& action) { return action.isSnapshot(); });
}

/// One run: a host, a controller, and the actions to perform.
class RenderRun {
public:
    RenderRun(const RenderCommand& command, Trace& trace)
        : command_(command), trace_(trace), output_(command.output) {}

    /// `hotSpots` may be null: then only the script adds hot spots.
    void play(const std::vector<Action>& actions, const HotSpotFile* hotSpots) {
        openHost();
        openContent();
        const auto isInitial = [](const Action& action) {
            return action.at == 0 && action.isSetting();
        };
        host_->embedded().setRootViewController(controller_);
        controller_->setDisplayMode(command_.mode);
        if (hotSpots)
            hotSpots->applyTo(*controller_);
        for (const Action& action : actions) {
            if (isInitial(action))
                apply(action);
        }
        host_->embedded().appear();
        hasAppeared_ = true;
        host_->settle();
        requirePicture();
        for (const Action& action : actions) {
            if (isInitial(action))
                continue;
            host_->advanceTo(platform::fromSeconds(action.at));
            apply(action);
        }
        if (namesItsPictures(actions))
            return;
        if (actions.empty())
            warnOfTimePastEnd();
        renderOnePicture();
    }

private:
    void openHost() {
        auto host = zanto::HeadlessHost::create(
            {.size = command_.size, .scale = command_.scale, .touchSlop = command_.touchSlop});
        if (!host) {
            tell(host.error().detail);
            throw Stop{ExitCode::NoGraphics};
        }
        host_ = std::move(host).value();
    }

    void openContent() {
        controller_ = platform::make<TracedController>(trace_);
        prepareContent(*controller_, command_.input);
        host_->settle();
        if (stateOfContent(*controller_, command_.input) != ContentState::Open)
            throw Stop{ExitCode::ContentNotOpened};
    }

    /// The graphics driver may reject an image that was decoded without errors.
    void requirePicture() const {
        const auto drawer = controller_->displayView()->glDrawer();
        const bool isPhoto = controller_->contentType() == ContentType::Photo;
        if (!isPhoto || (drawer && drawer->glTextureI()))
            return;
        const bool isBuiltIn = command_.input.empty();
        tell((isBuiltIn ? nameOfContent(command_.input) : command_.input) +
             ": the graphics driver refuses the picture");
        throw Stop{ExitCode::ContentNotOpened};
    }

    /// Warns that the video has restarted, because its start is probably not the frame that the
    /// user wants.
    void warnOfTimePastEnd() const {
        const double duration = controller_->videoDuration();
        if (duration <= 0 || command_.timeSeconds <= duration)
            return;
        std::ostringstream text;
        text << "--time " << command_.timeSeconds << ": the video ends at " << duration
             << " s and goes back to its start";
        tell(text.str());
    }

    void renderOnePicture() {
        host_->advanceTo(std::max(host_->now(), platform::fromSeconds(command_.timeSeconds)));
        const std::string stem = command_.input.empty()
                                     ? "panorama"
                                     : std::filesystem::path(command_.input).stem().string();
        const std::string name = output_.isFile()
                                     ? std::filesystem::path(command_.output).filename().string()
                                     : stem + ".png";
        snapshot(name);
    }

    void snapshot(const std::string& name) {
        host_->settle();
        const auto picture = host_->embedded().snapshot(command_.scale);
        if (!picture) {
            tell(picture.error().detail);
            throw Stop{ExitCode::NoGraphics};
        }
        if (const auto failure = output_.write(name, *picture.value())) {
            tell(failure->detail);
            throw Stop{ExitCode::WrongUse};
        }
        trace_.frame(name, *controller_, host_->framesPresented());
    }

    void apply(const Action& action) {
        std::visit([this](const auto& what) { applyKind(what); }, action.what);
    }
    void applyKind(const ModeAction& action) { controller_->setDisplayMode(action.mode); }
    void applyKind(const ResizeAction& action) {
        const std::string refusal = pixelsRefusal(action.size, command_.scale);
        if (!refusal.empty()) {
            tell(command_.actionsFile + ": the size of \"resize\" times --scale " + refusal);
            throw Stop{ExitCode::WrongUse};
        }
        host_->embedded().resize(action.size, command_.scale);
    }
    void applyKind(const OrientationAction& action) {
        host_->embedded().setOrientation(action.orientation);
    }
    void applyKind(const AttitudeAction& action) { host_->embedded().setAttitude(action.attitude); }
    void applyKind(const SwitchAction& action) {
        using Switch = SwitchAction::Switch;
        switch (action.which) {
        case Switch::DeviceMotion:
            return controller_->turnOnDeviceMotionInterraction(action.on);
        case Switch::TouchMotion:
            return controller_->turnOnTouchMotionInterraction(action.on);
        case Switch::PinchZoom:
            return controller_->turnOnScaleInterraction(action.on);
        case Switch::LockVertical:
            return controller_->setLockVerticalRotation(action.on);
        case Switch::Transparent:
            return controller_->setEnableTransparentBackground(action.on);
        case Switch::AutoPicking:
            controller_->setEnableHotSpotAutoPicking(action.on);
            return showHotSpots();
        case Switch::TapDetection:
            return controller_->setEnableHotSpotTapDetection(action.on);
        }
    }
    void applyKind(const HotSpotsAction& action) {
        addHotSpots(*controller_, action);
        showHotSpots();
    }
    /// An image applies the hot spots when it appears; a video that has a frame has applied them
    /// already.
    void showHotSpots() {
        if (hasAppeared_ || controller_->contentType() == ContentType::Video)
            refreshHotSpots(*controller_);
    }
    void applyKind(const SphericalOffsetAction& action) {
        controller_->setSphericalOffset(action.radians);
    }
    void applyKind(const TouchAction& action) {
        platform::TouchEvent event = action.event;
        event.time = host_->now();
        host_->embedded().touch(event);
    }
    void applyKind(const ContentAction& action) {
        if (action.kind == ContentAction::Kind::Video)
            controller_->prepareVideoWithUrl(urlOf(action.input));
        else
            controller_->prepareImageWithUrl(urlOf(action.input));
    }
    void applyKind(const SeekAction& action) { controller_->seekToTime(action.seconds); }
    void applyKind(const VolumeAction& action) { controller_->setPlayerVolume(action.volume); }
    void applyKind(CommandAction action) {
        switch (action) {
        case CommandAction::Play:
            return controller_->play();
        case CommandAction::Pause:
            return controller_->pause();
        case CommandAction::Appear:
            host_->embedded().disappear();
            return host_->embedded().appear();
        case CommandAction::Reload:
            return controller_->reloadContent();
        }
    }
    void applyKind(const SnapshotAction& action) { snapshot(action.name); }

    const RenderCommand& command_;
    Trace& trace_;
    PictureOutput output_;
    std::unique_ptr<zanto::HeadlessHost> host_;
    // declared after the host, so it is destroyed first
    std::shared_ptr<TracedController> controller_;
    bool hasAppeared_ = false;
};

/// Reads the script and checks all of it before anything is drawn.
platform::Result<std::vector<Action>> readActions(const RenderCommand& command) {
    if (command.actionsFile.empty())
        return std::vector<Action>();
    auto actions = readActionScript(command.actionsFile);
    if (!actions)
        return actions;
    if (namesItsPictures(actions.value()) && PictureOutput(command.output).isFile())
        return platform::Error{platform::ErrorCode::Unsupported,
                               "--output " + command.output +
                                   ": a script that names its pictures needs a folder"};
    return actions;
}

} // namespace

ExitCode render(const RenderCommand& command) {
    const auto actions = readActions(command);
    if (!actions) {
        tell(actions.error().detail);
        return ExitCode::WrongUse;
    }
    const auto hotSpots = readHotSpotFile(command.hotSpotsFile);
    if (!hotSpots) {
        tell(hotSpots.error().detail);
        return ExitCode::WrongUse;
    }
    const auto trace = Trace::create(command.traceFile);
    if (!trace) {
        tell(trace.error().detail);
        return ExitCode::WrongUse;
    }
    const LogTap tap(*trace.value());
    try {
        RenderRun(command, *trace.value()).play(actions.value(), hotSpots.value().get());
    } catch (const Stop& stop) {
        return stop.code;
    }
    return ExitCode::Done;
}
