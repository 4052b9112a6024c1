#include <jet/check.h>

#include "commands.h"
#include "failure.h"
#include "platform.h"
#include "progress.h"

namespace quardele::mdb {

int RunCheck(const Arguments& arguments, Session& session) {
    Progress progress(Progress::Beside::Nothing);
    const auto findings =
        jet::CheckFile(PathOf(arguments.Operand(0)),
                       [&progress](std::size_t done, std::size_t total) { progress.Show(done, total); });
    const auto language =
        session.language == Language::French ? jet::FaultLanguage::French : jet::FaultLanguage::English;
    for (const jet::Fault& fault : findings) {
        if (fault.note && !arguments.Has(kNotes)) {
            continue;
        }
        constexpr Message kNote{"note : ", "note: "};
        session.out << (fault.note ? kNote.In(session.language) : "")
                    << basic::ToUtf8(jet::Describe(fault, language)) << "\n";
    }
    return jet::HasFaults(findings) ? kFailed : kDone;
}

}  // namespace quardele::mdb
