#include "Platform/Media/AudioSession.h"

#include <gtest/gtest.h>

#include <utility>

using namespace platform;

namespace {

/// Grants or refuses, and remembers what it was asked for.
class Arbiter final : public AudioArbiter {
public:
    std::optional<Error> setCategory(std::string_view category) override {
        asked += std::string(category) + ";";
        return answer();
    }
    std::optional<Error> setActive(bool active, bool notifyOthers) override {
        asked += std::string(active ? "on" : "off") + (notifyOthers ? " and tell;" : ";");
        return answer();
    }
    std::string asked;
    bool refuses = false;

private:
    [[nodiscard]] std::optional<Error> answer() const {
        return refuses ? std::optional(Error{ErrorCode::Unavailable, "a call is on"})
                       : std::nullopt;
    }
};

} // namespace

TEST(AudioSession, IsGrantedWhereNobodyArbitrates) {
    AudioSession session;
    EXPECT_FALSE(session.setCategory(kAudioSessionCategoryPlayback));
    EXPECT_FALSE(session.setActive(true));
    EXPECT_TRUE(session.isActive());
    EXPECT_EQ(session.category(), kAudioSessionCategoryPlayback);
}

TEST(AudioSession, AsksWhoArbitrates) {
    AudioSession session;
    const auto arbiter = std::make_shared<Arbiter>();
    session.setArbiter(arbiter);
    EXPECT_FALSE(session.setCategory("music"));
    EXPECT_FALSE(session.setActive(true, AudioSession::ActiveOptions::NotifyOthersOnDeactivation));
    EXPECT_FALSE(session.setActive(false));
    EXPECT_EQ(arbiter->asked, "music;on and tell;off;");
}

TEST(AudioSession, StaysAsItWasWhenRefused) {
    AudioSession session;
    const auto arbiter = std::make_shared<Arbiter>();
    session.setArbiter(arbiter);
    arbiter->refuses = true;
    EXPECT_EQ(session.setCategory("music")->detail, "a call is on");
    EXPECT_EQ(session.setActive(true)->code, ErrorCode::Unavailable);
    EXPECT_FALSE(session.isActive());
    EXPECT_EQ(session.category(), "");
}
