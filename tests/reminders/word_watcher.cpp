#include "word_watcher.h"

namespace quardele::tests {

using automation::NamedArgument;
using automation::ObjectPtr;
using automation::TextView;
using automation::Value;

class WordWatcher::Watched final : public automation::Object {
 public:
    Watched(WordWatcher& watcher, ObjectPtr object) : watcher_(watcher), object_(std::move(object)) {}

    Value Call(TextView member, std::span<const Value> arguments,
               std::span<const NamedArgument> named) override {
        if (member == u"TypeText") {
            watcher_.Typing();
        }
        return watcher_.Wrap(object_->Call(member, arguments, named));
    }
    Value Get(TextView member) override { return watcher_.Wrap(object_->Get(member)); }
    void Set(TextView member, const Value& value) override { object_->Set(member, value); }

 private:
    WordWatcher& watcher_;
    ObjectPtr object_;
};

WordWatcher::WordWatcher(std::function<void(int)> onTyping)
    : factory_(automation::SessionFactory()), onTyping_(std::move(onTyping)) {
    automation::SetSessionFactory(this);
}

WordWatcher::~WordWatcher() {
    automation::SetSessionFactory(nullptr);
}

ObjectPtr WordWatcher::CreateObject(TextView name) {
    applications_.push_back(Wrap(factory_.CreateObject(name)).Pointer());
    return applications_.back();
}

void WordWatcher::Typing() {
    ++typed_;
    if (onTyping_) {
        onTyping_(typed_);
    }
}

Value WordWatcher::Wrap(const Value& value) {
    if (!value.IsObject()) {
        return value;
    }
    return ObjectPtr(std::make_shared<Watched>(*this, value.Pointer()));
}

}  // namespace quardele::tests
