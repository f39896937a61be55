#include "Platform/Imaging/NamedImage.h"

#include "Platform/Foundation/Bundle.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Foundation/Screen.h"
#include "Platform/Imaging/ImageDecoder.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>
#include <vector>

namespace platform {
namespace {

constexpr int kDensest = 3;
constexpr std::array<std::string_view, kDensest> kSuffixes{"", "@2x", "@3x"};

/// The screen's scale, then the denser ones, then the coarser ones, densest first.
std::vector<int> scalesToTry() {
    const double screen = Screen::mainScreen().scale();
    const int wanted = std::clamp(static_cast<int>(std::ceil(screen)), 1, kDensest);
    std::vector<int> scales;
    for (int scale = wanted; scale <= kDensest; ++scale)
        scales.push_back(scale);
    for (int scale = wanted - 1; scale >= 1; --scale)
        scales.push_back(scale);
    return scales;
}

const std::vector<std::string>& knownEndings() {
    static const std::vector<std::string> endings{".png", ".jpg", ".jpeg", ".webp"};
    return endings;
}

/// A name and its possible file extensions. The name may contain a dot.
struct Parts {
    std::string stem;
    std::vector<std::string> endings;
};

Parts partsOf(std::string_view name) {
    for (const std::string& ending : knownEndings()) {
        if (name.ends_with(ending))
            return {std::string(name.substr(0, name.size() - ending.size())), {ending}};
    }
    return {std::string(name), knownEndings()};
}

ImagePtr decode(const std::string& file, const std::vector<std::uint8_t>& bytes, int scale) {
    auto picture = decodePicture(bytes, Image::decodeLimits());
    if (!picture) {
        log(LogLevel::Error, file + ": " + picture.error().detail);
        return nullptr;
    }
    return std::make_shared<Image>(std::move(picture.value().pixels), scale);
}

} // namespace

ImagePtr imageNamed(std::string_view name) {
    if (name.empty())
        return nullptr;
    const Parts parts = partsOf(name);
    for (const int scale : scalesToTry()) {
        const std::string_view suffix = kSuffixes[static_cast<std::size_t>(scale) - 1];
        for (const std::string& ending : parts.endings) {
            std::string file = parts.stem;
            file.append(suffix).append(ending);
            if (const auto bytes = Bundle::application().data(file))
                return decode(file, *bytes, scale);
        }
    }
    return nullptr;
}

} // namespace platform
