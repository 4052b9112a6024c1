// Word's double for tests: it answers the members that the program uses, writes every call down, and fails
// where a test wants it to.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

#include <automation/object.h>

namespace quardele::tests {

/// While it lives it is the session's factory. The applications that it creates are numbered from 1. Paths
/// leave arguments out: "ActiveDocument.Bookmarks.Select". Texts are UTF-8. Names count in the spelling of
/// Word's documentation only, although Word itself takes them in any case: one of another is a mistake here.
///
/// Each call, read and write stands in the log as a Basic programmer would write it:
///
///     Visible = True
///     ActiveDocument.Bookmarks.Exists("RS")
///     ActiveDocument.Bookmarks("RS").Select()
///     ActiveDocument.SaveAs(FileName:="C:\QUARDELE\DATA\DUPONT261231.RVE")
class RecordingWord final : public automation::Factory {
 public:
    RecordingWord();
    ~RecordingWord() override;
    RecordingWord(const RecordingWord&) = delete;
    RecordingWord& operator=(const RecordingWord&) = delete;

    automation::ObjectPtr CreateObject(automation::TextView name) override;

    /// Whether a member of that name is a method. Where a caller cannot tell a method without arguments from
    /// a property, this does.
    [[nodiscard]] static bool IsMethod(const std::string& member);

    // What every new document holds.
    /// Bookmarks outside any table.
    std::vector<std::string> bookmarks;
    /// Bookmarks in cells of the detail table, with the 1-based column that each stands in.
    std::map<std::string, int> columnOf;
    /// Columns of the detail table; 0 for a document without table.
    int columns = 6;

    // What goes wrong, and what a property answers.
    /// No word processor is there: CreateObject throws 429.
    bool absent = false;
    void FailOn(const std::string& path, const basic::RuntimeError& error);
    /// The same for writing a property; it can still be read.
    void FailOnWrite(const std::string& path, const basic::RuntimeError& error) {
        FailOn(path + kWriting, error);
    }
    void Answer(const std::string& path, const automation::Value& value) { answers_[path] = value; }

    // What happened.
    struct Entry {
        int application;
        std::string text;
    };
    [[nodiscard]] const std::vector<Entry>& Entries() const { return entries_; }
    /// The log so far, and forgets it.
    std::vector<std::string> TakeLog();
    [[nodiscard]] int Applications() const { return static_cast<int>(states_.size()); }
    /// What an application typed right after a bookmark was selected; empty when nothing was.
    [[nodiscard]] std::optional<std::string> TypedAt(int application, const std::string& bookmark) const;

 private:
    friend class RecordedObject;

    /// Behind the path of a property that is written.
    static constexpr char kWriting[] = " =";

    /// An application and its document.
    struct State {
        bool open = false;
        int story = 0;
        std::string selected;
    };
    /// Where a call goes: the application, the path, and the path with its arguments.
    struct Place {
        int application;
        std::string path;
        std::string written;
    };

    automation::Value Perform(const Place& place, std::span<const automation::Value> arguments);
    automation::Value Read(const Place& place, std::span<const automation::Value> arguments);
    void Put(const Place& place, const automation::Value& value);
    void RequireObject(const Place& place, std::span<const automation::Value> arguments);
    void Note(const Place& place, const std::string& text) { entries_.push_back({place.application, text}); }
    void FailIfTold(const std::string& path) const;
    [[nodiscard]] bool Exists(const std::string& bookmark) const;
    State& StateOf(const Place& place) { return states_.at(static_cast<std::size_t>(place.application) - 1); }

    std::map<std::string, basic::RuntimeError> failures_;
    std::map<std::string, automation::Value> answers_;
    std::vector<Entry> entries_;
    std::vector<State> states_;
};

}  // namespace quardele::tests
