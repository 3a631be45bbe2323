// The rows of the command table, and their registration with the host.
#include "core/command_table.h"

#include "aids/insert/insert_commands.h"
#include "arrays/one_curve/one_curve_commands.h"
#include "assoc/blend/blend_commands.h"
#include "core/about.h"
#include "core/messages.h"
#include "core/sysvar_stack.h"
#include "curves/conversion/conversion_commands.h"
#include "curves/conversion/import_commands.h"
#include "curves/division/division_commands.h"
#include "curves/reports/report_commands.h"
#include "curves/smoothing/smoothing_commands.h"
#include "deform/box/ffd_command.h"
#include "raster/vectorizing/outline_dialog.h"
#include "scatter/random/scatter_commands.h"

namespace corvane {
namespace {

// clang-format off
constexpr CommandEntry kTable[] = {
    {L"SCVN_ABOUT", L"ABOUT_CVANE", ACRX_CMD_MODAL, Section::host, AboutCommand, L"关于对话框及语言选择"},
    {L"CORVANE", L"CVANE", ACRX_CMD_MODAL, Section::host, LoadMenuFile, L"加载菜单文件并显示菜单"},
    {L"SCVN_PLYH", L"PLYH", ACRX_CMD_MODAL, Section::curves, ThinPolylinesCommand, L"在允许误差内精简并理顺多段线"},
    {L"SCVN_PLYH2", L"PLYH2", ACRX_CMD_MODAL, Section::curves, RemoveDuplicatesCommand, L"就地删除重复顶点"},
    {L"SCVN_PLYH3", L"PLYH3", ACRX_CMD_MODAL, Section::curves, SplineFitCommand, L"将多段线均匀重采样为三次样条拟合多段线"},
    {L"SCVN_QXTY", L"QXTY", ACRX_CMD_MODAL, Section::curves, ProjectCurvesCommand, L"将曲线投影到世界坐标系XY平面"},
    {L"SCVN_PLLIST", L"PLLIST", ACRX_CMD_MODAL, Section::curves, ListVerticesCommand, L"多段线顶点报表"},
    {L"SCVN_CircleLIST", L"CLIST", ACRX_CMD_MODAL, Section::curves, ListCirclesCommand, L"圆报表"},
    {L"SCVN_EllipseLIST", L"ELLLIST", ACRX_CMD_MODAL, Section::curves, ListEllipsesCommand, L"椭圆报表"},
    {L"SCVN_ARCLIST", L"ARCLIST", ACRX_CMD_MODAL, Section::curves, ListArcsCommand, L"圆弧报表"},
    {L"SCVN_plcount2", L"CVplcount2", ACRX_CMD_MODAL, Section::curves, CountLengthsCommand, L"按图层和类型统计曲线数量与总和"},
    {L"SCVN_ckg", L"CVckg", ACRX_CMD_MODAL, Section::curves, MeasureSizesCommand, L"带标记的长度与面积报表"},
    {L"SCVN_spline2pline", L"s2p", ACRX_CMD_MODAL, Section::curves, SplineToPolylineCommand, L"样条曲线转多段线"},
    {L"SCVN_SPL2ARC", L"SPL2ARC", ACRX_CMD_MODAL, Section::curves, CurvesToArcsCommand, L"曲线转圆弧多段线，直接或高阶拟合"},
    {L"SCVN_pline2spline", L"p2s", ACRX_CMD_MODAL, Section::curves, CurvesToSplinesCommand, L"多段线及其他曲线转样条曲线"},
    {L"SCVN_all2polyline", L"all2polyline", ACRX_CMD_MODAL, Section::curves, CurvesToPolylinesCommand, L"任意曲线按精度转多段线"},
    {L"SCVN_PLBH", L"PLBH", ACRX_CMD_MODAL, Section::curves, MarkVerticesCommand, L"标记并编号曲线顶点"},
    {L"SCVN_PLReverse", L"PLDD", ACRX_CMD_MODAL, Section::curves, ReverseCurvesCommand, L"反转曲线方向"},
    {L"SCVN_PLDevide", L"PLDF", ACRX_CMD_MODAL, Section::curves, DivideByCountCommand, L"等分曲线"},
    {L"SCVN_DevideLine1", L"DevideLine1", ACRX_CMD_MODAL, Section::curves, ThreadOneCurveCommand, L"同一曲线等分点连线"},
    {L"SCVN_DevideLine2", L"DevideLine2", ACRX_CMD_MODAL, Section::curves, ThreadOneRingCommand, L"绕一条闭合曲线等分连线"},
    {L"SCVN_DevideLine3", L"DevideLine3", ACRX_CMD_MODAL, Section::curves, ThreadTwoRingsCommand, L"两条闭合曲线间等分连线"},
    {L"SCVN_plineDevideByDist", L"PLDJDF", ACRX_CMD_MODAL, Section::curves, DivideByDistanceCommand, L"按固定距离等分曲线"},
    {L"SCVN_HatchBound", L"CHBJ", ACRX_CMD_MODAL, Section::curves, nullptr, L"填充边界转多段线"},
    {L"SCVN_Text2PL", L"txt2PL", ACRX_CMD_MODAL, Section::curves, TextOutlinesCommand, L"通过图元文件将文字转为轮廓"},
    {L"SCVN_PLGXK", L"PLGXK", ACRX_CMD_MODAL, Section::curves, PolylineWidthCommand, L"设置多段线宽度"},
    {L"SCVN_PLCLOSE", L"PLCLOSE", ACRX_CMD_MODAL, Section::curves, ClosePolylinesCommand, L"闭合多段线"},
    {L"SCVN_PLOPEN", L"PLOPEN", ACRX_CMD_MODAL, Section::curves, OpenPolylinesCommand, L"打开多段线"},
    {L"SCVN_PLOFFSET", L"PLOFFSET", ACRX_CMD_MODAL, Section::curves, nullptr, L"偏移曲线，可设一个或多个距离"},
    {L"SCVN_pl2polySolid", L"pl2ddt", ACRX_CMD_MODAL, Section::curves, nullptr, L"多段线转为给定宽度和高度的实体"},
    {L"SCVN_pl2circleBar", L"pl2circleBar", ACRX_CMD_MODAL, Section::curves, nullptr, L"多段线转圆杆"},
    {L"SCVN_pl2circle", L"pl2circle", ACRX_CMD_MODAL, Section::curves, nullptr, L"沿多段线布置圆"},
    {L"SCVN_pl2outline", L"pl2outline", ACRX_CMD_MODAL, Section::curves, nullptr, L"多段线转给定宽度的轮廓"},
    {L"SCVN_pl2doubleLine", L"pl2doubleLine", ACRX_CMD_MODAL, Section::curves, nullptr, L"多段线转双线"},
    {L"SCVN_PLRNDArray", L"PLRNDArray", ACRX_CMD_MODAL, Section::associative, nullptr, L"曲线随机交错"},
    {L"SCVN_rndScatter1", L"rndScatter1", ACRX_CMD_MODAL, Section::scatter, ScatterOnCurvesCommand, L"沿曲线随机散布"},
    {L"SCVN_rndScatter2", L"rndScatter2", ACRX_CMD_MODAL, Section::scatter, ScatterInRegionsCommand, L"在边界内随机散布"},
    {L"SCVN_PLINT", L"PLINT", ACRX_CMD_MODAL, Section::associative, nullptr, L"曲线间关联插值"},
    {L"SCVN_PLARRAY", L"PLARR", ACRX_CMD_MODAL, Section::associative, nullptr, L"曲线交错阵列"},
    {L"SCVN_PLBLENDS", L"PLBLENDS", ACRX_CMD_MODAL, Section::associative, BlendCommand, L"曲线间关联渐变"},
    {L"SCVN_PLMAP4", L"PLMAP4", ACRX_CMD_MODAL, Section::deformation, nullptr, L"四角映射"},
    {L"SCVN_PLINTERSECT", L"PLJD", ACRX_CMD_MODAL, Section::curves, IntersectCurvesCommand, L"查找并标记多条曲线的交点"},
    {L"SCVN_PLINTERSECT1", L"PLJD1", ACRX_CMD_MODAL, Section::curves, IntersectOneCurveCommand, L"查找一条曲线的自交点"},
    {L"SCVN_PLAFFECT", L"PLAFFECT", ACRX_CMD_MODAL, Section::deformation, nullptr, L"影响曲线变形"},
    {L"SCVN_plAffectMoveX", L"plAffectMoveX", ACRX_CMD_MODAL, Section::deformation, nullptr, L"影响曲线，移动方式"},
    {L"SCVN_plAffClick", L"plAffClick", ACRX_CMD_MODAL, Section::deformation, nullptr, L"影响曲线，点选方式"},
    {L"SCVN_TXTZB2PL", L"ZB2PL", ACRX_CMD_MODAL, Section::curves, CoordinateFileCommand, L"由坐标文本文件生成多段线"},
    {L"SCVN_PL2OLD", L"PL2OLD", ACRX_CMD_MODAL, Section::curves, LightToOldCommand, L"轻量多段线转旧式多段线"},
    {L"SCVN_OLDPL2LW", L"OLDPL2LW", ACRX_CMD_MODAL, Section::curves, OldToLightCommand, L"旧式多段线转轻量多段线"},
    {L"SCVN_linkLine00", L"linkLine00", ACRX_CMD_MODAL, Section::associative, nullptr, L"0度连接线"},
    {L"SCVN_linkLine90", L"linkLine90", ACRX_CMD_MODAL, Section::associative, nullptr, L"90度连接线"},
    {L"SCVN_VerticalInsert", L"VINS", ACRX_CMD_MODAL, Section::insert, InsertAcrossCurveCommand, L"垂直于曲线插入图块"},
    {L"SCVN_insert2p", L"insert2p", ACRX_CMD_MODAL, Section::insert, InsertByTwoPointsCommand, L"两点插入图块"},
    {L"SCVN_Voronoi", L"VORO", ACRX_CMD_MODAL, Section::scatter, nullptr, L"泰森多边形"},
    {L"SCVN_linkLineAuto", L"linkLineAuto", ACRX_CMD_MODAL, Section::associative, nullptr, L"自动角度连接线"},
    {L"SCVN_INOFFSET", L"INOFFSET", ACRX_CMD_MODAL, Section::curves, nullptr, L"向内连续偏移直至无法偏移"},
    {L"SCVN_makeOutline", L"makeOutline", ACRX_CMD_MODAL, Section::curves, nullptr, L"选中对象的外轮廓"},
    {L"SCVN_VECTORIZE", L"R2V", ACRX_CMD_MODAL, Section::raster, VectorizeCommand, L"光栅图像转多段线"},
    {L"SCVN_ImageHoleNet", L"txwk", ACRX_CMD_MODAL, Section::raster, nullptr, L"图像孔网"},
    {L"SCVN_imgAffect", L"imgAffect", ACRX_CMD_MODAL, Section::raster, nullptr, L"图像影响变换"},
    {L"SCVN_ParaHatch", L"ParaHatch", ACRX_CMD_MODAL, Section::raster, nullptr, L"光栅浮雕线"},
    {L"SCVN_TrimBySurface", L"TrimBySurface", ACRX_CMD_MODAL, Section::scatter, nullptr, L"按曲面修剪"},
    {L"SCVN_ArrayAlignCurve", L"AAC", ACRX_CMD_MODAL, Section::arrays, ArrayAlongCurveCommand, L"沿一条曲线阵列"},
    {L"SCVN_ArrayAlignCurve2", L"AAC2", ACRX_CMD_MODAL, Section::arrays, ArrayLikeBlockCommand, L"由已有阵列块沿一条曲线阵列"},
    {L"SCVN_ArrayAlignDoubleCurve", L"AADC", ACRX_CMD_MODAL, Section::arrays, nullptr, L"沿两条曲线阵列"},
    {L"SCVN_ArrayAlignThreeCurve", L"AATC", ACRX_CMD_MODAL, Section::arrays, nullptr, L"沿三条曲线阵列"},
    {L"SCVN_SplinAlignMultiCurve", L"CVBZ", ACRX_CMD_MODAL, Section::arrays, nullptr, L"曲线间编织"},
    {L"SCVN_BatchLine", L"BLine", ACRX_CMD_MODAL, Section::aids, nullptr, L"批量画线"},
    {L"SCVN_BatchModify", L"BatchModify", ACRX_CMD_MODAL, Section::aids, nullptr, L"批量修改"},
    {L"SCVN_WaveAlignCurve", L"WAC", ACRX_CMD_MODAL, Section::arrays, nullptr, L"沿曲线波浪"},
    {L"SCVN_CurveText", L"UCT", ACRX_CMD_MODAL, Section::text, nullptr, L"沿曲线文字"},
    {L"SCVN_NumberPL", L"NumberPL", ACRX_CMD_MODAL, Section::text, nullptr, L"沿多段线编号"},
    {L"SCVN_tileRigidity", L"tileRig", ACRX_CMD_MODAL, Section::scatter, nullptr, L"曲面刚性贴片"},
    {L"SCVN_CurveTransform", L"UCTR", ACRX_CMD_MODAL, Section::deformation, nullptr, L"沿曲线变形"},
    {L"SCVN_AffectDeform", L"AffectDeform", ACRX_CMD_MODAL, Section::deformation, nullptr, L"干涉变形"},
    {L"SCVN_PressDeform", L"PressDeform", ACRX_CMD_MODAL, Section::deformation, nullptr, L"球面挤压变形"},
    {L"SCVN_mcopy", L"mcopy", ACRX_CMD_MODAL, Section::insert, MultipleCopyCommand, L"多次复制"},
    {L"SCVN_CloneFrameCurve", L"UCFC", ACRX_CMD_MODAL, Section::deformation, nullptr, L"沿框架曲线克隆"},
    {L"SCVN_CloneFrameCurve2", L"UCFC2", ACRX_CMD_MODAL, Section::deformation, nullptr, L"沿框架曲线克隆，第二种方式"},
    {L"SCVN_Clone2DOnScreen", L"Clone2D", ACRX_CMD_MODAL, Section::deformation, nullptr, L"屏幕平面克隆"},
    {L"SCVN_superPurge", L"superPurge", ACRX_CMD_MODAL, Section::aids, nullptr, L"深度清理图形"},
    {L"SCVN_debugPrint", L"CVdebugPrint", ACRX_CMD_MODAL, Section::host, DebugPrintCommand, L"调试打印开关"},
    {L"SCVN_SoftModify", L"SoftModify", ACRX_CMD_MODAL, Section::deformation, nullptr, L"柔性修改"},
    {L"SCVN_SoftModifyPoint", L"SoftModifyPoint", ACRX_CMD_MODAL, Section::deformation, nullptr, L"点的柔性修改"},
    {L"SCVN_Zzero", L"CVG0", ACRX_CMD_MODAL, Section::aids, nullptr, L"将对象Z坐标归零"},
    {L"SCVN_whiteAll", L"CVwhiteAll", ACRX_CMD_MODAL, Section::aids, nullptr, L"所有对象变白并记住原颜色"},
    {L"SCVN_restoreColorAll", L"CVrestoreColorAll", ACRX_CMD_MODAL, Section::aids, nullptr, L"恢复记住的颜色"},
    {L"SCVN_restoreColorLayer", L"CVrestoreColorLayer", ACRX_CMD_MODAL, Section::aids, nullptr, L"恢复某一图层上的颜色"},
    {L"SCVN_ssRecord2", L"SSR", ACRX_CMD_TRANSPARENT, Section::aids, nullptr, L"选择集记忆"},
    {L"SCVN_ssRecord", L"CVXZJL", ACRX_CMD_TRANSPARENT, Section::aids, nullptr, L"选择集记忆"},
    {L"SCVN_ssEasy", L"CVXZY", ACRX_CMD_TRANSPARENT, Section::aids, nullptr, L"便捷选择过滤"},
    {L"SCVN_ssEasy2", L"SSE", ACRX_CMD_TRANSPARENT, Section::aids, nullptr, L"便捷选择过滤"},
    {L"SCVN_randomSelect", L"CVSJXZ", ACRX_CMD_TRANSPARENT, Section::aids, nullptr, L"随机选取一部分"},
    {L"SCVN_SAC", L"CVSAC", ACRX_CMD_MODAL, Section::aids, nullptr, L"按样本选择"},
    {L"SCVN_YXSJ", L"CVYXSJ", ACRX_CMD_MODAL, Section::aids, nullptr, L"按样本选择"},
    {L"SCVN_align", L"CVDQ", ACRX_CMD_MODAL, Section::aids, nullptr, L"对齐对象"},
    {L"SCVN_distribute", L"CVFB", ACRX_CMD_MODAL, Section::aids, nullptr, L"分布对象"},
    {L"SCVN_GColor", L"CVSC", ACRX_CMD_MODAL, Section::aids, nullptr, L"渐变颜色"},
    {L"SCVN_FFD", L"CVFFD", ACRX_CMD_MODAL, Section::deformation, FreeFormDeformCommand, L"盒状自由变形"},
    {L"SCVN_FFDC", L"CVFFDC", ACRX_CMD_MODAL, Section::deformation, nullptr, L"柱状变形"},
    {L"SCVN_FORMULA", L"FORMULA", ACRX_CMD_MODAL, Section::text, nullptr, L"公式曲线"},
    {L"SCVN_DEMO1", L"SCVN_DEMO1", ACRX_CMD_MODAL, Section::host, OpenDemoLink<1>, L"打开演示链接1"},
    {L"SCVN_DEMO2", L"SCVN_DEMO2", ACRX_CMD_MODAL, Section::host, OpenDemoLink<2>, L"打开演示链接2"},
    {L"SCVN_DEMO3", L"SCVN_DEMO3", ACRX_CMD_MODAL, Section::host, OpenDemoLink<3>, L"打开演示链接3"},
    {L"SCVN_DEMO4", L"SCVN_DEMO4", ACRX_CMD_MODAL, Section::host, OpenDemoLink<4>, L"打开演示链接4"},
    {L"SCVN_DEMO5", L"SCVN_DEMO5", ACRX_CMD_MODAL, Section::host, OpenDemoLink<5>, L"打开演示链接5"},
    {L"SCVN_DEMO6", L"SCVN_DEMO6", ACRX_CMD_MODAL, Section::host, OpenDemoLink<6>, L"打开演示链接6"},
    {L"SCVN_DEMO7", L"SCVN_DEMO7", ACRX_CMD_MODAL, Section::host, OpenDemoLink<7>, L"打开演示链接7"},
    {L"SCVN_DEMO8", L"SCVN_DEMO8", ACRX_CMD_MODAL, Section::host, OpenDemoLink<8>, L"打开演示链接8"},
    {L"SCVN_autoChineseInput", L"HZONOFF", ACRX_CMD_MODAL, Section::aids, nullptr, L"自动输入法切换开关"},
    {L"CVCD", L"CVMENU", ACRX_CMD_MODAL, Section::host, LoadMenuFile, L"加载菜单文件并显示菜单"},
};
// clang-format on

// What a command without a handler does: it says so in one line.
void notBuilt() {
    std::wstring name;
    ReadSysVar(L"CMDNAMES", name);
    for (const CommandEntry& row : kTable)
        if (name == row.globalName) name = row.localName;
    PrintText(TranslateFormat(L"\n命令 %s 尚未完成。", name));
}

// Two commands are typed by people who have the module loaded already and don't load it; two rows are
// recorded twice, as existing installations expect them.
bool loadsOnDemand(const CommandEntry& row) {
    const std::wstring_view name = row.globalName;
    return name != L"SCVN_SAC" && name != L"SCVN_YXSJ";
}
bool recordedTwice(const CommandEntry& row) {
    const std::wstring_view name = row.globalName;
    return name == L"SCVN_plcount2" || name == L"SCVN_ckg";
}

} // namespace

std::span<const CommandEntry> CommandTable() { return kTable; }

size_t FirstChineseOnlyRow() {
    size_t row = 0;
    while (std::wstring_view(kTable[row].globalName) != L"SCVN_DEMO8") ++row;
    return row + 1;
}

void RegisterCommands() {
    acrxBuildClassHierarchy();
    const bool chinese = host::equalNoCase(ActiveLanguage().substr(0, 2), L"zh");
    const size_t count = chinese ? std::size(kTable) : FirstChineseOnlyRow();
    for (const CommandEntry& row : CommandTable().first(count)) {
        AcRxObject* registered = acrxSysRegistry()->at(ACAD_REGISTERED_COMMANDS);
        if (!registered || !registered->isA()->isDerivedFrom(AcEdCommandStack::desc())) continue;
        static_cast<AcEdCommandStack*>(registered)
            ->addCommand(kCommandGroup, row.globalName, row.localName, row.flag,
                         row.handler ? row.handler : notBuilt, nullptr, -1, AcRxResourceInstance(), nullptr);
    }
    PrintText(TranslateFormat(L"\n【Corvane】 V%s 已成功加载。", ProductVersionText()));
}

void RegisterDemandLoad() {
    constexpr int kOnProxyStartupAndCommand = 7;
    const host_door::RegistryBatch batch;
    AcadAppInfo application;
    application.setAppName(L"Corvane");
    application.setModuleName(acedGetAppName());
    application.setAppDesc(L"Corvane version 2.0");
    application.setLoadReason(kOnProxyStartupAndCommand);
    application.writeToRegistry();
    application.writeGroupNameToRegistry(kCommandGroup);
    for (const CommandEntry& row : kTable) {
        if (!loadsOnDemand(row)) continue;
        application.writeCommandNameToRegistry(row.globalName, row.localName);
        if (recordedTwice(row)) application.writeCommandNameToRegistry(row.globalName, row.localName);
    }
}

} // namespace corvane
