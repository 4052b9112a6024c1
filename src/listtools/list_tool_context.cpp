#include <listtools/list_tool_context.h>

#include <basic/runtime_error.h>

namespace quardele::listtools {

namespace {

template <class T>
T& Existing(T* object) {
    if (object == nullptr) {
        throw basic::RuntimeError(basic::error::kObjectNotSet);
    }
    return *object;
}

}  // namespace

ListToolContext& TheListToolContext() {
    static ListToolContext context;
    return context;
}

forms::Grid& GridOf(const ListToolContext& context) {
    return Existing(context.Grid);
}

forms::DataControl& DataOf(const ListToolContext& context) {
    return Existing(context.DataCtl);
}

}  // namespace quardele::listtools
