#pragma once

#include "Platform/Foundation/Result.h"
#include "Platform/Imaging/Image.h"

#include <optional>
#include <string>

/// Where rendered pictures go: one file, or a folder that is made when it is missing.
class PictureOutput {
public:
    /// A file when `path` ends in `.png`.
    explicit PictureOutput(std::string path) : path_(std::move(path)) {}

    [[nodiscard]] bool isFile() const;

    /// Writes a picture: to `name` in the folder; a file takes it whatever the name.
    ///
    /// Errors: Unreadable (the place cannot be written), those of the encoder.
    [[nodiscard]] std::optional<platform::Error> write(const std::string& name,
                                                       const platform::Image& picture) const;

private:
    std::string path_;
};
