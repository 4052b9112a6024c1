// Word's Documents collection.
#pragma once

#include <memory>
#include <utility>

#include "application.h"

namespace quardele::word::writer {

class Documents final : public WordObject<Documents> {
 public:
    explicit Documents(std::shared_ptr<Application> application)
        : WordObject(application->GetOffice()), application_(std::move(application)) {}
    static std::span<const Member<Documents>> Members();

 private:
    Value Add(const Arguments& arguments);
    Value Count(const Arguments&);
    /// A file that is open already is shown, not opened again.
    Value Open(const Arguments& arguments);
    Value Adopted(const std::shared_ptr<OpenDocument>& document);

    std::shared_ptr<Application> application_;
};

}  // namespace quardele::word::writer
