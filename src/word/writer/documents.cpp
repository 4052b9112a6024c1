#include "documents.h"

#include "document.h"
#include "host.h"

namespace quardele::word::writer {

std::span<const Member<Documents>> Documents::Members() {
    static constexpr Member<Documents> kMembers[] = {
        {u"Add", &Documents::Add},
        {u"Count", &Documents::Count},
        {u"Open", &Documents::Open},
    };
    return kMembers;
}

Value Documents::Adopted(const std::shared_ptr<OpenDocument>& document) {
    application_->Adopt(document);
    return Make<Document>(document);
}

Value Documents::Add(const Arguments& arguments) {
    const auto& office = application_->RunningOffice();
    if (arguments.Find(0, u"Template") == nullptr) {
        return Adopted(OpenDocument::Blank(office));
    }
    return Adopted(OpenDocument::FromFile(office, NativePath(arguments.TextAt(0, u"Template")),
                                          OpenDocument::Mode::NewFromTemplate));
}

Value Documents::Count(const Arguments&) {
    return static_cast<int>(application_->OpenDocuments().size());
}

Value Documents::Open(const Arguments& arguments) {
    const auto file = NativePath(arguments.TextAt(0, u"FileName"));
    if (const auto open = application_->OpenedFrom(file); open != nullptr) {
        application_->MakeActive(open);
        return Make<Document>(open);
    }
    const bool readOnly = arguments.TruthAt(2, u"ReadOnly", false);
    return Adopted(
        OpenDocument::FromFile(application_->RunningOffice(), file,
                               readOnly ? OpenDocument::Mode::ReadOnly : OpenDocument::Mode::Edit));
}

}  // namespace quardele::word::writer
