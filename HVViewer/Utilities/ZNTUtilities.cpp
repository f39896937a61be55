#include "HVViewer/Utilities/ZNTUtilities.h"

#include "Platform/Foundation/Device.h"
#include "Platform/Foundation/DispatchQueue.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/MainQueue.h"
#include "Platform/Foundation/URLSession.h"
#include "Platform/Imaging/ImageDecoder.h"

#include <locale>
#include <sstream>
#include <string>
#include <utility>

using platform::Image;
using platform::ImagePtr;
using platform::LogLevel;

namespace {

/// A download that has ended, on its way to the completion.
struct Arrival {
    platform::URL url;
    ZNTUtilities::ImageCompletion completion;
    std::optional<platform::Error> error;
    std::shared_ptr<const platform::Data> data; // null after an error
    int status = 0;                             // HTTP status of the response
    platform::DecodeLimits limits = Image::decodeLimits();
    std::optional<platform::Result<platform::DecodedPicture>> picture = {};
    std::shared_ptr<platform::MainQueue::Work> work = platform::MainQueue::main().beginWork();
};

std::string sizeText(int widthPx, int heightPx) {
    return std::to_string(widthPx) + " x " + std::to_string(heightPx);
}

void logLosses(const std::string& subject, const platform::DecodedPicture& picture) {
    if (!picture.warning.empty())
        platform::log(LogLevel::Warning,
                      subject + " is shown although damaged: " + picture.warning);
    const auto& pixels = picture.pixels;
    if (pixels.widthPx != picture.sourceWidthPx || pixels.heightPx != picture.sourceHeightPx)
        platform::log(LogLevel::Warning,
                      subject + " is scaled down from " +
                          sizeText(picture.sourceWidthPx, picture.sourceHeightPx) + " to " +
                          sizeText(pixels.widthPx, pixels.heightPx) + " pixels");
}

/// The image keeps the encoded data, which is much smaller than its pixels, and decodes it again on
/// demand.
ImagePtr imageOf(Arrival& arrival) {
    const std::string subject = "image \"" + arrival.url.absoluteString() + "\"";
    if (!*arrival.picture) {
        constexpr int firstFailure = 400;
        const std::string answer =
            arrival.status >= firstFailure
                ? "the server answered with status " + std::to_string(arrival.status) + "; "
                : "";
        platform::log(LogLevel::Error,
                      subject + " is not shown: " + answer + arrival.picture->error().detail);
        return nullptr;
    }
    platform::DecodedPicture picture = std::move(*arrival.picture).value();
    logLosses(subject, picture);
    return std::make_shared<const Image>(
        std::move(picture.pixels),
        [data = arrival.data, limits = arrival.limits]() -> std::optional<platform::PixelStorage> {
            auto again = platform::decodePicture(*data, limits);
            if (!again)
                return std::nullopt;
            return std::move(again).value().pixels;
        });
}

void deliver(Arrival& arrival) {
    const ImagePtr image = arrival.picture ? imageOf(arrival) : nullptr;
    arrival.completion(image, arrival.error);
}

/// Downloads without data use the same queue, so that they do not overtake those that have to be
/// decoded. The arrival is moved and never shared, so that the completion is destroyed on the main
/// thread.
void decodeElsewhere(std::shared_ptr<Arrival> arrival) {
    platform::DispatchQueue::background().async([arrival = std::move(arrival)]() mutable {
        if (arrival->data)
            arrival->picture = platform::decodePicture(*arrival->data, arrival->limits);
        platform::MainQueue::main().async([arrival = std::move(arrival)] { deliver(*arrival); });
    });
}

} // namespace

std::shared_ptr<platform::DataTask>
ZNTUtilities::downloadImageWithUrl(const std::optional<platform::URL>& url,
                                   ImageCompletion completion) {
    if (!url || !completion)
        return nullptr;
    const auto own = std::make_shared<std::weak_ptr<platform::DataTask>>();
    auto task = platform::URLSession::sharedSession()->dataTaskWithURL(
        *url, [own, url = *url, completion = std::move(completion)](
                  std::optional<platform::Data> data, std::optional<platform::Error> error) {
            auto arrival = std::make_shared<Arrival>(Arrival{
                .url = url, .completion = completion, .error = std::move(error), .data = {}});
            if (const auto ended = own->lock())
                arrival->status = ended->progress().status;
            if (data)
                arrival->data = std::make_shared<const platform::Data>(*std::move(data));
            decodeElsewhere(std::move(arrival));
        });
    *own = task;
    task->resume();
    return task;
}

bool ZNTUtilities::isIOS10() {
    // Parses the leading number: "10.3.1" is 10.3. The decimal separator is a point in every
    // locale.
    std::istringstream version(platform::Device::currentDevice().systemVersion());
    version.imbue(std::locale::classic());
    float number = 0;
    version >> number;
    return static_cast<double>(number) >= 10.0;
}
