#include "Platform/Foundation/NotificationCenter.h"
#include "Platform/Foundation/Object.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace platform;

namespace {

class Observer : public Object {};

/// Unsubscribes in its destructor, as the classes of the library do.
class TidyObserver : public Object {
public:
    explicit TidyObserver(NotificationCenter& center) : center_(center) {}
    ~TidyObserver() override { center_.removeObserver(this); }

private:
    NotificationCenter& center_;
};

/// A centre of its own, one observer, and what it was told.
struct Scene {
    [[nodiscard]] NotificationCenter::Handler note(const std::string& name) {
        return [this, name](const Notification&) { told += name; };
    }

    NotificationCenter center;
    std::shared_ptr<Observer> observer = make<Observer>();
    std::string told;
};

} // namespace

TEST(Notification, GivesTheEntryOfTheRightKeyAndType) {
    const Notification notification{"name",
                                    {{"frame", Rect{{1, 2}, {3, 4}}}, {"count", std::int64_t{7}}}};
    EXPECT_EQ(notification.value<Rect>("frame"), (Rect{{1, 2}, {3, 4}}));
    EXPECT_EQ(notification.value<std::int64_t>("count"), 7);
}

TEST(Notification, FallsBackForAnotherKeyOrType) {
    const Notification notification{"name", {{"flag", true}}};
    EXPECT_EQ(notification.value<double>("flag", 1.5), 1.5);
    EXPECT_EQ(notification.value<std::string>("text", "none"), "none");
    EXPECT_EQ(notification.value<bool>("missing"), false);
}

TEST(NotificationCenter, TellsOfOneSenderOnlyWhereThatIsAskedFor) {
    Scene s;
    const auto sender = make<Observer>();
    const auto another = make<Observer>();
    s.center.addObserver(s.observer, "one", s.note("its;"), sender.get());
    s.center.addObserver(s.observer, "one", s.note("any;"));
    s.center.post("one", {}, another.get());
    s.center.post("one");
    EXPECT_EQ(s.told, "any;any;");
    s.center.post("one", {}, sender.get());
    EXPECT_EQ(s.told, "any;any;its;any;");
}

TEST(NotificationCenter, TellsWhoAskedForTheName) {
    Scene s;
    s.center.addObserver(s.observer, "one", s.note("1"));
    s.center.addObserver(s.observer, "other", s.note("2"));
    s.center.post("one");
    s.center.post("nobody asked");
    EXPECT_EQ(s.told, "1");
}

TEST(NotificationCenter, HandsOverNameAndUserInfo) {
    Scene s;
    Notification received;
    s.center.addObserver(s.observer, "one", [&](const Notification& n) { received = n; });
    s.center.post("one", {{"value", 2.5}});
    EXPECT_EQ(received.name, "one");
    EXPECT_EQ(received.value<double>("value"), 2.5);
}

TEST(NotificationCenter, TellsInTheOrderOfAsking) {
    Scene s;
    const auto other = make<Observer>();
    s.center.addObserver(s.observer, "one", s.note("a"));
    s.center.addObserver(other, "one", s.note("b"));
    s.center.addObserver(s.observer, "one", s.note("c"));
    s.center.post("one");
    EXPECT_EQ(s.told, "abc");
}

TEST(NotificationCenter, TellsTwiceWhoAskedTwice) {
    Scene s;
    s.center.addObserver(s.observer, "one", s.note("a"));
    s.center.addObserver(s.observer, "one", s.note("a"));
    s.center.post("one");
    EXPECT_EQ(s.told, "aa");
}

TEST(NotificationCenter, TellsNobodyWhoHasGone) {
    Scene s;
    s.center.addObserver(s.observer, "one", s.note("a"));
    s.observer.reset();
    s.center.post("one");
    EXPECT_EQ(s.told, "");
}

TEST(NotificationCenter, HoldsObserversWeakly) {
    Scene s;
    s.center.addObserver(s.observer, "one", s.note("a"));
    EXPECT_EQ(s.observer.use_count(), 1);
}

TEST(NotificationCenter, ForgetsEverythingThatARemovedObserverAskedFor) {
    Scene s;
    const auto other = make<Observer>();
    s.center.addObserver(s.observer, "one", s.note("a"));
    s.center.addObserver(s.observer, "two", s.note("b"));
    s.center.addObserver(other, "one", s.note("c"));
    s.center.removeObserver(s.observer.get());
    s.center.post("one");
    s.center.post("two");
    EXPECT_EQ(s.told, "c");
}

TEST(NotificationCenter, MayBeLeftInTheObserversDestructor) {
    Scene s;
    auto tidy = make<TidyObserver>(s.center);
    s.center.addObserver(tidy, "one", s.note("a"));
    tidy.reset();
    s.center.post("one");
    EXPECT_EQ(s.told, "");
}

TEST(NotificationCenter, StandsAHandlerThatOwnsAnotherObserver) {
    Scene s;
    // Forgetting the first entry destroys the second observer, which leaves in turn.
    auto owned = make<TidyObserver>(s.center);
    s.center.addObserver(s.observer, "one", [owned](const Notification&) {});
    s.center.addObserver(owned, "one", s.note("b"));
    s.center.addObserver(make<Observer>(), "one", s.note("never"));
    owned.reset();
    s.center.removeObserver(s.observer.get());
    s.center.post("one");
    EXPECT_EQ(s.told, "");
}

TEST(NotificationCenter, StandsAnExpiredHandlerThatOwnsAnotherObserver) {
    Scene s;
    auto owned = make<TidyObserver>(s.center);
    s.center.addObserver(s.observer, "one", [owned](const Notification&) {});
    s.center.addObserver(owned, "one", s.note("b"));
    owned.reset();
    s.observer.reset();
    s.center.post("one");
    EXPECT_EQ(s.told, "");
}

TEST(NotificationCenter, LeavesAnObserverAddedWhilePostingToTheNextPost) {
    Scene s;
    s.center.addObserver(s.observer, "one", [&](const Notification&) {
        s.told += "a";
        s.center.addObserver(s.observer, "one", s.note("b"));
    });
    s.center.post("one");
    EXPECT_EQ(s.told, "a");
    s.center.post("one");
    EXPECT_EQ(s.told, "aab");
}

TEST(NotificationCenter, PassesOverAnObserverRemovedWhilePosting) {
    Scene s;
    const auto other = make<Observer>();
    s.center.addObserver(s.observer, "one",
                         [&](const Notification&) { s.center.removeObserver(other.get()); });
    s.center.addObserver(other, "one", s.note("b"));
    s.center.post("one");
    EXPECT_EQ(s.told, "");
}

TEST(NotificationCenter, LetsAHandlerRemoveItself) {
    Scene s;
    s.center.addObserver(s.observer, "one", [&](const Notification&) {
        s.center.removeObserver(s.observer.get());
        s.told += "a"; // what the handler captured is still there
    });
    s.center.addObserver(s.observer, "one", s.note("b"));
    s.center.post("one");
    EXPECT_EQ(s.told, "a");
}

TEST(NotificationCenter, LetsAHandlerPostAnotherName) {
    Scene s;
    s.center.addObserver(s.observer, "one", [&](const Notification&) { s.center.post("two"); });
    s.center.addObserver(s.observer, "one", s.note("1"));
    s.center.addObserver(s.observer, "two", s.note("2"));
    s.center.post("one");
    EXPECT_EQ(s.told, "21");
}

TEST(NotificationCenter, KeepsAnObserverAliveWhileItsHandlerRuns) {
    Scene s;
    const std::weak_ptr<Observer> weak = s.observer;
    s.center.addObserver(s.observer, "one", [&](const Notification&) {
        s.observer.reset();
        EXPECT_FALSE(weak.expired());
    });
    s.center.post("one");
    EXPECT_TRUE(weak.expired());
}

TEST(NotificationCenter, IsOneForTheProcess) {
    EXPECT_EQ(&NotificationCenter::defaultCenter(), &NotificationCenter::defaultCenter());
}
