#include "dao_test.h"

namespace quardele::dao {

test::Process DaoTest::StartElsewhere(const std::vector<std::string>& arguments,
                                      const std::string& file) const {
    std::vector<std::string> words = {Installed().File(file).string()};
    words.insert(words.end(), arguments.begin(), arguments.end());
    return {QUARDELE_OTHER_PROCESS, words};
}

void DaoTest::ExecuteElsewhere(const std::string& statement, const std::string& file) const {
    test::Process process = StartElsewhere({statement}, file);
    const std::string failure = process.ReadOutput();
    ASSERT_EQ(process.Wait(), 0) << failure;
}

}  // namespace quardele::dao
