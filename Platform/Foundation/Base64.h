#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace platform {

/// Decodes standard base64 text, padding included.
///
/// Errors: none when the text holds anything else, a line end included.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> decodeBase64(std::string_view text);

} // namespace platform
