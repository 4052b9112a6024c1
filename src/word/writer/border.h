// The program calls on its one thread; windows are shown while it pauses. Both never happen at once.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace quardele::word::writer {

class Border {
 public:
    /// Never destroyed: its thread runs to the end of the process.
    static Border& Instance();

    /// Held by the program's thread during a call.
    class Call {
     public:
        explicit Call(Border& border) : border_(border), lock_(border.mutex_) {}
        Call(const Call&) = delete;
        Call& operator=(const Call&) = delete;
        ~Call() { border_.lastCall_ = std::chrono::steady_clock::now(); }

     private:
        Border& border_;
        std::unique_lock<std::mutex> lock_;
    };

    /// To be called during a call: has `work` done once no call has come for a moment. Replaces work that
    /// still waits. `work` must not throw.
    void WhenQuiet(std::function<void()> work);

 private:
    Border() = default;
    void Run();

    std::mutex mutex_;
    std::condition_variable workCame_;
    std::function<void()> work_;
    std::chrono::steady_clock::time_point lastCall_;
    bool running_ = false;
};

}  // namespace quardele::word::writer
