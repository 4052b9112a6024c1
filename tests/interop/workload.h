// A database changed at random, in steps of random size, some of them undone.
#pragma once

#include "modelled_table.h"

namespace quardele::jet::test {

class Workload {
 public:
    /// Takes over the tables that are there. `random` must outlive it.
    Workload(std::shared_ptr<Database> database, Random& random);
    /// Lets go of the file, so that others may have it, and takes it again.
    void Close();
    void Reopen(std::shared_ptr<Database> database);

    /// So many changes of rows.
    void ChangeRows(int count);
    /// A table made or dropped, a column added, an index made. Says which.
    std::string ChangeStructure();
    std::string CreateTable();

    /// What the file must hold. Requires it to be open.
    [[nodiscard]] Contents Expected() const;
    /// See ModelledTable.
    void FollowRelationships();
    void SetFixedText(const Text& column);

 private:
    std::string AddColumn(ModelledTable& table);
    std::string CreateIndex(ModelledTable& table);
    std::string DropTable(std::size_t place);
    void OneStep(int count);
    void ChangeRow();

    std::shared_ptr<Database> database_;
    Random& random_;
    std::vector<ModelledTable> tables_;
    bool relationships_ = false;
    int named_ = 0;  ///< names given so far
};

}  // namespace quardele::jet::test
