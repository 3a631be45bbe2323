// What all cages have in common unless they say otherwise.
#include "deform/cage/cage.h"

#include "core/messages.h"

namespace corvane::deform {

const CageManners& Cage::manners() const {
    static constexpr CageManners kBox = {
        L"\n  [M]-多选 [S]-设置 [L]-锁形 [R]-重置 [U]-撤销 [X]-退出 或<点击控制点>",
        L"\n选择控制点或 [M多选/S设置/L锁形/R重置/U撤销/X退出]: ",
        L"\n退出FFD命令。",
        L"M S L R U X",
        L"\n已撤销上一步变形（剩余 %d 步可撤销）。",
        L"\n已撤销上一步变形（无更多可撤销步骤）。",
        L"\n已撤销上一步（剩余 %d 步可撤销）。",
        L"\n无更多可撤销步骤。",
        false};
    return kBox;
}

void Cage::toggleLock() {
    shapeLocked_ = !shapeLocked_;
    if (shapeLocked_) return PrintLine(L"\n锁形模式：锁定（仅移动控制点，不变形物体）");
    for (int i = 0; i < size(); ++i) point(i).initialPosition = point(i).position;
    PrintLine(L"\n锁形已解除，当前控制点位置已设为新的初始位置。");
}

} // namespace corvane::deform
