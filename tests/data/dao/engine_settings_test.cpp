// The administrator's choice that the program opens its data files for itself alone.
#include "engine_settings.h"

#include <fstream>

#include "dao_test.h"

namespace quardele::dao {
namespace {

class EngineSettingsTest : public DaoTest {
 protected:
    ~EngineSettingsTest() override { EngineSettings::Session() = before_; }

    [[nodiscard]] bool IsAloneBy(const std::string& text) const {
        const auto file = Installed().File("engine.ini");
        std::ofstream(file) << text;
        return EngineSettings::FromFile(file).alone;
    }
    /// What another process gets that writes to the data database; empty when it could.
    [[nodiscard]] std::string ElsewhereError() const {
        test::Process process = StartElsewhere({"TTYP", "VID", "TTYP_LIBELLE", "Vidange"});
        std::string error = process.ReadOutput();
        EXPECT_EQ(process.Wait() == 0, error.empty());
        return error;
    }

    EngineSettings before_ = EngineSettings::Session();
};

TEST_F(EngineSettingsTest, ExclusiveOpeningIsOneLineOfTheFile) {
    EXPECT_TRUE(IsAloneBy("OUVERTURE=EXCLUSIVE"));
    EXPECT_TRUE(IsAloneBy("; poste unique\r\n ouverture = Exclusive \r\n"));
    EXPECT_FALSE(IsAloneBy(""));
    EXPECT_FALSE(IsAloneBy("OUVERTURE=PARTAGEE\n"));
    EXPECT_FALSE(IsAloneBy("OUVERTURE EXCLUSIVE\n;OUVERTURE=EXCLUSIVE\n"));
    EXPECT_FALSE(IsAloneBy("OUVERTURE=EXCLUSIVE\nOUVERTURE=\n"));
    EXPECT_FALSE(EngineSettings::FromFile(Installed().File("absent.ini")).alone);
}

TEST_F(EngineSettingsTest, WithoutItOthersComeIn) {
    const auto rows = OpenTable(u"TTYP");
    EXPECT_EQ(ElsewhereError(), "");
}

TEST_F(EngineSettingsTest, WithItNobodyElseDoesUntilTheProgramIsDone) {
    EngineSettings::Session().alone = true;
    {
        const auto database = OpenAnew(kData);
        EXPECT_THAT(ElsewhereError(), testing::StartsWith("3356"));
    }
    EXPECT_EQ(ElsewhereError(), "");
}

TEST_F(EngineSettingsTest, WithItTheProgramIsKeptOutByOthers) {
    EngineSettings::Session().alone = true;
    test::Process other = StartElsewhere({"TTYP", "VID", "TTYP_LIBELLE", "?"});
    ASSERT_TRUE(other.WaitForSign());
    EXPECT_EQ(ErrorOf([&] { (void)OpenAnew(kData); }), error::kFileInUse);
    other.Wait();
    EXPECT_EQ(ErrorOf([&] { (void)OpenAnew(kData); }), 0);
}

TEST_F(EngineSettingsTest, DatabasesOfTheProgramStillShareTheFile) {
    EngineSettings::Session().alone = true;
    const auto rows = OpenTable(u"TTYP");
    const auto elsewhere = OpenAnew(kData)->OpenRecordset(u"TTYP", RecordsetType::Dynaset);
    elsewhere->FindFirst(u"TTYP_CODE='VID'");
    elsewhere->Edit();
    elsewhere->SetValue(u"TTYP_LIBELLE", u"Vidange");
    elsewhere->Update();
    rows->SetIndex(u"PrimaryKey");
    rows->Seek(u"=", {u"VID"});
    EXPECT_EQ(rows->Value(u"TTYP_LIBELLE"), Variant(u"Vidange"));
}

}  // namespace
}  // namespace quardele::dao
