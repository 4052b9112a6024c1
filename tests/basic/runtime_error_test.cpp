#include <basic/runtime_error.h>

#include <iterator>
#include <set>

#include <gmock/gmock.h>

#include "support.h"

namespace quardele::basic {
namespace {

constexpr int kNoSuchNumber = 31999;

constexpr int kNamedNumbers[] = {
    error::kInvalidCall,        error::kOverflow,          error::kSubscript,
    error::kDivisionByZero,     error::kTypeMismatch,      error::kBadFileName,
    error::kFileNotFound,       error::kFileAlreadyOpen,   error::kDeviceIo,
    error::kDiskFull,           error::kPermissionDenied,  error::kPathFileAccess,
    error::kPathNotFound,       error::kObjectNotSet,      error::kInvalidNull,
    error::kCannotCreateObject, error::kNoSuchMember,      error::kServerGone,
    error::kInvalidArgument,    error::kInvalidOperation,  error::kIndexNotFound,
    error::kNotAnIndex,         error::kUpdateWithoutEdit, error::kNoCurrentRecord,
    error::kDuplicateKey,       error::kFileMissing,       error::kDiskFullDatabase,
    error::kReadOnly,           error::kBadPassword,       error::kBadPath,
    error::kFileInUse,          error::kCannotOpenFile,    error::kNullInPrimaryKey,
    error::kTooFewParameters,   error::kSyntaxError,       error::kNoSuchTable,
    error::kUndefinedFunction,  error::kNotInAggregate,    error::kSyntaxInFrom,
    error::kSyntaxInSelect,     error::kSyntaxInSql,       error::kTextTooLong,
    error::kFieldNotUpdatable,  error::kRecordDeleted,     error::kTypeConversion,
    error::kLockedHere,         error::kFileInUseBy,       error::kRecordChanged,
    error::kRecordLocked,       error::kNoSuchField,       error::kOperationNotSupported,
    error::kNotADatabase,       error::kNullRequired,      error::kEmptyText,
    error::kOpenExclusive,      error::kDataTypeMismatch,  error::kLinkedTableMissing,
    error::kRecordTooLarge,
};

TEST(DescriptionTest, EveryNamedNumberHasOneOfItsOwn) {
    std::set<Text> seen;
    for (const int number : kNamedNumbers) {
        const Text description = DescriptionOf(number);
        EXPECT_NE(description, DescriptionOf(kNoSuchNumber)) << number;
        seen.insert(description);
    }
    EXPECT_EQ(seen.size(), std::size(kNamedNumbers));
}

TEST(DescriptionTest, NothingIsLeftToFillIn) {
    for (int number = 0; number <= 4000; ++number) {
        EXPECT_EQ(DescriptionOf(number).find(u'|'), Text::npos) << number;
        EXPECT_EQ(Describe(number, u"A", u"B").find(u'|'), Text::npos) << number;
    }
}

TEST(DescriptionTest, SaysWhatOperatorsKnow) {
    EXPECT_EQ(DescriptionOf(13), u"Type incompatible");
    EXPECT_EQ(DescriptionOf(3021), u"Aucun enregistrement en cours.");
    EXPECT_EQ(Describe(3061, u"1"), u"Trop peu de paramètres. 1 attendu.");
}

TEST(DescribeTest, NamesWhatFailed) {
    EXPECT_THAT(ToUtf8(Describe(3078, u"TVEH")), testing::HasSubstr("« TVEH »"));
    EXPECT_THAT(ToUtf8(Describe(3260, u"Admin", u"POSTE2")),
                testing::AllOf(testing::HasSubstr("« Admin »"), testing::HasSubstr("« POSTE2 »")));
}

TEST(DescribeTest, ANameIsNeverTakenForAPlace) {
    EXPECT_THAT(ToUtf8(Describe(3260, u"|2", u"POSTE2")), testing::HasSubstr("« |2 »"));
}

TEST(DescribeTest, NumbersThatNameNothingKeepTheirDescription) {
    EXPECT_EQ(Describe(3021, u"TVEH"), DescriptionOf(3021));
    EXPECT_EQ(Describe(kNoSuchNumber, u"TVEH"), DescriptionOf(kNoSuchNumber));
}

TEST(RuntimeErrorTest, CarriesNumberAndDescription) {
    const RuntimeError error(3021);
    EXPECT_EQ(error.Number(), 3021);
    EXPECT_EQ(error.Description(), DescriptionOf(3021));
    EXPECT_STREQ(error.what(), "3021: Aucun enregistrement en cours.");
}

TEST(RuntimeErrorTest, MayHaveADescriptionOfItsOwn) {
    const RuntimeError error(3075, u"Il manque une parenthèse.");
    EXPECT_EQ(error.Number(), 3075);
    EXPECT_EQ(error.Description(), u"Il manque une parenthèse.");
    EXPECT_STREQ(error.what(), "3075: Il manque une parenthèse.");
}

}  // namespace
}  // namespace quardele::basic
