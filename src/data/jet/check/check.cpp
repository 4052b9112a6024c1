#include <jet/check.h>

#include <algorithm>
#include <map>

#include "check/check_maps.h"
#include "check/check_table.h"
#include "commit/journal.h"
#include "commit/unended_writes.h"
#include "commit/write_step.h"
#include "definitions/properties.h"
#include "file/file_header.h"
#include "file/one_name.h"
#include "file/os_file.h"
#include "file/page_cache.h"
#include "locks/lock_bytes.h"
#include "locks/lock_wait.h"
#include "pages/usage_map.h"
#include "rows/long_value.h"
#include "rows/text_codec.h"
#include "rows/value_codec.h"

namespace quardele::jet {

namespace {

constexpr int kLocalTable = 1;
constexpr std::uint32_t kPageMask = 0x00FFFFFF;
constexpr TextView kCatalogName = u"MSysObjects";

/// An entry of the catalogue that has a definition.
struct Listed {
    Text name;
    std::uint32_t page = 0;
    RowId row;
    ByteString properties;
};

class FileCheck {
 public:
    FileCheck(const PageSource& pages, CheckReport& report, const CheckProgress& progress)
        : progress_(progress),
          ledger_(pages.PageCount(), report),
          context_{pages, report, ledger_, [this] { PageDone(); }, {}} {}

    void Run() {
        const FreePages free(context_);
        CheckTables();
        CheckMapPages();
        CheckLost(free.CompareWithClaims(context_));
    }

 private:
    void PageDone();
    void CheckTables();
    void CheckListed(const Listed& listed);
    [[nodiscard]] std::vector<Listed> ReadCatalog(const TableDef& def);
    void CheckMapPages();
    void CheckLost(const std::vector<std::uint32_t>& pages);
    [[nodiscard]] const Text* TableOf(std::uint32_t page) const;

    const CheckProgress& progress_;
    std::size_t pagesDone_ = 0;
    PageLedger ledger_;
    CheckContext context_;
    std::map<std::uint32_t, Text> tables_;  ///< by page of the definition
};

void FileCheck::PageDone() {
    constexpr std::size_t kOften = 256;
    if (++pagesDone_ % kOften == 0 && progress_) {
        progress_(std::min<std::size_t>(pagesDone_, ledger_.PageCount()), ledger_.PageCount());
    }
}

void FileCheck::CheckTables() {
    std::vector<Listed> listed;
    context_.report.Guard(FaultCode::Catalog, {Text(kCatalogName), {}}, kCatalogPage, [&] {
        TableCheck catalog(context_, Text(kCatalogName), kCatalogPage);
        catalog.Run();
        tables_[kCatalogPage] = kCatalogName;
        listed = ReadCatalog(catalog.Def());
    });
    for (const Listed& entry : listed) {
        CheckListed(entry);
    }
}

void FileCheck::CheckListed(const Listed& listed) {
    const CheckPlace place{listed.name, {}};
    if (listed.page == kCatalogPage && basic::EqualNoCase(listed.name, kCatalogName)) {
        return;
    }
    if (!tables_.try_emplace(listed.page, listed.name).second) {
        context_.report.Add(FaultCode::CatalogTwice, place, listed.page, tables_[listed.page]);
        return;
    }
    context_.report.Guard(FaultCode::Catalog, place, listed.page, [&] {
        TableCheck table(context_, listed.name, listed.page);
        table.Run();
        if (!listed.properties.empty()) {
            TableDef def = table.Def();
            context_.report.Guard(FaultCode::Properties, place, listed.row.page, [&] {
                ApplyProperties({listed.properties, listed.row.page}, context_.pages.Layout(), def);
            });
        }
    });
}

std::vector<Listed> FileCheck::ReadCatalog(const TableDef& def) {
    const Format& format = context_.pages.Layout();
    const auto column = [&def](TextView name) {
        const int ordinal = def.FindColumn(name);
        if (ordinal < 0) {
            ThrowDamaged(kCatalogPage, u"catalogue sans ses colonnes");
        }
        return def.stored[static_cast<std::size_t>(ordinal)];
    };
    const StoredColumn id = column(u"Id");
    const StoredColumn type = column(u"Type");
    const StoredColumn name = column(u"Name");
    const StoredColumn properties = column(u"LvProp");
    std::vector<Listed> entries;
    ForEachReadableRow(
        context_.pages, def, ReadUsageMap(context_.pages, def.ownedMap), [&](const CheckedRow& row) {
            const RowLayout layout(row.bytes, def, format);
            const auto kind = layout.Field(type);
            const auto page = layout.Field(id);
            if (!kind || !page || DecodeNumber(type, *kind) != kLocalTable) {
                return;
            }
            Listed entry{.name = {}, .page = page->U32(0) & kPageMask, .row = row.id, .properties = {}};
            if (const auto text = layout.Field(name)) {
                entry.name = DecodeText(*text, format);
            }
            context_.report.Guard(FaultCode::Properties, {entry.name, {}}, row.id.page, [&] {
                if (const auto blob = layout.Field(properties)) {
                    entry.properties = ReadLongValue(context_.pages, *blob);
                }
            });
            entries.push_back(std::move(entry));
        });
    return entries;
}

void FileCheck::CheckMapPages() {
    for (std::uint32_t page = 1; page < ledger_.PageCount(); ++page) {
        if (ledger_.IsMapPage(page)) {
            context_.report.Guard(FaultCode::Damaged, {}, page,
                                  [&] { CheckSlots(context_, {}, *context_.pages.Read(page)); });
        }
    }
}

// Programs that are stopped leave pages behind that nobody uses, some of them with the name of a table that
// does not list them.
void FileCheck::CheckLost(const std::vector<std::uint32_t>& pages) {
    std::vector<std::uint32_t> lost;
    for (const std::uint32_t page : pages) {
        context_.report.Guard(FaultCode::Damaged, {}, page, [&] {
            if (const Text* table = TableOf(page)) {
                context_.report.AddNote(FaultCode::PageUnlisted, {*table, {}}, page);
            } else {
                lost.push_back(page);
            }
        });
    }
    if (!lost.empty()) {
        context_.report.AddNote(FaultCode::PageLost, {}, lost.front(), NumberText(lost.size()));
    }
}

const Text* FileCheck::TableOf(std::uint32_t number) const {
    const PagePtr page = context_.pages.Read(number);
    if (page->Type() != PageType::Data) {
        return nullptr;
    }
    const auto table = tables_.find(page->View().U32(context_.pages.Layout().data.owner));
    return table == tables_.end() ? nullptr : &table->second;
}

/// Keeps writers away. Where the file system has no locks, nobody of ours writes.
class QuietFile {
 public:
    explicit QuietFile(OsFile& file) : file_(file) {
        if (WaitForWriterLock(file, OsFile::Lock::Shared) == OsFile::LockResult::Held) {
            throw basic::RuntimeError(basic::error::kFileInUse,
                                      basic::Describe(basic::error::kFileInUse, PathText(file.Path())));
        }
    }
    ~QuietFile() { file_.Unlock(lock_bytes::kWriter); }
    QuietFile(const QuietFile&) = delete;
    QuietFile& operator=(const QuietFile&) = delete;

 private:
    OsFile& file_;
};

void OpenForCheck(OsFile& file, const std::filesystem::path& path) {
    if (!file.Open(path, OsFile::Access::Read)) {
        throw basic::RuntimeError(basic::error::kCannotOpenFile,
                                  basic::Describe(basic::error::kCannotOpenFile, PathText(path)));
    }
}

// Those that are under way get their time to end; as long as they have not, the pages are not to be relied
// on.
void CheckUnendedWrites(const OsFile& file, const Format& format, CheckReport& report) {
    ChangeMark mark;
    static_cast<void>(RetryUntil([&] {
        mark = ChangeMark::Read(file, format);
        return UnendedWritesOf(mark, file.Path()).underWay.empty();
    }));
    for (const int user : mark.UsersInTrouble()) {
        report.Add(FaultCode::UnendedWrite, {}, kHeaderPage, NumberText(static_cast<std::uint64_t>(user)));
    }
}

// Whether it makes sense to look at the pages: not when they are encrypted. A password keeps nobody.
bool CheckStart(const OsFile& file, const Format& format, CheckReport& report) {
    try {
        CheckHeader(file, format);
    } catch (const basic::RuntimeError& error) {
        if (error.Number() != basic::error::kBadPassword) {
            report.Add(FaultCode::Header, {}, kHeaderPage, error.Description());
        }
        return error.Number() != basic::error::kOperationNotSupported;
    }
    return true;
}

}  // namespace

std::vector<Fault> CheckFile(const std::filesystem::path& dataFile, const CheckProgress& progress) {
    const std::filesystem::path path = OneName(dataFile);
    OsFile file;
    OpenForCheck(file, path);
    const QuietFile quiet(file);
    CheckReport report;
    report.Guard(FaultCode::Header, {}, kHeaderPage, [&] {
        const Format& format = IdentifyFormat(file);
        if (HasJournal(path) && NeedsRecovery(file, format)) {
            report.Add(FaultCode::InterruptedWrite, {}, kHeaderPage);
        }
        CheckUnendedWrites(file, format, report);
        if (CheckStart(file, format, report)) {
            const PageCache pages(file, format);
            FileCheck(pages, report, progress).Run();
        }
    });
    return report.Take();
}

}  // namespace quardele::jet
