// Starting LibreOffice, and the ways in which that fails.
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <automation/object.h>

#include "office_session.h"

namespace quardele::tests {

namespace {

namespace fs = std::filesystem;
using automation::ObjectPtr;
using basic::RuntimeError;

class WriterStart : public testing::Test {
 protected:
    void SetUp() override {
        if (!OfficeSession::IsAvailable()) {
            GTEST_SKIP() << "LibreOffice or the bridge to it is missing";
        }
    }
    void TearDown() override { unsetenv("QUARDELE_LIBREOFFICE"); }

    static ObjectPtr Create() { return automation::SessionFactory().CreateObject(u"Word.Application"); }

    static std::string Complaint() {
        try {
            (void)Create();
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Number(), basic::error::kCannotCreateObject);
            return basic::ToUtf8(error.Description());
        }
        return "none";
    }

    /// An installation whose program is a shell script.
    [[nodiscard]] fs::path InstallationWith(const std::string& script) const {
        const fs::path real = OfficeSession::Installation() / "program";
        const fs::path program = session_.File("office") / "program";
        fs::create_directories(program);
        for (const auto& entry : fs::directory_iterator(real)) {
            fs::create_symlink(entry.path(), program / entry.path().filename());
        }
        fs::remove(program / "soffice.bin");
        std::ofstream(program / "soffice.bin") << "#!/bin/sh\n" << script << '\n';
        fs::permissions(program / "soffice.bin", fs::perms::owner_all);
        return session_.File("office");
    }

    OfficeSession session_;
};

TEST_F(WriterStart, ComplainsWhenLibreOfficeIsNotInstalled) {
    setenv("QUARDELE_LIBREOFFICE", session_.File("nothing").c_str(), 1);
    EXPECT_THAT(Complaint(), testing::HasSubstr("LibreOffice n'est pas installé"));
}

TEST_F(WriterStart, ComplainsWhenLibreOfficeEndsWithAnError) {
    setenv("QUARDELE_LIBREOFFICE", InstallationWith("exit 3").c_str(), 1);
    EXPECT_THAT(Complaint(), testing::HasSubstr("ne démarre pas (code 3)"));
}

TEST_F(WriterStart, GivesUpOnAnOfficeThatAsksForRestartsForEver) {
    setenv("QUARDELE_LIBREOFFICE", InstallationWith("exit 81").c_str(), 1);
    EXPECT_THAT(Complaint(), testing::HasSubstr("il s'arrête aussitôt"));
}

TEST_F(WriterStart, ComplainsWhenTheProfileCannotBeMade) {
    std::ofstream(session_.File("profile")) << "a file stands in the way";
    EXPECT_THAT(Complaint(), testing::HasSubstr("le profil de LibreOffice ne peut pas être créé"));
}

TEST_F(WriterStart, KnowsNoOtherProgram) {
    EXPECT_THROW((void)automation::SessionFactory().CreateObject(u"Excel.Application"), RuntimeError);
    EXPECT_TRUE(session_.Processes().empty());
}

TEST_F(WriterStart, StartsOneOfficeForAllApplicationsAndEndsItWithTheLast) {
    const ObjectPtr first = Create();
    const ObjectPtr second = Create();
    EXPECT_EQ(session_.Processes().size(), 1U);
    first->Call(u"Quit");
    EXPECT_EQ(session_.Processes().size(), 1U);
    second->Call(u"Quit");
    EXPECT_TRUE(session_.Ends());
}

TEST_F(WriterStart, EndsTheOfficeWhenNobodyHoldsTheApplicationAndNobodySeesItsDocuments) {
    {
        const ObjectPtr word = Create();
        word->Set(u"Visible", true);
        word->Child(u"Documents")->Call(u"Add");
    }
    EXPECT_TRUE(session_.Ends());
}

TEST_F(WriterStart, EndsTheOfficeAfterAFileThatIsNoText) {
    std::ofstream(session_.File("CLASSEUR.dot")) << R"(<?xml version="1.0" encoding="UTF-8"?>
<office:document xmlns:office="urn:oasis:names:tc:opendocument:xmlns:office:1.0"
    xmlns:table="urn:oasis:names:tc:opendocument:xmlns:table:1.0" office:version="1.3"
    office:mimetype="application/vnd.oasis.opendocument.spreadsheet">
  <office:body><office:spreadsheet><table:table table:name="A"/></office:spreadsheet></office:body>
</office:document>)";
    const ObjectPtr word = Create();
    try {
        word->Child(u"Documents")->Call(u"Open", {session_.WindowsFile("CLASSEUR.dot")});
        FAIL() << "a workbook was opened";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Number(), 5174);
    }
    EXPECT_FALSE(fs::exists(session_.File(".~lock.CLASSEUR.dot#")));
    word->Call(u"Quit");
    EXPECT_TRUE(session_.Ends());
}

TEST_F(WriterStart, StartsAnewWhenTheOfficeHasEnded) {
    Create()->Call(u"Quit");
    const ObjectPtr word = Create();
    word->Child(u"Documents")->Call(u"Add");
    EXPECT_EQ(word->Child(u"Documents")->Get(u"Count"), automation::Value(1));
}

}  // namespace

}  // namespace quardele::tests
