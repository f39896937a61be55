#include "Apps/Player/Window/Session.h"

#include "Apps/Player/Contents/Content.h"
#include "Apps/Player/Output/TracedController.h"
#include "Apps/Player/Terminal/Message.h"
#include "Hosts/SDL/SDLHost.h"
#include "Platform/Foundation/DataTask.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"

#include <string_view>
#include <utility>

namespace {

/// Keeps the last line that the library logs while it exists, because the library reports some
/// errors only in its log.
class LogEar {
public:
    explicit LogEar(std::string& heard) : heard_(heard) {
        previous_ = platform::setLogSink([this](platform::LogLevel level, std::string_view text) {
            if (level != platform::LogLevel::Debug)
                heard_ = text;
            if (previous_)
                previous_(level, text);
        });
    }
    ~LogEar() { platform::setLogSink(previous_); }
    LogEar(const LogEar&) = delete;
    LogEar& operator=(const LogEar&) = delete;

private:
    std::string& heard_;
    platform::LogSink previous_;
};

} // namespace

Session::~Session() {
    for (const auto& controller : {current_, opening_ ? opening_->controller : nullptr}) {
        if (!controller)
            continue;
        controller->setFailureListener({});
        controller->setChangeListener({});
    }
}

void Session::open(const std::string& input) {
    auto controller = platform::make<TracedController>(trace_);
    listenTo(*controller, input);
    opening_ = Opening{input, controller, {}};
    if (!current_)
        current_ = std::move(controller);
    prepare(*opening_);
    look();
}

void Session::listenTo(TracedController& controller, const std::string& input) {
    controller.setFailureListener(
        [self = weak(this), &controller, input](const platform::Error& error) {
            if (const auto alive = self.lock())
                alive->didFail(controller, input, error);
        });
    controller.setChangeListener([self = weak(this)] {
        if (const auto alive = self.lock())
            alive->lookLater();
    });
}

void Session::prepare(Opening& opening) {
    const auto controller = opening.controller;
    {
        std::string heard;
        const LogEar ear(heard);
        prepareContent(*controller, opening.input);
        if (!heard.empty())
            opening.cause = std::move(heard);
    }
    const auto task = controller->imageDownloadTask();
    if (!task)
        return;
    task->setProgressListener([self = weak(this)](const platform::TransferProgress&) {
        if (const auto alive = self.lock())
            alive->tellChanged();
    });
}

/// Runs in a later iteration, because `look` may destroy the controller whose hook is calling.
void Session::lookLater() {
    platform::MainQueue::main().async([self = weak(this)] {
        if (const auto alive = self.lock())
            alive->look();
    });
}

void Session::look() {
    const auto state =
        opening_ ? stateOfContent(*opening_->controller, opening_->input) : ContentState::Pending;
    if (state == ContentState::Failed)
        giveUp();
    else if (state == ContentState::Open)
        adopt();
    tellChanged();
}

void Session::didFail(const TracedController& controller, const std::string& input,
                      const platform::Error& error) {
    if (opening_ && opening_->controller.get() == &controller) {
        opening_->cause = input + ": " + error.detail;
        return lookLater();
    }
    // The playing content cannot continue; the last frame stays on screen.
    tell(input + ": " + error.detail);
    if (listeners_.failed)
        listeners_.failed(input + ": " + error.detail);
}

void Session::giveUp() {
    hasFailed_ = isFirst();
    const Opening failed = *std::exchange(opening_, std::nullopt);
    const std::string cause =
        failed.cause.empty() ? failed.input + ": cannot be opened" : failed.cause;
    if (listeners_.failed)
        listeners_.failed(cause);
}

void Session::adopt() {
    const Opening opened = *std::exchange(opening_, std::nullopt);
    if (opened.controller == current_)
        return;
    const DisplayMode mode = current_->currentMode();
    const auto previous = std::exchange(current_, opened.controller);
    host_.embedded().setRootViewController(current_);
    current_->setDisplayMode(mode);
    host_.embedded().appear();
    if (listeners_.replaced)
        listeners_.replaced(*current_, opened.input);
}

void Session::cancel() {
    if (opening_ && !isFirst()) {
        opening_.reset();
        return tellChanged();
    }
    // Failures and changes of the cancelled content no longer matter.
    current_->setFailureListener({});
    current_->setChangeListener({});
    open({});
}

std::optional<Session::Progress> Session::progress() const {
    if (!opening_)
        return std::nullopt;
    Progress progress{nameOfContent(opening_->input), std::nullopt};
    const auto task = opening_->controller->imageDownloadTask();
    const auto bytes = task ? task->progress() : platform::TransferProgress{};
    if (bytes.bytesExpected && *bytes.bytesExpected > 0)
        progress.fraction =
            static_cast<double>(bytes.bytesReceived) / static_cast<double>(*bytes.bytesExpected);
    return progress;
}

void Session::tellChanged() const {
    if (listeners_.changed)
        listeners_.changed();
}
