// What a report reads of a large table, counted in pages, so that no clock decides.
#include <gtest/gtest.h>

#include "../../data/traffic/traffic.h"
#include "open_file.h"
#include "report_folder.h"

namespace quardele::engine {

namespace {

class SeekTest : public testing::Test {
 protected:
    void SetUp() override {
        QStringList statements{
            QStringLiteral("CREATE TABLE TVEH (IMMAT TEXT(20) PRIMARY KEY, NOTE TEXT(255))")};
        for (int i = 0; i < 800; ++i) {
            statements += QStringLiteral("INSERT INTO TVEH VALUES ('V%1', '%2')")
                              .arg(i)
                              .arg(QString(250, QChar(u'a' + i % 26)));
        }
        folder_.MakeData(QStringLiteral("DONNEES.MDB"), statements);
    }

    /// Pages that a report with such a selection asks for, those in memory included.
    [[nodiscard]] std::uint64_t PagesFor(const QString& selection) const {
        const auto report =
            folder_.Open(QStringLiteral("<selection>%1</selection><details><section><field "
                                        "width=\"900\" value=\"{TVEH.IMMAT}\"/></section></details>")
                             .arg(selection));
        const auto file = dao::OpenFile::Open(
            folder_.NativePath(QStringLiteral("DONNEES.MDB")).toStdU16String(), jet::OpenMode::Shared);
        QStringList pages;
        const std::uint64_t asked =
            tests::TrafficIn(*file->Database(), [&] { pages = test::PagesOf(*report->Compose()); }).asked;
        EXPECT_EQ(pages, QStringList(QStringLiteral("V777")));
        return asked;
    }

    test::ReportFolder folder_;
};

TEST_F(SeekTest, AnEqualityOnAKeyTouchesAFewPages) {
    constexpr std::uint64_t kFew = 25;
    constexpr std::uint64_t kPagesOfTheTable = 50;
    EXPECT_LE(PagesFor(QStringLiteral("{TVEH.IMMAT}='V777'")), kFew);
    EXPECT_LE(PagesFor(QStringLiteral("{TVEH.IMMAT}='v777' and Len({TVEH.NOTE}) &gt; 5")), kFew);
    EXPECT_GT(PagesFor(QStringLiteral("Left({TVEH.IMMAT}, 20)='V777'")), kPagesOfTheTable);
}

}  // namespace

}  // namespace quardele::engine
