// Waiting for answers, and what the user's hand means at each prompt.
#include "apps/desk/desk_frontend.h"

#include <QApplication>
#include <QDesktopServices>
#include <QEventLoop>
#include <QFileDialog>
#include <QMessageBox>
#include <QTimer>
#include <QUrl>
#include <algorithm>
#include <unordered_set>

#include "apps/desk/candidates.h"
#include "apps/desk/qt_text.h"
#include "apps/desk/texts.h"
#include "host/ed/answers.h"
#include "host/ed/editor.h"
#include "host/ed/interpreter.h"
#include "host/ed/prompting.h"
#include "host/ed/selection.h"
#include "host/os/text.h"

namespace desk {

using Kind = host::PromptRequest::Kind;
using host::PromptReply;
using host::PromptRequest;

namespace {

constexpr int kLongWork = 700; // milliseconds until progress is shown

PromptReply textReply(std::wstring text) {
    PromptReply reply;
    reply.kind = text.empty() ? PromptReply::Kind::enter : PromptReply::Kind::text;
    reply.text = std::move(text);
    return reply;
}
PromptReply pointReply(const AcGePoint3d& world) {
    PromptReply reply;
    reply.kind = PromptReply::Kind::point;
    reply.point = host::worldToUcs(world);
    return reply;
}
PromptReply cancelReply() {
    PromptReply reply;
    reply.kind = PromptReply::Kind::cancel;
    return reply;
}

bool takesPoints(Kind kind) {
    return kind == Kind::point || kind == Kind::corner || kind == Kind::distance || kind == Kind::angle;
}

std::vector<AcDbObjectId> pickedFirst() {
    std::vector<AcDbObjectId> ids;
    resbuf* set = nullptr;
    acedSSGetFirst(nullptr, &set);
    Adesk::Int32 count = 0;
    if (set) acedSSLength(set->resval.rlname, &count);
    for (Adesk::Int32 i = 0; i < count; ++i) {
        ads_name name;
        AcDbObjectId id;
        if (acedSSName(set->resval.rlname, i, name) == RTNORM && acdbGetObjectId(id, name) == Acad::eOk &&
            !id.isErased())
            ids.push_back(id);
    }
    if (set) acedSSFree(set->resval.rlname), acutRelRb(set);
    return ids;
}

// With these added, each once, or taken away.
std::vector<AcDbObjectId> changed(std::vector<AcDbObjectId> set, const std::vector<AcDbObjectId>& by,
                                  bool away) {
    std::unordered_set<AcDbObjectId> present(set.begin(), set.end()), gone;
    for (const AcDbObjectId id : by) {
        if (id.isNull()) continue;
        if (away)
            gone.insert(id);
        else if (present.insert(id).second)
            set.push_back(id);
    }
    std::erase_if(set, [&](AcDbObjectId id) { return gone.count(id) > 0; });
    return set;
}

// Prompts ask in their last line; what stands above it belongs to the transcript.
std::wstring lastLine(const std::wstring& text) {
    const size_t end = text.rfind(L'\n');
    return end == text.npos ? text : text.substr(end + 1);
}

} // namespace

DeskFrontEnd::DeskFrontEnd(Canvas& canvas, CommandLine& line)
    : canvas_(canvas), line_(line),
      transcript_([this](const std::string& text) { line_.append(QString::fromStdString(text)); }) {
    line_.onLine = [this](const QString& text) { typeLine(wide(text)); };
    line_.onEscape = [this] { escape(); };
    canvas_.onKey = [this](QKeyEvent* event) { line_.take(event); };
    canvas_.onEnter = [this] { typeLine(wide(line_.typed())); };
    canvas_.onPoint = [this](const AcGePoint3d& world) { answer(pointReply(world)); };
    canvas_.onEntity = [this](AcDbObjectId id, const AcGePoint3d& at, bool shift) {
        pickEntity(id, at, shift);
    };
    canvas_.onWindow = [this](const Canvas::Window& window) { pickWindow(window); };
    canvas_.onGrip = [this](const std::function<void()>& move) { moveGrip(move); };
    canvas_.onNote = [this](const QString& text) { line_.append(shown(texts_.say(wide(text))) + "\n"); };
}

DeskFrontEnd::~DeskFrontEnd() {
    line_.onLine = {};
    line_.onEscape = {};
    canvas_.onKey = {};
    canvas_.onEnter = {};
    canvas_.onPoint = {};
    canvas_.onEntity = {};
    canvas_.onWindow = {};
    canvas_.onGrip = {};
    canvas_.onNote = {};
}

// -- asking --------------------------------------------------------------------------------------------

PromptReply DeskFrontEnd::ask(const PromptRequest& request) {
    progress_.reset();
    working_.invalidate();
    if (closing_) {
        PromptReply reply;
        reply.kind = PromptReply::Kind::exhausted;
        return reply;
    }
    if (std::exchange(stopAsked_, false)) return queue_.clear(), pending_.reset(), cancelReply();
    if (!queue_.empty()) return fromQueue();
    asked_ = request;
    said_ = texts_.say(request.text);
    if (request.kind == Kind::command) endOfCommand();
    if (request.kind != Kind::objects && !picked_.empty()) showPicked({});
    if (std::optional<PromptReply> reply = fromSelection()) return *reply;
    transcript_.print(said_.substr(0, said_.size() - lastLine(said_).size()));
    if (pending_ && pending_->atEnd()) pending_.reset();
    if (!pending_ && !ahead_.empty()) {
        pending_ = std::move(ahead_.front());
        ahead_.pop_front();
    }
    if (pending_) return fromPending();
    if (request.kind == Kind::file) return fileReply(request);
    waitFor(request);
    if (closing_) return ask(request);
    if (!reply_) return fromPending();
    echo(*reply_);
    return *std::exchange(reply_, std::nullopt);
}

void DeskFrontEnd::waitFor(const PromptRequest& request) {
    canvas_.refresh();
    showOnCanvas(request);
    showPrompt();
    if (onPrompt) onPrompt();
    reply_.reset();
    QEventLoop loop;
    loop_ = &loop;
    loop.exec();
    loop_ = nullptr;
    canvas_.want({});
}

void DeskFrontEnd::showPrompt() {
    line_.showPrompt(shown(host::trimmed(lastLine(said_))), keywordsOf(asked_, said_), candidatesOf(asked_),
                     asked_.blanksEnd);
}

void DeskFrontEnd::speak(const std::wstring& code) {
    if (texts_.empty()) texts_ = readHostTexts();
    texts_.speak(code);
    said_ = texts_.say(asked_.text);
    if (loop_) showPrompt();
}

void DeskFrontEnd::showOnCanvas(const PromptRequest& request) {
    Canvas::Want want;
    if (takesPoints(request.kind)) want.kind = Canvas::Want::Kind::point;
    if (request.kind == Kind::entity || request.kind == Kind::nestedEntity)
        want.kind = Canvas::Want::Kind::entity;
    if (request.kind == Kind::objects || request.kind == Kind::command)
        want.kind = Canvas::Want::Kind::objects;
    if (request.base) want.base = host::ucsToWorld(*request.base);
    want.corner = request.kind == Kind::corner;
    want.grips = request.kind == Kind::command;
    want.snaps = snapAsked_;
    canvas_.want(want);
}

PromptReply DeskFrontEnd::fromQueue() {
    PromptReply reply = queue_.front();
    queue_.pop_front();
    return reply;
}

// What was selected before the command answers its first "Select objects", one by one and in silence.
std::optional<PromptReply> DeskFrontEnd::fromSelection() {
    const bool same = asked_.kind == Kind::objects && (fed_ == 0 || asked_.text == fedPrompt_);
    if (feed_.empty() || !same) {
        if (asked_.kind != Kind::command) feed_.clear();
        return std::nullopt;
    }
    fedPrompt_ = asked_.text;
    if (fed_ < feed_.size()) {
        PromptReply reply;
        reply.kind = PromptReply::Kind::entity;
        reply.entity = feed_[fed_++];
        return reply;
    }
    feed_.clear();
    print(L"\n" + std::to_wstring(fed_) + L" found");
    return textReply({});
}

// A command has ended, or none has run yet: what it left selected is selected now.
void DeskFrontEnd::endOfCommand() {
    feed_.clear();
    fed_ = 0;
    if (!std::exchange(commandRan_, false)) return;
    const std::vector<AcDbObjectId> left = pickedFirst();
    if (left == selected_) return clearSelection();
    selected_ = left;
    canvas_.setSelected(selected_);
}

PromptReply DeskFrontEnd::fromPending() {
    const host::ScriptReader::Answer typed = asked_.kind == Kind::dialog
                                                 ? pending_->nextAction()
                                                 : pending_->next(asked_.blanksEnd, asked_.pointing());
    PromptReply reply = typed.escape ? cancelReply() : textReply(typed.text);
    snapAsked_ = takesPoints(asked_.kind) ? host::objectSnapBit(reply.text) : 0;
    if (asked_.kind == Kind::command && !typed.escape) {
        commandRan_ = true;
        feed_ = selected_;
    }
    echo(reply);
    return reply;
}

void DeskFrontEnd::echo(const PromptReply& reply) {
    std::wstring said = reply.text;
    if (reply.kind == PromptReply::Kind::cancel) said = texts_.say(L"*Cancel*");
    transcript_.print(lastLine(said_) + said);
    transcript_.finishLine();
}

PromptReply DeskFrontEnd::fileReply(const PromptRequest& request) {
    const host::FileWish wish = request.file.value_or(host::FileWish{});
    const std::wstring title(host::trimmed(wish.title.empty() ? request.text : wish.title));
    QFileDialog dialog(line_.window(), shown(texts_.say(title)));
    dialog.setAcceptMode(wish.saving ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(wish.saving ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    // The command asks itself before it replaces a file.
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    const QStringList endings = shown(wish.extensions).split(';', Qt::SkipEmptyParts);
    if (!endings.isEmpty()) {
        const QString patterns = "*." + endings.join(" *.");
        dialog.setNameFilters({say(L"文件") + " (" + patterns + ")", say(L"所有文件 (*)")});
        dialog.setDefaultSuffix(endings.front());
    }
    if (!wish.initial.empty()) dialog.selectFile(shown(wish.initial));
    PromptReply reply = cancelReply();
    if (dialog.exec() == QDialog::Accepted && !dialog.selectedFiles().isEmpty())
        reply = textReply(wide(dialog.selectedFiles().front()));
    echo(reply);
    return reply;
}

void DeskFrontEnd::answer(PromptReply reply) {
    if (!waiting()) return;
    reply_ = std::move(reply);
    snapAsked_ = 0;
    loop_->quit();
}

// Lines that come while a command works, or before the loop has ended, wait for the prompts that follow.
void DeskFrontEnd::typeLine(const std::wstring& line) {
    if (canvas_.gripInHand() && moveGripTo(line)) return;
    host::ScriptReader reader(line + L"\n");
    if (reader.atEnd()) return; // a comment
    if (!waiting()) return ahead_.push_back(std::move(reader));
    pending_ = std::move(reader);
    loop_->quit();
}

void DeskFrontEnd::runLine(const std::wstring& line) {
    if (waiting() && asked_.kind == Kind::command) return typeLine(line);
    // What runs is cancelled at as many prompts as it takes; the line waits for the command prompt.
    escape();
    QTimer::singleShot(0, qApp, [this, line] { runLine(line); });
}

void DeskFrontEnd::escape() {
    ahead_.clear();
    if (canvas_.letGo()) return;
    if (!waiting()) return void(stopAsked_ = !loop_);
    if (asked_.kind == Kind::command) clearSelection();
    answer(cancelReply());
}

void DeskFrontEnd::close() {
    closing_ = true;
    if (loop_) loop_->quit();
}

// -- picks ---------------------------------------------------------------------------------------------

void DeskFrontEnd::pickEntity(AcDbObjectId entity, const AcGePoint3d& world, bool shift) {
    if (asked_.kind == Kind::command) return select({entity}, shift);
    PromptReply reply = pointReply(world);
    if (asked_.kind == Kind::objects && entity.isNull()) return;
    if (asked_.kind == Kind::objects) showPicked(changed(picked_, {entity}, shift));
    if (asked_.kind == Kind::objects && shift) {
        reply.entity = entity;
        reply.kind = PromptReply::Kind::entity;
        queue_ = {reply, textReply(L"_A")};
        return answer(textReply(L"_R"));
    }
    if (!entity.isNull() && asked_.kind != Kind::nestedEntity) {
        reply.kind = PromptReply::Kind::entity;
        reply.entity = entity;
    }
    answer(reply);
}

// The editor hears of it as a polygon, which is right from whatever side the drawing is seen.
void DeskFrontEnd::pickWindow(const Canvas::Window& window) {
    if (asked_.kind == Kind::command) return select(window.entities, window.shift);
    showPicked(changed(picked_, window.entities, window.shift));
    queue_.clear();
    for (const AcGePoint3d& corner : window.corners) queue_.push_back(pointReply(corner));
    queue_.push_back(textReply({}));
    PromptReply first = textReply(window.crossing ? L"_CP" : L"_WP");
    if (window.shift) {
        queue_.push_front(first);
        queue_.push_back(textReply(L"_A"));
        first = textReply(L"_R");
    }
    answer(first);
}

// A point that is typed while a grip is in the hand; "@" starts at the place where it was taken.
bool DeskFrontEnd::moveGripTo(const std::wstring& text) {
    host::PointFrame frame = host::pointFrame();
    frame.last = host::worldToUcs(*canvas_.gripInHand());
    const auto typed = host::parsePoint(text, frame);
    if (!typed) return false;
    canvas_.moveGrip(typed->world ? typed->point : host::ucsToWorld(typed->point));
    return true;
}

// One step of the undo log, though no command has been typed.
void DeskFrontEnd::moveGrip(const std::function<void()>& move) {
    if (!idle()) return;
    host::runAsCommand(L"GRIP_STRETCH", move);
    canvas_.refresh();
    if (onPrompt) onPrompt();
}

// While a command asks for objects its picks shine; the command itself may pass some of them over.
void DeskFrontEnd::showPicked(std::vector<AcDbObjectId> picked) {
    picked_ = std::move(picked);
    canvas_.setSelected(picked_.empty() ? selected_ : picked_);
}

void DeskFrontEnd::select(const std::vector<AcDbObjectId>& entities, bool shift) {
    selected_ = changed(selected_, entities, shift);
    tellSelection();
}

void DeskFrontEnd::clearSelection() {
    selected_.clear();
    tellSelection();
}

void DeskFrontEnd::tellSelection() {
    canvas_.setSelected(selected_);
    ads_name set, name;
    if (acedSSAdd(nullptr, nullptr, set) != RTNORM) return;
    for (const AcDbObjectId id : selected_)
        if (acdbGetAdsName(name, id) == Acad::eOk) acedSSAdd(name, set, set);
    acedSSSetFirst(nullptr, set);
    acedSSFree(set);
    if (onSelection) onSelection();
}

// -- telling -------------------------------------------------------------------------------------------

void DeskFrontEnd::print(const std::wstring& text) {
    if (feed_.empty() || fed_ == 0) transcript_.print(texts_.say(text));
}

int DeskFrontEnd::messageBox(const host::MessageBox& box) {
    const bool asks = (box.style & 15) == kMessageYesNo;
    transcript_.finishLine();
    const std::wstring text = texts_.say(box.text);
    transcript_.print(text + L"\n");
    QMessageBox message(asks ? QMessageBox::Question : QMessageBox::Information,
                        box.caption.empty() ? "Corvane" : shown(texts_.say(box.caption)), shown(text),
                        asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok, line_.window());
    message.setTextFormat(Qt::PlainText);
    const int pressed = message.exec();
    return !asks ? kAnswerOk : pressed == QMessageBox::Yes ? kAnswerYes : kAnswerNo;
}

void DeskFrontEnd::open(const std::wstring& target) {
    const QUrl url = QUrl::fromUserInput(shown(target));
    if (!QDesktopServices::openUrl(url)) print(L"\nCould not be opened: " + target);
}

bool DeskFrontEnd::progress(const std::wstring& caption, double share) {
    if (!working_.isValid()) working_.start();
    if (share >= 0 && !progress_ && working_.elapsed() > kLongWork) {
        progress_ = std::make_unique<QProgressDialog>(QString(), say(L"取消"), 0, 1000, line_.window());
        progress_->setWindowModality(Qt::ApplicationModal);
        progress_->setMinimumDuration(0);
        progress_->setAutoClose(false);
        progress_->setAutoReset(false);
    }
    if (progress_ && share >= 0) {
        progress_->setLabelText(shown(texts_.say(caption)));
        progress_->setValue(int(std::clamp(share, 0.0, 1.0) * 1000));
    }
    const bool stopped = (progress_ && progress_->wasCanceled()) || std::exchange(stopAsked_, false);
    return !stopped;
}

void DeskFrontEnd::redraw() { canvas_.refresh(); }

void DeskFrontEnd::wait(unsigned milliseconds) {
    canvas_.refresh();
    QEventLoop loop;
    QTimer::singleShot(int(std::min(milliseconds, 60'000u)), &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace desk
