// How a script is cut into answers, and what its transcript looks like.
#include "host/ed/commands.h"
#include "tests/host/ed/support.h"

using namespace host;
using edtest::Bench;

namespace {

std::vector<std::wstring> cut(const std::wstring& script, bool blanksEnd = true, bool pointing = false) {
    ScriptReader reader(script);
    std::vector<std::wstring> answers;
    while (!reader.atEnd()) answers.push_back(reader.next(blanksEnd, pointing).text);
    return answers;
}

} // namespace

TEST(Script, BlanksAndLineEndsEndAnswersAndEmptyOnesAreEnter) {
    using Answers = std::vector<std::wstring>;
    EXPECT_EQ((Answers{L"LINE", L"0,0", L"1,1", L""}), cut(L"LINE 0,0 1,1\n\n"));
    EXPECT_EQ((Answers{L"A", L"", L"B"}), cut(L"A  B")); // two blanks: an Enter between
    EXPECT_EQ((Answers{L"A", L"B"}), cut(L"; told\nA\n; more\nB\n"));
    EXPECT_EQ((Answers{L"A", L";B"}), cut(L"A ;B\n")); // a comment begins its line
    EXPECT_EQ((Answers{L"A", L"B"}), cut(L"A\r\nB\r\n"));
    EXPECT_EQ((Answers{L"A"}), cut(L"\xFEFF"
                                   L"A\n"));
    EXPECT_EQ((Answers{L"two words", L"x"}), cut(L"\"two words\" x\n"));
    EXPECT_EQ((Answers{L"(handent \"2F\" 1,2)", L"x"}), cut(L"(handent \"2F\" 1,2) x\n"));
    EXPECT_EQ((Answers{L"a text", L" with blanks "}), cut(L"a text\n with blanks \n", false));
    EXPECT_EQ((Answers{}), cut(L""));
    EXPECT_EQ((Answers{}), cut(L"; nothing"));
}

TEST(Script, CursorMovesTakeTheirPointAlongOnlyWhereTheyMakeSense) {
    using Answers = std::vector<std::wstring>;
    EXPECT_EQ((Answers{L"move 1,2", L"3,4"}), cut(L"move 1,2 3,4", true, true));
    EXPECT_EQ((Answers{L"keys ctrl+alt", L"5"}), cut(L"keys ctrl+alt\n5", true, true));
    EXPECT_EQ((Answers{L"MOVE", L"all"}), cut(L"MOVE all")); // the command of that name
    EXPECT_EQ((Answers{L"keys", L"x"}), cut(L"keys\nx", true, true));
}

TEST(Script, AnswersKnowTheirLines) {
    ScriptReader reader(L"; one\nA\n\n\"B\" C\n");
    EXPECT_EQ(2, reader.next(true).line);
    EXPECT_EQ(3, reader.next(true).line);
    EXPECT_EQ(4, reader.next(true).line);
    EXPECT_EQ(4, reader.next(true).line);
    EXPECT_TRUE(reader.atEnd());
}

TEST(Script, TranscriptPutsOneLineEndBetweenTexts) {
    std::string out;
    Transcript transcript([&](const std::string& text) { out += text; });
    transcript.print(L"\nA");
    transcript.print(L"\nB\n");
    transcript.print(L"\nC");
    transcript.print(L" D\r\n");
    transcript.finishLine();
    transcript.print(L"\u66F2");
    transcript.finishLine();
    EXPECT_EQ("A\nB\nC D\n曲\n", out);
}

TEST(Script, CommandThatAsksOnIsCancelledWhenTheAnswersEnd) {
    Bench bench;
    const std::string transcript = bench.run(L"LINE 0,0 1,0");
    EXPECT_TRUE(bench.ranDry);
    EXPECT_THAT(transcript, testing::EndsWith("Specify next point or [Undo]: \n"));
    EXPECT_EQ(1u, bench.entities().size()); // what was drawn before stays, as at Esc
    EXPECT_EQ(0, runningCommands());
}

// Commands that take Esc for "the usual value" would otherwise change the drawing by values that nobody
// chose.
TEST(Script, NoCommandGoesOnBehindThePromptThatFoundNoAnswer) {
    Bench bench;
    static int status = 0;
    auto& stack = *static_cast<AcEdCommandStack*>(acrxSysRegistry()->at(ACRX_COMMAND_DOCK));
    stack.addCommand(L"DRY_TESTS", L"DRYASK", L"DRYASK", 0, [] {
        short value = 0;
        status = acedGetShort(L"\nPrecision <10>: ", &value);
    });
    bench.run(L"DRYASK ^C\n");
    EXPECT_EQ(RTCAN, status);
    status = 0;
    bench.run(L"DRYASK\n");
    EXPECT_EQ(0, status); // it never came back
    EXPECT_TRUE(bench.ranDry);
    EXPECT_EQ(0, runningCommands());
    stack.removeGroup(L"DRY_TESTS");
}

// Some commands print their question and ask with an empty prompt.
TEST(Script, TheQuestionThatFoundNoAnswerIsKept) {
    for (const wchar_t* prompt : {L"\nWhere to? ", L""}) {
        Bench bench;
        host::ScriptFrontEnd frontEnd(L"", [](const std::string&) {});
        host::setFrontEnd(&frontEnd);
        ads_point point{};
        acutPrintf(L"\n%s", *prompt ? L"Other words" : L"Where to? ");
        EXPECT_EQ(RTCAN, acedGetPoint(nullptr, prompt, point));
        EXPECT_EQ(L"Where to?", frontEnd.dryPrompt());
        host::setFrontEnd(nullptr);
    }
}

TEST(Script, EscapeCancelsTheCommandAndTheNextOneRuns) {
    Bench bench;
    const std::string transcript = bench.run(L"CIRCLE 0,0 ^C\nPOINT 1,2\n");
    EXPECT_THAT(transcript, testing::HasSubstr("*Cancel*\nCommand: POINT"));
    EXPECT_EQ(1u, bench.entities().size());
    EXPECT_FALSE(bench.ranDry);
}

TEST(Script, StraysAreToldWithTheirLines) {
    Bench bench;
    bench.run(L"POINT 1,2\n10,20\nFROB\n5\n(handent \"2F\")\n-LAYER\n\n");
    EXPECT_EQ(2, bench.outcome.commands);
    EXPECT_TRUE(bench.outcome.unknownCommand && bench.outcome.leftOver);
    ASSERT_EQ(4u, bench.outcome.strays.size());
    EXPECT_TRUE(bench.outcome.strays[0].answer);
    EXPECT_EQ(2, bench.outcome.strays[0].line);
    EXPECT_FALSE(bench.outcome.strays[1].answer);
    EXPECT_EQ(L"FROB", bench.outcome.strays[1].text);
    EXPECT_TRUE(bench.outcome.strays[2].answer);
    EXPECT_TRUE(bench.outcome.strays[3].answer);
}

TEST(Script, WhatStandsBehindQuitIsLeft) {
    Bench bench;
    bench.run(L"QUIT\n\n; only remarks\n\n");
    EXPECT_TRUE(bench.outcome.quit);
    EXPECT_FALSE(bench.unread);
    bench.run(L"QUIT\nPOINT 1,1\n");
    EXPECT_TRUE(bench.unread);
    EXPECT_TRUE(bench.entities().empty());
}

TEST(Script, QuestionsOfMessageBoxesTakeAnAnswerOthersNone) {
    Bench bench;
    int asked = 0, dry = 0;
    const std::string transcript = bench.answer(L"y\n", [&] {
        MessageBoxW(nullptr, L"Just so", L"Note", kMessageOk);
        asked = MessageBoxW(nullptr, L"Really?", L"", kMessageYesNo);
        dry = MessageBoxW(nullptr, L"And now?", L"", kMessageYesNo);
    });
    EXPECT_EQ(kAnswerYes, asked);
    EXPECT_EQ(kAnswerNo, dry);
    EXPECT_TRUE(bench.ranDry);
    EXPECT_EQ("[Note] Just so\nReally? [Yes/No]: y\nAnd now? [Yes/No]: \n", transcript);
}
