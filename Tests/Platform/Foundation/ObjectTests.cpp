#include "Platform/Foundation/Object.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace one::two {
class Nested : public platform::Object {
public:
    class Inner : public platform::Object {};
};
template <class T>
class Holder : public platform::Object {
public:
    class Inner : public platform::Object {};
};
} // namespace one::two

class AtTheTop : public platform::Object {};

namespace {

using platform::make;
using platform::Object;

class Hidden : public Object {};

/// Notes the order of its construction, and hands out itself in `init`.
class Base : public Object {
public:
    explicit Base(std::string name) : steps("construct " + name) {}
    void init() override {
        steps += ", init";
        self = weak(this);
        held = shared(this).use_count();
    }

    std::string steps;
    std::weak_ptr<Base> self;
    long held = 0;
};

class Derived : public Base {
public:
    using Base::Base;
    void init() override {
        Base::init();
        steps += ", init derived";
    }
};

std::string nameOfLocalClass(const std::vector<std::string>& /*arguments*/) {
    class Local : public Object {};
    return make<Local>()->className();
}

} // namespace

TEST(Make, ConstructsWithTheArgumentsThenCompletes) {
    EXPECT_EQ(make<Base>("x")->steps, "construct x, init");
}

TEST(Make, RunsTheInitOfTheClassItMakes) {
    EXPECT_EQ(make<Derived>("x")->steps, "construct x, init, init derived");
}

TEST(Make, LetsAnObjectHandOutItselfInInit) {
    const auto object = make<Base>("x");
    EXPECT_EQ(object->self.lock(), object);
    EXPECT_GE(object->held, 2);
}

TEST(Make, GivesTheOnlyHolder) {
    EXPECT_EQ(make<Base>("x").use_count(), 1);
}

TEST(Make, ForwardsWhatCanOnlyBeMoved) {
    class Owner : public Object {
    public:
        explicit Owner(std::unique_ptr<int> owned) : value(*owned) {}
        int value;
    };
    EXPECT_EQ(make<Owner>(std::make_unique<int>(5))->value, 5);
}

TEST(ClassName, LeavesNamespacesOut) {
    EXPECT_EQ(make<AtTheTop>()->className(), "AtTheTop");
    EXPECT_EQ(make<one::two::Nested>()->className(), "Nested");
    EXPECT_EQ(make<Hidden>()->className(), "Hidden");
    EXPECT_EQ(make<Object>()->className(), "Object");
}

TEST(ClassName, IsThatOfTheRealReceiver) {
    const std::shared_ptr<Object> object = make<Derived>("x");
    EXPECT_EQ(object->className(), "Derived");
}

TEST(ClassName, LeavesTheClassesAroundOut) {
    EXPECT_EQ(make<one::two::Nested::Inner>()->className(), "Inner");
    EXPECT_EQ(make<one::two::Holder<one::two::Nested>::Inner>()->className(), "Inner");
}

TEST(ClassName, KeepsTemplateArgumentsWhole) {
    EXPECT_EQ(make<one::two::Holder<int>>()->className(), "Holder<int>");
    EXPECT_EQ(make<one::two::Holder<one::two::Nested>>()->className(), "Holder<one::two::Nested>");
}

TEST(ClassName, LeavesTheFunctionAroundALocalClassOut) {
    class Local : public Object {};
    EXPECT_EQ(make<Local>()->className(), "Local");
    EXPECT_EQ(nameOfLocalClass({}), "Local");
    const auto inLambda = [](const std::vector<int>&) {
        class InLambda : public Object {};
        return make<InLambda>()->className();
    };
    EXPECT_EQ(inLambda({}), "InLambda");
}
