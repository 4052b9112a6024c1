#include <basic/runtime_error.h>

#include <fstream>
#include <regex>
#include <set>
#include <string>

#include <gmock/gmock.h>

#include "support.h"

namespace quardele::basic {
namespace {

constexpr int kNoSuchNumber = 31999;

/// The numbers that the public header names, read from its text so that none can be forgotten here.
std::set<int> NamedNumbers() {
    std::ifstream header(QUARDELE_SOURCE_DIR "/src/basic/include/basic/runtime_error.h");
    const std::regex constant("constexpr int k\\w+ = (\\d+);");
    std::set<int> numbers;
    std::smatch match;
    for (std::string line; std::getline(header, line);) {
        if (std::regex_search(line, match, constant)) {
            numbers.insert(std::stoi(match[1]));
        }
    }
    return numbers;
}

TEST(DescriptionTest, EveryNamedNumberHasOneOfItsOwn) {
    const std::set<int> numbers = NamedNumbers();
    ASSERT_GE(numbers.size(), 58U);
    std::set<Text> descriptions = {DescriptionOf(kNoSuchNumber)};
    for (const int number : numbers) {
        EXPECT_TRUE(descriptions.insert(DescriptionOf(number)).second) << number;
    }
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
