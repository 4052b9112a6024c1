// Stands between the program and the word processor and watches what is typed.
#pragma once

#include <functional>
#include <vector>

#include <automation/object.h>

namespace quardele::tests {

/// While it lives, every application passes through it, and stays alive with its letter, as the operator's
/// window keeps it where there is a screen. `onTyping` is told before each text, counted from 1.
class WordWatcher final : public automation::Factory {
 public:
    explicit WordWatcher(std::function<void(int)> onTyping = {});
    ~WordWatcher() override;
    WordWatcher(const WordWatcher&) = delete;
    WordWatcher& operator=(const WordWatcher&) = delete;

    automation::ObjectPtr CreateObject(automation::TextView name) override;

 private:
    class Watched;

    automation::Value Wrap(const automation::Value& value);
    void Typing();

    automation::Factory& factory_;
    std::function<void(int)> onTyping_;
    int typed_ = 0;
    std::vector<automation::ObjectPtr> applications_;
};

}  // namespace quardele::tests
