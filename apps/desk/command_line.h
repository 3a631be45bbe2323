// The command line: the transcript, the prompt with its keywords to click, and the line that is typed, with
// history and completion. Knows nothing of commands; what is typed goes to whoever listens.
#pragma once
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStringList>
#include <QWidget>
#include <functional>
#include <vector>

namespace desk {

// A keyword as the prompt shows it, and what a click on it answers.
struct PromptKeyword {
    QString shown, answer;
};

class CommandLine : public QWidget {
public:
    explicit CommandLine(QWidget* parent = nullptr);

    std::function<void(const QString& line)> onLine; // Enter; may be empty
    std::function<void()> onEscape;

    // The prompt of the moment; `candidates` complete what is typed, `blanksEnd` makes the space bar an
    // Enter.
    void showPrompt(const QString& prompt, const std::vector<PromptKeyword>& keywords,
                    const QStringList& candidates, bool blanksEnd);
    // Adds text to the transcript, with the line ends it brings.
    void append(const QString& text);
    QString transcript() const { return transcript_->toPlainText(); }
    QString typed() const { return input_->text(); }
    QLineEdit* input() { return input_; }
    // A key typed elsewhere, such as over the drawing.
    void take(QKeyEvent* event);
    // The lines typed so far, the latest last.
    const QStringList& history() const { return history_; }
    void setHistory(const QStringList& lines);
    void retranslate();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool key(QKeyEvent* event);
    bool leavesToWindow(QKeyEvent* event) const;
    bool pasteLines();
    void scroll(int pages);
    void submit();
    void complete(int step);
    void recall(int step);
    void offer();
    QPlainTextEdit* transcript_;
    QLabel* prompt_;
    QLabel* offered_; // what would complete the line
    QLineEdit* input_;
    QStringList candidates_, history_, matches_;
    QString sought_; // what the lines that are brought back begin with
    qsizetype recalled_ = 0, matched_ = -1;
    bool blanksEnd_ = true;
};

} // namespace desk
