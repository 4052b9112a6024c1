// A grid on paper.
#include <basic/runtime_error.h>
#include <forms/grid.h>

#include "grid_private.h"
#include "grid_sheet.h"
#include "print_sheet.h"

namespace quardele::forms {
namespace {

void RefuseUnless(bool known) {
    if (!known) {
        throw basic::RuntimeError(basic::error::kInvalidCall);
    }
}

}  // namespace

bool Grid::PrintBorder() const {
    return d_->print.border;
}
void Grid::SetPrintBorder(bool printed) {
    d_->print.border = printed;
}
bool Grid::PrintColHeaders() const {
    return d_->print.colHeaders;
}
void Grid::SetPrintColHeaders(bool printed) {
    d_->print.colHeaders = printed;
}
bool Grid::PrintRowHeaders() const {
    return d_->print.rowHeaders;
}
void Grid::SetPrintRowHeaders(bool printed) {
    d_->print.rowHeaders = printed;
}
bool Grid::PrintGrid() const {
    return d_->print.lines;
}
void Grid::SetPrintGrid(bool printed) {
    d_->print.lines = printed;
}
bool Grid::PrintColor() const {
    return d_->print.color;
}
void Grid::SetPrintColor(bool printed) {
    d_->print.color = printed;
}
bool Grid::PrintShadows() const {
    return d_->print.shadows;
}
void Grid::SetPrintShadows(bool printed) {
    d_->print.shadows = printed;
}
int Grid::PrintOrientation() const {
    return d_->print.orientation;
}
void Grid::SetPrintOrientation(int orientation) {
    RefuseUnless(orientation >= 0 && orientation <= 2);
    d_->print.orientation = orientation;
}
void Grid::SetPrintType(int type) {
    RefuseUnless(type == 0);
}
QString Grid::PrintHeader() const {
    return d_->print.header;
}
void Grid::SetPrintHeader(const QString& markup) {
    d_->print.header = markup;
}

void Grid::PrintSheet(int flags) {
    RefuseUnless(flags == 1);
    model_->FindAllRows();
    OfferSheet(SheetOf(*this, *model_, d_->print), window());
}

}  // namespace quardele::forms
