#include "Platform/Imaging/NamedImage.h"

#include "Platform/Foundation/Bundle.h"
#include "Platform/Foundation/Log.h"
#include "Platform/Imaging/ImageDecoder.h"
#include "Platform/Interface/Screen.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

namespace platform {
namespace {

constexpr int kDensest = 3;

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

std::vector<std::string> endingsToTry(const std::filesystem::path& path) {
    if (path.has_extension())
        return {path.extension().string()};
    return {".png", ".jpg", ".jpeg", ".webp"};
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
    const std::filesystem::path path(name);
    const std::string stem = (path.parent_path() / path.stem()).string();
    for (const int scale : scalesToTry()) {
        const std::string suffix = scale == 1 ? "" : "@" + std::to_string(scale) + "x";
        for (const std::string& ending : endingsToTry(path)) {
            std::string file = stem;
            file.append(suffix).append(ending);
            if (const auto bytes = Bundle::application().data(file))
                return decode(file, *bytes, scale);
        }
    }
    return nullptr;
}

} // namespace platform
