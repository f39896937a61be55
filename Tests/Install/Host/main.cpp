// A host application as another project would write it: a controller of its own, shown without a
// window. It leaves with 0 if everything has happened, and with 7 if the library's set-up is
// broken.
#include <HVViewer/ZantoPlayerFramework.h>
#include <Hosts/Headless/HeadlessHost.h>

struct Player : ZNTDisplayViewController {
    bool isLoaded = false, hasStarted = false, hasFailed = false;
    void viewDidLoad() override { ZNTDisplayViewController::viewDidLoad(), isLoaded = true; }
    void downloadImageStarted() override { hasStarted = true; }
    void downloadImageFailedWithError(const platform::Error&) override { hasFailed = true; }
    bool hasHeardAll() const { return isLoaded && hasStarted && hasFailed; }
};

int main(int argc, char** argv) try {
    auto host = zanto::HeadlessHost::create({{320, 180}});
    if (!host || argc != 2)
        return 1;
    auto refused = platform::make<Player>(), player = platform::make<Player>();
    for (const auto& next : {refused, player}) {
        const auto address = next == refused
                                 ? platform::URL::URLWithString("http://127.0.0.1:1/none.jpg")
                                 : platform::URL::fileURLWithPath(argv[1]);
        next->prepareImageWithUrl(address);
        host.value()->embedded().setRootViewController(next);
        host.value()->embedded().appear();
        host.value()->settle();
    }
    const auto picture = host.value()->embedded().snapshot(1);
    return refused->hasHeardAll() && player->srcImage() && picture ? 0 : 2;
} catch (const platform::AssertionFailure&) {
    return 7;
}
