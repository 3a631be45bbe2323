// Lazy start of Qt Gui.
#include "host/picture/toolkit.h"

#include <QGuiApplication>
#include <QtGlobal>

#include <cstdlib>

namespace host {
namespace {

bool isSet(const char* variable) {
    const char* value = std::getenv(variable);
    return value && *value;
}

} // namespace

void ensureToolkit() {
    if (qGuiApp) return;
    if (!isSet("DISPLAY") && !isSet("WAYLAND_DISPLAY") && !isSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    static int count = 1;
    static char name[] = "corvane";
    static char* arguments[] = {name, nullptr};
    // Starting without a session, Qt remarks on missing folders, which is nothing to our users. The
    // application is never destroyed: Qt's own statics may go before ours do.
    const QuietToolkit quiet;
    new QGuiApplication(count, arguments);
}

QuietToolkit::QuietToolkit()
    : before_(reinterpret_cast<Handler>(
          qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {}))) {}

QuietToolkit::~QuietToolkit() { qInstallMessageHandler(reinterpret_cast<QtMessageHandler>(before_)); }

} // namespace host
