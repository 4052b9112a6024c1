#include "office.h"

#include <unistd.h>

#include <chrono>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <thread>
#include <utility>

#include <com/sun/star/bridge/UnoUrlResolver.hpp>
#include <com/sun/star/connection/NoConnectException.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XDispatchHelper.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <cppuhelper/bootstrap.hxx>
#include <rtl/bootstrap.hxx>

#include <basic/runtime_error.h>

#include "border.h"
#include "installation.h"
#include "open_document.h"
#include "profile.h"

namespace quardele::word::writer {

namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

constexpr auto kPatience = std::chrono::seconds(60);
constexpr auto kPollInterval = std::chrono::milliseconds(15);

std::weak_ptr<Office>& Current() {
    static std::weak_ptr<Office> office;
    return office;
}

[[noreturn]] void ThrowNoAnswer() {
    throw basic::RuntimeError(
        basic::error::kCannotCreateObject,
        basic::DescriptionOf(basic::error::kCannotCreateObject) + u" : LibreOffice ne répond pas");
}

std::string NextPipeName() {
    static int count = 0;
    return "quardele_" + std::to_string(getpid()) + "_" + std::to_string(++count);
}

/// The interface library of this process, one for each installation, to the end of the process. It needs the
/// office's type descriptions, else the first call across the connection ends the process.
const Reference<css::uno::XComponentContext>& LocalContext(const fs::path& installation) {
    static auto* contexts = new std::map<fs::path, Reference<css::uno::XComponentContext>>();
    Reference<css::uno::XComponentContext>& context = (*contexts)[installation];
    if (!context.is()) {
        const fs::path program = installation / "program";
        rtl::Bootstrap::set("URE_MORE_TYPES", FileUrl(program / "types" / "offapi.rdb"));
        context = cppu::defaultBootstrap_InitialComponentContext(FileUrl(program / "unorc"));
    }
    return context;
}

Reference<css::uno::XComponentContext> Connect(const Reference<css::uno::XComponentContext>& here,
                                               const std::string& pipe, OfficeProcess& process) {
    const auto resolver = css::bridge::UnoUrlResolver::create(here);
    const auto url = rtl::OUString::createFromAscii(
        ("uno:pipe,name=" + pipe + ";urp;StarOffice.ComponentContext").c_str());
    const auto end = Clock::now() + kPatience;
    while (Clock::now() < end) {
        try {
            return {resolver->resolve(url), css::uno::UNO_QUERY_THROW};
        } catch (const css::connection::NoConnectException&) {
            process.Watch();
            std::this_thread::sleep_for(kPollInterval);
        }
    }
    process.Kill();
    ThrowNoAnswer();
}

/// Removes the lock file beside a document if the office with that profile has left it; meanwhile somebody
/// else may have opened the document.
void RemoveLockOf(const fs::path& file, const fs::path& profile) {
    const fs::path lock = file.parent_path() / (".~lock." + file.filename().string() + "#");
    std::ostringstream content;
    content << std::ifstream(lock, std::ios::binary).rdbuf();
    if (content.str().find(basic::ToUtf8(ToText(FileUrl(profile)))) != std::string::npos) {
        std::error_code ignored;
        fs::remove(lock, ignored);
    }
}

}  // namespace

std::shared_ptr<Office> Office::Acquire() {
    if (auto office = Current().lock(); office != nullptr && !office->IsGone()) {
        return office;
    }
    const fs::path installation = InstallationFolder();
    const std::shared_ptr<Office> office(new Office(CanShowWindows(installation)));
    try {
        office->Start(installation);
    } catch (const css::uno::Exception&) {
        ThrowNoAnswer();
    }
    Current() = office;
    return office;
}

void Office::Start(const fs::path& installation) {
    const auto& here = LocalContext(installation);
    const std::string pipe = NextPipeName();
    profile_ = PreparedProfile(showsWindows_);
    process_.emplace(installation, profile_, pipe, showsWindows_);
    context_ = Connect(here, pipe, *process_);
    desktop_ = css::frame::Desktop::create(context_);
}

Office::~Office() {
    if (!desktop_.is()) {
        if (process_) {
            process_->Kill();
        }
        return;
    }
    try {
        if (!gone_ && !desktop_->getComponents()->createEnumeration()->hasMoreElements()) {
            process_->NoteEnding();
            desktop_->terminate();
        }
    } catch (const css::uno::Exception&) {
        gone_ = true;  // The connection breaks while the office ends, or was broken before.
    }
}

bool Office::IsGone() {
    if (gone_) {
        return true;
    }
    try {
        desktop_->getCurrentFrame();
    } catch (const css::uno::Exception&) {
        gone_ = true;
        process_->NoteEnding();
        for (const fs::path& file : openFiles_) {
            RemoveLockOf(file, profile_);
        }
    }
    return gone_;
}

void Office::RunCommand(const Reference<css::frame::XController>& controller, const char* command) const {
    const Reference<css::frame::XDispatchHelper> helper(
        context_->getServiceManager()->createInstanceWithContext("com.sun.star.frame.DispatchHelper",
                                                                 context_),
        css::uno::UNO_QUERY_THROW);
    const Reference<css::frame::XDispatchProvider> window(controller->getFrame(), css::uno::UNO_QUERY_THROW);
    helper->executeDispatch(window, rtl::OUString::createFromAscii(command), rtl::OUString(), 0, {});
}

void Office::ShowSoon(const std::shared_ptr<OpenDocument>& document) {
    if (!showsWindows_) {
        return;
    }
    pending_.push_back(document);
    Border::Instance().WhenQuiet([weak = weak_from_this()] {
        if (const auto office = weak.lock()) {
            office->ShowPending();
        }
    });
}

void Office::DoNotShow(const std::shared_ptr<OpenDocument>& document) {
    std::erase_if(pending_, [&](const auto& waiting) { return waiting.lock() == document; });
}

void Office::ShowPending() {
    for (const auto& waiting : std::exchange(pending_, {})) {
        if (const auto document = waiting.lock()) {
            document->ShowWindow();
        }
    }
}

}  // namespace quardele::word::writer
