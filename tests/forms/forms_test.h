// What every test program of this folder starts with: the application as the program sets it up, on a
// platform without a screen.
#pragma once

#include <QApplication>
#include <QTest>

#include <forms/runtime.h>

namespace quardele::forms::test {

/// Runs the tests of a class. The end of the process is caught: it would end the test program.
template <class Tests>
int Run(int argc, char* argv[]) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Gestion des véhicules"));
    QApplication::setApplicationVersion(QStringLiteral("9.5.5"));
    SetUpApplication(application);
    CatchEndOfProcess(true);
    Tests tests;
    return QTest::qExec(&tests, argc, argv);
}

/// A window that tests put controls into; active, so that focus and keys go there.
class Stage : public QWidget {
 public:
    Stage() { resize(800, 600); }
    void Open() {
        show();
        activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(this));
    }
};

/// The calls of handlers in the order in which they came.
class Journal {
 public:
    void operator()(const QString& entry) { entries_.push_back(entry); }
    /// All entries so far, and forgets them.
    QString Take() { return std::exchange(entries_, {}).join(u' '); }

 private:
    QStringList entries_;
};

}  // namespace quardele::forms::test
