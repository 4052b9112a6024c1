// The plug-in's side of the border: handles for objects, and no exception beyond this file.
#include <csignal>
#include <utility>
#include <vector>

#include <automation/wire.h>

#include "application.h"
#include "border.h"
#include "host.h"
#include "word_error.h"

namespace {

using namespace quardele;
using automation::NamedArgument;
using automation::ObjectPtr;
using automation::Value;
using automation::abi::FromWire;
using automation::abi::ToWire;
using automation::abi::WireCall;
using automation::abi::WireError;
using automation::abi::WireText;
using automation::abi::WireValue;
using word::writer::Border;
using word::writer::Failure;
using word::writer::WordError;

constexpr basic::TextView kWord = u"Word.Application";

/// What the other side may read until its next call.
struct Answer {
    Value value;
    basic::Text description;
};

Answer& LastAnswer() {
    static auto* answer = new Answer();
    return *answer;
}

ObjectPtr& ObjectOf(void* handle) {
    return *static_cast<ObjectPtr*>(handle);
}

Value Incoming(const WireValue& wire) {
    return wire.kind == automation::abi::kObject ? Value(ObjectOf(wire.object)) : FromWire(wire);
}

WireValue Outgoing(const Value& value) {
    if (value.IsObject()) {
        return {automation::abi::kObject, 0, 0, {nullptr, 0}, new ObjectPtr(value.Pointer())};
    }
    LastAnswer().value = value;
    return ToWire(LastAnswer().value);
}

void Fill(WireError& error, int number, basic::Text description) {
    basic::Text& kept = LastAnswer().description;
    kept = std::move(description);
    error = {number, ToWire(basic::TextView(kept))};
}

/// Runs `work` as one call; false when it failed and `error` is filled in: as `otherwise`, when the failure
/// is none of ours.
template <class Work>
bool Across(WireError* error, const basic::RuntimeError& otherwise, const Work& work) {
    const Border::Call call(Border::Instance());
    try {
        work();
        return true;
    } catch (const basic::RuntimeError& failure) {
        Fill(*error, failure.Number(), failure.Description());
    } catch (...) {
        Fill(*error, otherwise.Number(), otherwise.Description());
    }
    return false;
}

bool CreateObject(WireText name, void** object, WireError* error) {
    return Across(error, basic::RuntimeError(basic::error::kCannotCreateObject), [&] {
        if (!basic::EqualNoCase(FromWire(name), kWord)) {
            throw basic::RuntimeError(basic::error::kCannotCreateObject);
        }
        *object = new ObjectPtr(word::writer::Application::Create());
    });
}

Value Perform(automation::Object& object, const WireCall& call) {
    std::vector<Value> positional;
    positional.reserve(call.positionalCount);
    for (std::size_t index = 0; index < call.positionalCount; ++index) {
        positional.push_back(Incoming(call.positional[index]));
    }
    std::vector<NamedArgument> named;
    named.reserve(call.namedCount);
    for (std::size_t index = 0; index < call.namedCount; ++index) {
        named.emplace_back(FromWire(call.named[index].name), Incoming(call.named[index].value));
    }
    const basic::TextView member = FromWire(call.member);
    switch (call.action) {
        case automation::abi::kGet:
            return object.Get(member);
        case automation::abi::kSet:
            object.Set(member, positional.at(0));
            return {};
        default:
            return object.Call(member, positional, named);
    }
}

bool Invoke(void* object, const WireCall* call, WireValue* result, WireError* error) {
    return Across(error, Failure(WordError::CommandFailed),
                  [&] { *result = Outgoing(Perform(*ObjectOf(object), *call)); });
}

void Release(void* object) {
    WireError ignored{};
    Across(&ignored, Failure(WordError::CommandFailed), [&] { delete &ObjectOf(object); });
}

}  // namespace

extern "C" __attribute__((visibility("default"))) const automation::abi::Bridge* quardele_writer_bridge(
    const automation::abi::Host* host) {
    static constexpr automation::abi::Bridge kBridge{automation::abi::kVersion, &CreateObject, &Invoke,
                                                     &Release};
    if (host->version != automation::abi::kVersion) {
        return nullptr;
    }
    // An office that is gone is an error that handlers tell: its pipe must not end the program.
    (void)std::signal(SIGPIPE, SIG_IGN);
    word::writer::SetHost(host);
    return &kBridge;
}
