// Buttons, tick boxes, labels, frames, and what all controls have in common.
#include <cmath>

#include <QHelpEvent>
#include <QSignalSpy>
#include <QToolTip>

#include <forms/control.h>
#include <forms/controls.h>
#include <forms/events.h>

#include "forms_test.h"

namespace quardele::forms {

class ControlsTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        stage_ = std::make_unique<test::Stage>();
        box_ = Make<TextBox>(QRect(10, 10, 100, 20));
        button_ = Make<Button>(QRect(10, 40, 32, 32));
        stage_->Open();
        box_->setFocus();
    }
    void cleanup() { stage_.reset(); }

    // Buttons.

    void AButtonTakesTheFocusBeforeItsClick() {
        test::Journal journal;
        On(box_, &TextBox::LostFocus, this, [&] { journal(QStringLiteral("LostFocus")); });
        On(button_, &Button::Click, this, [&] { journal(QStringLiteral("Click")); });
        QTest::mouseClick(button_, Qt::LeftButton);
        QCOMPARE(journal.Take(), QStringLiteral("LostFocus Click"));
    }

    void AButtonsKeyGivesItTheFocusBeforeItsClickAndWaitsForNothing() {
        test::Journal journal;
        button_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
        On(box_, &TextBox::LostFocus, this, [&] { journal(QStringLiteral("LostFocus")); });
        On(button_, &Button::Click, this, [&] { journal(QStringLiteral("Click")); });
        QTest::keyClick(stage_.get(), Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(journal.Take(), QStringLiteral("LostFocus Click"));
    }

    void AHiddenButtonsKeyIsDead() {
        const QSignalSpy clicks(button_, &Button::Click);
        button_->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_S));
        button_->hide();
        QTest::keyClick(stage_.get(), Qt::Key_S, Qt::ControlModifier);
        QCOMPARE(clicks.count(), 0);
    }

    void EnterAndSpacePressTheButtonWithTheFocus() {
        const QSignalSpy clicks(button_, &Button::Click);
        button_->setFocus();
        QTest::keyClick(button_, Qt::Key_Return);
        QTest::keyClick(button_, Qt::Key_Space);
        QCOMPARE(clicks.count(), 2);
    }

    void APictureButtonIsCalledByItsToolTip() {
        button_->setToolTip(QStringLiteral("Enregistrer"));
        QCOMPARE(button_->accessibleName(), QStringLiteral("Enregistrer"));
    }

    // Tick boxes.

    void ATickBoxClicksWhateverChangesIt() {
        auto* check = Make<CheckBox>(QRect(10, 80, 100, 20));
        const QSignalSpy clicks(check, &CheckBox::Click);
        check->SetValue(1);
        QCOMPARE(check->Value(), 1);
        check->SetValue(1);
        QTest::keyClick(check, Qt::Key_Space);
        QCOMPARE(check->Value(), 0);
        QCOMPARE(clicks.count(), 2);
    }

    // Labels.

    void ALabelThatDoesNotFitShowsItsTextInATip() {
        auto* label = Make<Label>(QRect(10, 100, 60, 20));
        label->SetCaption(QStringLiteral("1 - Date de première mise en circulation"));
        ShowTip(*label);
        QCOMPARE(QToolTip::text(), label->Caption());
        label->SetCaption(QStringLiteral("Court"));
        QToolTip::hideText();
        QTRY_VERIFY(!QToolTip::isVisible());
        ShowTip(*label);
        QVERIFY(!QToolTip::isVisible());
    }

    void AnAmpersandInALabelStands() {
        auto* label = Make<Label>(QRect(10, 100, 200, 20));
        label->SetCaption(QStringLiteral("Pneus & jantes"));
        QCOMPARE(label->Caption(), QStringLiteral("Pneus & jantes"));
        auto* plain = Make<Label>(QRect(10, 100, 200, 20));
        plain->SetCaption(QStringLiteral("Pneus _ jantes"));
        QVERIFY(label->grab().toImage() != plain->grab().toImage());
    }

    // Frames.

    void AFloatingFrameComesToTheFrontWhenShown() {
        auto* frame = Make<Frame>(QRect(0, 0, 200, 100));
        frame->SetFloating(true);
        frame->hide();
        auto* above = Make<TextBox>(QRect(10, 10, 50, 20));
        frame->show();
        QVERIFY(stage_->children().indexOf(frame) > stage_->children().indexOf(above));
        frame->lower();
        frame->ZOrder(0);
        QCOMPARE(stage_->children().last(), frame);
    }

    void AFloatingFrameHasItsBorderAtEveryEdge_data() {
        QTest::addColumn<double>("scale");
        for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
            QTest::addRow("%.0f %%", 100 * scale) << scale;
        }
    }

    void AFloatingFrameHasItsBorderAtEveryEdge() {
        QFETCH(const double, scale);
        constexpr int kShadow = 2;
        auto* frame = Make<Frame>(QRect(10, 10, 201, 101));
        frame->SetFloating(true);
        const QImage picture = PictureOf(*frame, scale);
        const QColor accent = picture.pixelColor(picture.width() / 2, 1);
        const int middle = picture.height() / 2;
        const auto right = static_cast<int>(std::lround((frame->width() - kShadow) * scale)) - 1;
        const auto bottom = static_cast<int>(std::lround((frame->height() - kShadow) * scale)) - 1;
        QCOMPARE(picture.pixelColor(0, middle), accent);
        QCOMPARE(picture.pixelColor(right, middle), accent);
        QCOMPARE(picture.pixelColor(picture.width() / 2, bottom), accent);
        QVERIFY(picture.pixelColor(picture.width() / 2, middle) != accent);
    }

    // In common.

    void NameAndIndexOfAnArraysElement() {
        box_->setObjectName(QStringLiteral("CTX_USER_3"));
        QCOMPARE(ControlName(box_), QStringLiteral("CTX_USER_3"));
        QCOMPARE(ControlIndex(box_), -1);
        box_->setProperty("index", 3);
        QCOMPARE(ControlName(box_), QStringLiteral("CTX_USER"));
        QCOMPARE(ControlIndex(box_), 3);
    }

    void AControlArrayFindsItsElementsWhereverTheyStand() {
        auto* frame = Make<PictureBox>(QRect(0, 0, 100, 100));
        auto* inside = new TextBox(frame);
        Name(*box_, QStringLiteral("CTX_USER"), 1);
        Name(*inside, QStringLiteral("CTX_USER"), 4);
        Name(*button_, QStringLiteral("CTX_USER"), 2);
        const ControlArray<TextBox> array(stage_.get(), QStringLiteral("CTX_USER"));
        QCOMPARE(array.UBound(), 4);
        QCOMPARE(array(1), box_);
        QCOMPARE(array(4), inside);
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, static_cast<void>(array(2)));
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, static_cast<void>(array(5)));
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, static_cast<void>(array(-1)));
    }

    void GeometryIsInTwipsOfTheContainer() {
        QCOMPARE(Left(box_), 150);
        QCOMPARE(Top(box_), 150);
        QCOMPARE(Width(box_), 1500);
        QCOMPARE(Height(box_), 300);
        SetLeft(box_, 300);
        SetTop(box_, 450);
        SetWidth(box_, 3007);
        SetHeight(box_, 600);
        QCOMPARE(box_->geometry(), QRect(20, 30, 200, 40));
    }

    void SetFocusRefusesWhatCannotHaveIt() {
        button_->setEnabled(false);
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, SetFocus(button_));
        button_->setEnabled(true);
        button_->hide();
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, SetFocus(button_));
        button_->show();
        SetFocus(button_);
        QVERIFY(button_->hasFocus());
    }

    void ATagIsCarriedAlong() {
        QCOMPARE(Tag(box_), QString());
        SetTag(box_, QStringLiteral("***"));
        QCOMPARE(Tag(box_), QStringLiteral("***"));
    }

 private:
    template <class Control>
    Control* Make(const QRect& place) {
        auto* control = new Control(stage_.get());
        control->setGeometry(place);
        control->show();
        return control;
    }
    static void Name(QWidget& control, const QString& name, int index) {
        control.setObjectName(QStringLiteral("%1_%2").arg(name).arg(index));
        control.setProperty("index", index);
    }
    /// As a desktop shows it that is scaled up.
    static QImage PictureOf(QWidget& widget, double scale) {
        QImage picture(widget.size() * scale, QImage::Format_RGB32);
        picture.setDevicePixelRatio(scale);
        picture.fill(Qt::white);
        widget.render(&picture);
        return picture;
    }
    static void ShowTip(QWidget& widget) {
        QHelpEvent event(QEvent::ToolTip, QPoint(2, 2), widget.mapToGlobal(QPoint(2, 2)));
        QApplication::sendEvent(&widget, &event);
    }

    std::unique_ptr<test::Stage> stage_;
    TextBox* box_ = nullptr;
    Button* button_ = nullptr;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::ControlsTest>(argc, argv);
}
#include "controls_test.moc"
