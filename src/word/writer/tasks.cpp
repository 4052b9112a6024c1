#include "tasks.h"

#include "word_error.h"

namespace quardele::word::writer {

namespace {

constexpr TextView kTaskName = u"Microsoft Word";

int PixelsOf(int points) {
    return points * 96 / 72;
}

}  // namespace

std::span<const Member<Tasks>> Tasks::Members() {
    static constexpr Member<Tasks> kMembers[] = {{u"Item", &Tasks::Item}};
    return kMembers;
}

Value Tasks::Item(const Arguments& arguments) {
    const Text name = arguments.TextAt(0, u"Index");
    bool found = basic::EqualNoCase(name, kTaskName);
    if (!found && !name.empty() && !application_->OpenDocuments().empty()) {
        found = basic::EqualNoCase(application_->Active()->Title().substr(0, name.size()), name);
    }
    if (!found) {
        throw Failure(WordError::NoSuchElement);
    }
    return Make<Task>(application_);
}

std::span<const Member<Task>> Task::Members() {
    static constexpr Member<Task> kMembers[] = {
        {u"Move", &Task::Move},
        {u"Resize", &Task::Resize},
    };
    return kMembers;
}

Value Task::Move(const Arguments& arguments) {
    WindowPlace place = application_->Place();
    place.position =
        Pixels{PixelsOf(arguments.IntegerAt(0, u"Left")), PixelsOf(arguments.IntegerAt(1, u"Top"))};
    application_->SetPlace(place);
    return {};
}

Value Task::Resize(const Arguments& arguments) {
    WindowPlace place = application_->Place();
    place.size =
        Pixels{PixelsOf(arguments.IntegerAt(0, u"Width")), PixelsOf(arguments.IntegerAt(1, u"Height"))};
    application_->SetPlace(place);
    return {};
}

}  // namespace quardele::word::writer
