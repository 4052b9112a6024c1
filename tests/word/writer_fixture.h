// A running Writer for tests, with what they ask of it.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include <automation/object.h>
#include <basic/conversion.h>

#include "office_session.h"

namespace quardele::tests {

/// One office for all cases; each case has an application of its own.
class Writer : public testing::Test {
 protected:
    static void SetUpTestSuite() {
        if (OfficeSession::IsAvailable()) {
            session_ = std::make_unique<OfficeSession>();
            keeper_ = Create();
        }
    }
    static void TearDownTestSuite() {
        keeper_.reset();
        session_.reset();
    }
    void SetUp() override {
        if (session_ == nullptr) {
            GTEST_SKIP() << "LibreOffice or the bridge to it is missing";
        }
        word_ = Create();
    }

    static automation::ObjectPtr Create() {
        return automation::SessionFactory().CreateObject(u"Word.Application");
    }

    void New(const std::string& file) { NewFrom(TestTemplate(file)); }
    void NewFrom(const basic::Text& path) {
        word_->Child(u"Documents")->CallNamed(u"Add", {{u"Template", path}});
    }

    [[nodiscard]] automation::ObjectPtr Document() const { return word_->Child(u"ActiveDocument"); }
    [[nodiscard]] automation::ObjectPtr Selection() const { return word_->Child(u"Selection"); }
    [[nodiscard]] automation::ObjectPtr View() const {
        return word_->Child(u"ActiveWindow")->Child(u"ActivePane")->Child(u"View");
    }

    void Select(basic::TextView bookmark) {
        Document()->Child(u"Bookmarks", {basic::Text(bookmark)})->Call(u"Select");
    }
    void Type(basic::TextView text) { Selection()->Call(u"TypeText", {basic::Text(text)}); }
    void MoveRight(int unit, int count = 1) { Selection()->Call(u"MoveRight", {unit, count}); }
    [[nodiscard]] std::string Selected() const { return Utf8(Selection()->Get(u"Text")); }
    [[nodiscard]] std::string At(basic::TextView bookmark) const {
        return Utf8(Document()->Child(u"Bookmarks", {basic::Text(bookmark)})->Child(u"Range")->Get(u"Text"));
    }
    [[nodiscard]] int Column() const { return Number(*Selection()->Child(u"Columns", {1}), u"Index"); }
    static int Number(automation::Object& object, basic::TextView member) {
        return basic::CLng(object.Get(member).Plain());
    }
    static std::string Utf8(const automation::Value& value) {
        return basic::ToUtf8(basic::CStr(value.Plain()));
    }

    void SaveAs(const basic::Text& file) { Document()->CallNamed(u"SaveAs", {{u"FileName", file}}); }

    static inline std::unique_ptr<OfficeSession> session_;
    static inline automation::ObjectPtr keeper_;
    automation::ObjectPtr word_;
};

}  // namespace quardele::tests
