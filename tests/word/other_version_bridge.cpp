// A bridge of a version to come: the program must not call it.
#include <automation/bridge_abi.h>

namespace {

namespace abi = quardele::automation::abi;

constexpr abi::Bridge kBridge{abi::kVersion + 1, nullptr, nullptr, nullptr};

}  // namespace

extern "C" const abi::Bridge* quardele_writer_bridge(const abi::Host*) {
    return &kBridge;
}
