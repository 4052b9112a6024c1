// Escape in frames, with real keys.
#include <forms/drop_down.h>
#include <forms/escape.h>
#include <forms/events.h>
#include <forms/grid.h>
#include <support/boxes.h>

#include "forms_test.h"

namespace quardele::forms {

class EscapeTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        stage_ = std::make_unique<test::Stage>();
        outer_ = new Frame(stage_.get());
        outer_->setGeometry(10, 10, 700, 500);
        inner_ = new Frame(outer_);
        inner_->setGeometry(10, 10, 400, 400);
        OnEscape(outer_, [this] { journal_(QStringLiteral("outer")); });
        OnEscape(inner_, [this] { journal_(QStringLiteral("inner")); });
        stage_->Open();
    }
    void cleanup() {
        stage_.reset();
        journal_.Take();
    }

    void TheInnermostFrameOfAControlHearsOfIt_data() {
        QTest::addColumn<std::function<QWidget*()>>("make");
        const auto row = [](const char* name, std::function<QWidget*()> make) {
            QTest::newRow(name) << make;
        };
        row("text box", [this] { return Make<TextBox>(); });
        row("button", [this] { return Make<Button>(); });
        row("tick box", [this] { return Make<CheckBox>(); });
        row("drop-down list", [this] { return Make<DropDown>(); });
        row("memo", [this] { return Make<MemoBox>(); });
        row("locked memo", [this] {
            auto* memo = Make<MemoBox>();
            memo->setReadOnly(true);
            return memo;
        });
        row("grid", [this] {
            auto* grid = Make<Grid>();
            grid->SetColumnLines({QStringLiteral("Date||10|date|locked")});
            grid->SetMaxRows(2);
            return grid;
        });
    }

    void TheInnermostFrameOfAControlHearsOfIt() {
        QFETCH(const std::function<QWidget*()>, make);
        QTest::keyClick(make(), Qt::Key_Escape);
        QCOMPARE(journal_.Take(), QStringLiteral("inner"));
    }

    void AControlOfTheOuterFrameIsNoneOfTheInnerOne() {
        auto* box = new TextBox(outer_);
        Focus(*box);
        QTest::keyClick(box, Qt::Key_Escape);
        QCOMPARE(journal_.Take(), QStringLiteral("outer"));
    }

    void OtherKeysGoOnAsBefore() {
        auto* box = Make<TextBox>();
        QTest::keyClick(box, Qt::Key_F2);
        QTest::keyClick(box, Qt::Key_A);
        QCOMPARE(box->Text(), QStringLiteral("a"));
        QCOMPARE(journal_.Take(), QString());
    }

    void AKeyThatAControlHasUsedIsNotTold() {
        auto* box = Make<TextBox>();
        On(box, &TextBox::KeyDown, this, [](int& keyCode, int) { keyCode = 0; });
        QTest::keyClick(box, Qt::Key_Escape);
        QCOMPARE(journal_.Take(), QString());
    }

    void AFailureOfTheHandlerIsTheUnhandledError() {
        support::BoxAnswerer boxes;
        const int endsBefore = CatchEndOfProcess(true);
        auto* frame = new Frame(inner_);
        OnEscape(frame, [] { throw basic::RuntimeError(basic::error::kObjectNotSet); });
        auto* box = new TextBox(frame);
        frame->show();
        Focus(*box);
        QTest::keyClick(box, Qt::Key_Escape);
        QCOMPARE(CatchEndOfProcess(true), endsBefore + 1);
        QCOMPARE(boxes.Shown().size(), std::size_t{1});
    }

 private:
    static void Focus(QWidget& control) {
        control.show();
        control.setFocus();
        QVERIFY(control.hasFocus());
    }

    template <class Control>
    Control* Make() {
        auto* control = new Control(inner_);
        Focus(*control);
        return control;
    }

    std::unique_ptr<test::Stage> stage_;
    Frame* outer_ = nullptr;
    Frame* inner_ = nullptr;
    test::Journal journal_;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::EscapeTest>(argc, argv);
}
#include "escape_test.moc"
