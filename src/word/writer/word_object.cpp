#include "word_object.h"

#include <com/sun/star/lang/DisposedException.hpp>
#include <com/sun/star/uno/Exception.hpp>

#include "word_error.h"

namespace quardele::word::writer {

Value OfficeObject::Guarded(const std::function<Value()>& work) {
    try {
        return work();
    } catch (const css::uno::Exception&) {
        if (office_ == nullptr || office_->IsGone()) {
            throw basic::RuntimeError(basic::error::kServerGone);
        }
        throw Failure(IsDeleted() ? WordError::ObjectDeleted : WordError::CommandFailed);
    }
}

void ThrowNoSuchMember(TextView member) {
    throw basic::RuntimeError(basic::error::kNoSuchMember,
                              basic::Describe(basic::error::kNoSuchMember, member));
}

void ThrowReadOnly() {
    throw Failure(WordError::ReadOnlyProperty);
}

}  // namespace quardele::word::writer
