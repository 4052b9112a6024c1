// Late-bound values, and what the session's factory says when there is no bridge.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <memory>
#include <string>

#include <automation/object.h>
#include <basic/conversion.h>

namespace quardele::tests {

namespace {

using automation::Missing;
using automation::ObjectPtr;
using automation::Value;
using basic::RuntimeError;

template <class Action>
int NumberOf(const Action& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

/// An object that answers nothing.
class Silent final : public automation::Object {
 public:
    Value Call(automation::TextView, std::span<const Value>,
               std::span<const automation::NamedArgument>) override {
        return {};
    }
    Value Get(automation::TextView) override { return {}; }
    void Set(automation::TextView, const Value&) override {}
};

TEST(AutomationValue, HoldsAPlainValue) {
    EXPECT_EQ(Value(12).Plain(), basic::Variant(12));
    EXPECT_EQ(Value(u"é€").Plain(), basic::Variant(u"é€"));
    EXPECT_EQ(Value(true).Plain(), basic::Variant(true));
    EXPECT_TRUE(Value().Plain().IsEmpty());
}

TEST(AutomationValue, IsEmptyWhenLeftOut) {
    EXPECT_TRUE(Value(Missing{}).IsMissing());
    EXPECT_TRUE(Value(Missing{}).Plain().IsEmpty());
    EXPECT_FALSE(Value().IsMissing());
}

TEST(AutomationValue, GivesAnObjectOnlyWhenItHoldsOne) {
    const ObjectPtr object = std::make_shared<Silent>();
    EXPECT_EQ(Value(object).Pointer(), object);
    EXPECT_EQ(&Value(object).AsObject(), object.get());
    EXPECT_EQ(NumberOf([&] { (void)Value(object).Plain(); }), 438);
    EXPECT_EQ(NumberOf([] { (void)Value(12).Pointer(); }), 424);
    EXPECT_EQ(NumberOf([] { (void)Value(12).AsObject(); }), 424);
    EXPECT_EQ(NumberOf([] { (void)Value(ObjectPtr()).Pointer(); }), 91);
}

TEST(AutomationValue, ComparesByTypeAndContent) {
    EXPECT_EQ(Value(u"a"), Value(u"a"));
    EXPECT_NE(Value(1), Value(1.0));
    EXPECT_NE(Value(), Value(Missing{}));
}

/// The factory with an environment variable set for one test.
class WithoutBridge : public testing::Test {
 protected:
    ~WithoutBridge() override { unsetenv("QUARDELE_WRITER_BRIDGE"); }

    /// What CreateObject says when the plug-in is to be that file.
    static std::string Complaint(const std::filesystem::path& bridge) {
        setenv("QUARDELE_WRITER_BRIDGE", bridge.c_str(), 1);
        try {
            (void)automation::SessionFactory().CreateObject(u"Word.Application");
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), basic::error::kCannotCreateObject);
            return basic::ToUtf8(error.Description());
        }
        return {};
    }
};

TEST_F(WithoutBridge, ComplainsThatNoObjectCanBeCreated) {
    EXPECT_THAT(Complaint("/nowhere/libquardele_writer_bridge.so"),
                testing::HasSubstr("ne peut pas être chargé"));
}

TEST_F(WithoutBridge, ComplainsAboutAFileThatIsNoLibrary) {
    const auto file =
        std::filesystem::temp_directory_path() / ("quardele-no-library-" + std::to_string(getpid()) + ".so");
    std::ofstream(file) << "no library";
    EXPECT_THAT(Complaint(file), testing::HasSubstr("ne peut pas être chargé"));
    std::filesystem::remove(file);
}

TEST_F(WithoutBridge, RefusesABridgeOfAnotherVersion) {
    EXPECT_THAT(Complaint(OTHER_VERSION_BRIDGE), testing::HasSubstr("autre version"));
}

}  // namespace

}  // namespace quardele::tests
