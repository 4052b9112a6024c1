// An object of an automation server, such as Word, reached through COM's late binding.
#pragma once

#include <oaidl.h>

#include <chrono>

#include <automation/object.h>

#include "com_pointer.h"

namespace quardele::automation::com {

/// How often a server that shows a box or lays out pages, and so refuses calls, is asked, and after what
/// pauses.
struct Patience {
    int attempts = 100;
    std::chrono::milliseconds pause{100};
};

/// Lives in the thread that made it, whose COM must be initialised. A server that is busy is asked again,
/// as long as its caller has patience; its refusal is an error then.
class ComObject final : public Object {
 public:
    /// `dispatch` is not null.
    explicit ComObject(ComPointer<IDispatch> dispatch, Patience patience = {})
        : dispatch_(std::move(dispatch)), patience_(patience) {}

    Value Call(TextView member, std::span<const Value> arguments,
               std::span<const NamedArgument> named) override;
    Value Get(TextView member) override { return Call(member, {}, {}); }
    void Set(TextView member, const Value& value) override;

    /// Lent.
    [[nodiscard]] IDispatch* Dispatch() const { return dispatch_.Get(); }

 private:
    ComPointer<IDispatch> dispatch_;
    Patience patience_;
};

}  // namespace quardele::automation::com
