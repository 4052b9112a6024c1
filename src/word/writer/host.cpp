#include "host.h"

#include <automation/wire.h>
#include <basic/runtime_error.h>

namespace quardele::word::writer {

namespace {

const automation::abi::Host*& TheHost() {
    static const automation::abi::Host* host = nullptr;
    return host;
}

}  // namespace

void SetHost(const automation::abi::Host* host) {
    TheHost() = host;
}

std::filesystem::path NativePath(basic::TextView windowsPath) {
    const char* path = TheHost()->nativePath(automation::abi::ToWire(windowsPath));
    if (path == nullptr) {
        throw basic::RuntimeError(basic::error::kPathNotFound);
    }
    return path;
}

}  // namespace quardele::word::writer
