#include "border.h"

#include <thread>
#include <utility>

namespace quardele::word::writer {

namespace {

/// Longer than any pause within a letter, shorter than an operator's look for the window.
constexpr auto kQuiet = std::chrono::milliseconds(250);

}  // namespace

Border& Border::Instance() {
    static auto* border = new Border();
    return *border;
}

void Border::WhenQuiet(std::function<void()> work) {
    work_ = std::move(work);
    if (!running_) {
        std::thread(&Border::Run, this).detach();
        running_ = true;
    }
    workCame_.notify_one();
}

void Border::Run() {
    std::unique_lock lock(mutex_);
    for (;;) {
        workCame_.wait(lock, [this] { return work_ != nullptr; });
        const auto quiet = lastCall_ + kQuiet;
        if (std::chrono::steady_clock::now() >= quiet) {
            std::exchange(work_, nullptr)();
            continue;
        }
        lock.unlock();
        std::this_thread::sleep_until(quiet);
        lock.lock();
    }
}

}  // namespace quardele::word::writer
