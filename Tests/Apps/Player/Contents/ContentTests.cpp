#include "Apps/Player/Contents/Content.h"
#include "Apps/Player/Output/Trace.h"

#include <gtest/gtest.h>

using Kind = ContentAction::Kind;

TEST(Content, IsNamedByTheLastPartOfItsPath) {
    EXPECT_EQ(nameOfContent(""), "the built-in panorama");
    EXPECT_EQ(nameOfContent("pictures/a b.jpg"), "a b.jpg");
    EXPECT_EQ(nameOfContent("https://example.org/a%20b.mp4?size=1#start"), "a b.mp4");
    EXPECT_EQ(nameOfContent("https://example.org/"), "https://example.org/");
}

TEST(Content, IsWhatItsEndingSaysWhateverFollowsIt) {
    EXPECT_EQ(kindOf("a.JPG"), Kind::Picture);
    EXPECT_EQ(kindOf("https://example.org/a.webp?size=1"), Kind::Picture);
    EXPECT_EQ(kindOf("https://example.org/a.m3u8"), Kind::Video);
    EXPECT_EQ(kindOf("https://example.org/live"), Kind::Video);
}

TEST(Content, MayLieAtAnAddressAsPeopleWriteIt) {
    EXPECT_EQ(urlOf("http://example.org/a b/\xc3\xbc.jpg?q=1%20")->absoluteString(),
              "http://example.org/a%20b/%C3%BC.jpg?q=1%20");
}

TEST(Content, FailsAtWhatIsNoAddress) {
    const auto trace = Trace::create("");
    const auto controller = platform::make<TracedController>(*trace.value());
    prepareContent(*controller, "http://example.org/\n.jpg");
    ASSERT_TRUE(controller->failure());
    EXPECT_EQ(controller->failure()->detail, "it is not a valid address");
    ::testing::internal::CaptureStderr();
    EXPECT_EQ(stateOfContent(*controller, "input"), ContentState::Failed);
    EXPECT_EQ(::testing::internal::GetCapturedStderr(),
              "zanto-player: input: it is not a valid address\n");
}
