// What a check has found so far.
#pragma once

#include <cstdint>
#include <map>
#include <utility>
#include <vector>

#include <jet/check.h>

#include <basic/runtime_error.h>

namespace quardele::jet {

/// The part of a file that is being looked at.
struct CheckPlace {
    Text table;   ///< empty for the file as a whole
    Text object;  ///< index or column
};

/// Collects findings. A damaged file may have millions: of each kind and place only the first are kept, the
/// others are counted.
class CheckReport {
 public:
    void Add(FaultCode code, const CheckPlace& place, std::uint32_t page, Text detail = {});
    void AddNote(FaultCode code, const CheckPlace& place, std::uint32_t page, Text detail = {});

    /// Runs the action; what it throws is a finding. False when it threw.
    template <class Action>
    bool Guard(FaultCode code, const CheckPlace& place, std::uint32_t page, const Action& action) {
        try {
            action();
            return true;
        } catch (const basic::RuntimeError& error) {
            Add(code, place, page, error.Description());
            return false;
        }
    }

    /// All findings; the report is empty afterwards.
    [[nodiscard]] std::vector<Fault> Take();

 private:
    void Keep(Fault fault);

    std::vector<Fault> faults_;
    std::map<std::pair<FaultCode, Text>, std::size_t> counts_;
    std::size_t dropped_ = 0;
};

[[nodiscard]] Text NumberText(std::uint64_t number);

}  // namespace quardele::jet
