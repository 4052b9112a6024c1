// Word's Tasks collection, as far as it reaches the application's own window.
#pragma once

#include <memory>
#include <utility>

#include "application.h"

namespace quardele::word::writer {

class Tasks final : public WordObject<Tasks> {
 public:
    explicit Tasks(std::shared_ptr<Application> application)
        : WordObject(application->GetOffice()), application_(std::move(application)) {}
    static std::span<const Member<Tasks>> Members();

 private:
    /// "Microsoft Word" names the application's window, as does the start of the active window's title.
    Value Item(const Arguments& arguments);

    std::shared_ptr<Application> application_;
};

/// The application's window; distances are points.
class Task final : public WordObject<Task> {
 public:
    explicit Task(std::shared_ptr<Application> application)
        : WordObject(application->GetOffice()), application_(std::move(application)) {}
    static std::span<const Member<Task>> Members();

 private:
    Value Move(const Arguments& arguments);
    Value Resize(const Arguments& arguments);

    std::shared_ptr<Application> application_;
};

}  // namespace quardele::word::writer
