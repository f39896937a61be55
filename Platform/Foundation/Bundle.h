#pragma once

#include "Platform/Foundation/Export.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A file that is built into the program: its name, and its content as base64 text.
struct EmbeddedResource {
    std::string_view name;
    std::string_view base64;
};

/// A set of named resources. A lookup searches the registered folders first, then the folder of
/// installed copies, then the built-in resources.
///
/// A file in a folder hides the later ones even when it cannot be read, so that a broken
/// replacement is noticed instead of silently skipped.
///
/// Thread: main.
class ZANTO_EXPORT Bundle {
public:
    Bundle() = default;
    /// `installedFolder` need not exist; if it is empty, there are no installed copies.
    explicit Bundle(std::vector<EmbeddedResource> embedded, std::string installedFolder = {});

    /// The library's own resources: its shaders. Installed copies are found relative to the
    /// library's file, so an installation may be moved.
    [[nodiscard]] static Bundle& framework();

    /// The resources of the host application: the images that it refers to by name. The bundle is
    /// empty until the application adds a folder.
    [[nodiscard]] static Bundle& application();

    /// Folders are searched in the order in which they were added.
    void addFolder(std::string path);
    void removeFolder(std::string_view path);

    /// Returns the resource of that file name. Errors: `nullopt` when it is missing or unreadable.
    [[nodiscard]] std::optional<std::vector<std::uint8_t>> data(std::string_view fileName) const;
    /// Returns the resource `name.type`. Errors: `nullopt` when it is missing or unreadable.
    [[nodiscard]] std::optional<std::vector<std::uint8_t>> data(std::string_view name,
                                                                std::string_view type) const;
    /// Returns the resource `name.type` as text. Errors: as for `data`.
    [[nodiscard]] std::optional<std::string> string(std::string_view name,
                                                    std::string_view type) const;

private:
    std::vector<EmbeddedResource> embedded_;
    std::vector<std::string> folders_;
    std::string installedFolder_;
};

} // namespace platform
