#include "file/write_hook.h"

namespace quardele::jet {

WriteHook& CurrentWriteHook() {
    static WriteHook hook;
    return hook;
}

}  // namespace quardele::jet
