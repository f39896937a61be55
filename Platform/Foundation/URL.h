#pragma once

#include "Platform/Foundation/Export.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The address of a file or of a network resource.
///
/// Thread: any; thread-safe. A URL is immutable.
class ZANTO_EXPORT URL {
public:
    /// The address of a file. A relative path is resolved against the current folder at the time of
    /// the call.
    [[nodiscard]] static URL fileURLWithPath(const std::string& path);

    /// Parses an absolute address: `scheme:rest`. Errors: `nullopt` when it has no scheme or
    /// contains a character that is not allowed in an address.
    [[nodiscard]] static std::optional<URL> URLWithString(std::string_view text);

    [[nodiscard]] bool isFileURL() const { return scheme_ == "file"; }
    /// In lower case: "file", "https".
    [[nodiscard]] const std::string& scheme() const { return scheme_; }
    /// The part after the authority, percent-decoded, without query and fragment.
    [[nodiscard]] std::string path() const;
    [[nodiscard]] const std::string& absoluteString() const { return text_; }

    friend bool operator==(const URL&, const URL&) = default;

private:
    URL(std::string text, std::string scheme);
    std::string text_;
    std::string scheme_;
};

} // namespace platform
