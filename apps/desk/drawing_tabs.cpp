// Tabs kept in step with the list of drawings.
#include "apps/desk/drawing_tabs.h"

#include <QMouseEvent>
#include <QSignalBlocker>

namespace desk {

DrawingTabs::DrawingTabs(QWidget* parent) : QTabBar(parent) {
    setObjectName("drawingTabs");
    setTabsClosable(true);
    setDocumentMode(true);
    setExpanding(false);
    setFocusPolicy(Qt::NoFocus); // keys belong to the command line
    QObject::connect(this, &QTabBar::tabBarClicked, this, [this](int tab) {
        if (tab >= 0 && onChosen) onChosen(tab);
    });
    QObject::connect(this, &QTabBar::tabCloseRequested, this, [this](int tab) {
        if (onCloseAsked) onCloseAsked(tab);
    });
}

void DrawingTabs::show(const std::vector<TabLook>& tabs, int current) {
    const QSignalBlocker quiet(this);
    if (tabs != shown_) {
        while (count() > int(tabs.size())) removeTab(count() - 1);
        while (count() < int(tabs.size())) addTab(QString());
        for (int i = 0; i < count(); ++i) {
            const TabLook& tab = tabs[size_t(i)];
            setTabText(i, QString(tab.title).replace('&', "&&") + (tab.changed ? " *" : ""));
            setTabToolTip(i, tab.path);
        }
        shown_ = tabs;
    }
    setCurrentIndex(current);
}

void DrawingTabs::mouseReleaseEvent(QMouseEvent* event) {
    const int tab = tabAt(event->position().toPoint());
    if (event->button() == Qt::MiddleButton && tab >= 0 && onCloseAsked) return onCloseAsked(tab);
    QTabBar::mouseReleaseEvent(event);
}

} // namespace desk
