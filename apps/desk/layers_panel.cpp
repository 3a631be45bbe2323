// Rows with check boxes, and what a click on them changes.
#include "apps/desk/layers_panel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QMenu>
#include <QPushButton>
#include <QVBoxLayout>

#include "apps/desk/colors.h"
#include "apps/desk/texts.h"

namespace desk {
namespace {

constexpr int kWidest = 150; // pixels of a column: names may be long

} // namespace

LayersPanel::LayersPanel(QWidget* parent)
    : QWidget(parent), list_(new QTreeWidget), new_(new QPushButton), current_(new QPushButton) {
    setObjectName("layersPanel");
    list_->setRootIsDecorated(false);
    list_->setUniformRowHeights(true);
    list_->setAllColumnsShowFocus(true);
    list_->setEditTriggers(QAbstractItemView::EditKeyPressed); // double clicks have meanings of their own
    list_->setColumnCount(linetypeColumn + 1);
    list_->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    list_->header()->setStretchLastSection(true);
    list_->header()->setMinimumSectionSize(24);
    list_->header()->setMaximumSectionSize(kWidest);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(new_);
    buttons->addWidget(current_);
    buttons->addStretch();
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(4, 4, 4, 4);
    all->addWidget(list_);
    all->addLayout(buttons);
    QObject::connect(new_, &QPushButton::clicked, this, [this] { addOne(); });
    QObject::connect(current_, &QPushButton::clicked, this, [this] { makeCurrent(); });
    QObject::connect(list_, &QTreeWidget::itemChanged, this,
                     [this](QTreeWidgetItem* item, int column) { changed(item, column); });
    QObject::connect(list_, &QTreeWidget::itemDoubleClicked, this, [this](QTreeWidgetItem*, int column) {
        if (column == nameColumn) makeCurrent();
    });
    QObject::connect(list_, &QTreeWidget::itemClicked, this, [this](QTreeWidgetItem* item, int column) {
        if (column == colorColumn) chooseColor(item);
    });
    retranslate();
}

void LayersPanel::retranslate() {
    list_->setHeaderLabels(
        {say(L"图层"), say(L"开"), say(L"冻结"), say(L"锁定"), say(L"颜色"), say(L"线型")});
    new_->setText(say(L"新图层"));
    new_->setToolTip(say(L"建立新图层；按 F2 改名"));
    current_->setText(say(L"设为当前"));
    rows_.clear(); // names of colours are in the language, too
    show(database_);
}

void LayersPanel::show(AcDbDatabase* database) {
    const std::vector<LayerRow> rows = database ? layerRows(*database) : std::vector<LayerRow>();
    if (database == database_ && rows == rows_) return;
    filling_ = true;
    database_ = database;
    rows_ = rows;
    while (list_->topLevelItemCount() > int(rows.size())) delete list_->takeTopLevelItem(int(rows.size()));
    while (list_->topLevelItemCount() < int(rows.size())) new QTreeWidgetItem(list_);
    for (size_t i = 0; i < rows.size(); ++i) fill(list_->topLevelItem(int(i)), rows[i]);
    filling_ = false;
}

void LayersPanel::fill(QTreeWidgetItem* item, const LayerRow& row) {
    const auto check = [&](Column column, bool on) {
        item->setCheckState(column, on ? Qt::Checked : Qt::Unchecked);
    };
    item->setFlags(item->flags() | Qt::ItemIsEditable | Qt::ItemIsUserCheckable);
    item->setText(nameColumn, row.name);
    QFont font = list_->font();
    font.setBold(row.current);
    item->setFont(nameColumn, font);
    item->setToolTip(nameColumn, row.current ? say(L"当前图层") : say(L"双击设为当前图层"));
    check(onColumn, row.on);
    check(frozenColumn, row.frozen);
    check(lockedColumn, row.locked);
    item->setText(colorColumn, colorName(row.color));
    item->setIcon(colorColumn, colorSwatch(row.color));
    item->setText(linetypeColumn, row.linetype);
}

const LayerRow* LayersPanel::rowOf(const QTreeWidgetItem* item) const {
    const int at = item ? list_->indexOfTopLevelItem(const_cast<QTreeWidgetItem*>(item)) : -1;
    return at >= 0 && at < int(rows_.size()) ? &rows_[size_t(at)] : nullptr;
}

// Whatever came of it, the rows show what the drawing holds afterwards.
void LayersPanel::change(std::function<QString()> work) {
    if (!edit) return;
    edit(L"LAYER", [this, work = std::move(work)] {
        const QString refused = work();
        rows_.clear();
        show(database_);
        if (!refused.isEmpty() && complain) complain(refused);
    });
}

void LayersPanel::changed(QTreeWidgetItem* item, int column) {
    const LayerRow* row = rowOf(item);
    if (filling_ || !row) return;
    const AcDbObjectId id = row->id;
    const bool on = item->checkState(column) == Qt::Checked;
    if (column == nameColumn && item->text(nameColumn) != row->name)
        change([id, name = item->text(nameColumn)] { return renameLayer(id, name); });
    if (column == onColumn && on != row->on)
        change([id, on] { return switchLayer(id, LayerSwitch::on, on); });
    if (column == frozenColumn && on != row->frozen)
        change([id, on] { return switchLayer(id, LayerSwitch::frozen, on); });
    if (column == lockedColumn && on != row->locked)
        change([id, on] { return switchLayer(id, LayerSwitch::locked, on); });
}

void LayersPanel::chooseColor(QTreeWidgetItem* item) {
    const LayerRow* row = rowOf(item);
    if (!row) return;
    const AcDbObjectId id = row->id;
    const auto choose = [this, id](const AcCmColor& color) {
        change([id, color] { return colorLayer(id, color), QString(); });
    };
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    for (const AcCmColor& color : offeredColors(false))
        menu->addAction(colorSwatch(color), colorName(color), this, [choose, color] { choose(color); });
    menu->addAction(say(L"其他颜色..."), this, [this, choose, now = row->color] {
        if (const auto color = askColor(this, now)) choose(*color);
    });
    menu->popup(list_->viewport()->mapToGlobal(list_->visualItemRect(item).bottomLeft()) +
                QPoint(list_->header()->sectionPosition(colorColumn), 0));
}

void LayersPanel::addOne() {
    change([this] {
        const AcDbObjectId id = database_ ? addLayer(*database_) : AcDbObjectId();
        rows_.clear();
        show(database_);
        for (int i = 0; i < list_->topLevelItemCount(); ++i)
            if (rows_[size_t(i)].id == id) list_->setCurrentItem(list_->topLevelItem(i));
        return QString();
    });
}

void LayersPanel::makeCurrent() {
    const LayerRow* row = rowOf(list_->currentItem());
    if (row && !row->current) change([id = row->id] { return makeLayerCurrent(id); });
}

} // namespace desk
