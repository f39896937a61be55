#include "Apps/Player/Output/PictureOutput.h"

#include "Platform/Imaging/ImageEncoder.h"

#include <filesystem>
#include <fstream>

bool PictureOutput::isFile() const {
    return std::filesystem::path(path_).extension() == ".png";
}

std::optional<platform::Error> PictureOutput::write(const std::string& name,
                                                    const platform::Image& picture) const {
    const std::filesystem::path path =
        isFile() ? std::filesystem::path(path_) : std::filesystem::path(path_) / name;
    const auto encoded = platform::encodePng(picture);
    if (!encoded)
        return encoded.error();
    std::error_code ignored; // if the folder cannot be created, opening the file fails
    if (path.has_parent_path())
        std::filesystem::create_directories(path.parent_path(), ignored);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    const auto& bytes = encoded.value();
    file.write(reinterpret_cast<const char*>(bytes.data()),
               static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file)
        return platform::Error{platform::ErrorCode::Unreadable,
                               path.string() + ": cannot be written"};
    return std::nullopt;
}
