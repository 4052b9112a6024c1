#include <cstdlib>

#include <forms/runtime.h>

namespace quardele::forms {
namespace {

struct Catching {
    bool on = false;
    int calls = 0;
};

Catching& TheCatching() {
    static Catching catching;
    return catching;
}

}  // namespace

void EndProcess(int exitCode) {
    Catching& catching = TheCatching();
    if (catching.on) {
        ++catching.calls;
        throw ProcessEnded{exitCode};
    }
    // The statement stops the process where it stands: neither destructors nor exit handlers run.
    std::_Exit(exitCode);
}

int CatchEndOfProcess(bool on) {
    TheCatching().on = on;
    return TheCatching().calls;
}

}  // namespace quardele::forms
