#include "database_edits.h"

#include <fstream>
#include <sstream>
#include <string>

#include <basic/runtime_error.h>
#include <dao/dao.h>

namespace quardele::tests {

namespace {

std::string ReadFile(const std::filesystem::path& file) {
    std::ostringstream content;
    content << std::ifstream(file, std::ios::binary).rdbuf();
    return content.str();
}

void WriteFile(const std::filesystem::path& file, const std::string& content) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream << content;
}

std::string Utf16Bytes(basic::TextView text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

}  // namespace

void SetField(basic::TextView file, basic::TextView table, basic::TextView condition, basic::TextView field,
              const basic::Variant& value) {
    const auto database = dao::DBEngine::Instance().Workspaces(0).OpenDatabase(file);
    const auto rows = database->OpenRecordset(table, dao::RecordsetType::Dynaset);
    rows->FindFirst(condition);
    if (rows->NoMatch()) {
        throw basic::RuntimeError(basic::error::kNoCurrentRecord);
    }
    rows->Edit();
    rows->SetValue(field, value);
    rows->Update();
}

void ReplaceInFile(const std::filesystem::path& file, basic::TextView what, basic::TextView with) {
    std::string content = ReadFile(file);
    const std::string from = Utf16Bytes(what);
    const std::string to = Utf16Bytes(with);
    for (std::size_t at = content.find(from); at != std::string::npos;
         at = content.find(from, at + to.size())) {
        content.replace(at, to.size(), to);
    }
    WriteFile(file, content);
}

void SpoilFile(const std::filesystem::path& file, Damage damage) {
    /// Where the masked password begins in the file's first page.
    constexpr std::size_t kPasswordOffset = 0x42;
    constexpr std::size_t kPageSize = 4096;
    std::string content = ReadFile(file);
    switch (damage) {
        case Damage::Empty:
            content.clear();
            break;
        case Damage::Truncated:
            content.resize(kPageSize + kPageSize / 2);
            break;
        case Damage::Foreign:
            content.assign(8 * kPageSize, 'x');
            break;
        case Damage::PasswordProtected:
            content[kPasswordOffset] = static_cast<char>(content[kPasswordOffset] ^ 'a');
            break;
    }
    WriteFile(file, content);
}

}  // namespace quardele::tests
