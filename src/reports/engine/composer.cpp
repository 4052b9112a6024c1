#include "composer.h"

#include <forms/strings.h>

#include "paginator.h"
#include "paper.h"
#include "records.h"

namespace quardele::engine {
namespace {

using forms::ToText;

class Composer {
 public:
    explicit Composer(const ReportDefinition& report) : report_(report), formulas_(report) {}

    std::unique_ptr<Content> Run() {
        const CompiledSections pageHeader = CompileSections(report_.pageHeader, formulas_);
        const CompiledSections pageFooter = CompileSections(report_.pageFooter, formulas_);
        const CompiledBody body = Body();
        std::vector<std::size_t> groupColumns;
        for (const Group& group : report_.groups) {
            groupColumns.push_back(formulas_.ColumnOf(ToText(group.by.table), ToText(group.by.field)));
        }
        const Records records = ReadRecords(report_, formulas_);
        const Evaluator evaluator(formulas_, records, std::move(groupColumns));
        const SectionLayout layout(evaluator, materials_);
        PageFrame frame;
        frame.height = RoomOf(report_.layout).height();
        frame.header = [&](const Position& position) { return layout.Lay(pageHeader, position); };
        frame.footerRoom = [&](const Position& position) { return layout.Room(pageFooter, position); };
        frame.footer = [&](const Position& position) { return layout.Lay(pageFooter, position); };
        for (const Group& group : report_.groups) {
            frame.repeatHeader.push_back(group.repeatHeader);
            frame.keepTogether.push_back(group.keepTogether);
        }
        auto content = std::make_unique<Content>();
        content->pages = Paginate(BandsOf(body, evaluator, records.count, layout), frame);
        FillIn(content->pages, layout);
        content->fonts = materials_.fonts.Fonts();
        content->pictures = materials_.pictures.Take();
        return content;
    }

 private:
    [[nodiscard]] CompiledBody Body() {
        CompiledBody body;
        body.reportHeader = CompileSections(report_.reportHeader, formulas_);
        for (const Group& group : report_.groups) {
            body.groups.push_back(
                {&group, CompileSections(group.header, formulas_), CompileSections(group.footer, formulas_)});
        }
        body.details = CompileSections(report_.details, formulas_);
        body.reportFooter = CompileSections(report_.reportFooter, formulas_);
        return body;
    }

    /// The texts that had to wait for the number of pages.
    static void FillIn(std::vector<Pieces>& pages, const SectionLayout& layout) {
        int number = 0;
        for (Pieces& page : pages) {
            ++number;
            for (Piece& piece : page) {
                layout.Resolve(piece, number, static_cast<int>(pages.size()));
            }
        }
    }

    const ReportDefinition& report_;
    FormulaSet formulas_;
    Materials materials_;
};

}  // namespace

std::unique_ptr<Content> ComposeContent(const ReportDefinition& report) {
    return Composer(report).Run();
}

}  // namespace quardele::engine
