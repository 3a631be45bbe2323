// System variables: wrong values, where each lives, and how commands and code set them.
#include "host/ed/sysvars.h"

#include "host/ed/commands.h"
#include "host/ed/editor_reactor.h"
#include "host/os/text.h"
#include "tests/host/ed/support.h"

using namespace host;
using edtest::Bench;

namespace {

class Listener : public AcEditorReactor {
public:
    void sysVarChanged(const ACHAR* name, bool) override { heard.push_back(name); }
    std::vector<std::wstring> heard;
};

} // namespace

TEST(SystemVariables, WrongValuesAreRefusedWithAReason) {
    Bench bench;
    const struct {
        const wchar_t *name, *text;
        const char* why;
    } rows[] = {
        {L"OSMODE", L"x", "it takes a whole number"},
        {L"OSMODE", L"1.5", "it takes a whole number"},
        {L"OSMODE", L"32768", "it takes values from 0 to 32767"},
        {L"ORTHOMODE", L"2", "it takes values from 0 to 1"},
        {L"LTSCALE", L"0", "it takes values from"},
        {L"LTSCALE", L"nan", "it takes a number"},
        {L"ELEVATION", L"", "it takes a number"},
        {L"LIMMAX", L"5", "it takes a point such as 10,20"},
        {L"LIMMAX", L"1,2,3,4", "it takes a point such as 10,20"},
        {L"CECOLOR", L"puce", "it takes a colour name"},
        {L"CECOLOR", L"257", "it takes a colour name"},
        {L"CLAYER", L"Nowhere", "the drawing has nothing of the name \"Nowhere\""},
        {L"CELTYPE", L"Wavy", "the drawing has nothing of the name \"Wavy\""},
        {L"TEXTSTYLE", L"Fancy", "the drawing has nothing of the name \"Fancy\""},
        {L"DBMOD", L"0", "it can't be changed"},
        {L"EXTMAX", L"1,1", "it can't be changed"},
    };
    for (const auto& row : rows) {
        const SystemVariable* variable = findSystemVariable(row.name);
        ASSERT_TRUE(variable) << utf8(row.name);
        const std::wstring before = systemVariableText(*variable);
        std::wstring why;
        EXPECT_FALSE(setSystemVariableText(*variable, row.text, why))
            << utf8(row.name) << "=" << utf8(row.text);
        EXPECT_THAT(utf8(why), testing::StartsWith(row.why)) << utf8(row.name) << "=" << utf8(row.text);
        EXPECT_EQ(before, systemVariableText(*variable)) << utf8(row.name);
    }
    EXPECT_FALSE(findSystemVariable(L"NOSUCHVAR"));
}

TEST(SystemVariables, StartValuesServeTheirOwnVariable) {
    Bench bench;
    for (const SystemVariable& variable : systemVariables()) {
        if (variable.readOnly) continue;
        std::wstring why;
        EXPECT_TRUE(setSystemVariableText(variable, systemVariableText(variable), why))
            << utf8(variable.name) << ": " << utf8(why);
        resbuf value;
        EXPECT_EQ(RTNORM, acedGetVar(variable.name, &value)) << utf8(variable.name);
        EXPECT_EQ(variable.type, value.restype) << utf8(variable.name);
        EXPECT_EQ(RTNORM, acedSetVar(variable.name, &value)) << utf8(variable.name);
        if (value.restype == RTSTR) acutDelString(value.resval.rstring);
    }
}

TEST(SystemVariables, EachLivesWhereItsRowSays) {
    std::wstring why;
    const auto set = [&](const wchar_t* name, const wchar_t* text) {
        EXPECT_TRUE(setSystemVariableText(*findSystemVariable(name), text, why)) << utf8(why);
    };
    const auto text = [](const wchar_t* name) { return systemVariableText(*findSystemVariable(name)); };
    {
        Bench bench;
        set(L"LTSCALE", L"2.5");
        set(L"PICKBOX", L"7");
        set(L"OFFSETDIST", L"4.0");
        EXPECT_EQ(2.5, bench.database().ltscale());
        EXPECT_TRUE(bench.database().undoLog().changedSinceSave());
    }
    Bench next;
    EXPECT_EQ(L"1.0", text(L"LTSCALE"));    // of the drawing
    EXPECT_EQ(L"7", text(L"PICKBOX"));      // of the user
    EXPECT_EQ(L"4.0", text(L"OFFSETDIST")); // of this run
    set(L"PICKBOX", L"3");
}

TEST(SystemVariables, ListenersHearOfChangesOnly) {
    Bench bench;
    Listener listener;
    acedEditorPtr()->addReactor(&listener);
    bench.run(L"ORTHOMODE 1\nORTHOMODE 1\nORTHOMODE 7\n0\n");
    acedEditorPtr()->removeReactor(&listener);
    EXPECT_EQ((std::vector<std::wstring>{L"ORTHOMODE", L"ORTHOMODE"}), listener.heard);
}

TEST(SystemVariables, NamesTypedAsCommandsAskForTheirValue) {
    Bench bench;
    const std::string transcript =
        bench.run(L"SETVAR nosuch clayer\n0\nSETVAR ? *DIA\nDBMOD\nluprec 2\nCIRCLE 0,0 1\nLIST l\n\n");
    EXPECT_THAT(transcript, testing::HasSubstr("There is no variable \"nosuch\""));
    EXPECT_THAT(transcript, testing::HasSubstr("Enter new value for CLAYER, or . for none <\"0\">: 0"));
    EXPECT_THAT(transcript, testing::HasSubstr("CMDDIA        1\nFILEDIA       1\n"));
    EXPECT_THAT(transcript, testing::HasSubstr("DBMOD = 0 (read only)"));
    EXPECT_THAT(transcript, testing::HasSubstr("radius 1.00\n"));
    EXPECT_FALSE(bench.outcome.unknownCommand);
}

TEST(SystemVariables, TellWhatRuns) {
    Bench bench;
    static std::wstring names;
    static int active;
    auto& stack = *static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    stack.addCommand(L"EDTEST", L"TELLRUNNING", L"TELLRUNNING", ACRX_CMD_TRANSPARENT, [] {
        names = systemVariableText(*findSystemVariable(L"CMDNAMES"));
        active = systemVariableText(*findSystemVariable(L"CMDACTIVE")) == L"1";
    });
    bench.run(L"LINE 0,0 'TELLRUNNING 1,1\n\n");
    EXPECT_EQ(L"LINE'TELLRUNNING", names);
    EXPECT_TRUE(active);
    EXPECT_EQ(L"0", systemVariableText(*findSystemVariable(L"CMDACTIVE")));
    stack.removeGroup(L"EDTEST");
}
