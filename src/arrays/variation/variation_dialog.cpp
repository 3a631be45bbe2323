// Combo boxes, group boxes and the graph at work together.
#include "arrays/variation/variation_dialog.h"

#include <algorithm>

#include "core/dialog_language.h"

namespace corvane {
namespace {

constexpr const wchar_t* kGroupCaptions[2] = {L"大小变异", L"间距变异"};
constexpr int kGroups[] = {kSizeGroup, kSpacingGroup};

bool isGroupBox(HWND window) {
    wchar_t name[64] = {};
    GetClassNameW(window, name, 64);
    return host::equalNoCase(name, L"Button") &&
           (DWORD(GetWindowLongW(window, GWL_STYLE)) & BS_TYPEMASK) == BS_GROUPBOX;
}

} // namespace

BEGIN_MESSAGE_MAP(CVariationDialog, CMyAcUiDialog)
ON_WM_DRAWITEM()
ON_MESSAGE(kOneCurveGraph.message, &CVariationDialog::OnGraphChanged)
ON_MESSAGE(kMoreCurvesGraph.message, &CVariationDialog::OnGraphChanged)
ON_MESSAGE(kGroupChosen, &CVariationDialog::OnGroupChosen)
END_MESSAGE_MAP()

CVariationDialog::CVariationDialog(UINT templateId, CWnd* parent, const GraphTraits& traits,
                                   const VariationControls& controls)
    : CMyAcUiDialog(templateId, parent), controls_(controls), graph_(traits) {}

BOOL CVariationDialog::OnInitDialog() {
    CMyAcUiDialog::OnInitDialog();
    fillKinds();
    takeOverGroupBoxes();
    placeGraph();
    showActiveGroup();
    return TRUE;
}

CComboBox* CVariationDialog::kindBox(int group) const {
    return static_cast<CComboBox*>(GetDlgItem(int(controls_.kind[group])));
}
CSliderCtrl* CVariationDialog::slider(int group, int end) const {
    return static_cast<CSliderCtrl*>(GetDlgItem(int(controls_.slider[group][end])));
}

void CVariationDialog::fillKinds() {
    for (const int group : kGroups) {
        CComboBox* box = kindBox(group);
        if (!box) continue;
        box->ResetContent();
        for (const wchar_t* label : kVariationLabels) box->AddString(Translate(label));
        box->SetCurSel(std::clamp(curves[group].kind, 0, kVariationKinds - 1));
    }
}

void CVariationDialog::placeGraph() {
    CRect place;
    for (const int group : kGroups)
        for (const int end : {0, 1}) {
            CSliderCtrl* one = slider(group, end);
            if (!one) continue;
            CRect r;
            one->GetWindowRect(r);
            ScreenToClient(r);
            place.UnionRect(place, r);
            one->SetRange(1, int(kGraphTop));
            one->SetPos(int(ClampNumber(end ? curves[group].end : curves[group].start, 1, kGraphTop) + 0.5));
            one->ShowWindow(SW_HIDE);
            one->EnableWindow(FALSE);
        }
    graphMade_ = MakeGraph(place);
}

bool CVariationDialog::MakeGraph(const CRect& place) { return graph_.CreateIn(this, place, scale); }

void CVariationDialog::takeOverGroupBoxes() {
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT)) {
        if (!isGroupBox(child)) continue;
        const std::wstring caption = WindowText(child);
        for (const int group : kGroups)
            if (caption == kGroupCaptions[group] || caption == Translate(kGroupCaptions[group]).str())
                boxes_[group].TakeOver(child, VariationGroup(group));
    }
}

void CVariationDialog::showActiveGroup() {
    if (graphMade_) graph_.SetCurve(curves[active_], gain, kGroupColors[active_].background);
    for (const int group : kGroups) {
        boxes_[group].SetActive(group == active_);
        if (CComboBox* box = kindBox(group)) box->Invalidate();
    }
}

void CVariationDialog::readSliders() {
    for (const int group : kGroups) {
        if (CSliderCtrl* start = slider(group, 0)) curves[group].start = start->GetPos();
        if (CSliderCtrl* end = slider(group, 1)) curves[group].end = end->GetPos();
    }
}

void CVariationDialog::ReadVariation() {
    if (graphMade_) {
        curves[active_] = graph_.Curve();
        gain = graph_.Gain();
    } else {
        readSliders();
    }
    for (const int group : kGroups)
        if (CComboBox* box = kindBox(group)) curves[group].kind = std::max(0, box->GetCurSel());
}

LRESULT CVariationDialog::OnGraphChanged(WPARAM, LPARAM) {
    ReadVariation();
    OnVariationChanged();
    return 0;
}

LRESULT CVariationDialog::OnGroupChosen(WPARAM group, LPARAM) {
    if (int(group) == active_ || group > kSpacingGroup) return 0;
    active_ = VariationGroup(group);
    showActiveGroup();
    return 0;
}

BOOL CVariationDialog::OnCommand(WPARAM wParam, LPARAM lParam) {
    const UINT id = LOWORD(wParam);
    if (HIWORD(wParam) == CBN_SELCHANGE && (id == controls_.kind[0] || id == controls_.kind[1])) {
        ReadVariation();
        showActiveGroup();
        OnVariationChanged();
        return TRUE;
    }
    return CMyAcUiDialog::OnCommand(wParam, lParam);
}

void CVariationDialog::OnDrawItem(int id, LPDRAWITEMSTRUCT draw) {
    for (const int group : kGroups)
        if (draw->CtlType == ODT_COMBOBOX && draw->CtlID == controls_.kind[group])
            return DrawVariationItem(*draw, VariationGroup(group), group == active_);
    CMyAcUiDialog::OnDrawItem(id, draw);
}

} // namespace corvane
