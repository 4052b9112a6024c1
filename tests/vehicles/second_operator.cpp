// The program in a process of its own, at a second workstation: started in a folder of an installation, opens
// the vehicle form and does what its input says, one line of words between tabs for each action. Its answer
// is one line: what was asked for, or the texts of the boxes that were shown.
#include <iostream>
#include <string>

#include <QApplication>
#include <QMainWindow>

#include "vehicle_form_fixture.h"

using namespace quardele;
using namespace quardele::tests;

namespace {

void OpenVehicleForm() {
    MainWindow().M_VEHIC->trigger();
    MainWindow().MainWindow()->activateWindow();
    if (!QTest::qWaitForWindowActive(MainWindow().MainWindow())) {
        qFatal("the vehicle form did not open");
    }
}

QString Do(const QStringList& words) {
    const QString& action = words[0];
    const QByteArray name = words.value(1).toLatin1();
    if (action == QStringLiteral("record")) {
        Tabs()->SetTab(kListTab);
        OpenRecordOf(words[1]);
    } else if (action == QStringLiteral("type")) {
        TypeOver(Box(name.constData()), words[2]);
    } else if (action == QStringLiteral("visit")) {
        TypeVisit(words[1].toInt(), words[2].toInt(), words[3]);
    } else if (action == QStringLiteral("press")) {
        Press(name.constData());
    } else if (action == QStringLiteral("box")) {
        return Box(name.constData())->Text();
    } else if (action == QStringLiteral("cell")) {
        return Cell("DBG_DETAIL", words[1].toInt(), words[2].toInt());
    }
    return {};
}

/// Line breaks of boxes would be ends of answers.
QString OneLine(QString text) {
    return text.replace(u'\n', u' ');
}

void Obey() {
    for (std::string line; std::getline(std::cin, line);) {
        support::BoxAnswerer boxes;
        QString answer = Do(QString::fromStdString(line).split(u'\t'));
        QCoreApplication::processEvents();
        answer += TakeTexts(boxes);
        std::cout << OneLine(answer).toStdString() << std::endl;
    }
}

}  // namespace

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    forms::SetUpApplication(application);
    PrepareVehicleTests();
    if (StartProgram().ended) {
        return 1;
    }
    OpenVehicleForm();
    Obey();
    StopProgram();
    return 0;
}
