// Each operation of GWORD on Word's double: the members it uses, in their order, its result, and what it does
// when Word fails.
#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

#include <QApplication>
#include <QTest>

#include <basic/conversion.h>
#include <forms/msg_box.h>
#include <forms/runtime.h>
#include <support/boxes.h>

#include "gword_cases.h"
#include "recording_word.h"

namespace quardele::tests {

namespace {

using automation::ObjectPtr;
using basic::RuntimeError;
using word::GWORD;
using Log = std::vector<std::string>;

std::vector<Case> Cases() {
    std::vector<Case> cases = CasesOfLetters();
    std::ranges::move(OtherCases(), std::back_inserter(cases));
    return cases;
}

/// A result as a Basic programmer would write it.
std::string Told(const basic::Variant& result) {
    if (result.Is<bool>()) {
        return result.As<bool>() ? "True" : "False";
    }
    const std::string text = basic::ToUtf8(basic::Joined(result));
    return result.IsEmpty() ? "Empty" : result.IsText() ? '"' + text + '"' : text;
}

QStringList TitlesOf(const support::BoxAnswerer& boxes) {
    QStringList titles;
    for (const support::ShownBox& box : boxes.Shown()) {
        titles << box.title;
    }
    return titles;
}

}  // namespace

class GwordTableTest : public QObject {
    Q_OBJECT

    std::optional<RecordingWord> word_;
    GWORD gword_{[] { return word::CatalogueKey{}; }, forms::ShowBox};
    ObjectPtr application_;

 private slots:
    /// A new application with one document; the log starts behind that.
    void init() {
        word_.emplace();
        word_->bookmarks = {"RS"};
        application_ = word_->CreateObject(u"Word.Application");
        application_->Child(u"Documents")->Call(u"Add");
        word_->TakeLog();
    }

    void UsesTheseMembersAndAnswers_data() {
        QTest::addColumn<int>("number");
        for (int number = 0; number < static_cast<int>(Cases().size()); ++number) {
            QTest::newRow(Cases()[static_cast<std::size_t>(number)].name) << number;
        }
    }
    void UsesTheseMembersAndAnswers() {
        QFETCH(int, number);
        const Case test = Cases()[static_cast<std::size_t>(number)];
        const support::BoxAnswerer boxes;
        QCOMPARE(Told(test.operation(gword_, application_)), Told(test.result));
        QCOMPARE(word_->TakeLog(), test.log);
        QVERIFY(boxes.Shown().empty());
    }

    void FailsInItsOwnWay_data() { UsesTheseMembersAndAnswers_data(); }
    void FailsInItsOwnWay() {
        QFETCH(int, number);
        const Case test = Cases()[static_cast<std::size_t>(number)];
        word_->FailOn(test.failingPath, RuntimeError(4198, u"Échec de la commande."));
        const support::BoxAnswerer boxes;
        QCOMPARE(Told(test.operation(gword_, application_)), Told(test.resultOnFailure));
        if (test.boxTitle == nullptr) {
            QVERIFY(boxes.Shown().empty());
        } else {
            QCOMPARE(boxes.Shown().size(), std::size_t{1});
            QCOMPARE(boxes.Shown()[0].title, QString::fromUtf16(test.boxTitle));
            QCOMPARE(boxes.Shown()[0].text, QStringLiteral("Échec de la commande."));
            QCOMPARE(boxes.Shown()[0].button, QStringLiteral("OK"));
        }
    }

    void FailsInItsOwnWayWithoutAnApplication_data() { UsesTheseMembersAndAnswers_data(); }
    void FailsInItsOwnWayWithoutAnApplication() {
        QFETCH(int, number);
        const Case test = Cases()[static_cast<std::size_t>(number)];
        const support::BoxAnswerer boxes;
        QCOMPARE(Told(test.operation(gword_, nullptr)), Told(test.resultOnFailure));
        QCOMPARE(word_->TakeLog(), Log{});
        for (const auto& box : boxes.Shown()) {
            QCOMPARE(box.text, QStringLiteral("Variable objet non définie"));
        }
        QStringList titles;
        for (const char16_t* title : {test.boxBefore, test.boxTitle}) {
            if (title != nullptr) {
                titles << QString::fromUtf16(title);
            }
        }
        QCOMPARE(TitlesOf(boxes), titles);
    }
};

}  // namespace quardele::tests

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    quardele::forms::SetUpApplication(*qApp);
    quardele::tests::GwordTableTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "gword_table_test.moc"
