#include "progress.h"

#include <cstdio>

#include "platform.h"

namespace quardele::mdb {

namespace {

constexpr std::chrono::milliseconds kPause{500};
constexpr std::chrono::milliseconds kInterval{100};
constexpr const char* kErase = "\r\033[K";

}  // namespace

Progress::Progress(Beside beside)
    : isOn_(IsTerminal(stderr) && (beside == Beside::Nothing || !IsTerminal(stdout))),
      next_(Clock::now() + kPause) {}

Progress::~Progress() {
    if (isShown_) {
        std::fputs(kErase, stderr);
    }
}

void Progress::Show(std::size_t done, std::size_t total) {
    if (!isOn_ || Clock::now() < next_) {
        return;
    }
    next_ = Clock::now() + kInterval;
    isShown_ = true;
    if (total > 0) {
        std::fprintf(stderr, "%s%zu %%", kErase, done * 100 / total);
    } else {
        std::fprintf(stderr, "%s%zu", kErase, done);
    }
}

}  // namespace quardele::mdb
