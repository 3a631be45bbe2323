// The program with the window: opens the drawing that is named and runs until its window is closed.
#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QPainter>
#include <QTimer>

#include "apps/desk/desk.h"

namespace {

// The window with the dialogs that stand before it, where they stand.
QPixmap pictureOf(QWidget& window) {
    QPixmap all = window.grab();
    QPainter painter(&all);
    for (QWidget* other : QApplication::topLevelWidgets()) {
        if (other == &window || !other->isVisible() || !other->inherits("QDialog")) continue;
        const QPixmap one = other->grab();
        const QPoint at = window.rect().center() - one.rect().center();
        painter.fillRect(QRect(at, one.size()).adjusted(-1, -1, 1, 1), Qt::gray);
        painter.drawPixmap(at, one);
    }
    return all;
}

// Types the lines one after the other, each at a prompt, selects what lies on the layer, then writes the
// picture and ends the program.
void play(desk::Desk& desk, QStringList lines, const QString& layer, const QString& picture) {
    constexpr int kPause = 60; // milliseconds, for the window to settle
    QTimer::singleShot(kPause, &desk.window(), [&desk, lines, layer, picture]() mutable {
        if (!lines.isEmpty()) {
            desk.frontEnd().typeLine(lines.takeFirst().toStdWString());
            return play(desk, lines, layer, picture);
        }
        if (!layer.isEmpty()) desk.selectLayer(layer.toStdWString());
        if (picture.isEmpty()) return;
        pictureOf(desk.window()).save(picture);
        for (QWidget* other : QApplication::topLevelWidgets())
            if (other->isVisible() && other->inherits("QDialog")) other->close();
        desk.discard();
        desk.window().close();
    });
}

} // namespace

int main(int count, char** words) {
    QApplication application(count, words);
    QApplication::setApplicationName("corvane-desk");
    QApplication::setApplicationDisplayName("Corvane");
    QApplication::setApplicationVersion(CORVANE_VERSION);
    QCommandLineParser parser;
    parser.setApplicationDescription("Corvane's window to draw in.");
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption language("lang", "Speak this language, such as en or zh-cn.", "code");
    const QCommandLineOption picture("screenshot", "Write a picture of the window once it stands, and end.",
                                     "file");
    const QCommandLineOption line("line", "Type this line first; may be given several times.", "text");
    const QCommandLineOption select("select", "Select what lies on this layer.", "layer");
    parser.addOptions({language, picture, line, select});
    parser.addPositionalArgument("drawing", "The drawings to open.", "[DRAWING.dxf]...");
    parser.process(application);
    const QStringList named = parser.positionalArguments();

    desk::Desk desk;
    if (!parser.isSet(picture)) desk.remember(); // pictures are the same everywhere
    desk.window().show();
    if (!desk.start(named.isEmpty() ? std::string() : named.front().toStdString(),
                    parser.value(language).toStdString()))
        return 3;
    for (const QString& other : named.mid(1))
        desk.frontEnd().typeLine(L"_.OPEN\n\"" + QFileInfo(other).absoluteFilePath().toStdWString() + L"\"");
    play(desk, parser.values(line), parser.value(select), parser.value(picture));
    desk.run();
    return 0;
}
