#include "check/check_report.h"

#include <algorithm>
#include <string>

namespace quardele::jet {

namespace {

constexpr std::size_t kMostOfAKind = 20;
constexpr std::size_t kMost = 2000;

}  // namespace

Text NumberText(std::uint64_t number) {
    return basic::FromUtf8(std::to_string(number));
}

void CheckReport::Add(FaultCode code, const CheckPlace& place, std::uint32_t page, Text detail) {
    Keep({code, false, page, place.table, place.object, std::move(detail)});
}

void CheckReport::AddNote(FaultCode code, const CheckPlace& place, std::uint32_t page, Text detail) {
    Keep({code, true, page, place.table, place.object, std::move(detail)});
}

void CheckReport::Keep(Fault fault) {
    std::size_t& count = counts_[{fault.code, fault.table + u'\0' + fault.object}];
    if (++count > kMostOfAKind || faults_.size() >= kMost) {
        ++dropped_;
    } else {
        faults_.push_back(std::move(fault));
    }
}

std::vector<Fault> CheckReport::Take() {
    std::vector<Fault> faults = std::exchange(faults_, {});
    if (dropped_ > 0) {
        faults.push_back({.code = FaultCode::More,
                          .note = !HasFaults(faults),
                          .table = {},
                          .object = {},
                          .detail = NumberText(dropped_)});
    }
    counts_.clear();
    dropped_ = 0;
    return faults;
}

bool HasFaults(const std::vector<Fault>& findings) {
    return std::any_of(findings.begin(), findings.end(), [](const Fault& fault) { return !fault.note; });
}

}  // namespace quardele::jet
