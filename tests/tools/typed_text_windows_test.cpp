// Statements that somebody types into a console, whose code page has no place for most letters.

// The first version of Windows that knows consoles without a window.
#define _WIN32_WINNT 0x0A00
#define NTDDI_VERSION 0x0A000006
#include <windows.h>

#include <memory>
#include <vector>

#include "mdb_program.h"

namespace quardele::mdb::test {
namespace {

struct HandleCloser {
    void operator()(void* handle) const { ::CloseHandle(handle); }
};
using Handle = std::unique_ptr<void, HandleCloser>;

struct Pipe {
    Handle read;
    Handle write;
    Pipe() {
        HANDLE readEnd = nullptr;
        HANDLE writeEnd = nullptr;
        EXPECT_NE(::CreatePipe(&readEnd, &writeEnd, nullptr, 0), 0);
        read.reset(readEnd);
        write.reset(writeEnd);
    }
};

/// A console without a window, in which a program is started and typed to.
class Console {
 public:
    Console() {
        const COORD size = {80, 25};
        EXPECT_EQ(::CreatePseudoConsole(size, keys_.read.get(), screen_.write.get(), 0, &console_), S_OK);
        keys_.read.reset();
        screen_.write.reset();
    }
    ~Console() {
        screen_.read.reset();  // it would wait for somebody to look at its last picture
        ::ClosePseudoConsole(console_);
    }
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    void Type(const std::string& utf8) {
        DWORD count = 0;
        EXPECT_NE(
            ::WriteFile(keys_.write.get(), utf8.data(), static_cast<DWORD>(utf8.size()), &count, nullptr), 0);
    }
    /// Starts a program; null when that fails.
    [[nodiscard]] Handle Start(std::wstring line) {
        SIZE_T size = 0;
        ::InitializeProcThreadAttributeList(nullptr, 1, 0, &size);
        std::vector<char> memory(size);
        STARTUPINFOEXW start = {};
        start.StartupInfo.cb = sizeof(start);
        start.lpAttributeList = reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory.data());
        ::InitializeProcThreadAttributeList(start.lpAttributeList, 1, 0, &size);
        ::UpdateProcThreadAttribute(start.lpAttributeList, 0, PROC_THREAD_ATTRIBUTE_PSEUDOCONSOLE, console_,
                                    sizeof(console_), nullptr, nullptr);
        PROCESS_INFORMATION process = {};
        const bool started =
            ::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, EXTENDED_STARTUPINFO_PRESENT,
                             nullptr, nullptr, &start.StartupInfo, &process) != 0;
        ::DeleteProcThreadAttributeList(start.lpAttributeList);
        const Handle thread(started ? process.hThread : nullptr);
        return Handle(started ? process.hProcess : nullptr);
    }

 private:
    Pipe keys_;
    Pipe screen_;
    HPCON console_ = nullptr;
};

[[nodiscard]] std::wstring Quoted(const std::string& path) {
    return L'"' + std::filesystem::path(path).make_preferred().native() + L'"';
}

class TypedTextTest : public MdbTest {
 protected:
    void SetUp() override {
        MdbTest::SetUp();
        Exec("CREATE TABLE T (id LONG PRIMARY KEY, t TEXT(20))");
    }
};

TEST_F(TypedTextTest, KeepsTheLettersThatTheCodePageLacks) {
    constexpr DWORD kLongest = 60'000;
    Console console;
    // Whatever the standard input of this test is, that of the program is the console.
    const Handle mdb =
        console.Start(L"cmd /c \"" + Quoted(QUARDELE_MDB) + L" exec " + Quoted(file_) + L" - <CON\"");
    ASSERT_NE(mdb, nullptr);
    console.Type("INSERT INTO T (id, t)\r VALUES (2, 'é€ΩЖ');\r\x1A\r");
    ASSERT_EQ(::WaitForSingleObject(mdb.get(), kLongest), WAIT_OBJECT_0);
    DWORD code = 1;
    ::GetExitCodeProcess(mdb.get(), &code);
    EXPECT_EQ(code, 0U);
    EXPECT_EQ(Dump("T"), "id,t\n2,é€ΩЖ\n");
}

}  // namespace
}  // namespace quardele::mdb::test
