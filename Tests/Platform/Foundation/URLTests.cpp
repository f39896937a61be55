#include "Platform/Foundation/URL.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>

using platform::URL;

namespace {

std::string pathOf(const char* text) {
    const auto url = URL::URLWithString(text);
    return url ? url->path() : "(refused)";
}

} // namespace

TEST(FileURL, GivesItsPathBack) {
    const URL url = URL::fileURLWithPath("/pictures/one.jpg");
    EXPECT_TRUE(url.isFileURL());
    EXPECT_EQ(url.scheme(), "file");
    EXPECT_EQ(url.path(), "/pictures/one.jpg");
    EXPECT_EQ(url.absoluteString(), "file:///pictures/one.jpg");
}

TEST(FileURL, EncodesWhatNoAddressMayHold) {
    const URL url = URL::fileURLWithPath("/a b/50%/x?y#z\"<>[]^`{|}\\.png");
    EXPECT_EQ(url.absoluteString(),
              "file:///a%20b/50%25/x%3Fy%23z%22%3C%3E%5B%5D%5E%60%7B%7C%7D%5C.png");
    EXPECT_EQ(url.path(), "/a b/50%/x?y#z\"<>[]^`{|}\\.png");
}

TEST(FileURL, GivesEveryByteOfAPathBack) {
    std::string path = "/x";
    for (int byte = 1; byte < 256; ++byte)
        path += static_cast<char>(byte);
    // "./" would be the same place and not the same text.
    path = path.replace(path.find("./"), 2, "/.x");
    const URL url = URL::fileURLWithPath(path);
    EXPECT_EQ(url.path(), path);
    EXPECT_EQ(URL::URLWithString(url.absoluteString()), url);
}

TEST(FileURL, KeepsPathsInOtherScriptsReadableByTheSystem) {
    EXPECT_EQ(URL::fileURLWithPath("/Фото/空.jpg").path(), "/Фото/空.jpg");
    EXPECT_EQ(URL::fileURLWithPath("/é").absoluteString(), "file:///%C3%A9");
}

TEST(FileURL, TakesARelativePathFromTheCurrentFolder) {
    const std::string here = std::filesystem::current_path().string();
    EXPECT_EQ(URL::fileURLWithPath("one.jpg").path(), here + "/one.jpg");
    EXPECT_EQ(URL::fileURLWithPath("./a/../one.jpg").path(), here + "/one.jpg");
}

TEST(FileURL, TakesARelativePathThatLooksLikeAnAddressForAPath) {
    const std::string here = std::filesystem::current_path().string();
    EXPECT_EQ(URL::fileURLWithPath("12:30.jpg").path(), here + "/12:30.jpg");
}

TEST(FileURL, OfNoPathLeadsNowhere) {
    const URL url = URL::fileURLWithPath("");
    EXPECT_TRUE(url.isFileURL());
    EXPECT_EQ(url.path(), "");
}

TEST(URLWithString, TakesAnAbsoluteAddressAsItIs) {
    const auto url = URL::URLWithString("https://example.org/a/b.jpg?size=2#top");
    ASSERT_TRUE(url.has_value());
    EXPECT_EQ(url->scheme(), "https");
    EXPECT_FALSE(url->isFileURL());
    EXPECT_EQ(url->absoluteString(), "https://example.org/a/b.jpg?size=2#top");
}

TEST(URLWithString, PutsTheSchemeInLowerCase) {
    const auto url = URL::URLWithString("FILE:///a.jpg");
    ASSERT_TRUE(url.has_value());
    EXPECT_EQ(url->scheme(), "file");
    EXPECT_TRUE(url->isFileURL());
    EXPECT_EQ(url->path(), "/a.jpg");
    EXPECT_EQ(url->absoluteString(), "FILE:///a.jpg");
}

TEST(URLWithString, RefusesWhatHasNoScheme) {
    for (const char* text :
         {"", ":", "://x", "one.jpg", "/one.jpg", "1a://x", "a_b://x", "-a:x", "a/b:c", "ä://x"})
        EXPECT_FALSE(URL::URLWithString(text).has_value()) << text;
}

TEST(URLWithString, TakesSchemesOfEveryAllowedCharacter) {
    const auto url = URL::URLWithString("a1+-.://x/y");
    ASSERT_TRUE(url.has_value());
    EXPECT_EQ(url->scheme(), "a1+-.");
}

TEST(URLWithString, RefusesCharactersThatNoAddressMayHold) {
    for (const char c : std::string("\"<>\\^`{|} \t\n\r\x7f\x01\xc3"))
        EXPECT_FALSE(URL::URLWithString(std::string("http://x/") + c).has_value())
            << static_cast<int>(c);
    EXPECT_FALSE(URL::URLWithString(std::string_view("http://x/\0y", 11)).has_value());
}

TEST(URLPath, LiesBehindTheAuthority) {
    EXPECT_EQ(pathOf("http://example.org/a/b"), "/a/b");
    EXPECT_EQ(pathOf("http://user@example.org:80/a"), "/a");
    EXPECT_EQ(pathOf("http://example.org"), "");
    EXPECT_EQ(pathOf("http://example.org/"), "/");
    EXPECT_EQ(pathOf("file:///a"), "/a");
    EXPECT_EQ(pathOf("file:/a"), "/a");
    EXPECT_EQ(pathOf("file://localhost/a"), "/a");
    EXPECT_EQ(pathOf("mailto:someone"), "someone");
}

TEST(URLPath, LeavesQueryAndFragmentOut) {
    EXPECT_EQ(pathOf("http://h/a?b"), "/a");
    EXPECT_EQ(pathOf("http://h/a#b"), "/a");
    EXPECT_EQ(pathOf("http://h/a?b/c#d/e"), "/a");
}

TEST(URLPath, IsEmptyWhenTheQueryFollowsTheAuthority) {
    EXPECT_EQ(pathOf("http://h?from=/a"), "");
    EXPECT_EQ(pathOf("http://h#/a"), "");
}

TEST(URLPath, IsPercentDecoded) {
    EXPECT_EQ(pathOf("http://h/a%20b%2Fc"), "/a b/c");
    EXPECT_EQ(pathOf("http://h/%c3%A9"), "/é");
    EXPECT_EQ(pathOf("http://h/a%3Fb?c"), "/a?b");
}

TEST(URLPath, KeepsAPercentSignThatEscapesNothing) {
    EXPECT_EQ(pathOf("http://h/100%"), "/100%");
    EXPECT_EQ(pathOf("http://h/%4"), "/%4");
    EXPECT_EQ(pathOf("http://h/%zz%4g"), "/%zz%4g");
    EXPECT_EQ(pathOf("http://h/%%41"), "/%A");
}

TEST(URL, EqualsAnotherOfTheSameText) {
    EXPECT_EQ(URL::URLWithString("http://h/a"), URL::URLWithString("http://h/a"));
    EXPECT_NE(URL::URLWithString("http://h/a"), URL::URLWithString("http://h/b"));
    EXPECT_EQ(URL::fileURLWithPath("/a"), URL::URLWithString("file:///a"));
}
