// Keys, history and completion of the command line.
#include "apps/desk/command_line.h"

#include <QApplication>
#include <QClipboard>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QScrollBar>
#include <QVBoxLayout>
#include <algorithm>

#include "apps/desk/texts.h"

namespace desk {
namespace {

constexpr int kMostLines = 5000; // of the transcript
constexpr qsizetype kMostHistory = 500;
constexpr qsizetype kMostOffered = 8;

// The prompt as rich text: its keywords can be clicked.
QString linked(const QString& prompt, const std::vector<PromptKeyword>& keywords) {
    qsizetype at = std::max<qsizetype>(prompt.indexOf('['), 0);
    QString html = prompt.left(at).toHtmlEscaped();
    for (const auto& [shown, answer] : keywords) {
        const qsizetype found = prompt.indexOf(shown, at, Qt::CaseInsensitive);
        if (found < 0) continue;
        html += prompt.mid(at, found - at).toHtmlEscaped() + "<a href=\"" + answer.toHtmlEscaped() + "\">" +
                prompt.mid(found, shown.size()).toHtmlEscaped() + "</a>";
        at = found + shown.size();
    }
    return html + prompt.mid(at).toHtmlEscaped();
}

} // namespace

CommandLine::CommandLine(QWidget* parent)
    : QWidget(parent), transcript_(new QPlainTextEdit), prompt_(new QLabel), offered_(new QLabel),
      input_(new QLineEdit) {
    transcript_->setReadOnly(true);
    transcript_->setMaximumBlockCount(kMostLines);
    transcript_->setFocusPolicy(Qt::ClickFocus);
    prompt_->setTextFormat(Qt::RichText);
    input_->setObjectName("commandInput");
    input_->setFrame(false);
    input_->installEventFilter(this);
    offered_->setEnabled(false);
    auto* line = new QHBoxLayout;
    line->addWidget(prompt_);
    line->addWidget(input_, 1);
    line->addWidget(offered_);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(4, 4, 4, 4);
    all->addWidget(transcript_, 1);
    all->addLayout(line);
    QObject::connect(prompt_, &QLabel::linkActivated, this, [this](const QString& keyword) {
        input_->clear();
        if (onLine) onLine(keyword);
    });
    QObject::connect(input_, &QLineEdit::textEdited, this, [this] {
        matched_ = -1;
        recalled_ = history_.size();
        offer();
    });
}

void CommandLine::showPrompt(const QString& prompt, const std::vector<PromptKeyword>& keywords,
                             const QStringList& candidates, bool blanksEnd) {
    prompt_->setText(linked(prompt, keywords));
    candidates_ = candidates;
    blanksEnd_ = blanksEnd;
    matched_ = -1;
    offer();
}

void CommandLine::append(const QString& text) {
    QTextCursor end(transcript_->document());
    end.movePosition(QTextCursor::End);
    end.insertText(text);
    transcript_->verticalScrollBar()->setValue(transcript_->verticalScrollBar()->maximum());
}

// The candidates that go on from what is typed, in their order.
void CommandLine::offer() {
    matches_.clear();
    const QString typed = input_->text();
    if (!typed.isEmpty())
        for (const QString& candidate : candidates_)
            if (candidate.startsWith(typed, Qt::CaseInsensitive)) matches_ += candidate;
    offered_->setText(matches_.mid(0, kMostOffered).join("  ") +
                      (matches_.size() > kMostOffered ? " ..." : ""));
}

void CommandLine::complete(int step) {
    if (matches_.isEmpty()) return;
    matched_ = matched_ < 0 ? (step > 0 ? 0 : matches_.size() - 1)
                            : (matched_ + step + matches_.size()) % matches_.size();
    input_->setText(matches_[matched_]);
}

// To the next line in that direction that begins with what was typed.
void CommandLine::recall(int step) {
    if (recalled_ >= history_.size()) sought_ = input_->text();
    qsizetype at = recalled_ + step;
    while (at >= 0 && at < history_.size() && !history_[at].startsWith(sought_, Qt::CaseInsensitive))
        at += step;
    if (at < 0) return;
    recalled_ = std::min(at, history_.size());
    input_->setText(recalled_ < history_.size() ? history_[recalled_] : sought_);
}

void CommandLine::setHistory(const QStringList& lines) {
    history_ = lines;
    recalled_ = history_.size();
}

void CommandLine::retranslate() {
    input_->setPlaceholderText(say(L"输入命令或回答"));
    input_->setAccessibleName(say(L"命令行"));
    transcript_->setAccessibleName(say(L"命令记录"));
}

// Several lines at once are answered one after the other, the last one as far as it is whole.
bool CommandLine::pasteLines() {
    QStringList lines = QGuiApplication::clipboard()->text().remove('\r').split('\n');
    if (lines.size() < 2) return false;
    input_->insert(lines.takeFirst());
    while (!lines.isEmpty()) {
        submit();
        input_->setText(lines.takeFirst());
    }
    return true;
}

void CommandLine::scroll(int pages) {
    QScrollBar* bar = transcript_->verticalScrollBar();
    bar->setValue(bar->value() + pages * bar->pageStep());
}

// With nothing typed the keys for taking back, selecting and erasing are about the drawing.
bool CommandLine::leavesToWindow(QKeyEvent* event) const {
    return input_->text().isEmpty() &&
           (event->matches(QKeySequence::Undo) || event->matches(QKeySequence::Redo) ||
            event->matches(QKeySequence::SelectAll) || event->key() == Qt::Key_Delete);
}

void CommandLine::submit() {
    const QString line = input_->text();
    input_->clear();
    if (!line.isEmpty() && (history_.isEmpty() || history_.back() != line)) history_ += line;
    if (history_.size() > kMostHistory) history_.removeFirst();
    recalled_ = history_.size();
    if (onLine) onLine(line);
}

bool CommandLine::key(QKeyEvent* event) {
    if (event->matches(QKeySequence::Paste)) return pasteLines();
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter: return submit(), true;
    case Qt::Key_Escape:
        input_->clear();
        recalled_ = history_.size();
        offer();
        if (onEscape) onEscape();
        return true;
    case Qt::Key_Up: return recall(-1), true;
    case Qt::Key_Down: return recall(1), true;
    case Qt::Key_Tab: return complete(1), true;
    case Qt::Key_Backtab: return complete(-1), true;
    case Qt::Key_PageUp: return scroll(-1), true;
    case Qt::Key_PageDown: return scroll(1), true;
    case Qt::Key_Space: {
        const QString typed = input_->text();
        const bool within = typed.startsWith('(') || typed.count('"') % 2 == 1;
        if (!blanksEnd_ || within) return false;
        return submit(), true;
    }
    default: return false;
    }
}

bool CommandLine::eventFilter(QObject* watched, QEvent* event) {
    if (watched == input_ && event->type() == QEvent::ShortcutOverride &&
        leavesToWindow(static_cast<QKeyEvent*>(event)))
        return event->ignore(), true;
    if (watched == input_ && event->type() == QEvent::KeyPress && key(static_cast<QKeyEvent*>(event)))
        return true;
    return QWidget::eventFilter(watched, event);
}

void CommandLine::take(QKeyEvent* event) {
    input_->setFocus();
    QApplication::sendEvent(input_, event);
}

} // namespace desk
