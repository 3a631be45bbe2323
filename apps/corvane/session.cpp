// Start and end of the host.
#include "apps/corvane/session.h"

#include <cstdlib>

#include "apps/corvane/report.h"
#include "host/ed/application.h"
#include "host/ed/host_commands.h"
#include "host/ed/startup.h"
#include "host/os/files.h"
#include "host/os/locale.h"
#include "host/os/shell.h"
#include "host/os/text.h"
#include "host/picture/dialog_pictures.h"
#include "host/picture/fonts.h"

namespace app {
namespace {

std::string modulePath() {
    if (const char* named = std::getenv("CORVANE_MODULE"); named && *named) return named;
    const std::string beside = host::programFolder() + "/Corvane.so";
    const std::string installed = host::programFolder() + "/../lib/corvane/Corvane.so";
    return host::fileExists(beside) || !host::fileExists(installed) ? beside : installed;
}

// The module tells of its commands by a function of its own; see src/core/module.cpp.
host::CommandNote moduleNote(const AcEdCommand& command) {
    using Note = bool (*)(const wchar_t*, std::wstring&, bool&);
    host::CommandNote note;
    if (const auto ask = reinterpret_cast<Note>(acrxDynamicLinker->symbol("corvaneCommandNote")))
        ask(command.globalName(), note.summary, note.built);
    return note;
}

void tellFont(const host::FontReplacement& replaced) {
    complain("the font " + host::utf8(replaced.wanted) + " is not installed; " + host::utf8(replaced.used) +
             " is used instead");
}

} // namespace

Session::Session(host::FrontEnd* frontEnd) {
    host::startHost();
    host::setFrontEnd(frontEnd);
    host::installTextMetrics(tellFont);
    host::installDialogPictures();
    host::setShellHandler([](const host::ShellRequest& request) {
        host::frontEnd().open(request.parameters.empty() ? request.target
                                                         : request.target + L" " + request.parameters);
        return true;
    });
}

Session::~Session() {
    while (AcApDocument* document = curDoc()) acDocManagerPtr()->close(document);
    if (!module_.empty()) acrxDynamicLinker->unloadModule(module_.c_str());
    host::setCommandNotes({});
    host::setShellHandler({});
    host::setFrontEnd(nullptr);
}

bool Session::loadModule(const std::string& language) {
    host::setRequestedLanguage(language);
    module_ = host::wide(modulePath());
    if (!acrxDynamicLinker->loadModule(module_.c_str(), false)) {
        complain(host::utf8(acrxDynamicLinker->why()) +
                 "\nCORVANE_MODULE can name the module when it doesn't lie beside the program.");
        module_.clear();
        return false;
    }
    host::setCommandNotes(moduleNote);
    return true;
}

void Session::open(std::unique_ptr<AcDbDatabase> database) { acDocManagerPtr()->add(std::move(database)); }

} // namespace app
