// Start, the command loop, and the end with its question; what the window's parts ask for.
#include "apps/desk/desk.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>

#include "apps/desk/desk_settings.h"
#include "apps/desk/module_menus.h"
#include "apps/desk/qt_text.h"
#include "apps/desk/texts.h"
#include "host/ed/interpreter.h"
#include "host/os/files.h"
#include "host/os/text.h"
#include "host/picture/picture.h"
#include "host/ui/monitors.h"
#include "host/view/collector.h"

namespace desk {
namespace {

constexpr int kRetry = 10;              // milliseconds until work looks again whether a command still runs
constexpr int kAutosaveSeconds = 300;   // unless the settings say otherwise; 0: never
constexpr qsizetype kMostHistory = 200; // lines kept to the next start

CRect rectOf(const QRect& r) { return {r.left(), r.top(), r.left() + r.width(), r.top() + r.height()}; }

} // namespace

Desk::Desk()
    : frontEnd_(window_.canvas(), window_.commandLine()), session_(&frontEnd_), dialogs_(&window_),
      drawings_(&window_, [this](const std::wstring& text) { frontEnd_.print(text); }),
      autosave_(host::configurationFolder() + "/autosave") {
    connectWindow();
    frontEnd_.onPrompt = [this] { showState(); };
    frontEnd_.onSelection = [this] { showSelection(); };
    dialogs_.onActed = [this] { followLanguage(); };
    drawings_.onClosing = [this](AcDbDatabase* database) {
        autosave_.forget(database);
        window_.canvas().forget(database);
    };
    QObject::connect(&autosaveTimer_, &QTimer::timeout, &window_, [this] {
        copiesDue_ = true;
        if (frontEnd_.idle()) keepCopies();
    });
    followScreens();
}

void Desk::connectWindow() {
    window_.onCommand = [this](const std::wstring& line) { frontEnd_.runLine(line); };
    window_.onPicture = [this](const QString& path) { exportPicture(path); };
    window_.onForget = [this](const QString& path) {
        forgetRecentFile(path);
        window_.setRecent(recentFiles());
    };
    window_.onCloseDrawing = [this] { closeDrawing(curDoc()); };
    window_.onNextDrawing = [this] {
        AcApDocument* next = drawings_.at(drawings_.current() + 1);
        switchTo(next ? next : drawings_.at(0));
    };
    window_.onSelectAll = [this] { whenFree([this] { selectLayer({}); }); };
    window_.onLanguage = [this](const std::wstring& code) {
        speak(code);
        followLanguage();
    };
    window_.onClose = [this] {
        closed_ = closed_ || mayEnd();
        if (closed_) frontEnd_.close();
        return closed_;
    };
    window_.onScreen = [this] { followScreens(); };
    window_.tabs().onChosen = [this](int tab) { switchTo(drawings_.at(tab)); };
    window_.tabs().onCloseAsked = [this](int tab) { closeDrawing(drawings_.at(tab)); };
    const Editing edit = [this](const wchar_t* name, std::function<void()> work) { change(name, work); };
    const auto complain = [this](const QString& sentence) { frontEnd_.print(L"\n" + wide(sentence)); };
    window_.layers().edit = window_.properties().edit = edit;
    window_.layers().complain = window_.properties().complain = complain;
    window_.aids().onSwitched = [this](const QString& note) { frontEnd_.print(L"\n" + wide(note)); };
}

Desk::~Desk() {
    window_.onClose = {};
    window_.onScreen = {};
    frontEnd_.onSelection = {};
    frontEnd_.close();
}

bool Desk::start(const std::string& drawing, const std::string& language) {
    session_.open(drawings_.read(drawing));
    if (!session_.loadModule(language)) return false;
    followLanguage();
    offerRecovery();
    const int seconds = settings::number(L"AutosaveSeconds", kAutosaveSeconds);
    seconds > 0 ? autosaveTimer_.start(seconds * 1000) : autosaveTimer_.stop();
    return true;
}

void Desk::run() {
    do {
        frontEnd_.reopen();
        if (host::commandLoop().quit) closed_ = mayEnd();
    } while (!closed_);
    if (remembers_) {
        settings::setBytes(L"WindowPlace", window_.saveGeometry());
        settings::setBytes(L"WindowParts", window_.saveState());
        const QStringList lines = window_.commandLine().history();
        settings::setList(L"History", lines.mid(std::max<qsizetype>(lines.size() - kMostHistory, 0)));
    }
    window_.hide();
}

void Desk::remember() {
    remembers_ = true;
    window_.restoreGeometry(settings::bytes(L"WindowPlace"));
    window_.restoreState(settings::bytes(L"WindowParts"));
    window_.commandLine().setHistory(settings::list(L"History"));
}

bool Desk::mayEnd() { return discards_ || drawings_.mayCloseAll(); }

// -- drawings ------------------------------------------------------------------------------------------

void Desk::whenFree(std::function<void()> work) {
    if (frontEnd_.idle()) return work();
    frontEnd_.escape();
    QTimer::singleShot(kRetry, &window_, [this, work = std::move(work)] { whenFree(work); });
}

void Desk::change(const wchar_t* name, std::function<void()> work) {
    whenFree([this, name = std::wstring(name), work = std::move(work)] {
        host::runAsCommand(name, work);
        showState();
    });
}

// The prompt is asked anew, with the selection cleared, in the drawing that is current by then.
void Desk::switchTo(AcApDocument* document) {
    whenFree([this, document] {
        const std::vector<AcApDocument*> present = acDocManagerPtr()->documents();
        if (std::find(present.begin(), present.end(), document) == present.end()) return;
        frontEnd_.escape();
        acDocManagerPtr()->setCurDocument(document);
    });
}

void Desk::closeDrawing(AcApDocument* document) {
    whenFree([this, document] {
        if (!document || !drawings_.mayClose(*document)) return showState();
        frontEnd_.escape();
        drawings_.close(*document);
    });
}

void Desk::selectLayer(const std::wstring& name) {
    AcDbObjectPointer<AcDbBlockTableRecord> space(session_.drawing().currentSpaceId(), AcDb::kForRead);
    if (!space) return;
    std::vector<AcDbObjectId> seen;
    for (const AcDbObjectId id : space->entities()) {
        AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
        if (!entity || entity->visibility() == AcDb::kInvisible) continue;
        AcDbObjectPointer<AcDbLayerTableRecord> layer(entity->layerId(), AcDb::kForRead);
        if (!layer || (!name.empty() && !host::equalNoCase(layer->name(), name))) continue;
        if (!layer->isOff() && !layer->isFrozen() && !layer->isLocked()) seen.push_back(id);
    }
    frontEnd_.setSelection(std::move(seen));
}

void Desk::exportPicture(const QString& path) {
    host::PictureOptions options;
    options.path = path.toStdString();
    options.view = window_.canvas().map().view();
    const host::PictureResult result =
        host::writePicture(host::displaySpace(session_.drawing(), {}), options);
    if (!result) return void(QMessageBox::warning(&window_, "Corvane", QString::fromStdString(result.error)));
    frontEnd_.print(L"\n" + wide(say(L"已写出：%1", path)));
}

// -- keeping the window in step ------------------------------------------------------------------------

void Desk::showState() {
    if (host::runningCommands() == 0) {
        drawings_.dropUnused();
        if (copiesDue_) keepCopies();
    }
    followLanguage();
    const std::vector<TabLook> tabs = drawings_.tabs();
    const int current = drawings_.current();
    window_.tabs().show(tabs, current);
    if (current < int(tabs.size()))
        window_.showDrawing(tabs[size_t(current)].title, tabs[size_t(current)].changed);
    window_.setRecent(recentFiles());
    window_.aids().refresh();
    window_.layers().show(curDoc() ? curDoc()->database() : nullptr);
    showSelection();
}

void Desk::showSelection() {
    std::vector<AcDbObjectId> present = frontEnd_.selection();
    std::erase_if(present, [](AcDbObjectId id) { return id.isErased(); });
    window_.properties().show(curDoc() ? curDoc()->database() : nullptr, present);
}

void Desk::followLanguage() {
    if (spoken_ == spokenLanguage()) return;
    spoken_ = spokenLanguage();
    frontEnd_.speak(spoken_);
    followLanguageInToolkit();
    const ModuleMenus modules = moduleMenus();
    if (!modules.error.empty())
        frontEnd_.print(L"\n" + wide(say(L"菜单文件有误：")) + host::wide(modules.error));
    window_.setModuleMenus(modules.menus, modules.buttons);
    window_.retranslate();
}

// Dialogs open on the first screen of the list: the one that the window stands on. Sizes are in the toolkit's
// own pixels, which have the system's magnification in them already.
void Desk::followScreens() {
    std::vector<host::Monitor> monitors;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const host::Monitor monitor{rectOf(screen->geometry()), rectOf(screen->availableGeometry()), 96};
        monitors.insert(screen == window_.screen() ? monitors.begin() : monitors.end(), monitor);
    }
    host::setMonitors(monitors);
}

// -- copies in case of a crash -------------------------------------------------------------------------

void Desk::keepCopies() {
    copiesDue_ = false;
    const std::string wrong = autosave_.save();
    if (!wrong.empty()) frontEnd_.print(L"\n" + wide(say(L"自动保存失败：")) + host::wide(wrong));
}

void Desk::offerRecovery() {
    const std::vector<Autosave::Left> left = autosave_.leftBehind();
    if (left.empty()) return;
    QStringList names;
    for (const Autosave::Left& one : left) names += shown(one.path.empty() ? one.title : one.path);
    QMessageBox box(QMessageBox::Warning, "Corvane",
                    say(L"程序上次没有正常结束，以下图形有未保存的改动：") + "\n\n" + names.join('\n'),
                    QMessageBox::NoButton, &window_);
    box.setInformativeText(say(L"要打开自动保存的副本吗？原文件在您保存之前不会改变。"));
    const auto* open = box.addButton(say(L"打开副本(&O)"), QMessageBox::AcceptRole);
    const auto* drop = box.addButton(say(L"丢弃(&D)"), QMessageBox::DestructiveRole);
    box.setEscapeButton(box.addButton(say(L"以后再说(&L)"), QMessageBox::RejectRole));
    box.exec();
    if (box.clickedButton() == open)
        recover(left);
    else if (box.clickedButton() == drop)
        autosave_.forgetLeft();
    else
        autosave_.keepForLater();
}

// The copies go once there are new ones.
void Desk::recover(const std::vector<Autosave::Left>& left) {
    bool all = true;
    for (const Autosave::Left& one : left) {
        std::string error;
        if (auto database = one.read(error)) {
            session_.open(std::move(database));
            continue;
        }
        all = false;
        frontEnd_.print(L"\n" + wide(say(L"无法打开副本：")) + host::wide(error));
    }
    if (all && autosave_.save().empty())
        autosave_.forgetLeft();
    else
        autosave_.keepForLater();
}

} // namespace desk
