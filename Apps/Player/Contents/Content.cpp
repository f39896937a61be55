#include "Apps/Player/Contents/Content.h"

#include "Apps/Player/Contents/BuiltInPanorama.h"
#include "Apps/Player/Terminal/Message.h"
#include "HVViewer/Model/Streamer/ZNTStreamer.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <string_view>

namespace {

constexpr std::array<std::string_view, 4> kPictureEndings{".jpg", ".jpeg", ".png", ".webp"};
constexpr std::array<std::string_view, 14> kVideoEndings{".mp4", ".m4v",  ".mov",  ".mkv", ".webm",
                                                         ".ts",  ".m2ts", ".m3u8", ".mpd", ".ogv",
                                                         ".avi", ".3gp",  ".flv",  ".mpg"};

/// The file extension in the path, in lower case.
std::string endingOf(const std::string& input) {
    const auto url = urlOf(input);
    std::string ending = std::filesystem::path(url ? url->path() : input).extension().string();
    std::transform(ending.begin(), ending.end(), ending.begin(), [](char c) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    });
    return ending;
}

bool beginsLikeAPicture(const std::string& path) {
    std::array<char, 12> bytes{};
    std::ifstream(path, std::ios::binary).read(bytes.data(), bytes.size());
    const std::string_view start(bytes.data(), bytes.size());
    return start.starts_with("\xff\xd8\xff") || start.starts_with("\x89PNG") ||
           (start.starts_with("RIFF") && start.substr(8) == "WEBP");
}

/// Percent-encodes the characters of a pasted address that a URL must not contain.
std::string escaped(const std::string& address) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    constexpr std::string_view escapedToo = " \"<>\\^`{|}";
    std::string text;
    for (const char c : address) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte < 0x80 && escapedToo.find(c) == std::string_view::npos)
            text += c;
        else
            text.append({'%', digits[byte >> 4], digits[byte & 15]});
    }
    return text;
}

template <class Endings>
bool contains(const Endings& endings, const std::string& ending) {
    return std::find(endings.begin(), endings.end(), ending) != endings.end();
}

} // namespace

std::optional<platform::URL> urlOf(const std::string& input) {
    if (input.find("://") != std::string::npos)
        return platform::URL::URLWithString(escaped(input));
    return platform::URL::fileURLWithPath(input);
}

ContentAction::Kind kindOf(const std::string& input) {
    using Kind = ContentAction::Kind;
    const std::string ending = endingOf(input);
    if (contains(kPictureEndings, ending))
        return Kind::Picture;
    if (contains(kVideoEndings, ending))
        return Kind::Video;
    const auto url = urlOf(input);
    const bool isPicture = url && url->isFileURL() && beginsLikeAPicture(url->path());
    return isPicture ? Kind::Picture : Kind::Video;
}

std::string nameOfContent(const std::string& input) {
    if (input.empty())
        return "the built-in panorama";
    const auto url = input.find("://") == std::string::npos ? std::nullopt : urlOf(input);
    const std::filesystem::path path = url && !url->path().empty() ? url->path() : input;
    return path.filename().empty() ? input : path.filename().string();
}

void prepareContent(TracedController& controller, const std::string& input) {
    if (input.empty())
        controller.prepareImage(builtInPanorama());
    else if (!urlOf(input))
        controller.fail({platform::ErrorCode::Unsupported, "it is not a valid address"});
    else if (kindOf(input) == ContentAction::Kind::Video)
        controller.prepareVideoWithUrl(urlOf(input));
    else
        controller.prepareImageWithUrl(urlOf(input));
}

ContentState stateOfContent(const TracedController& controller, const std::string& input) {
    if (const auto& failure = controller.failure()) {
        tell(input + ": " + failure->detail);
        return ContentState::Failed;
    }
    if (const auto streamer = controller.streamer())
        return streamer->status() == platform::PlayerStatus::ReadyToPlay ? ContentState::Open
                                                                         : ContentState::Pending;
    if (controller.srcImage())
        return ContentState::Open;
    // For a file that is not an image, the library has already logged the file and the reason.
    const bool isOnItsWay = controller.srcImageUrl() && !controller.isReadyForDisplay() &&
                            !controller.srcImageUrl()->isFileURL();
    return isOnItsWay ? ContentState::Pending : ContentState::Failed;
}
