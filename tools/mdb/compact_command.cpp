#include <jet/compaction.h>

#include "commands.h"
#include "failure.h"
#include "platform.h"
#include "progress.h"

namespace quardele::mdb {

int RunCompact(const Arguments& arguments, Session&) {
    constexpr std::size_t kWhole = 100;
    Progress progress(Progress::Beside::Nothing);
    jet::Compact(PathOf(arguments.Operand(0)), PathOf(arguments.Operand(1)), [&progress](double done) {
        progress.Show(static_cast<std::size_t>(done * kWhole), kWhole);
    });
    return kDone;
}

}  // namespace quardele::mdb
