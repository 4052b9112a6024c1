#include "commit/change_mark.h"

#include <span>

#include "bytes.h"

namespace quardele::jet {

namespace {

constexpr std::uint64_t kSlotsAt = 0xE00;
/// What a slot starts with. Smaller values are not counts: the original engine knows 0 and 1 as signs of a
/// write that did not end.
constexpr std::uint16_t kFirstCount = 0x0100;

}  // namespace

ChangeMark::ChangeMark(const Bytes& bytes) : bytes_(bytes), usable_(true) {
    for (std::size_t i = 0; i < kSlots; ++i) {
        usable_ = usable_ && Slot(i) >= kFirstCount;
    }
}

ChangeMark ChangeMark::Read(const OsFile& file, const Format& format) {
    Bytes bytes{};
    if (!format.wideText || file.ReadAt(kSlotsAt, bytes) != bytes.size()) {
        return {};
    }
    return ChangeMark(bytes);
}

std::uint16_t ChangeMark::Slot(std::size_t number) const {
    return ByteView(bytes_, kHeaderPage).U16(2 * number);
}

ChangeMark ChangeMark::Advanced(int user) const {
    const auto number = static_cast<std::size_t>(user);
    const std::uint16_t count = Slot(number);
    ChangeMark next = *this;
    StoreLittle(std::span(next.bytes_).subspan(2 * number),
                static_cast<std::uint16_t>(count == UINT16_MAX ? kFirstCount : count + 1));
    return next;
}

void ChangeMark::WriteSlot(OsFile& file, int user) const {
    const std::size_t at = 2 * static_cast<std::size_t>(user);
    file.WriteAt(kSlotsAt + at, std::span(bytes_).subspan(at, 2));
}

}  // namespace quardele::jet
