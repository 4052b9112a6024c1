// The pages of one open file in memory, read with pread as they are asked for.
#pragma once

#include <unordered_map>
#include <vector>

#include "os_file.h"
#include "page.h"

namespace quardele::jet {

/// A bounded set of recently used pages. The file is not mapped: another process may shorten or rewrite it at
/// any moment, which must neither kill this one nor change a row while it is being decoded.
class PageCache final : public PageSource {
 public:
    /// The file must outlive the cache.
    PageCache(const OsFile& file, const Format& format);

    [[nodiscard]] std::uint32_t PageCount() const override { return pageCount_; }
    /// Forgets everything and measures the file again. Pages that others hold stay valid.
    void Clear();
    /// Takes over a page that was just written.
    void Put(PagePtr page);
    [[nodiscard]] std::uint64_t Generation() const override { return generation_; }
    /// Makes stale what was computed from pages.
    void Touch() { ++generation_; }

 protected:
    [[nodiscard]] PagePtr ReadInside(std::uint32_t number) const override;

 private:
    struct Frame {
        PagePtr page;
        bool used = false;
    };

    void Insert(PagePtr page) const;
    [[nodiscard]] std::size_t FrameToReuse() const;
    [[nodiscard]] std::uint32_t RunLength(std::uint32_t number) const;

    const OsFile& file_;
    std::uint32_t pageCount_ = 0;
    std::uint64_t generation_ = 0;
    mutable std::unordered_map<std::uint32_t, std::size_t> frameOf_;
    mutable std::vector<Frame> frames_;
    mutable std::size_t hand_ = 0;
    mutable std::uint32_t expected_ = 0;  ///< the page that a sequential reader would ask for next
    mutable std::vector<std::uint8_t> readBuffer_;
};

}  // namespace quardele::jet
