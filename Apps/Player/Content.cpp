#include "Apps/Player/Content.h"

#include "Apps/Player/BuiltInPanorama.h"
#include "Apps/Player/Message.h"

void prepareContent(TracedController& controller, const std::string& input) {
    if (input.empty())
        controller.prepareImage(builtInPanorama());
    else if (input.find("://") != std::string::npos)
        controller.prepareImageWithUrl(platform::URL::URLWithString(input));
    else
        controller.prepareImageWithUrl(platform::URL::fileURLWithPath(input));
}

bool contentIsOpen(const TracedController& controller, const std::string& input) {
    if (const auto& failure = controller.failure())
        tell(input + ": " + failure->detail);
    // A file that is no picture has been named and explained by the library.
    return controller.srcImage() != nullptr;
}
