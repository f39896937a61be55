#pragma once

#include "Platform/Foundation/Export.h"

#include <optional>
#include <string>
#include <string_view>

namespace platform {

/// The address of a file or of something on the network.
///
/// Thread: any, it never changes.
class ZANTO_EXPORT URL {
public:
    /// A file by its path; a relative one is taken from the current folder at this moment.
    [[nodiscard]] static URL fileURLWithPath(const std::string& path);

    /// An absolute address: `scheme:rest`. Errors: none when there is no scheme or it holds a
    /// character that no address may hold.
    [[nodiscard]] static std::optional<URL> URLWithString(std::string_view text);

    [[nodiscard]] bool isFileURL() const { return scheme_ == "file"; }
    /// In lower case: "file", "https".
    [[nodiscard]] const std::string& scheme() const { return scheme_; }
    /// What lies behind the authority, percent-decoded, without query and fragment.
    [[nodiscard]] std::string path() const;
    [[nodiscard]] const std::string& absoluteString() const { return text_; }

    friend bool operator==(const URL&, const URL&) = default;

private:
    URL(std::string text, std::string scheme);
    std::string text_;
    std::string scheme_;
};

} // namespace platform
