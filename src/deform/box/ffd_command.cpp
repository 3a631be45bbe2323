// The opening of CVFFD, and its end.
#include "deform/box/ffd_command.h"

#include <algorithm>

#include "core/messages.h"
#include "core/selection.h"
#include "deform/box/ffd.h"
#include "deform/box/ffd_dialog.h"
#include "deform/cage/cage_loop.h"

namespace corvane {
namespace {

constexpr wchar_t kKinds[] = L"LINE POLYLINE LWPOLYLINE ARC CIRCLE ELLIPSE SPLINE 3DFACE 3DSOLID SURFACE "
                             L"PLANESURFACE TEXT MTEXT INSERT";
constexpr int kUsualLevel = 6, kHighestLevel = 10;

void askCounts(deform::FFDCage& cage) {
    deform::AxisCounts counts = cage.counts();
    PrintText(TranslateFormat(L"\n当前控制点数量：%dx%dx%d（默认3x3x3）", counts[0], counts[1], counts[2]));
    if (!AskYesNo(L"\n是否设置控制点数量？[是(Y)/否(N)] <N>: ", nullptr, false)) return;
    if (!deform::AskLatticeCounts(counts)) return;
    cage.setCounts(counts);
    PrintText(TranslateFormat(L"\n控制点数量已设置为：%dx%dx%d", counts[0], counts[1], counts[2]));
}

void askSubdivision(deform::FFDCage& cage) {
    if (!AskYesNo(L"\n是否自动细分节点？[是(Y)/否(N)] <N>: ", nullptr, false)) {
        cage.setSubdivision({false, 1});
        return PrintLine(L"\n不细分节点，仅对原有节点进行变形。");
    }
    short level = kUsualLevel;
    acedInitGet(RSG_NOZERO | RSG_NONEG, nullptr);
    if (acedGetShort(Translate(L"\n请输入细分精度(1-10级) <6>: "), &level) != RTNORM) level = kUsualLevel;
    const int held = std::clamp<int>(level, 1, kHighestLevel);
    cage.setSubdivision({true, held});
    PrintText(TranslateFormat(L"\n细分精度：%d 级", held));
}

} // namespace

void FreeFormDeformCommand() {
    const CommandFrame frame;
    const SelectionSet set = SelectionSet::AskKinds(L"\n请选择要进行FFD变形的实体：", kKinds,
                                                    L"\n未选中任何实体。", Purpose::change);
    if (set.empty()) return;
    PrintText(TranslateFormat(L"\n已选中 %d 个实体。", int(set.length())));
    std::vector<AcDbObjectId> ids;
    for (long i = 0; i < set.length(); ++i) ids.push_back(set.at(i));
    deform::FFDCage cage(std::move(ids));
    if (!cage.FitBox()) return PrintLine(L"\n无法计算实体包围盒。");
    askCounts(cage);
    askSubdivision(cage);
    cage.SampleEntities();
    cage.BuildLattice();
    PrintText(TranslateFormat(L"\nFFD Box 控制网格已创建，共 %d 个控制点。", cage.size()));
    PrintText(TranslateFormat(L"\n已采样 %d 个实体的顶点数据。", int(cage.state().records.size())));

    const bool deformed = deform::RunCageLoop(cage).deformed;
    PrintLine(deformed ? L"\nFFD自由变形完成。" : L"\nFFD变形已取消。");
}

} // namespace corvane
