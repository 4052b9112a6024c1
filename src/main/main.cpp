#include <QApplication>

#include <program/program.h>

int main(int argc, char* argv[]) {
    QApplication application(argc, argv);
    quardele::SetUpProgram(application);
    quardele::StartProgram();
    return QApplication::exec();
}
