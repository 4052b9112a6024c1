// Joins through an index, by values that the index cannot be asked for: they find what equals them all the
// same, and nothing else.
#include <algorithm>
#include <array>
#include <span>

#include "change_fixture.h"

namespace quardele::sql {
namespace {

class IndexJoinTest : public ChangeTest {
 protected:
    static constexpr const char* kJoin =
        "SELECT ID, K FROM TOUT INNER JOIN TIN ON TOUT.T = TIN.K ORDER BY ID";

    /// An indexed table, long enough for an index to be the better way, beside one that is as short as may
    /// be.
    static void Make(jet::Database& data, const std::string& type) {
        const auto run = [&data](const std::string& statement) { Execute(data, basic::FromUtf8(statement)); };
        run("CREATE TABLE TIN (K TEXT(255) CONSTRAINT PK PRIMARY KEY)");
        run("CREATE TABLE TOUT (ID LONG, T " + type + ")");
        for (int row = 0; row < 300; ++row) {
            run("INSERT INTO TIN VALUES ('F" + std::to_string(row) + "')");
        }
        run("INSERT INTO TOUT VALUES (1, 'F7')");
    }
    static void Replace(std::vector<std::uint8_t>& bytes, std::span<const std::uint8_t> stored,
                        std::span<const std::uint8_t> with) {
        const auto place = std::search(bytes.begin(), bytes.end(), stored.begin(), stored.end());
        ASSERT_NE(place, bytes.end());
        std::copy(with.begin(), with.end(), place);
    }
};

TEST_F(IndexJoinTest, ALongTextDoesNotEqualItsBeginning) {
    Make(*Data(), "MEMO");
    const std::string most(255, 'q');
    Do("INSERT INTO TIN VALUES ('" + most + "')");
    Do("INSERT INTO TOUT VALUES (2, '" + most + "q')");
    Do("INSERT INTO TOUT VALUES (3, '" + most + "')");
    EXPECT_EQ(Get(kJoin).size(), 2U);
    EXPECT_EQ(Get(kJoin).back().substr(0, 1), "3");
}

/// As the original engine may have written it, in an index too: the order of the text is not known here.
TEST_F(IndexJoinTest, ATextOfUnknownOrderEqualsItself) {
    {
        const auto data = jet::Database::Open(File());
        Make(*data, "TEXT(255)");
        Execute(*data, u"INSERT INTO TIN VALUES ('ZQQZ')");
        Execute(*data, u"INSERT INTO TOUT VALUES (2, 'ZQQX')");
    }
    std::vector<std::uint8_t> bytes = jet::test::ReadBytes(File());
    constexpr std::array<std::uint8_t, 6> kUnknown{0x2D, 0x4E, 0x01, 0x4E, 0x2D, 0x4E};
    Replace(bytes, std::array<std::uint8_t, 6>{0xFF, 0xFE, 'Z', 'Q', 'Q', 'Z'}, kUnknown);
    Replace(bytes, std::array<std::uint8_t, 6>{0xFF, 0xFE, 'Z', 'Q', 'Q', 'X'}, kUnknown);
    jet::test::WriteBytes(File(), bytes);
    EXPECT_EQ(Get(kJoin).size(), 2U);
}

}  // namespace
}  // namespace quardele::sql
