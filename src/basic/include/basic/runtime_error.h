// The run-time error of the platform: a well-known number and a French description that operators read.
#pragma once

#include <exception>
#include <string>

#include <basic/text.h>

namespace quardele::basic {

/// A failure of a statement. Travels as a C++ exception through all layers; handlers show number and text.
class RuntimeError : public std::exception {
 public:
    /// With the description that belongs to the number (see DescriptionOf).
    explicit RuntimeError(int number);
    /// With a description of its own, in French.
    RuntimeError(int number, Text description);

    [[nodiscard]] int Number() const { return number_; }
    [[nodiscard]] const Text& Description() const { return description_; }
    /// Number and description in UTF-8, for logs of tests and tools.
    [[nodiscard]] const char* what() const noexcept override { return what_.c_str(); }

 private:
    int number_;
    Text description_;
    std::string what_;
};

/// The French description that belongs to a number, complete without any name; a text for errors of all kinds
/// when the number is not in the table.
[[nodiscard]] Text DescriptionOf(int number);
/// The longer description that names what failed (a table, a field, a file, a number of parameters): the
/// names replace "|1" and "|2" of the table. DescriptionOf for numbers whose description names nothing.
[[nodiscard]] Text Describe(int number, TextView first, TextView second = {});

/// The numbers that the system raises or tests, named once.
namespace error {
// The language's own.
inline constexpr int kInvalidCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kSubscript = 9;
inline constexpr int kDivisionByZero = 11;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kBadFileName = 52;
inline constexpr int kFileNotFound = 53;
inline constexpr int kFileAlreadyOpen = 55;
inline constexpr int kDeviceIo = 57;
inline constexpr int kDiskFull = 61;
inline constexpr int kPermissionDenied = 70;
inline constexpr int kPathFileAccess = 75;
inline constexpr int kPathNotFound = 76;
inline constexpr int kObjectNotSet = 91;
inline constexpr int kInvalidNull = 94;
inline constexpr int kInvalidFileFormat = 321;
inline constexpr int kCannotCreateObject = 429;
inline constexpr int kNoSuchMember = 438;
inline constexpr int kServerGone = 462;
inline constexpr int kInvalidPicture = 481;
inline constexpr int kPrinterError = 482;
// The database engine's.
inline constexpr int kInvalidArgument = 3001;
inline constexpr int kInvalidOperation = 3219;
inline constexpr int kIndexNotFound = 3015;
inline constexpr int kNotAnIndex = 3019;
inline constexpr int kUpdateWithoutEdit = 3020;
inline constexpr int kNoCurrentRecord = 3021;
inline constexpr int kDuplicateKey = 3022;
inline constexpr int kFileMissing = 3024;
inline constexpr int kDiskFullDatabase = 3026;
inline constexpr int kReadOnly = 3027;
inline constexpr int kBadPassword = 3031;
inline constexpr int kBadPath = 3044;
inline constexpr int kFileInUse = 3045;
inline constexpr int kCannotOpenFile = 3051;
inline constexpr int kNullInPrimaryKey = 3058;
inline constexpr int kTooFewParameters = 3061;
inline constexpr int kSyntaxError = 3075;
inline constexpr int kNoSuchTable = 3078;
inline constexpr int kUndefinedFunction = 3085;
inline constexpr int kNotInAggregate = 3122;
inline constexpr int kSyntaxInFrom = 3131;
inline constexpr int kSyntaxInSelect = 3141;
inline constexpr int kSyntaxInSql = 3144;
inline constexpr int kTextTooLong = 3163;
inline constexpr int kFieldNotUpdatable = 3164;
inline constexpr int kRecordDeleted = 3167;
inline constexpr int kTypeConversion = 3421;
inline constexpr int kLockedHere = 3188;
inline constexpr int kFileInUseBy = 3196;
inline constexpr int kRecordChanged = 3197;
inline constexpr int kRecordLocked = 3260;
inline constexpr int kNoSuchField = 3265;
inline constexpr int kOperationNotSupported = 3251;
inline constexpr int kNotADatabase = 3343;
inline constexpr int kNullRequired = 3314;
inline constexpr int kEmptyText = 3315;
inline constexpr int kOpenExclusive = 3356;
inline constexpr int kDataTypeMismatch = 3464;
inline constexpr int kLinkedTableMissing = 3011;
inline constexpr int kRecordTooLarge = 3047;
inline constexpr int kInvalidBookmark = 3159;
inline constexpr int kFieldExists = 3191;
inline constexpr int kTableInUse = 3211;
inline constexpr int kObjectClosed = 3420;
// Of structures: databases, tables, fields, indexes.
inline constexpr int kTableExists = 3010;
inline constexpr int kBadName = 3125;
inline constexpr int kTooManyFields = 3190;
inline constexpr int kDatabaseExists = 3204;
inline constexpr int kUsedInRelation = 3281;
inline constexpr int kPrimaryKeyExists = 3283;
inline constexpr int kIndexExists = 3284;
inline constexpr int kCannotDropTable = 3371;
inline constexpr int kBadIndexField = 3409;
inline constexpr int kTooManyIndexes = 3626;
}  // namespace error

}  // namespace quardele::basic
