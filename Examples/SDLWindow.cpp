// Shows an image in a window that the library's SDL host makes; docs/embedding.md explains it.
//
// sdl-window [PICTURE] [--picture FILE.png]
//
// --picture writes what the window shows once it is complete, and exits. Without it the window
// stays until it is closed or q is pressed.

#include <HVViewer/ZantoPlayerFramework.h>
#include <Hosts/SDL/SDLHost.h>
#include <Platform/Foundation/MainQueue.h>
#include <Platform/Imaging/ImageEncoder.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>

namespace {

bool writePicture(zanto::EmbeddedHost& host, const std::string& path) {
    const auto picture = host.snapshot(1.0);
    const auto encoded = picture ? platform::encodePng(*picture.value()) : picture.error();
    if (!encoded)
        return false;
    const std::string_view bytes(reinterpret_cast<const char*>(encoded.value().data()),
                                 encoded.value().size());
    return static_cast<bool>(std::ofstream(path, std::ios::binary) << bytes);
}

/// Iterates until a frame with all content has been presented; returns false if the window closed.
bool waitUntilComplete(zanto::SDLHost& host) {
    while (host.framesPresented() == 0 || platform::MainQueue::main().outstandingWork() > 0) {
        if (!host.turn(platform::fromSeconds(0.1)))
            return false;
    }
    return true;
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
    auto created = zanto::SDLHost::create({.title = "A panorama", .size = {640, 360}});
    if (!created) {
        std::fprintf(stderr, "sdl-window: %s\n", created.error().detail.c_str());
        return 3;
    }
    zanto::SDLHost& host = *created.value();

    auto player = platform::make<ZNTDisplayViewController>();
    player->prepareImageWithUrl(platform::URL::fileURLWithPath(input));
    if (!player->srcImage())
        return 2; // the library has logged the reason
    host.embedded().setRootViewController(player);
    host.embedded().appear();
    host.setKeyListener([&host](const zanto::KeyEvent& press) {
        if (press.character == U'q')
            host.quit();
    });
    if (!output.empty())
        return waitUntilComplete(host) && writePicture(host.embedded(), output) ? 0 : 1;
    host.run();
    return 0;
}
