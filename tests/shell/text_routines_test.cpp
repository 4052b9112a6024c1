// Splitting statements, numbers and paths out of texts.
#include <gtest/gtest.h>

#include <basic/resume_next.h>
#include <basic/runtime_error.h>
#include <shell/form_support.h>

using namespace quardele;
using shell::Champ_Vers_Nombre;
using shell::Dossier_Parent;

namespace {

struct Parts {
    QString base = QStringLiteral("before");
    QString where = QStringLiteral("before");
    QString order = QStringLiteral("before");
};

Parts Split(const char* statement) {
    Parts parts;
    shell::SplitRecordSource(QString::fromUtf8(statement), parts.base, parts.where, parts.order);
    return parts;
}

int ErrorOf(const std::function<void()>& call) {
    try {
        call();
    } catch (const basic::RuntimeError& error) {
        return error.Number();
    }
    return 0;
}

struct SplitCase {
    const char* statement;
    const char* base;
    const char* where;
    const char* order;
};

class SplitStatement : public testing::TestWithParam<SplitCase> {};

TEST_P(SplitStatement, GivesItsThreeClauses) {
    const Parts parts = Split(GetParam().statement);
    EXPECT_EQ(parts.base.toStdString(), GetParam().base);
    EXPECT_EQ(parts.where.toStdString(), GetParam().where);
    EXPECT_EQ(parts.order.toStdString(), GetParam().order);
}

INSTANTIATE_TEST_SUITE_P(
    Statements, SplitStatement,
    testing::Values(
        SplitCase{"select a from b;", "SELECT A FROM B", "", ""},
        SplitCase{"select * from t where x='a' order by y desc;", "SELECT * FROM T", "X='A'", "Y DESC"},
        SplitCase{"select * from t order by y", "SELECT * FROM T", "", "Y"},
        SplitCase{"select * from t where x = 1", "SELECT * FROM T", "X = 1", ""},
        SplitCase{"TTYP", "TTYP", "", ""},
        SplitCase{"select * from t where x='été'", "SELECT * FROM T", "X='ÉTÉ'", ""},
        // The first WHERE counts, wherever it stands.
        SplitCase{"select elsewhere from t where a = 1", "SELECT ELSE", "FROM T WHERE A = 1", ""},
        // So does the first ORDER BY, in a literal too; the character behind it goes with the words.
        SplitCase{"select * from t where a = 'order by' order by b", "SELECT * FROM T", "A = '",
                  "ORDER BY B"},
        SplitCase{"select * from t order by[y]", "SELECT * FROM T", "", "Y]"},
        SplitCase{"select * from t;;", "SELECT * FROM T;", "", ""}));

TEST(SplitRecordSource, AnEmptyStatementLeavesTheOutputsAsTheyWere) {
    const Parts parts = Split("");
    EXPECT_EQ(parts.base, QStringLiteral("before"));
    EXPECT_EQ(parts.where, QStringLiteral("before"));
    EXPECT_EQ(parts.order, QStringLiteral("before"));
}

TEST(SplitRecordSource, AStatementThatEndsBehindOrderByIsAnInvalidCall) {
    for (const char* statement : {"select * from t order by", "select * from t order by   ;"}) {
        EXPECT_EQ(ErrorOf([statement] { Split(statement); }), basic::error::kInvalidCall) << statement;
    }
}

TEST(SplitRecordSource, KeepsTheStatementWhenAnOutputIsTheStatementItself) {
    QString statement = QStringLiteral("select * from t where a = 1 order by b");
    QString where;
    QString order;
    shell::SplitRecordSource(statement, statement, where, order);
    EXPECT_EQ(statement, QStringLiteral("SELECT * FROM T"));
    EXPECT_EQ(where, QStringLiteral("A = 1"));
    EXPECT_EQ(order, QStringLiteral("B"));
}

TEST(ChampVersNombre, ABlankTextIsZero) {
    EXPECT_EQ(Champ_Vers_Nombre(QString()), 0);
    EXPECT_EQ(Champ_Vers_Nombre(QStringLiteral("   ")), 0);
}

TEST(ChampVersNombre, FollowsTheDecimalSeparatorOfTheWorkstation) {
    EXPECT_DOUBLE_EQ(Champ_Vers_Nombre(QStringLiteral("1,5")), 1.5);
    EXPECT_DOUBLE_EQ(Champ_Vers_Nombre(QStringLiteral(" -12 ")), -12);
}

TEST(ChampVersNombre, ATextThatIsNoNumberIsATypeMismatch) {
    EXPECT_EQ(ErrorOf([] { (void)Champ_Vers_Nombre(QStringLiteral("douze")); }), basic::error::kTypeMismatch);
}

TEST(DossierParent, StopsAtTheLastBackslashOrColon) {
    EXPECT_EQ(Dossier_Parent(QStringLiteral("C:\\QUARDELE\\VEH")), QStringLiteral("C:\\QUARDELE\\"));
    EXPECT_EQ(Dossier_Parent(QStringLiteral("C:")), QStringLiteral("C:"));
    EXPECT_EQ(Dossier_Parent(QStringLiteral("C:\\")), QStringLiteral("C:\\"));
    EXPECT_EQ(Dossier_Parent(QStringLiteral("C:fiche.txt")), QStringLiteral("C:"));
    EXPECT_EQ(Dossier_Parent(QStringLiteral("VEH")), QString());
    EXPECT_EQ(Dossier_Parent(QString()), QString());
}

TEST(ResumeNext, AFailingStatementIsReportedAndTheNextOneRuns) {
    std::vector<int> reported;
    int ran = 0;
    basic::ResumeNext statement(
        [&](const basic::RuntimeError& error) { reported.push_back(error.Number()); });
    EXPECT_TRUE(statement.Description().empty());
    statement([&] { ++ran; });
    statement([] { throw basic::RuntimeError(basic::error::kOverflow); });
    statement([&] { ++ran; });
    EXPECT_EQ(ran, 2);
    EXPECT_EQ(reported, std::vector<int>{basic::error::kOverflow});
    EXPECT_EQ(statement.Description(), basic::DescriptionOf(basic::error::kOverflow));
}

TEST(ResumeNext, WithoutAHandlerFailuresAreIgnored) {
    basic::ResumeNext statement;
    EXPECT_NO_THROW(statement([] { throw basic::RuntimeError(basic::error::kTypeMismatch); }));
}

}  // namespace
