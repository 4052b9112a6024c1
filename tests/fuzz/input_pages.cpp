#include "input_pages.h"

namespace quardele::fuzz {

namespace {

[[nodiscard]] std::shared_ptr<jet::Page> ZeroPage(const jet::Format& format, std::uint32_t number) {
    auto page = std::make_shared<jet::Page>();
    page->number = number;
    page->size = format.pageSize;
    page->bytes.fill(0);
    return page;
}

}  // namespace

InputPages::InputPages(const jet::Format& format, InputReader& input) : PageSource(format) {
    while (!input.AtEnd()) {
        const std::uint32_t number = input.Word();
        const BytesView content = input.Take(input.Word() % (format.pageSize + 1));
        const auto page = ZeroPage(format, number);
        std::copy(content.begin(), content.end(), page->bytes.begin());
        pages_[number] = page;
        pageCount_ = std::max(pageCount_, number + 1);
    }
}

jet::PagePtr InputPages::ReadInside(std::uint32_t number) const {
    const auto found = pages_.find(number);
    return found == pages_.end() ? ZeroPage(Layout(), number) : found->second;
}

void AppendPage(Bytes& input, const jet::Page& page) {
    BytesView content = page.View().Span();
    while (!content.empty() && content.back() == 0) {
        content = content.first(content.size() - 1);
    }
    AppendWord(input, page.number);
    AppendWord(input, content.size());
    AppendBytes(input, content);
}

}  // namespace quardele::fuzz
