// What a Load tells of its statements that fail.
#include <QApplication>
#include <QTest>

#include <basic/runtime_error.h>
#include <forms/runtime.h>
#include <services/translation.h>
#include <support/boxes.h>

#include "load_statements.h"

using namespace quardele;

namespace {

constexpr int kNumber = 3024;

void Fail() {
    throw basic::RuntimeError(kNumber, u"Fichier introuvable.");
}

}  // namespace

class LoadStatementsTest : public QObject {
    Q_OBJECT

 private slots:
    void cleanup() { services::Translation() = {}; }

    void AFailureIsToldWithItsStepAndTheNextStatementRuns();
    void TheStepIsTheOneOfTheFailure();
    void TheTextIsNotTranslated();
};

void LoadStatementsTest::AFailureIsToldWithItsStepAndTheNextStatementRuns() {
    support::BoxAnswerer boxes;
    shell::LoadStatements statement;
    bool ran = false;
    statement(Fail);
    statement([&] { ran = true; });
    QVERIFY(ran);
    QCOMPARE(boxes.Shown().size(), std::size_t{1});
    const support::ShownBox& box = boxes.Shown().front();
    QCOMPARE(box.text, QStringLiteral("Load: (0) : Fichier introuvable."));
    QCOMPARE(box.icon, QString());
    QCOMPARE(box.button, QStringLiteral("OK"));
}

void LoadStatementsTest::TheStepIsTheOneOfTheFailure() {
    support::BoxAnswerer boxes;
    shell::LoadStatements statement;
    for (const int step : {10, 20, 30}) {
        statement.ETAPE = step;
        statement(Fail);
    }
    QCOMPARE(boxes.TakeTexts(), (std::vector<QString>{QStringLiteral("Load: (10) : Fichier introuvable."),
                                                      QStringLiteral("Load: (20) : Fichier introuvable."),
                                                      QStringLiteral("Load: (30) : Fichier introuvable.")}));
}

void LoadStatementsTest::TheTextIsNotTranslated() {
    support::BoxAnswerer boxes;
    // There is no table: a text that is looked up has a box of its own.
    services::Translation().TranslationOn = true;
    shell::LoadStatements statement;
    statement.ETAPE = 3;
    statement(Fail);
    QCOMPARE(boxes.TakeTexts(), std::vector<QString>{QStringLiteral("Load: (3) : Fichier introuvable.")});
}

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    LoadStatementsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "load_statements_test.moc"
