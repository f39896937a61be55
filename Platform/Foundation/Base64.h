#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace platform {

/// Decodes standard base64 text, including its padding.
///
/// Errors: `nullopt` for any other text; line ends are not allowed either.
[[nodiscard]] std::optional<std::vector<std::uint8_t>> decodeBase64(std::string_view text);

} // namespace platform
