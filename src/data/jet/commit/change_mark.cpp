#include "commit/change_mark.h"

#include <span>

#include "bytes.h"

namespace quardele::jet {

namespace {

constexpr std::uint64_t kSlotsAt = 0xE00;
/// What a slot starts with. Smaller values are not counts.
constexpr std::uint16_t kFirstCount = 0x0100;
/// Signs of trouble, as the original engine is said to leave them.
constexpr std::uint16_t kWriting = 0;
constexpr std::uint16_t kMetDamage = 1;

}  // namespace

ChangeMark::ChangeMark(const Bytes& bytes) : bytes_(bytes) {
    std::size_t counts = 0;
    std::size_t signs = 0;
    for (std::size_t i = 0; i < kSlots; ++i) {
        counts += Slot(i) >= kFirstCount ? 1 : 0;
        signs += Slot(i) <= kMetDamage ? 1 : 0;
    }
    usable_ = counts == kSlots;
    inTrouble_ = counts > 0 && signs > 0 && counts + signs == kSlots;
}

ChangeMark ChangeMark::Read(const OsFile& file, const Format& format) {
    Bytes bytes{};
    if (!format.wideText || file.ReadAt(kSlotsAt, bytes) != bytes.size()) {
        return {};
    }
    return ChangeMark(bytes);
}

bool ChangeMark::IsIn(const OsFile& file) const {
    Bytes bytes{};
    return file.ReadAt(kSlotsAt, bytes) == bytes.size() && bytes == bytes_;
}

std::uint16_t ChangeMark::Slot(std::size_t number) const {
    return ByteView(bytes_, kHeaderPage).U16(2 * number);
}

std::vector<int> ChangeMark::UsersWith(std::uint16_t highest) const {
    std::vector<int> users;
    for (std::size_t i = 0; inTrouble_ && i < kSlots; ++i) {
        if (Slot(i) <= highest) {
            users.push_back(static_cast<int>(i));
        }
    }
    return users;
}

std::vector<int> ChangeMark::UsersInTrouble() const {
    return UsersWith(kMetDamage);
}

std::vector<int> ChangeMark::UsersInWriting() const {
    return UsersWith(kWriting);
}

ChangeMark ChangeMark::Advanced(int user) const {
    const auto number = static_cast<std::size_t>(user);
    const std::uint16_t count = Slot(number);
    ChangeMark next = *this;
    const bool counts = count >= kFirstCount && count < UINT16_MAX;
    StoreLittle(std::span(next.bytes_).subspan(2 * number),
                static_cast<std::uint16_t>(counts ? count + 1 : kFirstCount));
    return next;
}

void ChangeMark::WriteSlot(OsFile& file, int user) const {
    const std::size_t at = 2 * static_cast<std::size_t>(user);
    file.WriteAt(kSlotsAt + at, std::span(bytes_).subspan(at, 2));
}

}  // namespace quardele::jet
