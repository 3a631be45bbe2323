// The tooltip of a scale: a small window beside the mouse that tells the factor of the moment.
#pragma once
#include "core/host/dialogs.h"
#include "core/language.h"

namespace corvane::deform {

class ScaleTooltip : public CWnd {
public:
    // Shows the text to the right of the mouse; the window is made on first use.
    void show(const CString& text, CPoint mouse);
    void hide();

protected:
    afx_msg void OnPaint();
    DECLARE_MESSAGE_MAP()

private:
    CFont font_;
};
using FFDTooltipWnd = ScaleTooltip;

} // namespace corvane::deform
