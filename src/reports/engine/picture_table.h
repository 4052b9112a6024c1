// The pictures of a document, each once.
#pragma once

#include <map>
#include <vector>

#include <QImage>
#include <QString>

namespace quardele::engine {

class PictureTable {
 public:
    /// Throws RuntimeError 53 when there is no such file, 481 when it is no picture.
    std::size_t NumberOf(const QString& file);
    [[nodiscard]] const QImage& Picture(std::size_t number) const { return pictures_[number]; }
    [[nodiscard]] std::vector<QImage> Take() { return std::move(pictures_); }

 private:
    std::map<QString, std::size_t> numbers_;
    std::vector<QImage> pictures_;
};

}  // namespace quardele::engine
