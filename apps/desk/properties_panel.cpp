// Labels and boxes kept in step with the selection.
#include "apps/desk/properties_panel.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>
#include <algorithm>

#include "apps/desk/colors.h"
#include "apps/desk/texts.h"

namespace desk {
namespace {

QLabel* makeFact() {
    auto* label = new QLabel;
    label->setWordWrap(true);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    return label;
}
QComboBox* makeBox(const char* name) {
    auto* box = new QComboBox;
    box->setObjectName(name);
    box->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    return box;
}

QString number(const std::optional<double>& value) {
    return value ? QString::number(*value, 'f', 4) : QString();
}

QString weightName(AcDb::LineWeight weight) {
    switch (weight) {
    case AcDb::kLnWtByLayer: return say(L"随层");
    case AcDb::kLnWtByBlock: return say(L"随块");
    case AcDb::kLnWtByLwDefault: return say(L"默认");
    default: return QString("%1 mm").arg(int(weight) / 100.0, 0, 'f', 2);
    }
}

int placeOf(const std::vector<AcCmColor>& all, const std::optional<AcCmColor>& one) {
    const auto found = one ? std::find(all.begin(), all.end(), *one) : all.end();
    return found == all.end() ? -1 : int(found - all.begin());
}
template <class Row> int placeOf(const std::vector<Row>& all, const std::optional<AcDbObjectId>& id) {
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const Row& row) { return id && row.id == *id; });
    return found == all.end() ? -1 : int(found - all.begin());
}

} // namespace

PropertiesPanel::PropertiesPanel(QWidget* parent)
    : QWidget(parent), kinds_(makeFact()), length_(makeFact()), area_(makeFact()), weight_(makeFact()),
      features_(makeFact()), layer_(makeBox("layerBox")), color_(makeBox("colorBox")),
      linetype_(makeBox("linetypeBox")) {
    setObjectName("propertiesPanel");
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(6, 6, 6, 6);
    grid->setColumnStretch(1, 1);
    for (QWidget* field : std::initializer_list<QWidget*>{kinds_, layer_, color_, linetype_, weight_, length_,
                                                          area_, features_}) {
        auto* label = new QLabel;
        grid->addWidget(label, int(rows_.size()), 0, Qt::AlignTop);
        grid->addWidget(field, int(rows_.size()), 1);
        rows_.emplace_back(label, field);
    }
    grid->setRowStretch(int(rows_.size()), 1);
    QObject::connect(layer_, &QComboBox::activated, this, [this](int row) { chooseLayer(row); });
    QObject::connect(color_, &QComboBox::activated, this, [this](int row) { chooseColor(row); });
    QObject::connect(linetype_, &QComboBox::activated, this, [this](int row) { chooseLinetype(row); });
    retranslate();
}

void PropertiesPanel::retranslate() {
    static constexpr const wchar_t* kNames[] = {L"选择", L"图层", L"颜色", L"线型",
                                                L"线宽", L"长度", L"面积", L"生成命令"};
    for (size_t i = 0; i < rows_.size(); ++i) rows_[i].first->setText(say(kNames[i]));
    show(database_, selection_);
}

void PropertiesPanel::show(AcDbDatabase* database, const std::vector<AcDbObjectId>& selection) {
    database_ = database;
    selection_ = selection;
    setEnabled(database != nullptr);
    if (!database) return;
    SelectionFacts facts = factsOf(selection);
    if (facts.count == 0) {
        facts.layer = database->clayer();
        facts.color = database->cecolor();
        facts.linetype = database->celtype();
    }
    fillBoxes();
    fillColors(facts.color);
    showFacts(facts);
    layer_->setCurrentIndex(placeOf(layerRows_, facts.layer));
    linetype_->setCurrentIndex(placeOf(linetypeRows_, facts.linetype));
}

// There may be thousands, and this is done at every prompt.
void PropertiesPanel::fillBoxes() {
    if (auto layers = layerRows(*database_); layers != layerRows_) {
        layerRows_ = std::move(layers);
        layer_->clear();
        for (const LayerRow& row : layerRows_) layer_->addItem(colorSwatch(row.color), row.name);
    }
    if (auto linetypes = linetypeRows(*database_); linetypes != linetypeRows_) {
        linetypeRows_ = std::move(linetypes);
        linetype_->clear();
        for (const LinetypeRow& row : linetypeRows_) linetype_->addItem(row.name);
    }
}

// A colour that isn't offered stands at the end of the list while something has it.
void PropertiesPanel::fillColors(const std::optional<AcCmColor>& color) {
    colors_ = offeredColors(true);
    if (color && placeOf(colors_, color) < 0) colors_.push_back(*color);
    color_->clear();
    for (const AcCmColor& one : colors_) color_->addItem(colorSwatch(one), colorName(one));
    color_->addItem(say(L"其他颜色..."));
    color_->setCurrentIndex(placeOf(colors_, color));
}

void PropertiesPanel::showFacts(const SelectionFacts& facts) {
    const auto put = [this](QLabel* label, const QString& text) {
        label->setText(text);
        for (const auto& [name, field] : rows_)
            if (field == label) name->setVisible(!text.isEmpty());
        label->setVisible(!text.isEmpty());
    };
    put(kinds_, facts.count == 0 ? say(L"没有选择对象：新对象的属性") : facts.kinds.join('\n'));
    put(weight_, facts.weight && facts.count > 0 ? weightName(*facts.weight) : QString());
    put(length_, number(facts.length));
    put(area_, number(facts.area));
    put(features_, facts.features.join('\n'));
}

QString PropertiesPanel::factsShown() const {
    QStringList lines;
    for (const QLabel* label : {kinds_, weight_, length_, area_, features_}) lines += label->text();
    return lines.join('\n');
}

void PropertiesPanel::change(std::function<int()> ofSelection, std::function<void()> ofNewObjects) {
    if (!edit || !database_) return;
    const bool selected = !selection_.empty();
    edit(L"PROPERTIES", [this, selected, ofSelection, ofNewObjects] {
        if (!selected) return ofNewObjects();
        const int locked = ofSelection();
        if (locked > 0 && complain)
            complain(say(L"锁定图层上的 %1 个对象没有改变。", QString::number(locked)));
    });
}

void PropertiesPanel::chooseLayer(int row) {
    const AcDbObjectId layer = layerRows_[size_t(row)].id;
    change([ids = selection_, layer] { return moveToLayer(ids, layer); },
           [this, layer] {
               const QString refused = makeLayerCurrent(layer);
               if (!refused.isEmpty() && complain) complain(refused);
           });
}

void PropertiesPanel::chooseColor(int row) {
    AcCmColor color;
    if (row < int(colors_.size())) {
        color = colors_[size_t(row)];
    } else if (const auto asked = askColor(this, colors_.back())) {
        color = *asked;
    } else {
        return show(database_, selection_);
    }
    change([ids = selection_, color] { return setColor(ids, color); },
           [this, color] { database_->setCecolor(color); });
}

void PropertiesPanel::chooseLinetype(int row) {
    const AcDbObjectId linetype = linetypeRows_[size_t(row)].id;
    change([ids = selection_, linetype] { return setLinetype(ids, linetype); },
           [this, linetype] { database_->setCeltype(linetype); });
}

} // namespace desk
