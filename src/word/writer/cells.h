// Word's Cells object: the cells that are selected, or the one that the selection stands in.
#pragma once

#include "cell_place.h"
#include "document_object.h"

namespace quardele::word::writer {

class Cells final : public DocumentObject<Cells> {
 public:
    using DocumentObject::DocumentObject;
    static std::span<const Member<Cells>> Members();

 private:
    /// Makes the columns as wide as their contents ask for.
    Value AutoFit(const Arguments&);
    /// Removes whole rows, the only cells that Writer takes out of a table. Throws RuntimeError 4198 when the
    /// selection is not one or more rows.
    Value Delete(const Arguments&);
    /// 0: rows as high as their contents; 1 at least, 2 exactly as high as they are.
    Value HeightRule(const Arguments&);
    void SetHeightRule(const Value& rule);
};

/// The rows of the selection, 0-based.
struct RowSpan {
    int first;
    int last;
    /// Whether all their cells are selected.
    bool whole;
};
/// Throws RuntimeError 4605 when the selection is not in a table.
[[nodiscard]] RowSpan SelectedRows(const OpenDocument& document);

/// Selects all cells of these rows, of the table under the selection.
void SelectRows(const OpenDocument& document, int first, int last);

}  // namespace quardele::word::writer
