#include <forms/beeps.h>

#include <QApplication>

#include <forms/runtime.h>

namespace quardele::forms {
namespace {

int& Beeps() {
    static int beeps = 0;
    return beeps;
}

}  // namespace

void Beep() {
    ++Beeps();
    QApplication::beep();
}

int BeepsSoFar() {
    return Beeps();
}

}  // namespace quardele::forms
