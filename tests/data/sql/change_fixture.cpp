#include "change_fixture.h"

namespace quardele::sql {

const std::shared_ptr<jet::Database>& ChangeTest::Data() {
    if (data_ == nullptr) {
        data_ = jet::Database::Open(file_);
    }
    return data_;
}

std::size_t ChangeTest::Do(const std::string& statement) {
    return Execute(*Data(), basic::FromUtf8(statement)).rows;
}

int ChangeTest::ErrorOfAction(const std::string& statement) {
    return ErrorOf([&] { Do(statement); });
}

std::string ChangeTest::DescriptionOfAction(const std::string& statement) {
    try {
        Do(statement);
    } catch (const basic::RuntimeError& failure) {
        return basic::ToUtf8(failure.Description());
    }
    return {};
}

Lines ChangeTest::GetElsewhere(const std::string& statement) const {
    return Rows(jet::Database::Open(file_), statement);
}

std::vector<jet::test::CsvLine> ChangeTest::Exported(const std::string& table) const {
    return jet::test::ParseCsv(jet::test::MdbExport(file_, table));
}

}  // namespace quardele::sql
