#pragma once

#include "Platform/Foundation/Export.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// A file that was built into a program: its name and its content as base64 text.
struct EmbeddedResource {
    std::string_view name;
    std::string_view base64;
};

/// A set of named resources: those in registered folders first, then those that were installed,
/// then those built in.
///
/// A file in a folder shadows the later ones even when it cannot be read, so that a broken
/// replacement shows instead of being passed over.
///
/// Thread: main.
class ZANTO_EXPORT Bundle {
public:
    Bundle() = default;
    /// The folder of installed copies need not exist; empty: there is none.
    explicit Bundle(std::vector<EmbeddedResource> embedded, std::string installedFolder = {});

    /// The library's own resources: its shaders. Installed copies are looked for where they stand
    /// beside the library, wherever that has been moved to.
    [[nodiscard]] static Bundle& framework();

    /// The host application's own: the pictures that it refers to by name. Empty until it adds a
    /// folder.
    [[nodiscard]] static Bundle& application();

    /// Folders are asked in the order in which they were added.
    void addFolder(std::string path);
    void removeFolder(std::string_view path);

    /// The resource of a file name. Errors: none when it is missing or unreadable.
    [[nodiscard]] std::optional<std::vector<std::uint8_t>> data(std::string_view fileName) const;
    /// The resource `name.type`. Errors: none when it is missing or unreadable.
    [[nodiscard]] std::optional<std::vector<std::uint8_t>> data(std::string_view name,
                                                                std::string_view type) const;
    /// The same as text.
    [[nodiscard]] std::optional<std::string> string(std::string_view name,
                                                    std::string_view type) const;

private:
    std::vector<EmbeddedResource> embedded_;
    std::vector<std::string> folders_;
    std::string installedFolder_;
};

} // namespace platform
