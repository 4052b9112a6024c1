#include <jet/compaction.h>

#include <algorithm>
#include <memory>

#include <basic/runtime_error.h>

#include "engine.h"
#include "file/file_header.h"
#include "newfile/new_file.h"
#include "newfile/system_tables.h"
#include "newfile/table_copy.h"
#include "structure/table_layout.h"

namespace quardele::jet {

namespace {

/// Columns of system tables that name tables by their numbers.
constexpr std::pair<TextView, TextView> kIdentities[] = {{u"MSysObjects", u"Id"}, {u"MSysACEs", u"ObjectId"}};

int IdentitiesOf(const TableImpl& table) {
    for (const auto& [name, column] : kIdentities) {
        if (basic::EqualNoCase(table.Name(), name)) {
            return table.Def().FindColumn(column);
        }
    }
    return -1;
}

/// One file on its way into a new one.
class Compaction {
 public:
    Compaction(const std::filesystem::path& source, OsFile& target, const CompactionProgress& progress)
        : source_(source, OpenMode::Exclusive), progress_(progress), target_(target, Header(source_)) {}

    void Run() {
        OpenTables();
        target_.Change([this](Transaction& pages, PageAllocator& allocator) {
            AllocateDefinitions(allocator);
            LayOutTables(pages, allocator);
        });
        for (const auto& table : tables_) {
            TableCopy copy(*table, pages_, IdentitiesOf(*table));
            const auto advance = [this](std::size_t rows) { Advance(rows); };
            copy.CopyRows(target_, advance);
            copy.FillIndexes(target_, advance);
        }
    }

 private:
    static ByteString Header(Engine& source) {
        if (!source.Layout().wideText) {
            throw basic::RuntimeError(basic::error::kReadOnly);
        }
        ByteString header(source.Layout().pageSize);
        if (source.File().ReadAt(0, header) != header.size()) {
            ThrowDamaged(kHeaderPage, u"fichier incomplet");
        }
        StartSlotsAnew(header);
        return header;
    }

    // In the order of their pages: the four tables that every file has must keep theirs.
    void OpenTables() {
        for (const CatalogTable& table : source_.Objects().Tables()) {
            if (!table.linked) {
                tables_.push_back(std::make_unique<TableImpl>(source_, nullptr, table.name,
                                                              TableDef::Read(source_.Pages(), table.page)));
                work_ += tables_.back()->RowCount() * (1 + tables_.back()->Def().realIndexes.size());
            }
        }
        std::sort(tables_.begin(), tables_.end(),
                  [](const auto& left, const auto& right) { return left->Def().page < right->Def().page; });
        const auto same = [](const auto& left, const auto& right) {
            return left->Def().page == right->Def().page;
        };
        if (std::adjacent_find(tables_.begin(), tables_.end(), same) != tables_.end()) {
            ThrowDamaged(kCatalogPage, u"deux tables de la même page");
        }
    }

    void AllocateDefinitions(PageAllocator& allocator) {
        for (const auto& table : tables_) {
            const std::uint32_t old = table->Def().page;
            pages_[old] = allocator.Allocate().number;
            if (old <= kRelationshipsPage && pages_[old] != old) {
                ThrowDamaged(old, u"table du système absente");
            }
        }
    }

    void LayOutTables(Transaction& pages, PageAllocator& allocator) {
        MapRows systemMaps(pages, allocator);
        for (const auto& table : tables_) {
            const TableDef& def = table->Def();
            MapRows ownMaps(pages, allocator);
            MapRows& maps = def.page <= kRelationshipsPage ? systemMaps : ownMaps;
            LayOutTable(pages, allocator, maps, pages_.at(def.page), EmptiedDefinition(def, pages_));
        }
    }

    void Advance(std::size_t rows) {
        done_ += rows;
        if (progress_) {
            progress_(work_ == 0 ? 1.0
                                 : std::min(1.0, static_cast<double>(done_) / static_cast<double>(work_)));
        }
    }

    Engine source_;
    const CompactionProgress& progress_;
    DraftFile target_;
    std::vector<std::unique_ptr<TableImpl>> tables_;
    NewPages pages_;
    std::size_t work_ = 0;
    std::size_t done_ = 0;
};

}  // namespace

void Compact(const std::filesystem::path& source, const std::filesystem::path& target,
             const CompactionProgress& progress) {
    NewFile made(target);
    Compaction(source, made.File(), progress).Run();
    made.Publish();
}

}  // namespace quardele::jet
