#include <HVViewer/ZantoPlayerFramework.h>
#include <Hosts/Headless/HeadlessHost.h>

#include <cstdio>

/// Shows the picture named by its argument, and fails unless a frame of it comes back.
int main(int argc, char** argv) {
    auto host = HeadlessHost::create({{320, 180}});
    if (!host || argc != 2)
        return 1;
    auto player = platform::make<ZNTDisplayViewController>();
    player->prepareImageWithUrl(platform::URL::fileURLWithPath(argv[1]));
    host.value()->embedded().setRootViewController(player);
    host.value()->embedded().appear();
    host.value()->settle();
    const auto picture = host.value()->embedded().snapshot(1);
    if (!player->srcImage() || !picture || picture.value()->widthPx() != 320)
        return 1;
    std::printf("version %.1f\n", ZantoPlayerFrameworkVersionNumber);
    return 0;
}
