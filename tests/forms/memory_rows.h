// A recordset in memory with the behaviour that the data objects promise, for what a file cannot show: how
// often it was read, refusals at will, a hundred thousand rows.
#pragma once

#include <map>

#include <dao/dao.h>

namespace quardele::forms::test {

class MemoryRows : public dao::Recordset {
 public:
    explicit MemoryRows(std::vector<dao::Field> fields);
    /// A row of texts, in the order of the fields.
    void Add(std::vector<dao::Variant> values);
    [[nodiscard]] const std::vector<dao::Variant>& Stored(std::size_t row) const { return rows_[row].values; }

    /// The next Update is refused with this error.
    int refusal = 0;
    /// Rows made up on demand: the value of a row's field when no row was added.
    std::size_t madeUpRows = 0;
    /// Rows are found as somebody comes to them: so many so far. Finding more fails with this error.
    bool findsInSteps = false;
    mutable std::size_t found = 0;
    int findFailure = 0;
    /// How often a value was read, by row and in all.
    mutable std::map<std::size_t, int> reads;
    mutable int allReads = 0;
    /// Edit, AddNew, Update, CancelUpdate and moves, as they came.
    std::vector<std::string> calls;

    [[nodiscard]] dao::RecordsetType Type() const override { return dao::RecordsetType::Dynaset; }
    [[nodiscard]] const dao::Text& Name() const override { return name_; }
    [[nodiscard]] const std::vector<dao::Field>& Fields() const override { return fields_; }
    [[nodiscard]] bool Updatable() const override { return true; }
    [[nodiscard]] bool Bof() const override { return Size() == 0 || position_ < 0; }
    [[nodiscard]] bool Eof() const override;
    [[nodiscard]] std::size_t RecordCount() const override { return Size(); }
    void MoveFirst() override { Go(0); }
    void MoveLast() override { Go(static_cast<long>(Size()) - 1); }
    void MoveNext() override { Go(position_ + 1); }
    void MovePrevious() override { Go(position_ - 1); }
    void Move(long rows) override { Go(position_ + rows); }
    [[nodiscard]] long AbsolutePosition() const override;
    void SetAbsolutePosition(long position) override { Go(position); }
    [[nodiscard]] float PercentPosition() const override { return 0; }
    void SetPercentPosition(float /*percent*/) override {}
    [[nodiscard]] dao::Bookmark CurrentBookmark() const override;
    void SetBookmark(const dao::Bookmark& bookmark) override;
    [[nodiscard]] dao::Bookmark LastModified() const override { return lastModified_; }
    [[nodiscard]] dao::Variant Value(int field) const override;
    void SetValue(int field, const dao::Variant& value) override;
    [[nodiscard]] dao::EditMode EditMode() const override { return mode_; }
    void Edit() override;
    void AddNew() override;
    void Update() override;
    void CancelUpdate() override;
    void Delete() override;
    [[nodiscard]] bool NoMatch() const override { return false; }
    void FindFirst(dao::TextView /*condition*/) override {}
    void FindLast(dao::TextView /*condition*/) override {}
    void FindNext(dao::TextView /*condition*/) override {}
    void FindPrevious(dao::TextView /*condition*/) override {}
    [[nodiscard]] const dao::Text& Index() const override { return name_; }
    void SetIndex(dao::TextView /*name*/) override {}
    void Seek(dao::TextView /*comparison*/, std::initializer_list<dao::Variant> /*keys*/) override {}
    void Requery() override {}
    void Close() override {}
    [[nodiscard]] std::size_t RowCount() const override;
    [[nodiscard]] std::size_t RowsFound(std::size_t wanted) const override;
    [[nodiscard]] dao::Variant ValueAt(std::size_t row, int field) const override;
    void SetObserver(dao::RecordsetObserver* observer) override { observer_ = observer; }

 private:
    struct Row {
        std::vector<dao::Variant> values;
        bool deleted = false;
    };

    [[nodiscard]] std::size_t Size() const;
    void Go(long position);
    void Leave();
    void Arrive();

    dao::Text name_;
    std::vector<dao::Field> fields_;
    std::vector<Row> rows_;
    long position_ = 0;
    dao::EditMode mode_ = dao::EditMode::None;
    std::vector<dao::Variant> buffer_;
    dao::Bookmark lastModified_;
    dao::RecordsetObserver* observer_ = nullptr;
};

/// A text field of 20 units.
[[nodiscard]] dao::Field TextField(dao::TextView name);
[[nodiscard]] dao::Field FieldOfType(dao::TextView name, dao::FieldType type);

}  // namespace quardele::forms::test
