#include "error_text.h"

#include <algorithm>
#include <cstddef>
#include <iterator>

#include <basic/text.h>

namespace quardele::mdb {

namespace {

struct Entry {
    int number;
    const char* english;
};

constexpr Entry kEnglish[] = {
    {5, "an argument has no possible value"},
    {6, "a number is too large for its type"},
    {9, "an index is outside its range"},
    {11, "division by zero"},
    {13, "a value has the wrong type"},
    {52, "the file name is not possible"},
    {53, "the file does not exist"},
    {55, "the file is open already"},
    {57, "the disk cannot be read or written"},
    {61, "the disk is full"},
    {70, "permission denied"},
    {75, "the file cannot be reached"},
    {76, "the folder does not exist"},
    {91, "an object is used that is not there"},
    {94, "Null is no possible value here"},
    {321, "the file has a format that is not known"},
    {429, "the program cannot be started"},
    {438, "the object has no such member"},
    {462, "the program at the other end is gone"},
    {481, "the picture cannot be read"},
    {482, "the printer reports an error"},
    {3001, "an argument has no possible value"},
    {3010, "a table of this name exists already"},
    {3011, "a linked table cannot be found"},
    {3015, "the table has no such index"},
    {3019, "there is no current index"},
    {3020, "there is no row that is being changed"},
    {3021, "there is no current row"},
    {3022, "the change would make equal keys in a unique index"},
    {3024, "the file does not exist"},
    {3026, "the disk is full"},
    {3027, "the database or table is read only"},
    {3031, "the file has a password"},
    {3044, "the path does not exist"},
    {3045, "the file is in use"},
    {3047, "the row is too large"},
    {3051, "the file cannot be opened: no permission, or somebody has it for himself"},
    {3058, "Null in a primary key or an index that admits none"},
    {3061, "unknown names count as missing parameters"},
    {3063, "a column is given two values"},
    {3065, "a SELECT statement cannot be executed; use the command query"},
    {3073, "these rows cannot be changed"},
    {3075, "syntax error in an expression"},
    {3077, "syntax error in a condition"},
    {3078, "the table does not exist"},
    {3079, "several tables have a column of this name"},
    {3081, "a table stands twice in FROM under one name"},
    {3085, "unknown function"},
    {3093, "ORDER BY names a column that DISTINCT leaves out"},
    {3095, "an aggregate function within another one"},
    {3096, "an aggregate function in WHERE"},
    {3098, "an aggregate function in JOIN"},
    {3099, "an aggregate function in GROUP BY"},
    {3103, "aliases refer to each other in a circle"},
    {3122, "a column is neither grouped nor aggregated"},
    {3125, "the name is not possible"},
    {3127, "INSERT INTO names a column that does not exist"},
    {3128, "syntax error in DELETE"},
    {3129, "this is no SQL statement that can be run"},
    {3131, "syntax error in FROM"},
    {3134, "syntax error in INSERT INTO"},
    {3138, "syntax error in ORDER BY"},
    {3141, "syntax error in SELECT"},
    {3142, "there is text behind the end of the statement"},
    {3144, "syntax error in UPDATE"},
    {3159, "there is no row at this bookmark"},
    {3163, "the value is too long for its column"},
    {3164, "the column cannot be written"},
    {3167, "the row has been deleted"},
    {3188, "the row is locked by another session of this program"},
    {3190, "the table would have too many columns"},
    {3191, "the table has a column of this name already"},
    {3196, "the file is in use by somebody else"},
    {3197, "somebody else has changed the same data"},
    {3200, "other tables refer to this row"},
    {3204, "the file exists already"},
    {3211, "the table is in use"},
    {3219, "this cannot be done in this state"},
    {3251, "this is not supported"},
    {3260, "the row or file is locked by somebody else"},
    {3265, "there is no element of this name"},
    {3281, "a relationship uses the table or index"},
    {3283, "the table has a primary key already"},
    {3284, "the table has an index of this name already"},
    {3289, "syntax error in CONSTRAINT"},
    {3290, "syntax error in CREATE TABLE"},
    {3291, "syntax error in CREATE INDEX"},
    {3292, "syntax error in the definition of a column"},
    {3293, "syntax error in ALTER TABLE"},
    {3295, "syntax error in a statement of definition"},
    {3306, "a subquery has more than one column"},
    {3307, "the parts of UNION have different numbers of columns"},
    {3314, "Null in a column that needs a value"},
    {3315, "empty text in a column that admits none"},
    {3343, "the file is no database or is damaged"},
    {3346, "INSERT INTO has more or fewer values than columns"},
    {3354, "a subquery has more than one row"},
    {3356, "somebody has the file for himself"},
    {3360, "the statement is too long or too complex"},
    {3371, "the table cannot be dropped"},
    {3409, "the index names a column that does not exist"},
    {3420, "the object is closed"},
    {3421, "a value cannot be converted to the type of its column"},
    {3464, "the types in a comparison do not fit"},
    {3626, "the table would have too many indexes"},
};

const Entry* Find(int number) {
    const auto* found = std::find_if(std::begin(kEnglish), std::end(kEnglish),
                                     [number](const Entry& entry) { return entry.number == number; });
    return found == std::end(kEnglish) ? nullptr : found;
}

// What stands between quotation marks in a French description: names, the same in all languages.
std::string NamesIn(const std::string& french) {
    constexpr std::string_view kOpen = "« ";
    constexpr std::string_view kClose = " »";
    std::string names;
    for (std::size_t at = french.find(kOpen); at != std::string::npos; at = french.find(kOpen, at)) {
        at += kOpen.size();
        const std::size_t end = std::min(french.find(kClose, at), french.size());
        names += names.empty() ? " (" : ", ";
        names += french.substr(at, end - at);
        at = end;
    }
    return names.empty() ? names : names + ')';
}

// What the table cannot say in general stands in the engine's own words.
std::string EnglishText(const basic::RuntimeError& error) {
    const std::string french = basic::ToUtf8(error.Description());
    const Entry* entry = Find(error.Number());
    if (entry == nullptr) {
        return french;
    }
    const std::string names = NamesIn(french);
    const bool isParticular = names.empty() && error.Description() != basic::DescriptionOf(error.Number());
    return entry->english + (isParticular ? " (" + french + ")" : names);
}

}  // namespace

bool HasEnglishText(int number) {
    return Find(number) != nullptr;
}

std::string ErrorText(const basic::RuntimeError& error, Language language) {
    constexpr Message kError{"erreur |1 : |2", "error |1: |2"};
    const std::string text =
        language == Language::French ? basic::ToUtf8(error.Description()) : EnglishText(error);
    return Say(language, kError, {std::to_string(error.Number()), text});
}

Failure FailureAt(const Message& place, std::initializer_list<std::string_view> details,
                  const basic::RuntimeError& error) {
    const std::string french = Say(Language::French, place, details) + ErrorText(error, Language::French);
    const std::string english = Say(Language::English, place, details) + ErrorText(error, Language::English);
    return Failure({french.c_str(), english.c_str()});
}

}  // namespace quardele::mdb
