// The module's life: load, drawing open, unload, the record for loading on demand, the menu.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "host/ed/application.h"
#include "host/ed/commands.h"
#include "host/ed/document.h"
#include "host/ed/editor.h"
#include "host/ed/interpreter.h"
#include "host/ed/script.h"
#include "host/ed/startup.h"
#include "host/os/locale.h"
#include "host/os/registry.h"
#include "host/os/shell.h"
#include "host/os/text.h"

using testing::HasSubstr;

namespace {

const std::wstring kModule = host::wide(CORVANE_MODULE);

// The module loaded in one language, with a drawing, and all that was printed.
class Loaded {
public:
    explicit Loaded(const char* language, const std::wstring& script = L"") {
        static const std::string home = [] {
            std::string name = (std::filesystem::temp_directory_path() / "corvane-module-XXXXXX").string();
            return std::string(mkdtemp(name.data()));
        }();
        host::setUserRegistry(home + "/" + language + ".ini");
        host::setRequestedLanguage(language);
        host::startHost();
        host::ScriptFrontEnd frontEnd(script, [this](const std::string& text) { transcript += text; });
        host::setFrontEnd(&frontEnd);
        EXPECT_TRUE(acrxDynamicLinker->loadModule(kModule.c_str()));
        document_ = acDocManagerPtr()->add(std::make_unique<AcDbDatabase>(true));
        outcome = host::commandLoop();
        host::setFrontEnd(nullptr);
    }
    ~Loaded() {
        acDocManagerPtr()->close(document_);
        EXPECT_TRUE(acrxDynamicLinker->unloadModule(kModule.c_str()));
    }
    std::string transcript;
    host::LoopOutcome outcome;

private:
    AcApDocument* document_;
};

AcEdCommandStack& stack() {
    return *static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
}
size_t ownCommands() {
    return size_t(
        std::count_if(stack().commands().begin(), stack().commands().end(),
                      [](const auto& command) { return std::wstring(command->groupName()) == L"Corvane"; }));
}

} // namespace

TEST(Module, RegistersItsTableOnLoadAndTakesItBackOnUnload) {
    for (int round = 0; round < 2; ++round) {
        {
            const Loaded module("zh");
            EXPECT_THAT(module.transcript, HasSubstr("【Corvane】 V2.00 已成功加载。"));
            EXPECT_EQ(111u, ownCommands());
            EXPECT_TRUE(stack().lookUpCmd(L"ssr")->isTransparent());
            EXPECT_FALSE(stack().lookUpCmd(L"PLYH")->isTransparent());
            EXPECT_EQ(stack().lookUpCmd(L"CVANE")->functionAddr(),
                      stack().lookUpCmd(L"CVMENU")->functionAddr());
            EXPECT_TRUE(acrxFindAcRxClass(L"CvLinkLineToNotify"));
        }
        EXPECT_EQ(0u, ownCommands());
        EXPECT_FALSE(acrxFindAcRxClass(L"CvLinkLineToNotify"));
    }
}

TEST(Module, OtherLanguagesThanChineseLackTwoCommands) {
    const Loaded module("en", L"HZONOFF\nCVMENU\nCVANE\n");
    EXPECT_EQ(109u, ownCommands());
    EXPECT_TRUE(module.outcome.unknownCommand);
    EXPECT_THAT(module.transcript, HasSubstr("Unknown command \"HZONOFF\""));
    EXPECT_THAT(module.transcript, HasSubstr("Unknown command \"CVMENU\""));
    EXPECT_THAT(module.transcript, testing::Not(HasSubstr("Unknown command \"CVANE\"")));
    EXPECT_THAT(module.transcript, HasSubstr("Corvane V2.00 loaded."));
}

TEST(Module, LoadsItsMenuFileOnceAndShowsThreeMenus) {
    const size_t before = host::queuedExpressions().size();
    const bool wasLoaded = acedIsMenuGroupLoaded(L"CORVANE");
    const Loaded module("en");
    EXPECT_TRUE(acedIsMenuGroupLoaded(L"corvane"));
    EXPECT_EQ(wasLoaded ? 0u : 4u, host::queuedExpressions().size() - before);
    const auto& all = host::queuedExpressions();
    EXPECT_THAT(host::utf8(all[0]), HasSubstr("Corvane_eng.cuix\")) "));
    EXPECT_EQ(L"(menucmd \"P14=+CORVANE.POP3\")", all[3]);
    resbuf bar;
    ASSERT_EQ(RTNORM, acedGetVar(L"MENUBAR", &bar));
    EXPECT_EQ(1, bar.resval.rint);
    EXPECT_THAT(module.transcript, testing::Not(HasSubstr("not found")));
}

TEST(Module, RecordsItsCommandsForLoadingOnDemandAllButTwo) {
    const Loaded module("en");
    EXPECT_EQ(kModule, host::demandLoadModule(L"PLYH"));
    EXPECT_EQ(kModule, host::demandLoadModule(L"SCVN_plcount2"));
    EXPECT_EQ(kModule, host::demandLoadModule(L"HZONOFF")) << "the record takes no heed of the language";
    EXPECT_EQ(L"", host::demandLoadModule(L"CVSAC"));
    EXPECT_EQ(L"", host::demandLoadModule(L"SCVN_YXSJ"));
}

TEST(Module, IsLoadedByTypingOneOfItsCommands) {
    { const Loaded module("en"); }
    std::string transcript;
    host::ScriptFrontEnd frontEnd(L"PLYH2\n\nCVSAC\n", [&](const std::string& text) { transcript += text; });
    host::setFrontEnd(&frontEnd);
    EXPECT_EQ(0u, ownCommands());
    AcApDocument* document = acDocManagerPtr()->add(std::make_unique<AcDbDatabase>(true));
    host::commandLoop();
    host::setFrontEnd(nullptr);
    EXPECT_EQ(109u, ownCommands());
    EXPECT_THAT(transcript, HasSubstr("No polyline selected."));
    EXPECT_THAT(transcript, HasSubstr("not built yet")) << "once loaded, all commands work";
    acDocManagerPtr()->close(document);
    acrxDynamicLinker->unloadModule(kModule.c_str());
}

TEST(Module, DemonstrationLinksComeFromTheSettings) {
    std::vector<std::wstring> opened;
    host::setShellHandler(
        [&](const host::ShellRequest& request) { return opened.push_back(request.target), true; });
    { const Loaded first("en"); } // the settings are those of its language's file from now on
    host::userRegistry().set(L"Software\\Brinkhaven\\Corvane", L"Demo3",
                             std::wstring(L"https://example.org/three"));
    const Loaded module("en", L"SCVN_DEMO1\nSCVN_DEMO3\n");
    EXPECT_THAT(opened, testing::ElementsAre(L"https://example.org/three"))
        << "a link without an address does nothing";
    host::setShellHandler({});
}

TEST(Module, ALibraryThatIsNoneIsRefusedWithAReason) {
    host::startHost();
    const std::string path = (std::filesystem::temp_directory_path() / "corvane-no-module.so").string();
    std::ofstream(path) << "not a library";
    EXPECT_FALSE(acrxDynamicLinker->loadModule(host::wide(path).c_str(), false));
    EXPECT_THAT(host::utf8(acrxDynamicLinker->why()), HasSubstr(path));
    EXPECT_FALSE(acrxDynamicLinker->loadModule(L"/no/such/file.so", false));
    std::filesystem::remove(path);
}

TEST(Module, TellsWhatItsCommandsDoAndWhichAreBuilt) {
    const Loaded module("en");
    const auto note = reinterpret_cast<bool (*)(const wchar_t*, std::wstring&, bool&)>(
        acrxDynamicLinker->symbol("corvaneCommandNote"));
    ASSERT_TRUE(note);
    std::wstring summary;
    bool built = false;
    ASSERT_TRUE(note(L"SCVN_PLYH", summary, built));
    EXPECT_EQ(L"Thins and evens polylines within a tolerance", summary);
    EXPECT_TRUE(built);
    EXPECT_TRUE(note(L"SCVN_FFD", summary, built));
    EXPECT_FALSE(note(L"LINE", summary, built));
}

TEST(Module, SpeaksForTheProgramThatCarriesIt) {
    { const Loaded german("de"); } // the settings are those of its file from now on
    const Loaded module("de");
    const auto translate = reinterpret_cast<void (*)(const wchar_t*, std::wstring&)>(
        acrxDynamicLinker->symbol("corvaneTranslate"));
    const auto speak =
        reinterpret_cast<void (*)(const wchar_t*)>(acrxDynamicLinker->symbol("corvaneSetLanguage"));
    const auto offered = reinterpret_cast<bool (*)(int, std::wstring&, std::wstring&)>(
        acrxDynamicLinker->symbol("corvaneOfferedLanguage"));
    ASSERT_TRUE(translate && speak && offered);
    std::wstring text, code, name;
    std::vector<std::wstring> codes;
    for (int i = 0; offered(i, code, name); ++i) codes.push_back(code);
    EXPECT_THAT(codes, testing::ElementsAre(L"zh", L"en", L"de")) << "those there are texts in";
    translate(L"颜色", text);
    EXPECT_EQ(L"Farbe", text);
    speak(L"en");
    translate(L"颜色", text);
    EXPECT_EQ(L"Color", text);
    translate(L"没有这样的文字", text);
    EXPECT_EQ(L"没有这样的文字", text) << "what nobody translated stands as it is";
}
