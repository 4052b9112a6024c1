// The shape that all of Word's objects share here: a table of members by name, and one place where the
// failures of LibreOffice become run-time errors.
#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <span>
#include <utility>

#include <automation/object.h>

#include "arguments.h"
#include "office.h"

namespace quardele::word::writer {

/// A member of the class `Self`.
template <class Self>
struct Member {
    TextView name;
    /// Runs the method or reads the property.
    Value (Self::*read)(const Arguments&);
    /// Writes the property; null for a method and for what can only be read.
    void (Self::*write)(const Value&) = nullptr;
};

/// An object of a running office.
class OfficeObject : public automation::Object {
 public:
    [[nodiscard]] const std::shared_ptr<Office>& GetOffice() const { return office_; }

 protected:
    explicit OfficeObject(std::shared_ptr<Office> office) : office_(std::move(office)) {}

    /// Lets go of the office; calls that need it fail with 462 from here on.
    void ReleaseOffice() { office_.reset(); }
    /// Whether the thing behind the object is gone; asked when a call has failed.
    [[nodiscard]] virtual bool IsDeleted() { return false; }

    /// Runs `work`; a failure of LibreOffice leaves as RuntimeError 462 when the office is gone, 5825 when
    /// the object is, 4198 otherwise.
    Value Guarded(const std::function<Value()>& work);

 private:
    std::shared_ptr<Office> office_;
};

[[noreturn]] void ThrowNoSuchMember(TextView member);
[[noreturn]] void ThrowReadOnly();

/// `Self` offers `static std::span<const Member<Self>> Members()`.
template <class Self>
class WordObject : public OfficeObject {
 public:
    Value Call(TextView member, std::span<const Value> arguments,
               std::span<const NamedArgument> named) final {
        return Read(member, Arguments(arguments, named));
    }
    Value Get(TextView member) final { return Read(member, {}); }
    void Set(TextView member, const Value& value) final {
        const Member<Self>& found = Find(member);
        if (found.write == nullptr) {
            ThrowReadOnly();
        }
        Guarded([&] {
            (static_cast<Self&>(*this).*found.write)(value);
            return Value();
        });
    }

 protected:
    using OfficeObject::OfficeObject;

 private:
    Value Read(TextView member, const Arguments& arguments) {
        const Member<Self>& found = Find(member);
        return Guarded([&] { return (static_cast<Self&>(*this).*found.read)(arguments); });
    }

    static const Member<Self>& Find(TextView name) {
        const std::span<const Member<Self>> members = Self::Members();
        const auto found = std::find_if(members.begin(), members.end(), [&](const Member<Self>& member) {
            return basic::EqualNoCase(member.name, name);
        });
        if (found == members.end()) {
            ThrowNoSuchMember(name);
        }
        return *found;
    }
};

template <class T, class... Parts>
[[nodiscard]] ObjectPtr Make(Parts&&... parts) {
    return std::make_shared<T>(std::forward<Parts>(parts)...);
}

/// A property that holds a collection: the collection itself, or its element when the call has arguments.
[[nodiscard]] inline Value CollectionOrItem(const ObjectPtr& collection, const Arguments& arguments) {
    if (arguments.IsEmpty()) {
        return collection;
    }
    const Value* index = arguments.Find(0, u"Index");
    return collection->Call(u"Item", {index == nullptr ? Value(automation::Missing{}) : *index});
}

}  // namespace quardele::word::writer
