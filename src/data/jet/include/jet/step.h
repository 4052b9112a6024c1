// Several changes of a data file as one.
#pragma once

#include <memory>

namespace quardele::jet {

class Engine;
class WriteStep;

/// An open step. All changes through its Database belong to it, and what is read through it includes them; no
/// other process sees any of them before Commit. A change that throws has changed nothing and the step goes
/// on. Must not outlive its Database, which has one step at a time: a step opened within another one belongs
/// to that. One thread.
///
/// A step is of one file. A linked table lies in another one: what is changed in it is a step there, on the
/// disk at once, and stays when the step of the linking file is dropped.
class Step {
 public:
    Step(Step&& other) noexcept;
    Step& operator=(Step&& other) noexcept;
    /// Without Commit nothing has changed.
    ~Step();

    /// Ends the step, once only. Everything is on the disk when it returns; on an error the file is as it was
    /// before the step. Within another step nothing is written yet.
    void Commit();

 private:
    friend class Database;
    explicit Step(std::unique_ptr<WriteStep> step);
    std::unique_ptr<WriteStep> step_;
};

}  // namespace quardele::jet
