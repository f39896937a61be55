#pragma once

#include "Platform/Foundation/Object.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

namespace zanto {
class SDLHost;
} // namespace zanto
class Trace;
class TracedController;

namespace platform {
struct Error;
} // namespace platform

/// The content that the window shows, and the next content while it is being opened.
///
/// A controller shows one content, so each content has its own controller. The new controller
/// replaces the old one in the window once its content can be shown; it takes over the display mode
/// of that moment and nothing else. Until then, and if the content cannot be opened, the old
/// content stays.
///
/// Owner:  the program; the host and the trace must outlive it. Made with `platform::make`.
/// Thread: main. Listeners are called in a later iteration of the main queue or inside of `open`
///         and `cancel`.
class Session final : public platform::Object {
public:
    /// The progress of opening.
    struct Progress {
        std::string name;
        /// From 0 to 1; nullopt if unknown.
        std::optional<double> fraction;
    };
    struct Listeners {
        /// The progress of opening, or the state of the content that plays, has changed.
        std::function<void()> changed = {};
        /// The message names the content and the reason, and has been printed to standard error.
        std::function<void(const std::string& message)> failed = {};
        /// Another controller is in the window; the previous one is destroyed afterwards.
        std::function<void(TracedController& controller, const std::string& input)> replaced = {};
    };

    Session(zanto::SDLHost& host, Trace& trace) : host_(host), trace_(trace) {}
    ~Session() override;
    void setListeners(Listeners listeners) { listeners_ = std::move(listeners); }

    /// Opens a file, a URL, or the built-in panorama if `input` is empty. Replaces content that is
    /// still being opened. The first content's controller is current at once, whether or not it can
    /// be opened; the program puts it into the window.
    void open(const std::string& input);
    /// Cancels opening. If the first content is being opened, or if content is playing and none is
    /// being opened, the built-in panorama is opened instead.
    void cancel();

    /// Valid after the first `open`.
    [[nodiscard]] const std::shared_ptr<TracedController>& controller() const { return current_; }
    /// nullopt if nothing is being opened.
    [[nodiscard]] std::optional<Progress> progress() const;
    /// Whether the first content could not be opened, so that there is nothing to show.
    [[nodiscard]] bool hasFailed() const { return hasFailed_; }

private:
    struct Opening {
        std::string input;
        std::shared_ptr<TracedController> controller;
        std::string cause; // why it failed, if known
    };

    void listenTo(TracedController& controller, const std::string& input);
    void prepare(Opening& opening);
    void lookLater();
    void look();
    void didFail(const TracedController& controller, const std::string& input,
                 const platform::Error& error);
    void giveUp();
    void adopt();
    void tellChanged() const;
    [[nodiscard]] bool isFirst() const { return opening_ && opening_->controller == current_; }

    zanto::SDLHost& host_;
    Trace& trace_;
    Listeners listeners_;
    std::shared_ptr<TracedController> current_;
    std::optional<Opening> opening_;
    bool hasFailed_ = false;
};
