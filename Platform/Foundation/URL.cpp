#include "Platform/Foundation/URL.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <utility>

namespace platform {
namespace {

bool isAlpha(char c) {
    return std::isalpha(static_cast<unsigned char>(c)) != 0;
}

bool isSchemeCharacter(char c) {
    return std::isalnum(static_cast<unsigned char>(c)) != 0 || c == '+' || c == '-' || c == '.';
}

bool staysInPath(char c) {
    constexpr std::string_view punctuation = "/-._~!$&'()*+,;=:@";
    return std::isalnum(static_cast<unsigned char>(c)) != 0 ||
           punctuation.find(c) != std::string_view::npos;
}

std::string percentEncoded(std::string_view path) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    for (const char c : path) {
        if (staysInPath(c)) {
            text += c;
            continue;
        }
        const auto byte = static_cast<unsigned char>(c);
        text += {'%', digits[byte >> 4U], digits[byte & 15U]};
    }
    return text;
}

int hexValue(char c) {
    if (c >= '0' && c <= '9')
        return c - '0';
    const int lower = std::tolower(static_cast<unsigned char>(c));
    return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::string percentDecoded(std::string_view text) {
    std::string path;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool escape = text[i] == '%' && i + 2 < text.size() && hexValue(text[i + 1]) >= 0 &&
                            hexValue(text[i + 2]) >= 0;
        if (!escape) {
            path += text[i];
            continue;
        }
        path += static_cast<char>(hexValue(text[i + 1]) * 16 + hexValue(text[i + 2]));
        i += 2;
    }
    return path;
}

bool mayStandInURL(char c) {
    const auto byte = static_cast<unsigned char>(c);
    constexpr std::string_view forbidden = "\"<>\\^`{|}";
    return byte > 0x20 && byte < 0x7f && forbidden.find(c) == std::string_view::npos;
}

} // namespace

URL::URL(std::string text, std::string scheme)
    : text_(std::move(text)), scheme_(std::move(scheme)) {}

URL URL::fileURLWithPath(const std::string& path) {
    std::error_code ignored; // without a current folder the path stays as it is
    const auto absolute = std::filesystem::absolute(path, ignored);
    const std::string full = ignored ? path : absolute.lexically_normal().string();
    return {"file://" + percentEncoded(full), "file"};
}

std::optional<URL> URL::URLWithString(std::string_view text) {
    const auto colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0 || !isAlpha(text.front()))
        return std::nullopt;
    std::string scheme(text.substr(0, colon));
    if (!std::all_of(scheme.begin(), scheme.end(), isSchemeCharacter) ||
        !std::all_of(text.begin(), text.end(), mayStandInURL))
        return std::nullopt;
    std::transform(scheme.begin(), scheme.end(), scheme.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return URL(std::string(text), std::move(scheme));
}

std::string URL::path() const {
    std::string_view rest = std::string_view(text_).substr(scheme_.size() + 1);
    if (rest.starts_with("//")) {
        const auto end = rest.find_first_of("/?#", 2);
        rest = end == std::string_view::npos ? std::string_view() : rest.substr(end);
    }
    return percentDecoded(rest.substr(0, rest.find_first_of("?#")));
}

} // namespace platform
