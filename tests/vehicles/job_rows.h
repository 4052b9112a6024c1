// The jobs of vehicles as the tables hold them, put together without SQL.
#pragma once

#include <optional>
#include <vector>

#include <QStringList>

#include <basic/variant.h>

namespace quardele::tests {

/// A job with one of its detail lines, or without any.
struct JobLine {
    QStringList shown;                 ///< date, number, customer, label
    QString details;                   ///< the job's own text
    std::optional<basic::Date> order;  ///< what the history sorts by
    bool throughJob = false;           ///< whether the job itself is the vehicle's
};

/// What the history of a vehicle has to list, in no order. The program must be running.
[[nodiscard]] std::vector<JobLine> JobLinesOf(const QString& registration);

/// What the program's list shows, in its order: date, number, customer, label.
[[nodiscard]] std::vector<QStringList> ShownJobs();

/// A job beside those of the installation; a missing exit date stays empty.
struct NewJob {
    std::int32_t number = 0;
    QString registration;
    QString label;
    std::optional<basic::Date> planned;
    std::optional<basic::Date> left;
};
void AddJob(const NewJob& job);
void AddJobDetail(std::int32_t job, const QString& registration, std::optional<basic::Date> left);

}  // namespace quardele::tests
