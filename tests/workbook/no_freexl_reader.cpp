// In the place of the reader where libfreexl is missing: what compares with it shows as skipped.
#include "freexl_reader.h"

namespace quardele::workbook::test {

namespace {

class MissingReader : public WorkbookReader {
 public:
    std::string Name() const override { return "libfreexl"; }
    bool IsHere() const override { return false; }
    SheetInWords Read(const std::filesystem::path& /*file*/,
                      const std::filesystem::path& /*folder*/) const override {
        return {};
    }
};

}  // namespace

const WorkbookReader& FreeXl() {
    static const MissingReader reader;
    return reader;
}

}  // namespace quardele::workbook::test
