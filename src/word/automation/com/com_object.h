// An object of an automation server, such as Word, reached through COM's late binding.
#pragma once

#include <oaidl.h>

#include <automation/object.h>

#include "com_pointer.h"

namespace quardele::automation::com {

/// Lives in the thread that made it, whose COM must be initialised. A server that is busy is asked again for
/// some seconds; its refusal is an error then.
class ComObject final : public Object {
 public:
    /// `dispatch` is not null.
    explicit ComObject(ComPointer<IDispatch> dispatch) : dispatch_(std::move(dispatch)) {}

    Value Call(TextView member, std::span<const Value> arguments,
               std::span<const NamedArgument> named) override;
    Value Get(TextView member) override { return Call(member, {}, {}); }
    void Set(TextView member, const Value& value) override;

    /// Lent.
    [[nodiscard]] IDispatch* Dispatch() const { return dispatch_.Get(); }

 private:
    ComPointer<IDispatch> dispatch_;
};

}  // namespace quardele::automation::com
