// The rows.
#include "apps/desk/window_actions.h"

namespace desk {
namespace {

// clang-format off
constexpr WindowAction kActions[] = {
    {"new", L"新建(&N)", "Ctrl+N", L"_.NEW"},
    {"open", L"打开(&O)...", "Ctrl+O", nullptr},
    {"save", L"保存(&S)", "Ctrl+S", L"_.QSAVE"},
    {"saveAs", L"另存为(&A)...", "Ctrl+Shift+S", nullptr},
    {"export", L"导出图片(&E)...", "Ctrl+E", nullptr},
    {"closeDrawing", L"关闭图形(&C)", "Ctrl+W", nullptr},
    {"quit", L"退出(&Q)", "Ctrl+Q", nullptr},
    {"undo", L"撤销(&U)", "Ctrl+Z", L"_.U"},
    {"redo", L"重做(&R)", "Ctrl+Y", L"_.REDO"},
    {"erase", L"删除(&E)", "Del", L"_.ERASE"},
    {"selectAll", L"全部选择(&A)", "Ctrl+A", nullptr},
    {"LINE", L"直线(&L)", "", L"_.LINE"},
    {"PLINE", L"多段线(&P)", "", L"_.PLINE"},
    {"CIRCLE", L"圆(&C)", "", L"_.CIRCLE"},
    {"ARC", L"圆弧(&A)", "", L"_.ARC"},
    {"ELLIPSE", L"椭圆(&E)", "", L"_.ELLIPSE"},
    {"SPLINE", L"样条曲线(&S)", "", L"_.SPLINE"},
    {"POINT", L"点(&O)", "", L"_.POINT"},
    {"TEXT", L"文字(&T)", "", L"_.TEXT"},
    {"MOVE", L"移动(&V)", "", L"_.MOVE"},
    {"COPY", L"复制(&Y)", "", L"_.COPY"},
    {"ROTATE", L"旋转(&R)", "", L"_.ROTATE"},
    {"SCALE", L"缩放(&L)", "", L"_.SCALE"},
    {"MIRROR", L"镜像(&I)", "", L"_.MIRROR"},
    {"STRETCH", L"拉伸(&H)", "", L"_.STRETCH"},
    {"OFFSET", L"偏移(&S)", "", L"_.OFFSET"},
    {"EXPLODE", L"分解(&X)", "", L"_.EXPLODE"},
    {"PEDIT", L"编辑多段线(&P)", "", L"_.PEDIT"},
    {"zoomExtents", L"全部显示(&E)", "Ctrl+0", nullptr},
    {"zoomIn", L"放大(&I)", "Ctrl++", nullptr},
    {"zoomOut", L"缩小(&O)", "Ctrl+-", nullptr},
    {"viewTop", L"俯视图(&T)", "", L"_.-VIEW\n_Orthographic\n_Top"},
    {"viewFront", L"主视图(&F)", "", L"_.-VIEW\n_Orthographic\n_Front"},
    {"viewRight", L"右视图(&R)", "", L"_.-VIEW\n_Orthographic\n_Right"},
    {"viewIso", L"等轴测视图(&S)", "", L"_.-VIEW\n_Orthographic\n_SWiso"},
    {"dark", L"深色背景(&D)", "", nullptr},
    {"nextDrawing", L"下一个图形(&N)", "Ctrl+Tab", nullptr},
    {"commandLine", L"转到命令行(&C)", "Ctrl+L", nullptr},
    {"help", L"命令列表(&C)", "F1", L"_.HELP"},
    {"about", L"关于 Corvane(&A)", "", L"_SCVN_ABOUT"},
};
constexpr WindowMenu kMenus[] = {
    {"file", L"文件(&F)", "new open recent... | save saveAs export | closeDrawing quit"},
    {"edit", L"编辑(&E)", "undo redo | erase selectAll"},
    {"view", L"视图(&V)", "zoomExtents zoomIn zoomOut | viewTop viewFront viewRight viewIso | "
                         "panels... language... dark | nextDrawing commandLine"},
    {"draw", L"绘图(&D)", "LINE PLINE CIRCLE ARC ELLIPSE SPLINE POINT TEXT"},
    {"modify", L"修改(&M)", "MOVE COPY ROTATE SCALE MIRROR STRETCH OFFSET EXPLODE PEDIT"},
    {"help", L"帮助(&H)", "help about"},
};
constexpr WindowMenu kToolBars[] = {
    {"fileBar", L"文件工具栏", "new open save export | undo redo | zoomExtents zoomIn zoomOut"},
    {"drawBar", L"绘图工具栏", "LINE PLINE CIRCLE ARC ELLIPSE SPLINE TEXT | MOVE COPY ROTATE SCALE MIRROR "
                              "STRETCH OFFSET EXPLODE PEDIT erase"},
};
// clang-format on

} // namespace

std::span<const WindowAction> windowActions() { return kActions; }
std::span<const WindowMenu> windowMenus() { return kMenus; }
std::span<const WindowMenu> windowToolBars() { return kToolBars; }

} // namespace desk
