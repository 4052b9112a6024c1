// A whole file against itself: pages, maps, rows, long values, indexes, catalogue.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <vector>

#include <jet/types.h>

namespace quardele::jet {

/// What can be wrong.
enum class FaultCode {
    Header,            ///< the first page is not that of a data file that can be read
    InterruptedWrite,  ///< a journal beside the file waits for its recovery
    UnendedWrite,      ///< a commit slot says that a write of another program did not end
    Damaged,           ///< something does not hold together; the detail says what
    PageOutside,       ///< a link leads out of the file
    PageTwice,         ///< a page has two owners
    PageFree,          ///< a page in use is marked as free
    PageForeign,       ///< a page that a map lists is none of its owner
    PageUnlisted,      ///< a page of a table that the table's map does not list
    PageLost,          ///< pages that belong to nothing and are not free
    RoomForeign,       ///< the map of pages with room lists a page that is not owned
    MapShape,          ///< a map row of impossible shape
    FreeBytes,         ///< a page states another free space than it has
    Row,               ///< a row does not hold together
    RowMoved,          ///< a moved row leads to no row
    RowOrphan,         ///< the data of a moved row that no row leads to
    RowCount,          ///< the definition states another number of rows
    Value,             ///< a value does not fit its column
    LongValue,         ///< a memo or OLE value cannot be read
    LongValueTwice,    ///< two values share a piece
    LongValueOrphan,   ///< pieces that no value leads to
    LongValuePlace,    ///< a piece outside the pages of its column
    AutoNumber,        ///< the last number handed out is smaller than one in use
    Definition,        ///< a table definition does not hold together
    IndexPage,         ///< a page of an index does not hold together
    IndexOrder,        ///< entries out of order
    IndexSeparator,    ///< an entry of a node does not lie between its children
    IndexLinks,        ///< pages of a level are not linked in their order
    IndexMap,          ///< the map of an index and its tree have different pages
    IndexMissing,      ///< a row without its entry
    IndexExtra,        ///< an entry without its row
    IndexDuplicate,    ///< equal keys in a unique index
    IndexNull,         ///< Null in an index that admits none
    Catalog,           ///< an entry of the catalogue leads to no table definition
    CatalogTwice,      ///< two entries of the catalogue lead to one definition
    Properties,        ///< the properties of an object do not hold together
    More,              ///< faults that are not listed one by one
};

/// One finding.
struct Fault {
    FaultCode code = FaultCode::Damaged;
    /// A note is harmless, and found in sound files of other programs: lost pages, counters that lag
    /// behind. A file that only this engine has written has none.
    bool note = false;
    std::uint32_t page = 0;  ///< where it was found; 0 for the file as a whole
    Text table;              ///< empty for the file as a whole
    Text object;             ///< the index or column; empty for the table as a whole
    Text detail;             ///< a number, a name, a place; French where it is a sentence
};

enum class FaultLanguage { French, English };

/// One line that says where and what.
[[nodiscard]] Text Describe(const Fault& fault, FaultLanguage language);

/// Called now and then with the number of pages looked at so far and the number there will be.
using CheckProgress = std::function<void(std::size_t done, std::size_t total)>;

/// Checks a file without changing it; nobody writes to it meanwhile. Faults come in the order of finding;
/// long lists end with More. A database password is not asked for. Throws RuntimeError only when the file
/// cannot be looked at: 3024 missing, 3051 no access, 3045 somebody keeps writing.
[[nodiscard]] std::vector<Fault> CheckFile(const std::filesystem::path& file,
                                           const CheckProgress& progress = {});

/// Whether there is a finding that is not a note.
[[nodiscard]] bool HasFaults(const std::vector<Fault>& findings);

}  // namespace quardele::jet
