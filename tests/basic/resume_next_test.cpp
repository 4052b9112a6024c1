#include <basic/resume_next.h>

#include <stdexcept>
#include <vector>

#include "support.h"

namespace quardele::basic {
namespace {

TEST(ResumeNextTest, TheStatementBehindAFailureRuns) {
    std::vector<int> ran;
    ResumeNext statement;
    statement([&] { ran.push_back(1); });
    statement([&] {
        ran.push_back(2);
        throw RuntimeError(error::kFileNotFound);
    });
    statement([&] { ran.push_back(3); });
    EXPECT_EQ(ran, (std::vector<int>{1, 2, 3}));
}

TEST(ResumeNextTest, KeepsTheDescriptionOfTheLastFailure) {
    ResumeNext statement;
    EXPECT_EQ(statement.Description(), u"");
    statement([] { throw RuntimeError(error::kFileNotFound); });
    statement([] { throw RuntimeError(error::kNoCurrentRecord); });
    statement([] {});
    EXPECT_EQ(statement.Description(), DescriptionOf(error::kNoCurrentRecord));
}

TEST(ResumeNextTest, TheHandlerSeesEachFailure) {
    std::vector<int> seen;
    ResumeNext statement([&](const RuntimeError& error) { seen.push_back(error.Number()); });
    statement([] { throw RuntimeError(error::kFileNotFound); });
    statement([] {});
    statement([] { throw RuntimeError(error::kTypeMismatch); });
    EXPECT_EQ(seen, (std::vector<int>{53, 13}));
}

TEST(ResumeNextTest, WhatIsNoRuntimeErrorPassesThrough) {
    ResumeNext statement;
    EXPECT_THROW(statement([] { throw std::logic_error("no run-time error"); }), std::logic_error);
}

}  // namespace
}  // namespace quardele::basic
