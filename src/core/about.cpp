// The language table and the dialog.
#include "core/about.h"

#include "core/dialog_language.h"
#include "core/dialog_resources.h"
#include "core/messages.h"

namespace corvane {
namespace {

constexpr UINT kTemplate = 1296, kPicture = 1297, kProductButton = 1157, kPrivacyButton = 1158,
               kLanguageBox = 61001;
constexpr UINT_PTR kTimer = 1;
constexpr UINT kTimerPeriod = 3000;
constexpr COLORREF kPaper = RGB(255, 255, 255), kInk = RGB(20, 78, 128);

// Pages of the maker, in Chinese and for everyone else.
constexpr wchar_t kProductPages[][40] = {L"https://corvane.example/zh/", L"https://corvane.example/en/"};
constexpr wchar_t kPrivacyPages[][40] = {L"https://corvane.example/zh/privacy",
                                         L"https://corvane.example/en/privacy"};

// Names stand in their own language and are never translated.
constexpr LanguageRow kLanguages[] = {
    {L"zh", L"简体中文"}, // untranslated
    {L"en", L"English"},    {L"fr", L"Français"},         {L"de", L"Deutsch"}, {L"es", L"Español"},
    {L"ru", L"Русский"},    {L"pt", L"Português"},        {L"ja", L"日本語"}, // untranslated
    {L"vi", L"Tiếng Việt"}, {L"id", L"Bahasa Indonesia"}, {L"ko", L"한국어"},  {L"ar", L"العربية"},
    {L"nl", L"Nederlands"}, {L"sv", L"Svenska"},          {L"da", L"Dansk"},   {L"no", L"Norsk"},
    {L"fi", L"Suomi"},      {L"tr", L"Türkçe"},           {L"pl", L"Polski"},  {L"hi", L"हिन्दी"},
};

std::wstring activeLetters() { return ActiveLanguage().substr(0, 2); }
const wchar_t* page(const wchar_t (&pages)[2][40]) { return pages[activeLetters() == L"zh" ? 0 : 1]; }

CRect placeIn(HWND parent, HWND child) {
    CRect place;
    GetWindowRect(child, place);
    MapWindowPoints(nullptr, parent, place);
    return place;
}

} // namespace

std::span<const LanguageRow> LanguageTable() { return kLanguages; }

int ActiveLanguageRow() {
    const std::wstring letters = activeLetters();
    for (int row = 0; row < int(std::size(kLanguages)); ++row)
        if (letters == kLanguages[row].code) return row;
    return 0;
}

CAbout::CAbout(CWnd* parent) : CMyAcUiDialog(kTemplate, parent) {}

BEGIN_MESSAGE_MAP(CAbout, CMyAcUiDialog)
ON_WM_PAINT()
ON_WM_SIZE()
ON_WM_TIMER()
ON_WM_DESTROY()
ON_CBN_SELCHANGE(kLanguageBox, &CAbout::OnLanguageChosen)
ON_BN_CLICKED(kProductButton, &CAbout::OnProductPage)
ON_BN_CLICKED(kPrivacyButton, &CAbout::OnPrivacyPage)
END_MESSAGE_MAP()

BOOL CAbout::OnInitDialog() {
    CMyAcUiDialog::OnInitDialog();
    loadPicture();
    makeLanguageBox();
    fillLanguageBox();
    rememberChildren();
    showCaption();
    SetTimer(kTimer, kTimerPeriod, nullptr);
    return TRUE;
}

void CAbout::loadPicture() { LoadPngResource(this, &picture_, kPicture, L"PNG"); }

void CAbout::makeLanguageBox() {
    constexpr int kMargin = 20, kWidth = 150, kDropped = 300;
    CRect client;
    GetClientRect(client);
    const int right = client.right - kMargin, width = ScaledLength(kWidth, scale);
    languages_.Create(WS_CHILD | WS_VISIBLE | WS_TABSTOP | WS_VSCROLL | CBS_DROPDOWNLIST,
                      CRect(right - width, kMargin, right, kMargin + ScaledLength(kDropped, scale)), this,
                      kLanguageBox);
    languages_.SetFont(GetFont());
}

void CAbout::fillLanguageBox() {
    filling_ = true;
    languages_.ResetContent();
    for (int row = 0; row < int(std::size(kLanguages)); ++row)
        languages_.SetItemData(languages_.AddString(kLanguages[row].shownAs), DWORD_PTR(row));
    languages_.SetCurSel(ActiveLanguageRow());
    filling_ = false;
}

void CAbout::rememberChildren() {
    CRect client;
    GetClientRect(client);
    opened_ = client.Size();
    for (HWND child = ::GetWindow(m_hWnd, GW_CHILD); child; child = ::GetWindow(child, GW_HWNDNEXT))
        children_.push_back({child, placeIn(m_hWnd, child), WindowText(child)});
}

void CAbout::showCaption() { SetWindowText(TranslateFormat(L"关于 Corvane V%s", ProductVersionText())); }

void CAbout::OnLanguageChosen() {
    const int selected = languages_.GetCurSel();
    if (filling_ || selected < 0) return;
    const std::wstring code = kLanguages[languages_.GetItemData(selected)].code;
    if (code == activeLetters()) return;
    SetLanguage(code);
    // Translations are found by the source texts, which the former language has replaced.
    for (const Child& child : children_)
        if (!child.source.empty() && child.window != languages_.m_hWnd)
            SetWindowTextW(child.window, child.source.c_str());
    TranslateDialog(this);
    fillLanguageBox();
    showCaption();
}

void CAbout::OnPaint() {
    CPaintDC dc(this);
    CRect client;
    GetClientRect(client);
    if (picture_.IsNull()) {
        dc.FillSolidRect(client, kPaper);
    } else {
        dc.SetStretchBltMode(HALFTONE);
        picture_.StretchBlt(dc, 0, 0, client.Width(), client.Height());
    }
    LOGFONTW look;
    if (!GetFont() || !GetFont()->GetLogFont(&look)) return;
    look.lfHeight = look.lfHeight * 2;
    look.lfWeight = 700;
    CFont font;
    font.CreateFontIndirect(&look);
    CFont* before = dc.SelectObject(&font);
    dc.SetBkMode(TRANSPARENT);
    dc.SetTextColor(kInk);
    const int margin = ScaledLength(20, scale);
    dc.TextOut(margin, margin, CString(L"Corvane"));
    dc.SelectObject(before);
}

void CAbout::OnSize(UINT type, int width, int height) {
    CMyAcUiDialog::OnSize(type, width, height);
    if (children_.empty() || opened_.cx < 1 || opened_.cy < 1 || width < 1 || height < 1) return;
    const double across = double(width) / opened_.cx, down = double(height) / opened_.cy;
    for (const Child& child : children_) {
        const CRect& p = child.place;
        ::MoveWindow(child.window, ScaledLength(p.left, across), ScaledLength(p.top, down),
                     std::max(1, ScaledLength(p.Width(), across)),
                     std::max(1, ScaledLength(p.Height(), down)), TRUE);
    }
    Invalidate();
}

// A picture that could not be read, as on a network folder that sleeps, is tried again.
void CAbout::OnTimer(UINT_PTR id) {
    if (id == kTimer && picture_.IsNull()) {
        loadPicture();
        if (!picture_.IsNull()) Invalidate();
    }
    CMyAcUiDialog::OnTimer(id);
}

void CAbout::OnDestroy() {
    KillTimer(kTimer);
    CMyAcUiDialog::OnDestroy();
}

void CAbout::OnProductPage() { host_door::openExternally(page(kProductPages)); }
void CAbout::OnPrivacyPage() { host_door::openExternally(page(kPrivacyPages)); }

void AboutCommand() {
    CAbout dialog;
    RunModal(dialog);
}

} // namespace corvane
