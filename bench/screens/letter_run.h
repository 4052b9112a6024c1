// Letters made through the reminders form.
#pragma once

#include <QString>

#include <reminders/frelances.h>

#include "measure.h"

namespace quardele::bench {

struct LetterBatch {
    int letters = 0;
    int visits = 0;
    Duration time{};
    QString message;  ///< of the first message box that came up, on one line
};

/// Takes the customers of a filled due list one after the other. Word processors that the letters started
/// end, with the letters in their windows, when it goes.
class LetterRun {
 public:
    explicit LetterRun(reminders::FRELANCES& form) : form_(form) {}
    ~LetterRun();
    LetterRun(const LetterRun&) = delete;
    LetterRun& operator=(const LetterRun&) = delete;

    /// Ticks the visits of the next customers that a letter can go to and makes their letters.
    LetterBatch Write(int customers);

 private:
    std::vector<int> RowsOfNextCustomers(int customers);

    reminders::FRELANCES& form_;
    int nextRow_ = 1;
};

}  // namespace quardele::bench
