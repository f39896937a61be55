#include "Fuzz/Property.h"

#include <algorithm>

namespace fuzz {
namespace {

/// Control characters are one byte, or two bytes in UTF-8 that begin with 0xC2.
bool isPrintable(std::string_view text) {
    unsigned char before = 0;
    return std::all_of(text.begin(), text.end(), [&before](unsigned char byte) {
        const bool ends = before == 0xC2 && byte >= 0x80 && byte < 0xA0;
        before = byte;
        return byte >= 0x20 && byte != 0x7F && !ends;
    });
}

} // namespace

void require(bool holds, std::string_view property) {
    if (!holds)
        throw PropertyBroken("not true: " + std::string(property));
}

void requireReadable(const platform::Error& error, std::string_view subject) {
    require(error.detail.starts_with(subject), "a refusal begins with its subject");
    require(error.detail.size() > subject.size(), "a refusal says why");
    require(isPrintable(error.detail), "a refusal is one line of text: " + error.detail);
}

} // namespace fuzz
