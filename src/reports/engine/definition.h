// All that a report file says.
#pragma once

#include <vector>

#include <engine/report.h>

namespace quardele::engine {

/// {table.field}.
struct FieldName {
    QString table;
    QString field;
};

/// Records of `to` that belong to one of `from`.
struct Link {
    FieldName from;
    FieldName to;
    bool outer = true;  ///< a record of `from` without any is kept
};

struct Group {
    FieldName by;
    SortDirection direction = SortDirection::Ascending;
    bool keepTogether = false;
    bool repeatHeader = false;
    std::vector<std::shared_ptr<Section>> header;
    std::vector<std::shared_ptr<Section>> footer;
};

struct ReportDefinition {
    QString title;
    QPageLayout layout;
    engine::Database database;
    std::vector<Link> links;
    QString selection;
    SortFields sort;
    Collection<FormulaField> formulas;
    std::vector<std::shared_ptr<Section>> reportHeader;
    std::vector<std::shared_ptr<Section>> pageHeader;
    std::vector<Group> groups;  ///< the outer before the inner
    std::vector<std::shared_ptr<Section>> details;
    std::vector<std::shared_ptr<Section>> reportFooter;
    std::vector<std::shared_ptr<Section>> pageFooter;
};

}  // namespace quardele::engine
