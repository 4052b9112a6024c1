// What all selections of a list's rows have in common. They work on the clauses of ListToolContext.
#pragma once

#include <basic/resume_next.h>
#include <forms/data_control.h>
#include <forms/form.h>
#include <forms/grid.h>

namespace quardele::listtools {

/// Writes down the filter that a form's list started with, in the form's Tag: the conditions in force. Once
/// written it stays.
void KeepStartingFilter(forms::Form& form);
/// Makes the filter that a form's list started with the conditions in force.
void BringBackStartingFilter(const forms::Form& form);

/// Makes room for one more condition behind those in force.
void JoinToConditions();

/// Tells the operator of a statement that failed; the pointer is the normal one by then.
void ReportSelectionFailure(const basic::RuntimeError& error);

/// Fills a list with the rows that the clauses in force leave. It is not drawn before ShowRows.
void Refill(forms::Grid& grid, forms::DataControl& data, basic::ResumeNext& statement);
/// Puts the cursor into the first row and draws the list. A list without rows is not drawn anew until another
/// selection finds some: a box tells the operator.
void ShowRows(forms::Grid& grid, const forms::DataControl& data, basic::ResumeNext& statement);

}  // namespace quardele::listtools
