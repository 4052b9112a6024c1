// The literals of formulas on their way through the translation.
#include <gtest/gtest.h>

#include <map>

#include "literals.h"

namespace quardele::reports {
namespace {

using basic::Text;
using Entries = std::map<Text, Text>;

class Dictionary {
 public:
    explicit Dictionary(Entries entries) : entries_(std::move(entries)) {}

    std::string operator()(const Text& formula) {
        return basic::ToUtf8(WithTranslatedLiterals(formula, [this](const Text& literal) {
            asked += "[" + basic::ToUtf8(literal) + "]";
            const auto found = entries_.find(literal);
            return found == entries_.end() ? literal : found->second;
        }));
    }

    std::string asked;

 private:
    Entries entries_;
};

TEST(Literals, EachLiteralIsReplacedByItsTranslation) {
    Dictionary translated(Entries{{u"Oui", u"Yes"}, {u"Non", u"No"}});
    EXPECT_EQ(translated(u"if {T.F} then \"Oui\" else \"Non\""), "if {T.F} then \"Yes\" else \"No\"");
    EXPECT_EQ(translated.asked, "[Oui][Non]");
}

TEST(Literals, ALiteralThatOccursTwiceIsReplacedAtBothPlacesInOneGo) {
    Dictionary translated(Entries{{u"Oui", u"Yes"}});
    EXPECT_EQ(translated(u"\"Oui\" & 'x' & \"Oui\""), "\"Yes\" & 'x' & \"Yes\"");
}

TEST(Literals, WhatIsNotTranslatedStays) {
    Dictionary none(Entries{});
    EXPECT_EQ(none(u"  \"Oui\" & \"\" "), "  \"Oui\" & \"\" ");
    EXPECT_EQ(none.asked, "[Oui]");
}

TEST(Literals, TextsInApostrophesAreNotLookedAt) {
    Dictionary translated(Entries{{u"Oui", u"Yes"}});
    EXPECT_EQ(translated(u"'Oui'"), "'Oui'");
    EXPECT_EQ(translated.asked, "");
}

TEST(Literals, LeadingBlanksOfALiteralAreNotAskedFor) {
    Dictionary translated(Entries{{u"km ", u"miles "}});
    EXPECT_EQ(translated(u"\"  km \""), "\"  miles \"");
    EXPECT_EQ(translated.asked, "[km ]");
}

TEST(Literals, AQuoteThatIsNeverClosedEndsAtTheEnd) {
    Dictionary translated(Entries{{u"Oui", u"Yes"}});
    EXPECT_EQ(translated(u"1 & \"Oui"), "1 & \"Yes");
    EXPECT_EQ(translated(u"\""), "\"");
    EXPECT_EQ(translated(u""), "");
}

}  // namespace
}  // namespace quardele::reports
