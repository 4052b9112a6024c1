#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>
#include <utility>

#include <sql/default_value.h>

#include "cell_parser.h"
#include "commands.h"
#include "csv_reader.h"
#include "error_text.h"
#include "failure.h"
#include "platform.h"
#include "progress.h"
#include "rows_text.h"
#include "standard_input.h"
#include "utf8_text.h"

namespace quardele::mdb {

namespace {

constexpr Message kCannotOpen{"le fichier « |1 » ne peut pas être lu", "the file \"|1\" cannot be read"};
constexpr Message kNoHeader{"le fichier n'a pas de ligne de noms", "the file has no line of names"};
constexpr Message kUnknownColumn{"la table n'a pas de colonne « |1 »", "the table has no column \"|1\""};
constexpr Message kColumnTwice{"la colonne « |1 » est nommée deux fois", "the column \"|1\" is named twice"};
constexpr Message kFieldCount{"ligne |1 : |2 champs au lieu de |3", "line |1: |2 fields instead of |3"};
constexpr Message kCell{"ligne |1, colonne « |2 » : |3", "line |1, column \"|2\": |3"};
constexpr Message kLine{"ligne |1 : ", "line |1: "};

struct CloseFile {
    void operator()(std::FILE* stream) const { std::fclose(stream); }
};

/// The file to import; "-" is the standard input. That one is read whole at once: whoever sends it may take
/// their time, and nobody else could write to the data file meanwhile.
class InputFile {
 public:
    explicit InputFile(const std::string& name) {
        if (name == "-") {
            text_ = ReadStandardInput();
            return;
        }
        stream_.reset(OpenForReading(PathOf(name)));
        if (stream_ == nullptr) {
            throw Failure(kCannotOpen, {name});
        }
    }

    /// Once; the file must outlive the reader.
    [[nodiscard]] CsvReader Reader() {
        return stream_ == nullptr ? CsvReader(std::move(text_)) : CsvReader(stream_.get());
    }

 private:
    std::unique_ptr<std::FILE, CloseFile> stream_;  ///< null for the standard input
    std::string text_;
};

class Import {
 public:
    Import(jet::Database& database, jet::Table& table, CsvReader& reader)
        : database_(database), table_(table), reader_(reader) {
        ReadHeader();
    }

    /// Adds the next row; false at the end.
    bool AddRow() {
        do {
            if (!reader_.Next(fields_)) {
                return false;
            }
        } while (IsEmptyLine());
        if (fields_.size() != columns_.size()) {
            throw Failure(kFieldCount,
                          {LineText(), std::to_string(fields_.size()), std::to_string(columns_.size())});
        }
        ParseRow();
        try {
            if (needsDefaults_) {
                sql::AddDefaults(database_, table_, values_);
            }
            table_.Insert(values_);
        } catch (const basic::RuntimeError& error) {
            throw FailureAt(kLine, {LineText()}, error);
        }
        return true;
    }

 private:
    void ReadHeader();
    void ParseRow();
    [[nodiscard]] std::string LineText() const { return std::to_string(reader_.Line()); }
    // In a file of one column an empty line is a row with Null.
    [[nodiscard]] bool IsEmptyLine() const {
        return columns_.size() > 1 && fields_.size() == 1 && fields_[0].text.empty() && !fields_[0].quoted;
    }

    jet::Database& database_;
    jet::Table& table_;
    CsvReader& reader_;
    std::vector<int> columns_;  ///< ordinals, in the order of the file
    std::vector<CsvField> fields_;
    std::vector<jet::ColumnChange> values_;
    bool needsDefaults_ = false;
};

void Import::ReadHeader() {
    if (!reader_.Next(fields_)) {
        throw Failure(kNoHeader);
    }
    for (const CsvField& field : fields_) {
        const int ordinal = table_.FindColumn(TextOf(field.text));
        if (ordinal < 0) {
            throw Failure(kUnknownColumn, {field.text});
        }
        if (std::find(columns_.begin(), columns_.end(), ordinal) != columns_.end()) {
            throw Failure(kColumnTwice, {field.text});
        }
        columns_.push_back(ordinal);
    }
    for (std::size_t i = 0; i < table_.Columns().size(); ++i) {
        const bool isNamed =
            std::find(columns_.begin(), columns_.end(), static_cast<int>(i)) != columns_.end();
        needsDefaults_ = needsDefaults_ || (!isNamed && !table_.Columns()[i].defaultValue.empty());
    }
}

void Import::ParseRow() {
    values_.clear();
    for (std::size_t i = 0; i < fields_.size(); ++i) {
        const jet::Column& column = table_.Columns()[static_cast<std::size_t>(columns_[i])];
        try {
            jet::ColumnChange change{.column = columns_[i], .value = ParseCell(fields_[i], column)};
            if (!column.autoNumber || !change.value.IsNull()) {
                values_.push_back(std::move(change));
            }
        } catch (const Failure& failure) {
            const std::string line = LineText();
            const std::string name = basic::ToUtf8(column.name);
            throw Failure(
                {Say(Language::French, kCell, {line, name, failure.In(Language::French)}).c_str(),
                 Say(Language::English, kCell, {line, name, failure.In(Language::English)}).c_str()});
        }
    }
}

}  // namespace

int RunImport(const Arguments& arguments, Session& session) {
    const std::size_t chunk = arguments.Number(kChunk, 0);
    InputFile file(arguments.Operand(2));
    const auto database = OpenFile(arguments, WritingMode(arguments));
    std::optional<jet::Step> step(database->Begin());
    const auto table = OpenTable(*database, arguments);
    CsvReader reader = file.Reader();
    Import import(*database, *table, reader);
    Progress progress(Progress::Beside::Nothing);
    std::size_t rows = 0;
    while (import.AddRow()) {
        ++rows;
        progress.ShowSometimes(rows, [] { return std::size_t{0}; });
        if (chunk != 0 && rows % chunk == 0) {
            step->Commit();
            step.reset();
            step.emplace(database->Begin());
        }
    }
    step->Commit();
    session.out << RowsText(rows, session.language) << "\n";
    return kDone;
}

}  // namespace quardele::mdb
