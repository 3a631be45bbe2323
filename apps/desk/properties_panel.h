// The panel of properties: what is selected, and its layer, colour and linetype to choose; without a
// selection those that new objects get. Facts and changes stand in selection_facts.h.
#pragma once
#include <QWidget>
#include <functional>

#include "apps/desk/layers_panel.h"
#include "apps/desk/selection_facts.h"

class QComboBox;
class QLabel;

namespace desk {

class PropertiesPanel : public QWidget {
public:
    explicit PropertiesPanel(QWidget* parent = nullptr);

    Editing edit;
    std::function<void(const QString& sentence)> complain;

    // What stands selected of the drawing, which is null for none.
    void show(AcDbDatabase* database, const std::vector<AcDbObjectId>& selection);
    void retranslate();
    QComboBox* layerBox() { return layer_; }
    QComboBox* colorBox() { return color_; }
    QComboBox* linetypeBox() { return linetype_; }
    QString factsShown() const; // of the labels, line by line

private:
    void fillBoxes();
    void fillColors(const std::optional<AcCmColor>& color);
    void showFacts(const SelectionFacts& facts);
    void chooseLayer(int row);
    void chooseColor(int row);
    void chooseLinetype(int row);
    void change(std::function<int()> ofSelection, std::function<void()> ofNewObjects);

    QLabel *kinds_, *length_, *area_, *weight_, *features_;
    QComboBox *layer_, *color_, *linetype_;
    AcDbDatabase* database_ = nullptr;
    std::vector<AcDbObjectId> selection_;
    std::vector<std::pair<QLabel*, QWidget*>> rows_; // what a field is, and the field
    std::vector<LayerRow> layerRows_;                // of the boxes
    std::vector<LinetypeRow> linetypeRows_;
    std::vector<AcCmColor> colors_;
};

} // namespace desk
