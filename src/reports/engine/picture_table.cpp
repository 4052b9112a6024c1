#include "picture_table.h"

#include <QFileInfo>

#include <basic/runtime_error.h>
#include <forms/strings.h>

namespace quardele::engine {

namespace error = basic::error;

std::size_t PictureTable::NumberOf(const QString& file) {
    const auto known = numbers_.find(file);
    if (known != numbers_.end()) {
        return known->second;
    }
    const QImage picture(file);
    if (picture.isNull()) {
        const int number = QFileInfo(file).isFile() ? error::kInvalidPicture : error::kFileNotFound;
        throw basic::RuntimeError(number, basic::Describe(number, forms::ToText(QFileInfo(file).fileName())));
    }
    pictures_.push_back(picture);
    numbers_.emplace(file, pictures_.size() - 1);
    return pictures_.size() - 1;
}

}  // namespace quardele::engine
