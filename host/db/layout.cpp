// Layouts and who is current.
#include "host/db/layout.h"

#include "host/db/access.h"
#include "host/db/rows.h"
#include "host/os/text.h"

HOST_DEFINE_CLASS(AcDbLayout, AcDbObject, L"LAYOUT")
HOST_DEFINE_CLASS(AcDbLayoutManager, AcRxObject, L"")

Acad::ErrorStatus AcDbLayout::setLayoutName(const ACHAR* name) {
    if (!name || !*name) return Acad::eInvalidInput;
    if (auto es = willModify(); es != Acad::eOk) return es;
    name_ = name;
    return Acad::eOk;
}

Acad::ErrorStatus AcDbLayout::setBlockTableRecordId(AcDbObjectId id) {
    if (auto es = willModify(); es != Acad::eOk) return es;
    block_ = id;
    return Acad::eOk;
}

bool AcDbLayout::inGroup(const host::Group& group, host::ReadContext& context) {
    if (context.subclass == "AcDbPlotSettings") return plotSettings_.append(group), true;
    if (!context.within("AcDbLayout")) return false;
    switch (group.code) {
    case 1: name_ = group.wide(); return true;
    case 71: tabOrder_ = int(group.integer); return true;
    case 330: block_ = context.id(group.handle()); return true;
    default: return false;
    }
}

void AcDbLayout::outGroups(host::GroupWriter& writer) const {
    writer.subclass("AcDbPlotSettings");
    for (const auto group : plotSettings_) writer.write(group);
    writer.subclass("AcDbLayout");
    writer.text(1, name_);
    writer.integer(71, tabOrder_);
    writer.handle(330, block_);
}

namespace {

// A4 lying, millimetres, plotted as displayed at a scale that fits.
constexpr const char* kPlotSettings =
    "1||2|none_device|4|ISO_A4_(210.00_x_297.00_MM)|6||40|7.5|41|20|42|7.5|43|20|44|210|45|297|46|0|47|0|"
    "48|0|49|0|140|0|141|0|142|1|143|1|72|1|73|0|74|5|7||75|16|147|1|76|0|77|2|78|300|148|0|149|0";
constexpr const char* kModelFlags = "70|1712";
constexpr const char* kSheetFlags = "70|688";
constexpr const char* kLayout =
    "100|AcDbLayout|70|1|10|0|20|0|11|420|21|297|12|0|22|0|32|0|14|0|24|0|34|0|15|0|25|0|35|0|146|0|"
    "13|0|23|0|33|0|16|1|26|0|36|0|17|0|27|1|37|0|76|0";

} // namespace

AcDbLayout* AcDbLayout::make(const std::wstring& name, int tabOrder, AcDbObjectId block) {
    auto* layout = new AcDbLayout;
    layout->name_ = name;
    layout->tabOrder_ = tabOrder;
    layout->block_ = block;
    layout->plotSettings_ = host::groupsOf(kPlotSettings);
    layout->plotSettings_.append(host::groupsOf(tabOrder == 0 ? kModelFlags : kSheetFlags));
    layout->tailForWrite().kept = host::groupsOf(kLayout);
    return layout;
}

AcDbObjectId AcDbLayoutManager::getActiveLayoutBTRId() const {
    const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    return database ? database->currentSpaceId() : AcDbObjectId();
}

std::wstring AcDbLayoutManager::findActiveLayout(bool allowModel) const {
    const AcDbDatabase* database = acdbHostApplicationServices()->workingDatabase();
    if (!database) return {};
    const AcDbObjectId space = allowModel ? database->currentSpaceId() : database->paperSpaceId();
    const auto* record = host::peek<AcDbBlockTableRecord>(space);
    const auto* layout = record ? host::peek<AcDbLayout>(record->getLayoutId()) : nullptr;
    return layout ? layout->layoutName() : std::wstring();
}
