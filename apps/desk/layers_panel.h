// The panel of layers: name, on, frozen, locked, colour, linetype, one row a layer, the current one marked.
// What it changes goes through layer_edits.h, as one undo step each.
#pragma once
#include <QTreeWidget>
#include <functional>

#include "apps/desk/layer_edits.h"

class QPushButton;

namespace desk {

// Has work done as one undo step of that name, when no command runs any more.
using Editing = std::function<void(const wchar_t* name, std::function<void()> work)>;

class LayersPanel : public QWidget {
public:
    explicit LayersPanel(QWidget* parent = nullptr);

    Editing edit;
    std::function<void(const QString& sentence)> complain; // what could not be done

    void show(AcDbDatabase* database); // null for none
    void retranslate();
    QTreeWidget* list() { return list_; }

private:
    enum Column { nameColumn, onColumn, frozenColumn, lockedColumn, colorColumn, linetypeColumn };
    void fill(QTreeWidgetItem* item, const LayerRow& row);
    void changed(QTreeWidgetItem* item, int column);
    void chooseColor(QTreeWidgetItem* item);
    void addOne();
    void makeCurrent();
    const LayerRow* rowOf(const QTreeWidgetItem* item) const;
    void change(std::function<QString()> work);

    QTreeWidget* list_;
    QPushButton* new_;
    QPushButton* current_;
    AcDbDatabase* database_ = nullptr;
    std::vector<LayerRow> rows_; // as shown
    bool filling_ = false;
};

} // namespace desk
