// Late-bound automation: an object whose members are reached by name at run time. The same caller drives
// Word over COM, Writer over UNO, and a recording double in tests.
#pragma once

#include <memory>
#include <span>
#include <utility>
#include <variant>
#include <vector>

#include <basic/runtime_error.h>
#include <basic/variant.h>

namespace quardele::automation {

using basic::Text;
using basic::TextView;
using basic::Variant;

class Object;
using ObjectPtr = std::shared_ptr<Object>;

/// An argument that is left out, in the middle of others.
struct Missing {
    friend bool operator==(Missing, Missing) = default;
};

/// What goes into a call and comes out of it: nothing given, a value, or an object.
class Value {
 public:
    Value() = default;
    Value(Missing) : storage_(Missing{}) {}
    Value(Variant value) : storage_(std::move(value)) {}
    Value(bool value) : storage_(Variant(value)) {}
    Value(int value) : storage_(Variant(std::int32_t{value})) {}
    Value(double value) : storage_(Variant(value)) {}
    Value(const char16_t* value) : storage_(Variant(value)) {}
    Value(Text value) : storage_(Variant(std::move(value))) {}
    Value(ObjectPtr object) : storage_(std::move(object)) {}

    [[nodiscard]] bool IsMissing() const { return std::holds_alternative<Missing>(storage_); }
    [[nodiscard]] bool IsObject() const { return std::holds_alternative<ObjectPtr>(storage_); }
    /// The value; Empty when it is missing. Throws 438 when it is an object.
    [[nodiscard]] Variant Plain() const;
    /// The value in place, as long as this one lives; null when it is missing or an object.
    [[nodiscard]] const Variant* PlainInPlace() const { return std::get_if<Variant>(&storage_); }
    /// The object; throws 424 (object required) when it is none, 91 when it is null.
    [[nodiscard]] Object& AsObject() const;
    [[nodiscard]] ObjectPtr Pointer() const;

    friend bool operator==(const Value&, const Value&) = default;

 private:
    std::variant<Variant, Missing, ObjectPtr> storage_;
};

using NamedArgument = std::pair<Text, Value>;

/// An object of another program. Member names are that program's; Word takes its own in any case. Every call
/// may throw basic::RuntimeError: 438 no such member, 91 object not set, 462 the program is gone, others as
/// the program reports them, with its text. One thread.
class Object {
 public:
    virtual ~Object() = default;

    /// Calls a method, or reads a property with arguments (`Tables(1)`).
    virtual Value Call(TextView member, std::span<const Value> arguments,
                       std::span<const NamedArgument> named) = 0;
    virtual Value Get(TextView member) = 0;
    virtual void Set(TextView member, const Value& value) = 0;

    // Shorter forms.
    Value Call(TextView member) { return Call(member, std::span<const Value>{}, {}); }
    Value Call(TextView member, std::initializer_list<Value> arguments) {
        return Call(member, std::span(arguments.begin(), arguments.size()), {});
    }
    Value CallNamed(TextView member, std::initializer_list<NamedArgument> named) {
        return Call(member, {}, std::span(named.begin(), named.size()));
    }
    /// Reads a property that holds an object.
    ObjectPtr Child(TextView member) { return Get(member).Pointer(); }
    /// Reads an element of a collection or a property with arguments that holds an object.
    ObjectPtr Child(TextView member, std::initializer_list<Value> arguments) {
        return Call(member, arguments).Pointer();
    }
};

/// Makes objects by the name that a program registers ("Word.Application").
class Factory {
 public:
    virtual ~Factory() = default;
    /// A new instance; throws RuntimeError 429 when no program answers to the name.
    virtual ObjectPtr CreateObject(TextView name) = 0;
};

/// The session's factory: COM on Windows, the LibreOffice bridge elsewhere. Tests put a double in its place.
[[nodiscard]] Factory& SessionFactory();
/// Replaces the session's factory (not owned); null brings back the platform's own.
void SetSessionFactory(Factory* factory);

}  // namespace quardele::automation
