#include "compound_file.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace quardele::workbook {

namespace {

constexpr std::size_t kSector = 512;
constexpr std::size_t kNumbersPerSector = kSector / 4;
constexpr std::size_t kLeastStream = 4096;
/// Sectors of the table of sectors that the header itself lists.
constexpr std::size_t kListedInHeader = 109;

constexpr std::uint32_t kListSector = 0xFFFFFFFC;
constexpr std::uint32_t kTableSector = 0xFFFFFFFD;
constexpr std::uint32_t kEndOfChain = 0xFFFFFFFE;
constexpr std::uint32_t kNothing = 0xFFFFFFFF;

/// What lies where, in sectors: the stream, the directory, the table of sectors, the lists of that table's
/// sectors which the header has no room for.
struct Plan {
    std::size_t streamSectors = 0;
    std::size_t tableSectors = 0;
    std::size_t listSectors = 0;

    [[nodiscard]] std::size_t Directory() const { return streamSectors; }
    [[nodiscard]] std::size_t Table() const { return Directory() + 1; }
    [[nodiscard]] std::size_t Lists() const { return Table() + tableSectors; }
    [[nodiscard]] std::size_t Total() const { return Lists() + listSectors; }
};

std::size_t Sectors(std::size_t things, std::size_t perSector) {
    return (things + perSector - 1) / perSector;
}

Plan PlanFor(std::size_t streamSize) {
    Plan plan{.streamSectors = Sectors(streamSize, kSector)};
    while (true) {
        const std::size_t table = Sectors(plan.Total(), kNumbersPerSector);
        const std::size_t listed = std::max(table, kListedInHeader) - kListedInHeader;
        const std::size_t lists = Sectors(listed, kNumbersPerSector - 1);
        if (table == plan.tableSectors && lists == plan.listSectors) {
            return plan;
        }
        plan.tableSectors = table;
        plan.listSectors = lists;
    }
}

class Bytes {
 public:
    void Put(std::uint64_t value, int bytes) {
        for (int i = 0; i < bytes; ++i) {
            bytes_.push_back(static_cast<char>(value >> (8 * i) & 0xFF));
        }
    }
    void PutNumber(std::size_t value) { Put(value, 4); }
    void FillTo(std::size_t size, std::uint8_t with) { bytes_.resize(size, static_cast<char>(with)); }
    [[nodiscard]] const std::string& All() const { return bytes_; }

 private:
    std::string bytes_;
};

std::size_t ListEntry(const Plan& plan, std::size_t index) {
    return index < plan.tableSectors ? plan.Table() + index : kNothing;
}

void WriteHeader(std::ostream& out, const Plan& plan) {
    Bytes header;
    header.Put(0xE11AB1A1E011CFD0, 8);
    header.FillTo(24, 0);
    header.Put(0x003E, 2);  // version 3.62
    header.Put(0x0003, 2);
    header.Put(0xFFFE, 2);  // little-endian
    header.Put(9, 2);       // sectors of 2^9 bytes, small ones of 2^6
    header.Put(6, 2);
    header.FillTo(44, 0);
    header.PutNumber(plan.tableSectors);
    header.PutNumber(plan.Directory());
    header.PutNumber(0);
    header.PutNumber(kLeastStream);
    header.PutNumber(kEndOfChain);  // no small sectors
    header.PutNumber(0);
    header.PutNumber(plan.listSectors == 0 ? kEndOfChain : plan.Lists());
    header.PutNumber(plan.listSectors);
    for (std::size_t i = 0; i < kListedInHeader; ++i) {
        header.PutNumber(ListEntry(plan, i));
    }
    out << header.All();
}

void PutEntry(Bytes& directory, basic::TextView name, std::uint8_t kind, std::size_t child, std::size_t start,
              std::size_t size) {
    constexpr std::size_t kNameSize = 64;
    constexpr std::uint64_t kWorkbookClass = 0x00020820;
    constexpr std::uint64_t kWorkbookClassEnd = 0x46000000000000C0;
    constexpr std::uint8_t kRoot = 5;
    const std::size_t begin = directory.All().size();
    for (const char16_t unit : name) {
        directory.Put(unit, 2);
    }
    directory.FillTo(begin + kNameSize, 0);
    directory.Put(name.empty() ? 0 : 2 * (name.size() + 1), 2);
    directory.Put(kind, 1);
    directory.Put(1, 1);  // black in the tree of names
    directory.PutNumber(kNothing);
    directory.PutNumber(kNothing);
    directory.PutNumber(child);
    directory.Put(kind == kRoot ? kWorkbookClass : 0, 8);
    directory.Put(kind == kRoot ? kWorkbookClassEnd : 0, 8);
    directory.FillTo(begin + 116, 0);
    directory.PutNumber(start);
    directory.Put(size, 8);
}

void WriteDirectory(std::ostream& out, basic::TextView streamName, std::size_t streamSize) {
    Bytes directory;
    PutEntry(directory, u"Root Entry", 5, 1, kEndOfChain, 0);
    PutEntry(directory, streamName, 2, kNothing, 0, streamSize);
    PutEntry(directory, {}, 0, kNothing, 0, 0);
    PutEntry(directory, {}, 0, kNothing, 0, 0);
    out << directory.All();
}

/// For each sector the one that follows it in its chain.
void WriteTable(std::ostream& out, const Plan& plan) {
    Bytes table;
    for (std::size_t sector = 0; sector < plan.streamSectors; ++sector) {
        table.PutNumber(sector + 1 == plan.streamSectors ? kEndOfChain : sector + 1);
    }
    table.PutNumber(kEndOfChain);
    for (std::size_t i = 0; i < plan.tableSectors; ++i) {
        table.PutNumber(kTableSector);
    }
    for (std::size_t i = 0; i < plan.listSectors; ++i) {
        table.PutNumber(kListSector);
    }
    table.FillTo(plan.tableSectors * kSector, 0xFF);
    out << table.All();
}

void WriteLists(std::ostream& out, const Plan& plan) {
    Bytes lists;
    std::size_t entry = kListedInHeader;
    for (std::size_t list = 0; list < plan.listSectors; ++list) {
        for (std::size_t i = 0; i + 1 < kNumbersPerSector; ++i) {
            lists.PutNumber(ListEntry(plan, entry++));
        }
        lists.PutNumber(list + 1 == plan.listSectors ? kEndOfChain : plan.Lists() + list + 1);
    }
    out << lists.All();
}

}  // namespace

void WriteCompoundFile(std::ostream& out, basic::TextView streamName, std::string_view stream) {
    const std::size_t size = std::max(stream.size(), kLeastStream);
    const Plan plan = PlanFor(size);
    WriteHeader(out, plan);
    out << stream << std::string(plan.streamSectors * kSector - stream.size(), '\0');
    WriteDirectory(out, streamName, size);
    WriteTable(out, plan);
    WriteLists(out, plan);
}

}  // namespace quardele::workbook
