// A letter through COM, with a server in a process of its own in Word's place.
#include <gtest/gtest.h>
#include <objbase.h>
#include <winreg.h>
#include <winsvc.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <basic/conversion.h>
#include <basic/paths.h>

#include "fake_class.h"
#include "letter_loop.h"
#include "platform_factory.h"
#include "recording_word.h"
#include "template_bookmarks.h"

namespace quardele::tests {
namespace {

namespace fs = std::filesystem;
using automation::ObjectPtr;
using automation::TextView;
using basic::Text;

void Register(const std::wstring& key, const std::wstring& value) {
    const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    ASSERT_EQ(RegSetValueW(HKEY_CLASSES_ROOT, key.c_str(), REG_SZ, value.c_str(), size), ERROR_SUCCESS);
}

/// Whether objects of other processes can be had: the service that finds them runs, or starts within a while.
bool RemoteObjectsArePossible() {
    constexpr int kTenthsOfASecond = 200;
    const SC_HANDLE manager = OpenSCManagerW(nullptr, nullptr, SC_MANAGER_CONNECT);
    const SC_HANDLE service = OpenServiceW(manager, L"RpcSs", SERVICE_QUERY_STATUS | SERVICE_START);
    SERVICE_STATUS status{};
    for (int i = 0; i < kTenthsOfASecond && status.dwCurrentState != SERVICE_RUNNING; ++i) {
        if (!QueryServiceStatus(service, &status)) {
            break;
        }
        if (status.dwCurrentState == SERVICE_STOPPED) {
            StartServiceW(service, 0, nullptr);
        }
        Sleep(100);
    }
    CloseServiceHandle(service);
    CloseServiceHandle(manager);
    return status.dwCurrentState == SERVICE_RUNNING;
}

/// The factory of this platform, which finds the fake where Word is asked for.
class FakeWordFactory final : public automation::Factory {
 public:
    FakeWordFactory() { automation::SetSessionFactory(this); }
    FakeWordFactory(const FakeWordFactory&) = delete;
    FakeWordFactory& operator=(const FakeWordFactory&) = delete;
    ~FakeWordFactory() override { automation::SetSessionFactory(nullptr); }

    ObjectPtr CreateObject(TextView name) override {
        EXPECT_EQ(Text(name), u"Word.Application");
        const std::wstring_view fake = kFakeName;
        return automation::PlatformFactory().CreateObject(Text(fake.begin(), fake.end()));
    }
};

class ComLetter : public testing::Test {
 protected:
    static void SetUpTestSuite() {
        const std::wstring classKey = L"CLSID\\" + std::wstring(kFakeClassText);
        const std::wstring server = fs::absolute(FAKE_WORD).make_preferred().wstring();
        Register(std::wstring(kFakeName) + L"\\CLSID", kFakeClassText);
        Register(classKey + L"\\LocalServer32", L"\"" + server + L"\"");
    }
    static void TearDownTestSuite() {
        RegDeleteTreeW(HKEY_CLASSES_ROOT, kFakeName);
        RegDeleteTreeW(HKEY_CLASSES_ROOT, (L"CLSID\\" + std::wstring(kFakeClassText)).c_str());
    }

    void SetUp() override {
        static const bool kPossible = RemoteObjectsArePossible();
        if (!kPossible) {
            GTEST_SKIP() << "the service of remote calls does not start";
        }
        fs::create_directories(folder_);
        std::ofstream(folder_ / "RELVISIT.dot") << "x";
    }
    void TearDown() override { fs::remove_all(folder_); }

    /// A letter of three visits; the application that wrote it. What the operator would have been told comes
    /// to `boxes`.
    ObjectPtr Written() {
        word::GWORD gword([] { return word::CatalogueKey{}; },
                          [this](const Text& text, const Text&) { boxes += basic::ToUtf8(text) + "\n"; });
        ObjectPtr Word;
        const Text folder = basic::WindowsPath(folder_);
        WriteLetter(gword, Word, folder + u"\\RELVISIT", SampleLetter(3), folder + u"\\ELANCO261231.RVE");
        return Word;
    }
    static std::string LogOf(const ObjectPtr& Word) {
        return basic::ToUtf8(basic::CStr(Word->Call(u"RecordedLog").Plain()));
    }

    std::string boxes;
    fs::path folder_ = fs::temp_directory_path() / ("quardele-com-" + std::to_string(GetCurrentProcessId()));
};

TEST_F(ComLetter, UsesTheSameMembersInTheSameOrderAsWithoutCom) {
    std::string expected;
    {
        RecordingWord word;
        FillLikeTheTemplate(word);
        Written();
        for (const std::string& line : word.TakeLog()) {
            expected += line + "\n";
        }
    }
    EXPECT_EQ(boxes, "");
    const FakeWordFactory factory;
    EXPECT_EQ(LogOf(Written()), expected);
    EXPECT_EQ(boxes, "");
    EXPECT_NE(expected.find("TRANSPORTS ÉLAN & FILS"), std::string::npos);
    EXPECT_NE(expected.find("à 100 €"), std::string::npos);
}

TEST_F(ComLetter, EveryLetterHasAnApplicationOfItsOwn) {
    const FakeWordFactory factory;
    const ObjectPtr first = Written();
    const ObjectPtr second = Written();
    const std::string log = LogOf(first);
    EXPECT_FALSE(log.empty());
    EXPECT_EQ(LogOf(second), log);
}

TEST_F(ComLetter, ErrorsOfTheServerArriveWithNumberAndText) {
    const FakeWordFactory factory;
    const ObjectPtr Word = automation::SessionFactory().CreateObject(u"Word.Application");
    try {
        Word->Child(u"ActiveDocument");
        FAIL() << "there is no document";
    } catch (const basic::RuntimeError& error) {
        EXPECT_EQ(error.Number(), 4248);
        EXPECT_EQ(error.Description(),
                  u"Cette commande n'est pas disponible car aucun document n'est ouvert.");
    }
}

TEST(ComFactory, CreatesNothingForAProgramThatIsNotRegistered) {
    try {
        automation::PlatformFactory().CreateObject(u"Quardele.Nobody");
        FAIL();
    } catch (const basic::RuntimeError& error) {
        EXPECT_EQ(error.Number(), basic::error::kCannotCreateObject);
    }
}

}  // namespace
}  // namespace quardele::tests
