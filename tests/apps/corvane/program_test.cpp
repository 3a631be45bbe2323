// The program from outside: exit statuses, messages, transcripts, and the files it leaves.
#include "tests/apps/corvane/program.h"

#include "host/dxf/dxf.h"
#include "host/ent/register.h"

using apptest::Outcome;
using apptest::Workplace;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

namespace {

using Names = std::vector<std::string>;

struct Case {
    const char *caption, *words, *input;
    int status;
    const char *output, *errors; // parts of them
    Names files;                 // all that is left in the folder
};
const Case kCases[] = {
    {"help", "--help", "", 0, "Subcommands:", "", {}},
    {"help of a subcommand", "run --help", "", 0, "--before-after OUT.svg|png|pdf", "", {}},
    {"help by name", "help check", "", 0, "Usage: corvane check IN.dxf", "", {}},
    {"version", "--version", "", 0, "corvane 2.", "", {}},
    {"completion", "completion", "", 0, "complete -o filenames -F _corvane corvane", "", {}},

    {"unknown subcommand", "frob", "", 2, "", "unknown subcommand \"frob\"; there are run, info", {}},
    {"too little", "run", "", 2, "", "too little is given: corvane run IN.dxf|-", {}},
    {"too much", "info a.dxf b.dxf", "", 2, "", "\"b.dxf\" is too much", {}},
    {"unknown option", "info a.dxf --jsn", "", 2, "", "unknown option --jsn; accepted are --json", {}},
    {"missing value", "run - -o", "", 2, "", "--output needs a value", {}},
    {"value for a switch", "info a.dxf --json=1", "", 2, "", "--json takes no value", {}},
    {"wrong version", "run - -o a.dxf --version R1", "", 2, "", "there are R12, R13", {}},
    {"wrong picture", "run - --picture a.gif", "", 2, "", "the ending must be .svg, .png or .pdf", {}},
    {"wrong variable", "run - --set NOSUCH=1 -o a.dxf", "", 2, "", "there is no system variable NOSUCH", {}},
    {"wrong value", "run - --set ORTHOMODE=9 -o a.dxf", "", 2, "", "it takes values from 0 to 1", {}},
    {"wrong target",
     "convert DATA/husky-traced.dxf a.doc",
     "",
     2,
     "",
     "must be .dxf, .svg, .png or .pdf",
     {}},
    {"version of a picture",
     "convert DATA/husky-traced.dxf a.svg --version R12",
     "",
     2,
     "",
     "is a picture",
     {}},

    {"no drawing",
     "run none.dxf -c 'POINT 1,1' -o out.dxf --picture out.svg",
     "",
     3,
     "",
     "cannot read \"none.dxf\": No such file",
     {}},
    {"no script", "run - none.scr -o out.dxf", "", 3, "", "cannot read \"none.scr\"", {}},
    {"no folder", "run - -c 'POINT 1,1' -o none/out.dxf", "", 3, "", "cannot write \"none/out.dxf\"", {}},
    {"no folder for a picture", "run - -c 'POINT 1,1' --picture none/out.png", "", 3, "", "none/out.png", {}},
    {"no drawing to convert", "convert none.dxf out.svg", "", 3, "", "cannot read \"none.dxf\"", {}},
    {"no drawing to check", "check none.dxf", "", 3, "", "cannot read \"none.dxf\"", {}},

    {"script from standard input",
     "run - -o out.dxf",
     "POINT 1,1\n",
     0,
     "Specify a point: 1,1\n",
     "",
     {"out.dxf"}},
    {"no words at all", "", "POINT 1,1\n", 0, "Specify a point: 1,1\n", "", {}},
    {"nothing to do", "run - -o out.dxf", "", 0, "", "", {"out.dxf"}},
    {"answers run out",
     "run - -c 'LINE 0,0' -o out.dxf",
     "",
     4,
     "Specify next point or [Undo]: \n",
     "the -c lines: the answers ended while a command asked \"Specify next point or [Undo]:\"",
     {"out.dxf"}},
    {"answers left over",
     "run - -c 'POINT 1,1 2,2'",
     "",
     4,
     "",
     "-c number 1: nothing asked for the answer \"2,2\"",
     {}},
    {"answers behind the end",
     "run -",
     "QUIT\n\nPOINT 1,1\n",
     4,
     "",
     "standard input, line 3: this and what follows stands behind the end of the session",
     {}},
    {"unknown command",
     "run - -c 'FROB 1,1' -o out.dxf",
     "",
     5,
     "Unknown command \"FROB\"",
     "-c number 1: unknown command \"FROB\"",
     {"out.dxf"}},
    {"unknown wins over left over and run out",
     "run -",
     "FROB 1,1\nLINE 0,0\n",
     5,
     "",
     "unknown command",
     {}},
    {"unwritable wins over all", "run - -c FROB -o none/out.dxf", "", 3, "", "none/out.dxf", {}},
    {"repeated options", "run - -c 'POINT 1,1' -c 'POINT 2,2' -c 'LIST all' -c ''", "", 0, "2 found", "", {}},
    {"quiet", "run - --quiet -c FROB", "", 5, "", "unknown command", {}},
    {"variables",
     "run - --set LUPREC=1 --set=ORTHOMODE=1 -c ORTHOMODE -c '' -c 'CIRCLE 0,0 2' -c 'LIST l' -c ''",
     "",
     0,
     "radius 2.0\n",
     "",
     {}},
    {"options end", "run -- -", "U\n", 0, "Nothing to undo.", "", {}},
    {"pictures",
     "run - -c 'CIRCLE 0,0 5' --picture a.svg --picture b.png --before-after c.pdf",
     "",
     0,
     "",
     "",
     {"a.svg", "b.png", "c.pdf"}},
};

} // namespace

TEST(Program, EndsAsItsTableSays) {
    for (const Case& row : kCases) {
        SCOPED_TRACE(row.caption);
        const Workplace place;
        const Outcome outcome = place.run(row.words, row.input);
        EXPECT_EQ(row.status, outcome.status) << outcome.errors;
        EXPECT_THAT(outcome.output, HasSubstr(row.output));
        EXPECT_THAT(outcome.errors, HasSubstr(row.errors));
        EXPECT_EQ(row.files, place.files());
        if (row.status == 0) {
            EXPECT_EQ("", outcome.errors);
        }
    }
}

TEST(Program, QuietRunsWriteNoTranscript) {
    const Workplace place;
    EXPECT_EQ("", place.run("run - --quiet -c 'POINT 1,1'").output);
}

TEST(Program, TranscriptReadsLikeACommandLine) {
    const Workplace place;
    place.write("two.scr", "; A line and what it is.\nLINE 0,0 3,4\n\n\nLIST l\n\n");
    const Outcome outcome = place.run("run - two.scr --lang en -c U");
    EXPECT_EQ(0, outcome.status);
    EXPECT_EQ("Corvane V2.00 loaded.\n"
              "Command: LINE\n"
              "Specify first point: 0,0\n"
              "Specify next point or [Undo]: 3,4\n"
              "Specify next point or [Undo]: \n"
              "Command: LIST\n"
              "Select objects: l\n"
              "1 found\n"
              "Select objects: \n\n"
              "                  LINE           Layer: \"0\"\n"
              "                  Space: Model space\n"
              "                  Handle = 2B\n"
              "                  from point X= 0.0000  Y= 0.0000  Z= 0.0000\n"
              "                  to point X= 3.0000  Y= 4.0000  Z= 0.0000\n"
              "                  Length = 5.0000\n"
              "Command: U\n"
              "LINE \n",
              outcome.output);
}

TEST(Program, OldFilesStayWhenTheNewCannotBeWritten) {
    const Workplace place;
    std::filesystem::create_directory(place.path() / "out.dxf"); // in the way of any file
    place.write("out.dxf/kept", "kept");
    EXPECT_EQ(3, place.run("run - -c 'POINT 1,1' -o out.dxf").status);
    EXPECT_THAT(place.files(), ElementsAre("out.dxf"));
    EXPECT_EQ("kept", place.read("out.dxf/kept"));
}

TEST(Program, BrokenDrawingsWriteNothingUnlessRecovered) {
    const Workplace place;
    const std::string whole = [] {
        const Workplace other;
        other.run("run - -c 'LINE 0,0 1,1 2,2 3,3' -c '' -o whole.dxf");
        return other.read("whole.dxf");
    }();
    place.write("cut.dxf", whole.substr(0, whole.rfind("AcDbLine\n") + 12)); // in the middle of the last line
    place.write("out.dxf", "old");
    const Outcome refused = place.run("run cut.dxf -c 'POINT 1,1' -o out.dxf --picture out.svg");
    EXPECT_EQ(3, refused.status);
    EXPECT_THAT(refused.errors, HasSubstr("cut.dxf: "));
    EXPECT_EQ("old", place.read("out.dxf"));
    EXPECT_THAT(place.files(), ElementsAre("cut.dxf", "out.dxf"));
    const Outcome kept = place.run("run cut.dxf -c 'LIST all' -c '' -o out.dxf --recover");
    EXPECT_EQ(0, kept.status) << kept.errors;
    EXPECT_THAT(kept.output, HasSubstr("found"));
    EXPECT_EQ(0, place.run("info out.dxf").status);
}

TEST(Program, RepairsAreSummedUpOrListed) {
    const Workplace place;
    const Outcome brief = place.run("info DATA/handles-duplicate.dxf");
    EXPECT_THAT(brief.errors, HasSubstr("28 faults were found while reading (--verbose tells which)"));
    const Outcome full = place.run("info DATA/handles-duplicate.dxf --verbose");
    EXPECT_EQ(28, std::count(full.errors.begin(), full.errors.end(), '\n'));
    EXPECT_EQ(brief.output, full.output);
    const Outcome check = place.run("check DATA/handles-duplicate.dxf");
    EXPECT_EQ(1, check.status);
    EXPECT_THAT(check.output, HasSubstr("28 found while reading, 0 in the drawing"));
    EXPECT_EQ(0, place.run("check DATA/everything-r2018-ascii.dxf").status);
}

TEST(Program, RunsAreRepeatable) {
    const Workplace place;
    const char* words =
        "run DATA/polylines-2d-3d.dxf -c 'MOVE all' -c '' -c '0,0 10,10' -c 'COPY l' -c '' -c '0,0 "
        "5,5' -c '' -o ";
    EXPECT_EQ(0, place.run(std::string(words) + "a.dxf --picture a.svg").status);
    EXPECT_EQ(0, place.run(std::string(words) + "b.dxf --picture b.svg").status);
    EXPECT_EQ(place.read("a.dxf"), place.read("b.dxf"));
    EXPECT_EQ(place.read("a.svg"), place.read("b.svg"));
    EXPECT_FALSE(place.read("a.svg").empty());
}

TEST(Program, UndoneWorkSavesTheDrawingAsItWas) {
    host::registerEntityClasses();
    for (const char* name :
         {"polylines-2d-3d.dxf", "multi-insert-attribs.dxf", "everything-r2018-ascii.dxf"}) {
        SCOPED_TRACE(name);
        const Workplace place;
        place.run("run DATA/" + std::string(name) + " -c U -o plain.dxf");
        const Outcome undone =
            place.run("run DATA/" + std::string(name) +
                      " -c 'MOVE all' -c '' -c '1,1 5,7' -c 'ERASE all' -c '' -c 'U' -c 'U' -o undone.dxf");
        EXPECT_EQ(0, undone.status) << undone.errors;
        EXPECT_EQ(place.read("plain.dxf"), place.read("undone.dxf"));
    }
}

TEST(Program, VersionsAndBinariesReadBack) {
    host::registerEntityClasses();
    for (const char* version : {"R12", "R2000", "R2007", "R2018"}) {
        const Workplace place;
        place.run("run - -c 'PLINE 0,0 4,0 4,3 c' -o a.dxf --version " + std::string(version));
        EXPECT_EQ(0, place.run("convert a.dxf b.dxf --binary").status);
        AcDbDatabase read(false);
        const host::ReadReport report = host::readDrawing(place.path() / "b.dxf", read);
        EXPECT_TRUE(report.ok && report.binary) << version << report.message;
        EXPECT_EQ(version, host::versionName(report.version));
    }
}

TEST(Program, InfoAndCommandsWriteJson) {
    const Workplace place;
    const std::string info = place.run("info DATA/blocks-colours-chinese-gbk-r2000.dxf --json").output;
    EXPECT_THAT(info, StartsWith("{\n  \"file\": "));
    EXPECT_THAT(info, HasSubstr("\"version\": \"R2000\""));
    EXPECT_THAT(info, testing::EndsWith("}\n"));
    const std::string english = place.run("commands --json --lang en").output;
    EXPECT_THAT(
        english,
        HasSubstr("\"name\": \"PLYH\",\n    \"globalName\": \"SCVN_PLYH\",\n    \"group\": \"Corvane\""));
    EXPECT_THAT(place.run("commands --lang zh").output, HasSubstr("SCVN_PLYH2"));
    EXPECT_NE(english, place.run("commands --json --lang zh").output);
    EXPECT_THAT(english, testing::Not(HasSubstr("\"built\": false")));
    // Each is read by a program that isn't ours.
    place.write("info.json", info);
    place.write("commands.json", english);
    const std::string read = "cd " + place.path().string() +
                             " && for f in *.json; do python3 -m json.tool $f >/dev/null || exit 1; done";
    EXPECT_EQ(0, std::system(read.c_str()));
}

TEST(Program, SettingsOfARunAreItsOwn) {
    const Workplace place;
    place.run("run - --set PICKBOX=9 -c PICKBOX -c ''");
    EXPECT_THAT(place.run("run - -c PICKBOX -c ''").output, HasSubstr("Enter new value for PICKBOX <3>"));
    place.run("run - -c 'PICKBOX 9'"); // what a command sets is the user's wish
    EXPECT_THAT(place.run("run - -c PICKBOX -c ''").output, HasSubstr("Enter new value for PICKBOX <9>"));
}

TEST(Program, ModulesThatCannotBeLoadedAreToldOf) {
    const Workplace place;
    const std::string none = (place.path() / "none.so").string();
    setenv("CORVANE_MODULE", none.c_str(), 1);
    const Outcome outcome = place.run("run - -c U -o out.dxf");
    unsetenv("CORVANE_MODULE");
    EXPECT_EQ(3, outcome.status);
    EXPECT_THAT(outcome.errors, testing::AllOf(HasSubstr(none), HasSubstr("CORVANE_MODULE can name")));
    EXPECT_TRUE(place.files().empty());
}
