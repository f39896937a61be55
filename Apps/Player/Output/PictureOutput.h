#pragma once

#include "Platform/Foundation/Result.h"
#include "Platform/Imaging/Image.h"

#include <optional>
#include <string>

/// Writes rendered images to one file, or into a folder that is created if it is missing.
class PictureOutput {
public:
    /// `path` is a file if it ends in `.png`, otherwise a folder.
    explicit PictureOutput(std::string path) : path_(std::move(path)) {}

    [[nodiscard]] bool isFile() const;

    /// Writes an image: into the folder as `name`; if the output is a file, `name` is ignored.
    ///
    /// Errors: Unreadable (the file cannot be written), those of the encoder.
    [[nodiscard]] std::optional<platform::Error> write(const std::string& name,
                                                       const platform::Image& picture) const;

private:
    std::string path_;
};
