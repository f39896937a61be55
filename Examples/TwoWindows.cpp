// Two players in one program, each with its own window, GL context and host: an image and a video
// side by side, which share nothing. docs/embedding.md explains it.
// two-windows PICTURE VIDEO [--pictures ONE.png OTHER.png]   writes what is shown, and exits
#include <HVViewer/ZantoPlayerFramework.h>
#include <Hosts/Embedded/EmbeddedHost.h>
#include <Platform/Foundation/MainQueue.h>
#include <Platform/Imaging/ImageEncoder.h>
#include <SDL.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

/// A window, its context, its host and its player; the destructor destroys them in reverse order.
class PlayerWindow {
public:
    PlayerWindow(const char* title, int width, int height, std::uint32_t wakeUpEvent)
        : width_(width), height_(height),
          window_(SDL_CreateWindow(title, SDL_WINDOWPOS_UNDEFINED, SDL_WINDOWPOS_UNDEFINED, width,
                                   height, SDL_WINDOW_OPENGL)),
          context_(window_ ? SDL_GL_CreateContext(window_) : nullptr) {
        if (!context_)
            return;
        zanto::EmbeddedHostOptions options;
        // With two contexts, the library must be able to select the one that it is about to use.
        options.gl.makeCurrent = [this] { SDL_GL_MakeCurrent(window_, context_); };
        options.gl.procAddress = SDL_GL_GetProcAddress;
        options.size = {double(width), double(height)};
        options.wakeUp = [wakeUpEvent] {
            SDL_Event event{wakeUpEvent};
            SDL_PushEvent(&event);
        };
        if (auto host = zanto::EmbeddedHost::create(options); host.ok())
            host_ = std::move(host).value();
    }
    ~PlayerWindow() {
        if (host_)
            host_->setRootViewController(nullptr);
        player_.reset();
        host_.reset();
        SDL_GL_DeleteContext(context_);
        SDL_DestroyWindow(window_);
    }
    PlayerWindow(const PlayerWindow&) = delete;
    PlayerWindow& operator=(const PlayerWindow&) = delete;

    [[nodiscard]] bool isReady() const { return host_ != nullptr; }
    [[nodiscard]] zanto::EmbeddedHost& host() { return *host_; }
    [[nodiscard]] std::uint32_t id() const { return SDL_GetWindowID(window_); }
    [[nodiscard]] bool isComplete() const { return isDrawn_ && workLeft_ == 0; }

    void show(const std::string& path, bool isVideo) {
        // A player that is made inside of its host belongs to it; afterwards it may be called from
        // anywhere.
        host_->perform([this] { player_ = platform::make<ZNTDisplayViewController>(); });
        const auto url = platform::URL::fileURLWithPath(path);
        if (isVideo)
            player_->prepareVideoWithUrl(url);
        else
            player_->prepareImageWithUrl(url);
        host_->setRootViewController(player_);
        host_->appear();
    }

    /// Runs due work and draws; returns the time until the next call.
    std::optional<platform::Instant> turn(bool isExposed) {
        const zanto::EmbeddedHostStatus status = host_->runDueWork();
        if (status.drawNow || isExposed) {
            host_->draw(0, {0, 0, width_, height_});
            SDL_GL_MakeCurrent(window_, context_);
            SDL_GL_SwapWindow(window_);
            isDrawn_ = true;
        }
        host_->perform([this] { workLeft_ = platform::MainQueue::main().outstandingWork(); });
        if (!status.nextDeadline)
            return std::nullopt;
        return std::max(platform::Instant(0), *status.nextDeadline - host_->now());
    }

    bool writePicture(const std::string& path) {
        const auto picture = host_->snapshot(1.0);
        const auto encoded = picture ? platform::encodePng(*picture.value()) : picture.error();
        if (!encoded)
            return false;
        const std::string_view bytes(reinterpret_cast<const char*>(encoded.value().data()),
                                     encoded.value().size());
        return static_cast<bool>(std::ofstream(path, std::ios::binary) << bytes);
    }

private:
    int width_;
    int height_;
    SDL_Window* window_;
    SDL_GLContext context_;
    std::unique_ptr<zanto::EmbeddedHost> host_;
    std::shared_ptr<ZNTDisplayViewController> player_;
    bool isDrawn_ = false;
    int workLeft_ = 1;
};

/// The timeout for SDL in whole milliseconds; -1 waits indefinitely.
int timeoutOf(std::optional<platform::Instant> one, std::optional<platform::Instant> other) {
    if (!one && !other)
        return -1;
    const auto wait =
        one && other ? std::min(*one, *other) : one.value_or(other.value_or(platform::Instant(0)));
    return static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(wait).count());
}

int fail(const std::string& reason) {
    std::fprintf(stderr, "two-windows: %s\n", reason.c_str());
    return 3;
}

/// Runs until a window is closed or, if `endsWhenComplete`, until both windows show their content.
void run(PlayerWindow& picture, PlayerWindow& video, bool endsWhenComplete) {
    for (SDL_Event event{}; event.type != SDL_QUIT;) {
        const bool isWindow = event.type == SDL_WINDOWEVENT;
        if (isWindow && event.window.event == SDL_WINDOWEVENT_CLOSE)
            return;
        const bool exposed = isWindow && event.window.event == SDL_WINDOWEVENT_EXPOSED;
        const auto one = picture.turn(exposed && event.window.windowID == picture.id());
        const auto other = video.turn(exposed && event.window.windowID == video.id());
        if (endsWhenComplete && picture.isComplete() && video.isComplete())
            return;
        event = {};
        SDL_WaitEventTimeout(&event, timeoutOf(one, other));
    }
}

} // namespace

int main(int argc, char** argv) {
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    const bool writes = arguments.size() == 5 && arguments[2] == "--pictures";
    if (arguments.size() != 2 && !writes)
        return fail("usage: two-windows PICTURE VIDEO [--pictures ONE.png OTHER.png]");
    if (SDL_Init(SDL_INIT_VIDEO) != 0)
        return fail(SDL_GetError());
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_ES);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 2);
    bool isWritten = true;
    {
        const std::uint32_t wakeUpEvent = SDL_RegisterEvents(1);
        PlayerWindow picture("Picture", 640, 360, wakeUpEvent);
        PlayerWindow video("Video", 480, 480, wakeUpEvent);
        if (!picture.isReady() || !video.isReady())
            return fail("there is no OpenGL ES 2.0 context for two windows");
        picture.show(arguments[0], false);
        video.show(arguments[1], true);
        run(picture, video, writes);
        if (writes)
            isWritten = picture.writePicture(arguments[3]) && video.writePicture(arguments[4]);
    }
    SDL_Quit();
    return isWritten ? 0 : 1;
}
