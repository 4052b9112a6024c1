// Starts a class of Qt tests as the program itself starts.
#pragma once

#include <QApplication>
#include <QTest>

#include <forms/runtime.h>

namespace quardele::tests {

template <class TestClass>
int RunTests(int argc, char** argv) {
    const QApplication application(argc, argv);
    QCoreApplication::setApplicationVersion(QStringLiteral("9.5.5"));
    forms::SetUpApplication(*qApp);
    TestClass test;
    return QTest::qExec(&test, argc, argv);
}

}  // namespace quardele::tests
