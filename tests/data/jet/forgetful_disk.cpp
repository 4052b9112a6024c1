#include "forgetful_disk.h"

#include <algorithm>

#include "commit/journal.h"
#include "support.h"

namespace quardele::jet::test {

namespace {

constexpr std::uint64_t kSectorSize = 512;

bool Coin(std::mt19937& chance) {
    return chance() % 2 == 0;
}

}  // namespace

ForgetfulDisk::ForgetfulDisk(const std::filesystem::path& dataFile)
    : dataPath_(dataFile), journalNamed_(HasJournal(dataFile)), journalNamedDurably_(journalNamed_) {
    data_.durable = ReadBytes(dataFile);
    if (journalNamed_) {
        journal_.durable = ReadBytes(JournalPath(dataFile));
    }
}

void ForgetfulDisk::Take(const WriteEvent& event) {
    if (event.step == WritePoint::SyncFolder) {
        journalNamedDurably_ = journalNamed_;
    } else if (event.path == dataPath_) {
        TakeOf(data_, event);
    } else if (event.path == JournalPath(dataPath_)) {
        TakeOf(journal_, event);
    }
}

void ForgetfulDisk::TakeOf(File& file, const WriteEvent& event) {
    switch (event.step) {
        case WritePoint::Create:
            file = {};
            journalNamed_ = true;
            return;
        case WritePoint::Remove:
        case WritePoint::Rename:
            journalNamed_ = false;
            return;
        case WritePoint::Write:
            return Write(file, event);
        case WritePoint::Resize:
            file.pending.push_back({.isResize = true, .at = event.offset, .bytes = {}});
            return;
        case WritePoint::Sync:
            return Sync(file);
        case WritePoint::SyncFolder:
            return;
    }
}

// Sector by sector.
void ForgetfulDisk::Write(File& file, const WriteEvent& event) {
    auto rest = event.bytes;
    for (std::uint64_t at = event.offset; !rest.empty();) {
        const std::size_t size = std::min<std::size_t>(rest.size(), kSectorSize - at % kSectorSize);
        const auto part = rest.first(size);
        file.pending.push_back({.at = at, .bytes = {part.begin(), part.end()}});
        rest = rest.subspan(size);
        at += size;
    }
}

void ForgetfulDisk::Sync(File& file) {
    for (const Piece& piece : file.pending) {
        Apply(piece, file.durable);
    }
    file.pending.clear();
}

void ForgetfulDisk::Apply(const Piece& piece, std::vector<std::uint8_t>& bytes) {
    if (piece.isResize) {
        bytes.resize(piece.at);
        return;
    }
    bytes.resize(std::max<std::size_t>(bytes.size(), piece.at + piece.bytes.size()));
    std::copy(piece.bytes.begin(), piece.bytes.end(), bytes.begin() + static_cast<std::ptrdiff_t>(piece.at));
}

std::vector<std::uint8_t> ForgetfulDisk::Found(const File& file, std::mt19937& chance) {
    std::vector<std::uint8_t> bytes = file.durable;
    for (const Piece& piece : file.pending) {
        if (Coin(chance)) {
            Apply(piece, bytes);
        }
    }
    return bytes;
}

void ForgetfulDisk::LeaveAfterPowerLoss(unsigned seed, const std::filesystem::path& dataFile) const {
    std::mt19937 chance(seed);
    WriteBytes(dataFile, Found(data_, chance));
    std::filesystem::remove(JournalPath(dataFile));
    if (journalNamed_ == journalNamedDurably_ ? journalNamed_ : Coin(chance)) {
        WriteBytes(JournalPath(dataFile), Found(journal_, chance));
    }
}

}  // namespace quardele::jet::test
