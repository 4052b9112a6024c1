#include "documents.h"

#include "document.h"
#include "host.h"
#include "word_error.h"

namespace quardele::word::writer {

std::span<const Member<Documents>> Documents::Members() {
    static constexpr Member<Documents> kMembers[] = {
        {u"Add", &Documents::Add},
        {u"Count", &Documents::Count},
        {u"Item", &Documents::Item},
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

Value Documents::Item(const Arguments& arguments) {
    const int index = arguments.IntegerAt(0, u"Index");
    const auto documents = application_->OpenDocuments();
    if (index < 1 || index > static_cast<int>(documents.size())) {
        throw Failure(WordError::NoSuchElement);
    }
    return Make<Document>(documents[static_cast<std::size_t>(index) - 1]);
}

Value Documents::Open(const Arguments& arguments) {
    const bool readOnly = arguments.TruthAt(2, u"ReadOnly", false);
    return Adopted(
        OpenDocument::FromFile(application_->RunningOffice(), NativePath(arguments.TextAt(0, u"FileName")),
                               readOnly ? OpenDocument::Mode::ReadOnly : OpenDocument::Mode::Edit));
}

}  // namespace quardele::word::writer
