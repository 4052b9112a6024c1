#include "job_rows.h"

#include <map>

#include <basic/conversion.h>
#include <dao/dao.h>
#include <forms/strings.h>

#include "vehicle_form_fixture.h"

namespace quardele::tests {

namespace {

using basic::Variant;

constexpr int kShownColumns = 4;

/// Blanks behind a text do not count in comparisons of the file's texts.
bool SameText(const QString& stored, const QString& text) {
    return forms::ToQString(basic::RTrim(forms::ToText(stored))) == text;
}

std::shared_ptr<dao::Recordset> Rows(basic::TextView table) {
    return shell::TheSession().BD_DONNEES->OpenRecordset(table, dao::RecordsetType::Table);
}

QString Shown(const Variant& value) {
    return forms::ToQString(basic::Joined(value));
}

std::optional<basic::Date> DateIn(const Variant& value) {
    return value.IsNull() ? std::nullopt : std::optional(value.As<basic::Date>());
}

Variant OrNull(const std::optional<basic::Date>& date) {
    return date ? Variant(*date) : Variant(basic::Null{});
}

struct Detail {
    QString registration;
    Variant left;
};

std::map<std::int32_t, std::vector<Detail>> Details() {
    std::map<std::int32_t, std::vector<Detail>> details;
    const auto rows = Rows(u"TAFF_DETAIL");
    for (; !rows->Eof(); rows->MoveNext()) {
        details[basic::CLng(rows->Value(u"TAFF_DETAIL_Numaff"))].push_back(
            {Shown(rows->Value(u"TAFF_DETAIL_Ident")), rows->Value(u"TAFF_DETAIL_DatSortieEff")});
    }
    return details;
}

JobLine LineOf(const dao::Recordset& job, const Variant& left, bool throughJob) {
    const Variant shownDate = left.IsNull() ? job.Value(u"TAFF_DatLivrPrev") : left;
    const Variant order = left.IsNull() ? job.Value(u"TAFF_DatSortieEff") : left;
    return {{Shown(shownDate), Shown(job.Value(u"TAFF_Numaff")), Shown(job.Value(u"TAFF_CodCli")),
             Shown(job.Value(u"TAFF_LibOpe"))},
            Shown(job.Value(u"TAFF_DetailOpe")),
            DateIn(order),
            throughJob};
}

}  // namespace

std::vector<JobLine> JobLinesOf(const QString& registration) {
    const auto details = Details();
    std::vector<JobLine> lines;
    const auto jobs = Rows(u"TAFF");
    for (; !jobs->Eof(); jobs->MoveNext()) {
        const bool throughJob = SameText(Shown(jobs->Value(u"TAFF_Immatr")), registration);
        const auto ofJob = details.find(basic::CLng(jobs->Value(u"TAFF_Numaff")));
        if (ofJob == details.end()) {
            if (throughJob) {
                lines.push_back(LineOf(*jobs, basic::Null{}, true));
            }
            continue;
        }
        for (const Detail& detail : ofJob->second) {
            if (throughJob || SameText(detail.registration, registration)) {
                lines.push_back(LineOf(*jobs, detail.left, throughJob));
            }
        }
    }
    return lines;
}

std::vector<QStringList> ShownJobs() {
    std::vector<QStringList> jobs;
    for (int row = 1; row <= Grid("DBG_HISTO")->MaxRows(); ++row) {
        QStringList cells;
        for (int column = 1; column <= kShownColumns; ++column) {
            cells.append(Cell("DBG_HISTO", column, row));
        }
        jobs.push_back(cells);
    }
    return jobs;
}

void AddJob(const NewJob& job) {
    const auto rows = Rows(u"TAFF");
    rows->AddNew();
    rows->SetValue(u"TAFF_Numaff", job.number);
    rows->SetValue(u"TAFF_Immatr", forms::ToText(job.registration));
    rows->SetValue(u"TAFF_LibOpe", forms::ToText(job.label));
    rows->SetValue(u"TAFF_DatLivrPrev", OrNull(job.planned));
    rows->SetValue(u"TAFF_DatSortieEff", OrNull(job.left));
    rows->Update();
}

void AddJobDetail(std::int32_t job, const QString& registration, std::optional<basic::Date> left) {
    const auto rows = Rows(u"TAFF_DETAIL");
    rows->AddNew();
    rows->SetValue(u"TAFF_DETAIL_Numaff", job);
    rows->SetValue(u"TAFF_DETAIL_Ident", forms::ToText(registration));
    rows->SetValue(u"TAFF_DETAIL_DatSortieEff", OrNull(left));
    rows->Update();
}

}  // namespace quardele::tests
