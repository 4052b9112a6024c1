#include "bridge_library.h"

#include <dlfcn.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include <automation/wire.h>
#include <basic/paths.h>

namespace quardele::automation {

namespace {

constexpr char kFileName[] = "libquardele_writer_bridge.so";

[[noreturn]] void ThrowNoBridge(std::string_view reason) {
    const Text first = basic::DescriptionOf(basic::error::kCannotCreateObject);
    throw basic::RuntimeError(
        basic::error::kCannotCreateObject,
        first + u" : le lien avec LibreOffice ne peut pas être chargé (" + basic::FromUtf8(reason) + u")");
}

std::filesystem::path BridgePath() {
    if (const char* told = std::getenv("QUARDELE_WRITER_BRIDGE")) {
        return told;
    }
    std::error_code failure;
    const std::filesystem::path folder =
        std::filesystem::read_symlink("/proc/self/exe", failure).parent_path();
    // Beside the program, in the build tree, and where both are installed.
    for (const auto& candidate : {folder / kFileName, folder.parent_path() / "lib" / kFileName,
                                  folder.parent_path() / QUARDELE_LIBRARY_FOLDER / kFileName}) {
        if (std::filesystem::exists(candidate, failure)) {
            return candidate;
        }
    }
    ThrowNoBridge(std::string(kFileName) + " est introuvable");
}

const char* NativePath(abi::WireText windowsPath) {
    static std::string path;
    try {
        path = basic::NativePath(abi::FromWire(windowsPath)).string();
    } catch (const basic::RuntimeError&) {
        return nullptr;
    }
    return path.c_str();
}

// The word processor's run-time libraries keep threads and destructors of their own, so that a plug-in that
// was once loaded stays to the end of the process.
const abi::Bridge& Load(const std::filesystem::path& file) {
    static constexpr abi::Host kHost{abi::kVersion, &NativePath};
    void* library = dlopen(file.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (library == nullptr) {
        ThrowNoBridge(dlerror());
    }
    const auto entry = reinterpret_cast<abi::EntryPoint>(dlsym(library, abi::kEntryPointName));
    const abi::Bridge* bridge = entry == nullptr ? nullptr : entry(&kHost);
    if (bridge == nullptr || bridge->version != abi::kVersion) {
        ThrowNoBridge(file.string() + " est d'une autre version");
    }
    return *bridge;
}

}  // namespace

const abi::Bridge& LoadBridge() {
    static const abi::Bridge& bridge = Load(BridgePath());
    return bridge;
}

}  // namespace quardele::automation
