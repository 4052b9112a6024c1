#include <basic/runtime_error.h>
#include <forms/events.h>
#include <forms/status_bar.h>

#include "forms_test.h"

namespace quardele::forms {

class StatusBarTest : public QObject {
    Q_OBJECT

 private slots:
    void init() {
        stage_ = std::make_unique<test::Stage>();
        bar_ = new StatusBar(stage_.get());
        bar_->resize(800, bar_->height());
        bar_->setProperty("panelTexts",
                          QStringList{QStringLiteral("Suivi"), QStringLiteral("Relances"), QString()});
        stage_->Open();
    }
    void cleanup() { stage_.reset(); }

    void PanelsCountFromOne() {
        QCOMPARE(bar_->Count(), 3);
        QCOMPARE(bar_->Panels(1).Text(), QStringLiteral("Suivi"));
        QCOMPARE(bar_->Panels(3).Text(), QString());
        QCOMPARE(bar_->Panels(2).Index(), 2);
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, static_cast<void>(bar_->Panels(0)));
        QVERIFY_THROWS_EXCEPTION(basic::RuntimeError, static_cast<void>(bar_->Panels(4)));
        QCOMPARE(bar_->PanelTexts().value(1), QStringLiteral("Relances"));
    }

    void APanelIs2540TwipsWide() { QCOMPARE(bar_->Panels(1).width(), 169); }

    void VisibleSaysWhatWasSetWhetherOrNotTheWindowIsOnScreen() {
        stage_->hide();
        QVERIFY(bar_->Panels(2).Visible());
        bar_->Panels(2).SetVisible(false);
        QVERIFY(!bar_->Panels(2).Visible());
        bar_->Panels(2).SetVisible(true);
        QVERIFY(bar_->Panels(2).Visible());
    }

    void AClickTellsThePanel() {
        int index = 0;
        On(bar_, &StatusBar::PanelClick, this, [&](StatusPanel* panel) { index = panel->Index(); });
        QTest::mouseClick(&bar_->Panels(2), Qt::LeftButton);
        QCOMPARE(index, 2);
    }

    void PanelsThatStandForAnOpenFormShowThePointingHand() {
        QCOMPARE(bar_->Panels(1).cursor().shape(), Qt::ArrowCursor);
        QCOMPARE(bar_->Panels(2).cursor().shape(), Qt::PointingHandCursor);
    }

    void TheHeightIsInTwips() { QCOMPARE(bar_->Height(), bar_->height() * 15); }

 private:
    std::unique_ptr<test::Stage> stage_;
    StatusBar* bar_ = nullptr;
};

}  // namespace quardele::forms

int main(int argc, char* argv[]) {
    return quardele::forms::test::Run<quardele::forms::StatusBarTest>(argc, argv);
}
#include "status_bar_test.moc"
