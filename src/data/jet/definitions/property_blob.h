// The properties that Access keeps beside a table's definition: one blob of names and values per table, in
// blocks for the table itself and for each column. What is not understood is kept byte for byte.
#pragma once

#include <vector>

#include <basic/text.h>

#include "bytes.h"
#include "definitions/table_def.h"
#include "format.h"

namespace quardele::jet {

class PropertyBlob {
 public:
    /// A blob without properties, in the layout of Access 2000-2003.
    PropertyBlob();
    /// Throws 3343 when the blob does not hold together.
    PropertyBlob(const ByteView& blob, const Format& format);

    /// Calls use(column, property, value) for each property of a column.
    template <class Use>
    void ForEachOfColumns(const Use& use) const {
        for (const Block& block : blocks_) {
            for (const ByteString& record : block.records) {
                if (block.type == kOfColumn && NameOf(record) < names_.size()) {
                    use(block.owner, names_[NameOf(record)], ValueOf(record));
                }
            }
        }
    }

    /// Gives a column a property, in the place of the one that it has; Access 2000-2003 only.
    void SetOfColumn(TextView column, TextView property, ColumnType type, const ByteString& value);
    void RemoveOfColumn(TextView column, TextView property);

    /// The blob of Access 2000-2003.
    [[nodiscard]] ByteString Bytes() const;

 private:
    static constexpr std::uint16_t kNameList = 0x0080;
    static constexpr std::uint16_t kOfColumn = 0x0001;

    struct Block {
        std::uint16_t type = 0;
        ByteString head;  ///< the owner's name as stored; of other blocks all bytes
        Text owner;
        std::vector<ByteString> records;
    };

    void ReadNames(const ByteView& body, const Format& format);
    static void ReadValues(const ByteView& body, const Format& format, Block& block);
    [[nodiscard]] static std::size_t NameOf(const ByteString& record);
    [[nodiscard]] ByteView ValueOf(const ByteString& record) const;
    [[nodiscard]] std::size_t NameIndex(TextView property);
    [[nodiscard]] Block* FindColumn(TextView column);
    [[nodiscard]] Block& ColumnBlock(TextView column);

    std::uint32_t page_ = 0;  ///< that the blob comes from; for error texts
    std::vector<Block> blocks_;
    std::vector<Text> names_;
};

}  // namespace quardele::jet
