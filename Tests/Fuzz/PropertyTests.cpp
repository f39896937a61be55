#include "Fuzz/Property.h"

#include <gtest/gtest.h>

#include <string>

using fuzz::PropertyBroken;
using fuzz::requireReadable;
using platform::Error;
using platform::ErrorCode;

namespace {

Error refusal(const std::string& detail) {
    return {ErrorCode::Corrupt, detail};
}

} // namespace

TEST(Property, ThatHoldsIsQuiet) {
    EXPECT_NO_THROW(fuzz::require(true, "all is well"));
}

TEST(Property, ThatIsBrokenIsNamed) {
    try {
        fuzz::require(false, "all is well");
        FAIL() << "nothing was thrown";
    } catch (const PropertyBroken& broken) {
        EXPECT_STREQ(broken.what(), "not true: all is well");
    }
}

TEST(ReadableRefusal, BeginsWithItsSubject) {
    EXPECT_NO_THROW(requireReadable(refusal("script:1: not JSON"), "script:"));
    EXPECT_THROW(requireReadable(refusal("not JSON"), "script:"), PropertyBroken);
}

TEST(ReadableRefusal, SaysWhy) {
    EXPECT_THROW(requireReadable(refusal("script:"), "script:"), PropertyBroken);
    EXPECT_THROW(requireReadable(refusal(""), ""), PropertyBroken);
}

TEST(ReadableRefusal, MayBeInAnyScript) {
    EXPECT_NO_THROW(requireReadable(refusal("unknown mode \"Würfel\" \u00a0"), ""));
}

TEST(ReadableRefusal, HoldsNothingThatATerminalActsOn) {
    for (const char* text : {"a\nb", "a\rb", "a\tb", "a\x1b[2Jb", "a\x7f", "a\xC2\x9b"})
        EXPECT_THROW(requireReadable(refusal(text), ""), PropertyBroken);
}
