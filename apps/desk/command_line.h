// The command line: the transcript, the prompt with its keywords to click, and the line that is typed, with
// history and completion. Knows nothing of commands; what is typed goes to whoever listens.
#pragma once
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QStringList>
#include <QWidget>
#include <functional>

namespace desk {

class CommandLine : public QWidget {
public:
    explicit CommandLine(QWidget* parent = nullptr);

    std::function<void(const QString& line)> onLine; // Enter; may be empty
    std::function<void()> onEscape;

    // The prompt of the moment; `candidates` complete what is typed, `blanksEnd` makes the space bar an
    // Enter.
    void showPrompt(const QString& prompt, const QStringList& keywords, const QStringList& candidates,
                    bool blanksEnd);
    // Adds text to the transcript, with the line ends it brings.
    void append(const QString& text);
    QString transcript() const { return transcript_->toPlainText(); }
    QString typed() const { return input_->text(); }
    QLineEdit* input() { return input_; }
    // A key typed elsewhere, such as over the drawing.
    void take(QKeyEvent* event);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool key(QKeyEvent* event);
    void submit();
    void complete(int step);
    void recall(int step);
    void offer();
    QPlainTextEdit* transcript_;
    QLabel* prompt_;
    QLabel* offered_; // what would complete the line
    QLineEdit* input_;
    QStringList candidates_, history_, matches_;
    qsizetype recalled_ = 0, matched_ = -1;
    bool blanksEnd_ = true;
};

} // namespace desk
