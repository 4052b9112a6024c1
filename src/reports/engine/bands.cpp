#include "bands.h"

#include <utility>

namespace quardele::engine {
namespace {

class BandMaker {
 public:
    BandMaker(const CompiledBody& body, const Evaluator& evaluator, std::size_t records,
              const SectionLayout& layout)
        : body_(body), evaluator_(evaluator), records_(records), layout_(layout) {}

    std::vector<Band> Run() {
        const auto first = records_ > 0 ? std::optional<std::size_t>(0) : std::nullopt;
        const auto last = records_ > 0 ? std::optional(records_ - 1) : std::nullopt;
        Add(body_.reportHeader, first, 0);
        for (std::size_t record = 0; record < records_; ++record) {
            const std::size_t change = record == 0 ? 0 : evaluator_.FirstChange(record);
            if (record > 0) {
                CloseGroups(change, record - 1);
            }
            OpenGroups(change, record);
            Add(body_.details, record, body_.groups.size());
        }
        if (last) {
            CloseGroups(0, *last);
        }
        Add(body_.reportFooter, last, 0);
        return std::move(bands_);
    }

 private:
    void OpenGroups(std::size_t from, std::size_t record) {
        for (std::size_t group = from; group < body_.groups.size(); ++group) {
            bands_.push_back({.strip = {}, .record = record, .depth = group, .starts = group});
            Add(body_.groups[group].header, record, group);
        }
    }

    void CloseGroups(std::size_t from, std::size_t record) {
        for (std::size_t group = body_.groups.size(); group > from; --group) {
            Add(body_.groups[group - 1].footer, record, group);
        }
    }

    void Add(const CompiledSections& sections, std::optional<std::size_t> record, std::size_t depth) {
        for (const CompiledSection& compiled : sections) {
            Strip strip = layout_.Lay(compiled, {.record = record});
            const Section& section = *compiled.section;
            if (strip.height > 0 || !strip.pieces.empty()) {
                bands_.push_back({.strip = std::move(strip),
                                  .record = record,
                                  .kind = section.Kind(),
                                  .keepTogether = section.keepTogether,
                                  .newPageBefore = section.newPageBefore,
                                  .newPageAfter = section.newPageAfter,
                                  .depth = depth});
            }
        }
    }

    const CompiledBody& body_;
    const Evaluator& evaluator_;
    std::size_t records_;
    const SectionLayout& layout_;
    std::vector<Band> bands_;
};

}  // namespace

std::vector<Band> BandsOf(const CompiledBody& body, const Evaluator& evaluator, std::size_t records,
                          const SectionLayout& layout) {
    return BandMaker(body, evaluator, records, layout).Run();
}

}  // namespace quardele::engine
