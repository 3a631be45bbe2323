// The tabs of the open drawings: shows what it is told, and tells what is clicked.
#pragma once
#include <QTabBar>
#include <functional>
#include <vector>

namespace desk {

struct TabLook {
    QString title, path;
    bool changed = false;
    bool operator==(const TabLook&) const = default;
};

class DrawingTabs : public QTabBar {
public:
    explicit DrawingTabs(QWidget* parent = nullptr);

    std::function<void(int tab)> onChosen, onCloseAsked;

    void show(const std::vector<TabLook>& tabs, int current);

protected:
    void mouseReleaseEvent(QMouseEvent* event) override; // the middle button closes

private:
    std::vector<TabLook> shown_;
};

} // namespace desk
