// A horizontal piece of a report.
#pragma once

#include <engine/collection.h>
#include <engine/report_object.h>

namespace quardele::engine {

enum class SectionKind {
    ReportHeader,
    PageHeader,
    GroupHeader,
    Details,
    GroupFooter,
    PageFooter,
    ReportFooter
};

class Section {
 public:
    explicit Section(SectionKind kind) : kind_(kind) {}

    [[nodiscard]] SectionKind Kind() const { return kind_; }
    /// All objects, those in cells of flows included.
    [[nodiscard]] Collection<ReportObject> ReportObjects() const;

    int height = 0;              ///< twips; more when its objects grow
    QString suppress;            ///< formula; the section is left out where it is true
    bool suppressBlank = false;  ///< left out where none of its fields has a text
    bool keepTogether = true;    ///< goes to the next page as a whole, unless it is higher than a page
    bool newPageBefore = false;
    bool newPageAfter = false;
    std::vector<std::shared_ptr<ReportObject>> objects;

 private:
    SectionKind kind_;
};

}  // namespace quardele::engine
