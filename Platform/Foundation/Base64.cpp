#include "Platform/Foundation/Base64.h"

#include <array>
#include <cstddef>

namespace platform {
namespace {

constexpr std::uint8_t kInvalid = 0xff;

constexpr std::array<std::uint8_t, 256> makeTable() {
    constexpr std::string_view alphabet =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::array<std::uint8_t, 256> table{};
    for (auto& value : table)
        value = kInvalid;
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        table[static_cast<unsigned char>(alphabet[i])] = static_cast<std::uint8_t>(i);
    return table;
}

constexpr auto kTable = makeTable();

} // namespace

std::optional<std::vector<std::uint8_t>> decodeBase64(std::string_view text) {
    if (text.size() % 4 != 0)
        return std::nullopt;
    std::size_t padding = 0;
    while (padding < 2 && padding < text.size() && text[text.size() - 1 - padding] == '=')
        ++padding;
    std::vector<std::uint8_t> bytes;
    bytes.reserve(text.size() / 4 * 3);
    std::uint32_t group = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool pad = i + padding >= text.size();
        const std::uint8_t value = pad ? 0 : kTable[static_cast<unsigned char>(text[i])];
        if (value == kInvalid)
            return std::nullopt;
        group = group << 6U | value;
        if (i % 4 != 3)
            continue;
        bytes.push_back(static_cast<std::uint8_t>(group >> 16U));
        bytes.push_back(static_cast<std::uint8_t>(group >> 8U));
        bytes.push_back(static_cast<std::uint8_t>(group));
        group = 0;
    }
    bytes.resize(bytes.size() - padding);
    return bytes;
}

} // namespace platform
