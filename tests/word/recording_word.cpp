#include "recording_word.h"

#include <algorithm>
#include <memory>
#include <set>
#include <utility>

#include <basic/conversion.h>

namespace quardele::tests {

using automation::NamedArgument;
using automation::ObjectPtr;
using automation::TextView;
using automation::Value;
using basic::RuntimeError;

namespace {

constexpr int kNoDocument = 4248;
constexpr int kNoSuchElement = 5941;

/// A method that answers.
constexpr char kBookmarkTest[] = "ActiveDocument.Bookmarks.Exists";

const std::set<std::string> kObjects = {
    "ActiveDocument", "ActivePane", "ActiveWindow", "Bookmarks", "Cells", "Columns", "Documents",
    "Font",           "Range",      "Selection",    "Tables",    "Tasks", "View"};
const std::set<std::string> kMethods = {"Activate",   "Add",       "AutoFit",
                                        "Close",      "Copy",      "Cut",
                                        "Delete",     "EndKey",    "Exists",
                                        "GoTo",       "GoToNext",  "HomeKey",
                                        "InsertRows", "Move",      "MoveDown",
                                        "MoveLeft",   "MoveRight", "NextHeaderFooter",
                                        "Open",       "Paste",     "PreviousHeaderFooter",
                                        "Quit",       "Resize",    "Save",
                                        "SaveAs",     "Select",    "SelectRow",
                                        "StartOf",    "TypeText"};

/// What every document answers, as long as a test says nothing else.
const std::map<std::string, Value> kConstants = {{"ActiveDocument.Range.Text", u"Atelier"},
                                                 {"ActiveDocument.Saved", true},
                                                 {"ActiveWindow.ActivePane.View.ShowAll", false},
                                                 {"ActiveWindow.ActivePane.View.Type", 3},
                                                 {"ActiveWindow.DisplayRulers", true},
                                                 {"ActiveWindow.View.SplitSpecial", 0},
                                                 {"Selection.Font.Hidden", false},
                                                 {"Selection.Information", 2},
                                                 {"Selection.Range.End", 20},
                                                 {"Selection.Range.Start", 12},
                                                 {"Selection.Range.Text", u"Atelier"}};

std::string Written(const Value& value) {
    if (value.IsMissing()) {
        return {};
    }
    const basic::Variant plain = value.Plain();
    if (plain.IsText()) {
        return '"' + basic::ToUtf8(plain.As<basic::Text>()) + '"';
    }
    if (plain.Is<bool>()) {
        return plain.As<bool>() ? "True" : "False";
    }
    return basic::ToUtf8(basic::Joined(plain));
}

std::string WrittenArguments(std::span<const Value> arguments, std::span<const NamedArgument> named) {
    std::string text;
    for (const Value& argument : arguments) {
        text += (text.empty() ? "" : ", ") + Written(argument);
    }
    for (const auto& [name, value] : named) {
        text += (text.empty() ? "" : ", ") + basic::ToUtf8(name) + ":=" + Written(value);
    }
    return '(' + text + ')';
}

std::string FirstText(std::span<const Value> arguments) {
    return arguments.empty() ? std::string() : basic::ToUtf8(basic::CStr(arguments[0].Plain()));
}

std::string LastMember(const std::string& path) {
    return path.substr(path.rfind('.') + 1);
}

bool StartsAtDocument(const std::string& path) {
    return path.starts_with("ActiveDocument") || path.starts_with("ActiveWindow") ||
           path.starts_with("Selection");
}

}  // namespace

/// An object of the double; it knows only where it stands.
class RecordedObject final : public automation::Object {
 public:
    RecordedObject(RecordingWord& word, RecordingWord::Place place) : word_(word), place_(std::move(place)) {}

    Value Call(TextView member, std::span<const Value> arguments,
               std::span<const NamedArgument> named) override {
        auto place = Member(member);
        place.written += WrittenArguments(arguments, named);
        return Answer(place, arguments);
    }
    Value Get(TextView member) override { return Answer(Member(member), {}); }
    void Set(TextView member, const Value& value) override {
        const auto place = Member(member);
        word_.Note(place, place.written + " = " + Written(value));
        word_.FailIfTold(place.path);
        word_.FailIfTold(place.path + RecordingWord::kWriting);
        word_.Put(place, value);
    }

 private:
    [[nodiscard]] RecordingWord::Place Member(TextView member) const {
        const std::string dot = place_.path.empty() ? "" : ".";
        const std::string name = basic::ToUtf8(member);
        return {place_.application, place_.path + dot + name, place_.written + dot + name};
    }

    Value Answer(const RecordingWord::Place& place, std::span<const Value> arguments) {
        if (kObjects.contains(LastMember(place.path))) {
            word_.FailIfTold(place.path);
            word_.RequireObject(place, arguments);
            return ObjectPtr(std::make_shared<RecordedObject>(word_, place));
        }
        word_.Note(place, place.written);
        word_.FailIfTold(place.path);
        return word_.Perform(place, arguments);
    }

    RecordingWord& word_;
    RecordingWord::Place place_;
};

RecordingWord::RecordingWord() {
    automation::SetSessionFactory(this);
}

RecordingWord::~RecordingWord() {
    automation::SetSessionFactory(nullptr);
}

ObjectPtr RecordingWord::CreateObject(TextView name) {
    if (absent) {
        throw RuntimeError(basic::error::kCannotCreateObject);
    }
    states_.emplace_back();
    const Place place{Applications(), "", ""};
    Note(place, "CreateObject(\"" + basic::ToUtf8(name) + "\")");
    return std::make_shared<RecordedObject>(*this, place);
}

bool RecordingWord::IsMethod(const std::string& member) {
    return kMethods.contains(member);
}

void RecordingWord::FailOn(const std::string& path, const RuntimeError& error) {
    failures_.insert_or_assign(path, error);
}

void RecordingWord::FailIfTold(const std::string& path) const {
    if (const auto failure = failures_.find(path); failure != failures_.end()) {
        throw failure->second;
    }
}

bool RecordingWord::Exists(const std::string& bookmark) const {
    return columnOf.contains(bookmark) ||
           std::find(bookmarks.begin(), bookmarks.end(), bookmark) != bookmarks.end();
}

void RecordingWord::RequireObject(const Place& place, std::span<const Value> arguments) {
    if (StartsAtDocument(place.path) && !StateOf(place).open) {
        throw RuntimeError(kNoDocument,
                           u"Cette commande n'est pas disponible car aucun document n'est ouvert.");
    }
    const bool inTable = columnOf.contains(StateOf(place).selected);
    const bool missing =
        (place.path == "ActiveDocument.Bookmarks" && !arguments.empty() && !Exists(FirstText(arguments))) ||
        (place.path == "Selection.Tables" && !inTable) || (place.path == "Selection.Columns" && !inTable);
    if (missing) {
        throw RuntimeError(kNoSuchElement, u"Le membre demandé de la collection n'existe pas.");
    }
}

Value RecordingWord::Perform(const Place& place, std::span<const Value> arguments) {
    if (!kMethods.contains(LastMember(place.path)) || place.path == kBookmarkTest) {
        return Read(place, arguments);
    }
    if (place.path == "Close") {
        throw RuntimeError(basic::error::kNoSuchMember);  // Documents can be closed, the application cannot.
    }
    State& state = StateOf(place);
    if (place.path == "Documents.Add" || place.path == "Documents.Open") {
        state = {.open = true, .story = 0, .selected = {}};
    } else if (place.path == "ActiveDocument.Bookmarks.Select") {
        const std::size_t name = place.written.find('"') + 1;
        state.selected = place.written.substr(name, place.written.find('"', name) - name);
    }
    return {};
}

Value RecordingWord::Read(const Place& place, std::span<const Value> arguments) {
    if (const auto answer = answers_.find(place.path); answer != answers_.end()) {
        return answer->second;
    }
    const State& state = StateOf(place);
    if (place.path == kBookmarkTest) {
        return Exists(FirstText(arguments));
    }
    if (place.path == "ActiveDocument.Tables.Count") {
        return columns > 0 ? 1 : 0;
    }
    if (place.path == "Selection.Tables.Columns.Count") {
        return columns;
    }
    if (place.path == "Selection.Columns.Index") {
        return columnOf.at(state.selected);
    }
    if (place.path == "ActiveWindow.ActivePane.View.SeekView") {
        return state.story;
    }
    if (const auto constant = kConstants.find(place.path); constant != kConstants.end()) {
        return constant->second;
    }
    throw RuntimeError(basic::error::kNoSuchMember);
}

void RecordingWord::Put(const Place& place, const Value& value) {
    constexpr int kCurrentPageHeader = 9;
    constexpr int kPrimaryHeader = 1;
    if (place.path == "ActiveWindow.ActivePane.View.SeekView") {
        const int story = basic::CLng(value.Plain());
        StateOf(place).story = story == kCurrentPageHeader ? kPrimaryHeader : story;
    }
}

std::vector<std::string> RecordingWord::TakeLog() {
    std::vector<std::string> log;
    for (Entry& entry : std::exchange(entries_, {})) {
        log.push_back(std::move(entry.text));
    }
    return log;
}

std::optional<std::string> RecordingWord::TypedAt(int application, const std::string& bookmark) const {
    static const std::string kTyped = "Selection.TypeText(\"";
    bool selected = false;
    for (const Entry& entry : entries_) {
        if (entry.application != application) {
            continue;
        }
        if (entry.text.ends_with(".Select()")) {
            selected = entry.text == "ActiveDocument.Bookmarks(\"" + bookmark + "\").Select()";
        } else if (selected && entry.text.starts_with(kTyped)) {
            return entry.text.substr(kTyped.size(), entry.text.size() - kTyped.size() - 2);
        }
    }
    return {};
}

}  // namespace quardele::tests
