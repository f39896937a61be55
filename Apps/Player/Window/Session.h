#pragma once

#include "Platform/Foundation/Object.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>

class SDLHost;
class Trace;
class TracedController;

namespace platform {
struct Error;
} // namespace platform

/// The content that the window shows, and the next one while it is being opened.
///
/// A controller shows one content, so another content comes with a controller of its own. It takes
/// the other's place in the window once it can be shown, in the mode of that moment and with
/// nothing else of the other; until then, and if it cannot be opened, what is shown stays.
///
/// Owner:  the program; host and trace outlive it. Made with `platform::make`.
/// Thread: main. Listeners are called in turns of their own or inside `open` and `cancel`.
class Session final : public platform::Object {
public:
    /// How far the opening is.
    struct Progress {
        std::string name;
        /// 0 to 1; none: nobody knows.
        std::optional<double> fraction;
    };
    struct Listeners {
        /// The progress or the state of what plays is another.
        std::function<void()> changed = {};
        /// In words, naming the content; the person at the terminal has been told.
        std::function<void(const std::string& message)> failed = {};
        /// Another controller is in the window; the one before goes afterwards.
        std::function<void(TracedController& controller, const std::string& input)> replaced = {};
    };

    Session(SDLHost& host, Trace& trace) : host_(host), trace_(trace) {}
    ~Session() override;
    void setListeners(Listeners listeners) { listeners_ = std::move(listeners); }

    /// A file, an address, or empty for the built-in panorama; in place of what is being opened.
    /// The first is the window's at once, whatever becomes of it, and put into the window by the
    /// program.
    void open(const std::string& input);
    /// Gives up what is being opened. In place of the first, and when nothing is being opened of
    /// what the window shows, the built-in panorama is opened.
    void cancel();

    /// After the first `open`.
    [[nodiscard]] const std::shared_ptr<TracedController>& controller() const { return current_; }
    /// None: nothing is being opened.
    [[nodiscard]] std::optional<Progress> progress() const;
    /// Whether the first content could not be opened: there is nothing to show.
    [[nodiscard]] bool hasFailed() const { return hasFailed_; }

private:
    struct Opening {
        std::string input;
        std::shared_ptr<TracedController> controller;
        std::string cause; // why it failed, as far as is known
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

    SDLHost& host_;
    Trace& trace_;
    Listeners listeners_;
    std::shared_ptr<TracedController> current_;
    std::optional<Opening> opening_;
    bool hasFailed_ = false;
};
