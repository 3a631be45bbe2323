// Layouts: the model's and the sheets', and who is current.
#pragma once
#include "host/db/object.h"

class AcDbLayout : public AcDbObject {
    HOST_DB_CLASS(AcDbLayout)
public:
    const std::wstring& layoutName() const { return name_; }
    Acad::ErrorStatus getLayoutName(const ACHAR*& name) const { return name = name_.c_str(), Acad::eOk; }
    Acad::ErrorStatus setLayoutName(const ACHAR* name);
    int tabOrder() const { return tabOrder_; }
    AcDbObjectId getBlockTableRecordId() const { return block_; }
    Acad::ErrorStatus setBlockTableRecordId(AcDbObjectId id);

    bool inGroup(const host::Group& group, host::ReadContext& context) override;
    void outGroups(host::GroupWriter& writer) const override;
    std::string dxfName() const override { return "LAYOUT"; }
    // A layout of a new drawing, with plain page settings.
    static AcDbLayout* make(const std::wstring& name, int tabOrder, AcDbObjectId block);

private:
    std::wstring name_;
    int tabOrder_ = 0;
    AcDbObjectId block_;
    host::GroupList plotSettings_; // the AcDbPlotSettings subclass as it came
};

class AcDbLayoutManager : public AcRxObject {
    ACRX_DECLARE_MEMBERS(AcDbLayoutManager)
public:
    // The record of the working database's active layout: a sheet's when TILEMODE is 0, else the model's.
    AcDbObjectId getActiveLayoutBTRId() const;
    std::wstring findActiveLayout(bool allowModel = true) const;
};
