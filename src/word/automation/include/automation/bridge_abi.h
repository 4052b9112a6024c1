// The border between the program and the bridge plug-in, which answers late-bound calls with a word
// processor that the program itself does not link. Only plain structures cross it: no exception, no C++
// library type, no type of the other side.
//
// Texts are UTF-16 and not terminated. A text or value that comes back belongs to the side that made it and
// stays valid until the next call across the border. One thread at a time.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quardele::automation::abi {

/// Grows with every change of this file; both sides refuse another number.
inline constexpr std::int32_t kVersion = 1;

/// The one symbol that a plug-in exports, an EntryPoint.
inline constexpr char kEntryPointName[] = "quardele_writer_bridge";

struct WireText {
    const char16_t* data;
    std::size_t length;
};

enum WireKind : std::int32_t {
    kEmpty,
    kNull,
    kMissing,
    kBoolean,  ///< integer: -1 or 0
    kInteger,  ///< integer
    kDouble,   ///< number
    kDate,     ///< number: days since 30/12/1899
    kText,     ///< text
    kObject,   ///< object: a handle of the plug-in, null for an object that is not set
};

struct WireValue {
    std::int32_t kind;
    std::int32_t integer;
    double number;
    WireText text;
    void* object;
};

struct WireNamedValue {
    WireText name;
    WireValue value;
};

struct WireError {
    std::int32_t number;
    WireText description;
};

enum WireAction : std::int32_t {
    kCall,  ///< a method, or a property with arguments
    kGet,
    kSet,  ///< one positional value
};

struct WireCall {
    std::int32_t action;
    WireText member;
    const WireValue* positional;
    std::size_t positionalCount;
    const WireNamedValue* named;
    std::size_t namedCount;
};

/// What the program offers to the plug-in.
struct Host {
    std::int32_t version;
    /// The machine's path of a Windows path, UTF-8 and terminated; null when its drive is not known.
    const char* (*nativePath)(WireText windowsPath);
};

/// What the plug-in offers. A function that returns false has filled in the error.
struct Bridge {
    std::int32_t version;
    /// A new object of that registered name; the handle is the program's until it releases it.
    bool (*createObject)(WireText name, void** object, WireError* error);
    /// A handle in the result is the program's until it releases it; handles among the arguments are lent.
    bool (*invoke)(void* object, const WireCall* call, WireValue* result, WireError* error);
    void (*release)(void* object);
};

/// Null when the plug-in does not speak the host's version. `host` must outlive the process's use of it.
using EntryPoint = const Bridge* (*)(const Host* host);

}  // namespace quardele::automation::abi
