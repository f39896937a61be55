#include "Platform/Foundation/Base64.h"

#include <gtest/gtest.h>

#include <cctype>
#include <cstdint>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

using platform::decodeBase64;

namespace {

using Bytes = std::vector<std::uint8_t>;

std::optional<std::string> decodedText(std::string_view text) {
    const auto bytes = decodeBase64(text);
    if (!bytes)
        return std::nullopt;
    return std::string(bytes->begin(), bytes->end());
}

char digit(unsigned value) {
    if (value < 26)
        return static_cast<char>('A' + value);
    if (value < 52)
        return static_cast<char>('a' + value - 26);
    if (value < 62)
        return static_cast<char>('0' + value - 52);
    return value == 62 ? '+' : '/';
}

/// Bit by bit, unlike the decoder.
std::string encoded(const Bytes& bytes) {
    std::string text;
    const std::size_t bits = bytes.size() * 8;
    for (std::size_t first = 0; first < bits; first += 6) {
        unsigned value = 0;
        for (std::size_t bit = first; bit < first + 6; ++bit) {
            const bool set = bit < bits && (bytes[bit / 8] >> (7 - bit % 8) & 1) != 0;
            value = value * 2 + (set ? 1 : 0);
        }
        text += digit(value);
    }
    text.resize((text.size() + 3) / 4 * 4, '=');
    return text;
}

} // namespace

TEST(Base64, DecodesTheTextbookExamples) {
    EXPECT_EQ(decodedText(""), "");
    EXPECT_EQ(decodedText("Zg=="), "f");
    EXPECT_EQ(decodedText("Zm8="), "fo");
    EXPECT_EQ(decodedText("Zm9v"), "foo");
    EXPECT_EQ(decodedText("Zm9vYg=="), "foob");
    EXPECT_EQ(decodedText("Zm9vYmE="), "fooba");
    EXPECT_EQ(decodedText("Zm9vYmFy"), "foobar");
}

TEST(Base64, DecodesEveryDigit) {
    std::string all;
    for (unsigned value = 0; value < 64; ++value)
        all += digit(value);
    const auto bytes = decodeBase64(all);
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(encoded(*bytes), all);
}

TEST(Base64, DecodesBytesOfEveryLength) {
    std::mt19937 random(3);
    std::uniform_int_distribution<int> byte(0, 255);
    for (std::size_t length = 0; length < 200; ++length) {
        Bytes bytes(length);
        for (std::uint8_t& value : bytes)
            value = static_cast<std::uint8_t>(byte(random));
        ASSERT_EQ(decodeBase64(encoded(bytes)), bytes) << length;
    }
}

TEST(Base64, RefusesALengthThatIsNoMultipleOfFour) {
    for (const char* text : {"Z", "Zg", "Zg=", "Zm9vY", "Zm9vYg="})
        EXPECT_FALSE(decodeBase64(text).has_value()) << text;
}

TEST(Base64, RefusesPaddingAnywhereButAtTheEnd) {
    for (const char* text : {"====", "A===", "Zg==Zg==", "=AAA", "AA=A"})
        EXPECT_FALSE(decodeBase64(text).has_value()) << text;
}

TEST(Base64, RefusesEveryOtherCharacter) {
    for (int code = 0; code < 256; ++code) {
        const char c = static_cast<char>(code);
        const bool isDigit = code < 128 && (std::isalnum(code) != 0 || c == '+' || c == '/');
        const std::string text{'A', c, 'A', 'A'};
        EXPECT_EQ(decodeBase64(text).has_value(), isDigit) << code;
    }
}

TEST(Base64, RefusesLineEndsAndSpaces) {
    EXPECT_FALSE(decodeBase64("Zm9v\nYmE").has_value());
    EXPECT_FALSE(decodeBase64("Zm9v\n").has_value());
    EXPECT_FALSE(decodeBase64(" Zm9v   ").has_value());
    EXPECT_FALSE(decodeBase64("Zm9v\r\nYg").has_value());
}
