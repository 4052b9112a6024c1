#include "command_line.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quardele::basic {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Texts = std::vector<Text>;

/// The arguments of a line that begins with a program's name.
Texts Arguments(TextView rest) {
    return SplitCommandLine(u"mdb.exe " + Text(rest));
}

TEST(CommandLineTest, BlanksPartArguments) {
    EXPECT_EQ(Arguments(u"dump  a.mdb\tT "), (Texts{u"dump", u"a.mdb", u"T"}));
    EXPECT_THAT(Arguments(u""), IsEmpty());
    EXPECT_THAT(SplitCommandLine(u""), IsEmpty());
}

TEST(CommandLineTest, TheProgramsNameMayBeQuoted) {
    EXPECT_EQ(SplitCommandLine(uR"("C:\Program Files\mdb\mdb.exe" tables x)"), (Texts{u"tables", u"x"}));
    EXPECT_EQ(SplitCommandLine(uR"("C:\mdb\"  tables)"), Texts{u"tables"}) << "backslashes say nothing there";
}

TEST(CommandLineTest, MarksKeepBlanksTogether) {
    EXPECT_EQ(Arguments(uR"("SELECT * FROM T" b)"), (Texts{u"SELECT * FROM T", u"b"}));
    EXPECT_EQ(Arguments(uR"(a" "b" c"d)"), Texts{u"a b cd"});
    EXPECT_EQ(Arguments(uR"("" x)"), (Texts{u"", u"x"}));
    EXPECT_EQ(Arguments(uR"("no end )"), Texts{u"no end "});
}

TEST(CommandLineTest, TwoMarksWithinMarksAreOneOfTheText) {
    EXPECT_EQ(Arguments(uR"("say ""yes"" now" b)"), (Texts{u"say \"yes\" now", u"b"}));
}

TEST(CommandLineTest, BackslashesCountByHalvesBeforeAMark) {
    EXPECT_EQ(Arguments(uR"(\\server\share\a.mdb)"), Texts{uR"(\\server\share\a.mdb)"});
    EXPECT_EQ(Arguments(uR"(a\"b)"), Texts{u"a\"b"});
    EXPECT_EQ(Arguments(uR"("C:\folder\\" b)"), (Texts{uR"(C:\folder\)", u"b"}));
    EXPECT_EQ(Arguments(uR"("a\\\"b")"), Texts{uR"(a\"b)"});
    EXPECT_EQ(Arguments(uR"("a\\b" c\)"), (Texts{uR"(a\\b)", uR"(c\)"}));
}

TEST(CommandLineTest, AllLettersStayAsTheyAre) {
    EXPECT_THAT(Arguments(u"été Ω"), ElementsAre(Text(u"été"), Text(u"Ω")));
}

}  // namespace
}  // namespace quardele::basic
