// Embeds the player in a program with its own window, GL context and loop: docs/embedding.md.
// embedded-in-sdl [PICTURE] [--picture FILE.png]   writes what is shown once complete, and exits
#include <HVViewer/ZantoPlayerFramework.h>
#include <Hosts/Embedded/EmbeddedHost.h>
#include <Platform/Foundation/MainQueue.h>
#include <Platform/Imaging/ImageEncoder.h>
#include <SDL.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>

namespace {

int fail(const std::string& reason) {
    std::fprintf(stderr, "embedded-in-sdl: %s\n", reason.c_str());
    return 3;
}

bool writePicture(zanto::EmbeddedHost& host, const std::string& path) {
    const auto picture = host.snapshot(1.0);
    const auto encoded = picture ? platform::encodePng(*picture.value()) : picture.error();
    if (!encoded)
        return false;
    const std::string_view bytes(reinterpret_cast<const char*>(encoded.value().data()),
                                 encoded.value().size());
    return static_cast<bool>(std::ofstream(path, std::ios::binary) << bytes);
}

/// The timeout for SDL in whole milliseconds; -1 waits indefinitely.
int timeoutOf(const zanto::EmbeddedHost& host, const zanto::EmbeddedHostStatus& status) {
    if (status.drawNow || !status.nextDeadline)
        return status.drawNow ? 0 : -1;
    const auto left = std::max(platform::Instant(0), *status.nextDeadline - host.now());
    return static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(left).count());
}

} // namespace

int main(int argc, char** argv) {
    std::string input = ZANTO_EXAMPLE_PANORAMA;
    std::string output;
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--picture" && i + 1 < argc)
            output = argv[++i];
        else
            input = argv[i];
    }
    if (SDL_Init(SDL_INIT_VIDEO) != 0)
        return fail(SDL_GetError());
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_PROFILE_MASK, SDL_GL_CONTEXT_PROFILE_ES);
    SDL_GL_SetAttribute(SDL_GL_CONTEXT_MAJOR_VERSION, 2);
    SDL_Window* const window = SDL_CreateWindow("Embedded", 0, 0, 640, 360, SDL_WINDOW_OPENGL);
    SDL_GLContext context = window ? SDL_GL_CreateContext(window) : nullptr;
    if (!context)
        return fail(SDL_GetError());

    zanto::EmbeddedHostOptions options;
    options.gl.procAddress = SDL_GL_GetProcAddress;
    options.size = {640, 360};
    options.wakeUp = [type = SDL_RegisterEvents(1)] {
        SDL_Event event{type};
        SDL_PushEvent(&event);
    };
    auto host = zanto::EmbeddedHost::create(options);
    if (!host)
        return fail(host.error().detail);
    auto player = platform::make<ZNTDisplayViewController>();
    player->prepareImageWithUrl(platform::URL::fileURLWithPath(input));
    if (!player->srcImage())
        return 2; // the library has logged the reason
    host.value()->setRootViewController(player);
    host.value()->appear();

    bool isDrawn = false;
    for (SDL_Event event{}; event.type != SDL_QUIT;) {
        const zanto::EmbeddedHostStatus status = host.value()->runDueWork();
        const bool exposed =
            event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_EXPOSED;
        if (status.drawNow || exposed) {
            host.value()->draw(0, {0, 0, 640, 360});
            SDL_GL_SwapWindow(window);
            isDrawn = true;
        }
        if (isDrawn && !output.empty() && platform::MainQueue::main().outstandingWork() == 0)
            break;
        event = {};
        SDL_WaitEventTimeout(&event, timeoutOf(*host.value(), status));
    }
    const bool written = output.empty() || writePicture(*host.value(), output);
    host.value()->setRootViewController(nullptr);
    player.reset(); // destroy the controllers first, then the host, then the context
    host.value().reset();
    SDL_GL_DeleteContext(context);
    SDL_Quit();
    return written ? 0 : 1;
}
