// Laws over real drawings: what was read is written whole, and writing it again changes nothing.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <unistd.h>

#include "helpers.h"
#include "host/db/kept.h"
#include "host/os/text.h"

using namespace host;
using namespace dxftest;

namespace {

constexpr AcDb::AcDbDwgVersion kVersions[] = {AcDb::kDHL_1009, AcDb::kDHL_1012, AcDb::kDHL_1014,
                                              AcDb::kDHL_1015, AcDb::kDHL_1018, AcDb::kDHL_1021,
                                              AcDb::kDHL_1024, AcDb::kDHL_1027, AcDb::kDHL_1032};

WriteOptions as(AcDb::AcDbDwgVersion version, bool binary) {
    WriteOptions options;
    options.version = version;
    options.binary = binary;
    return options;
}

// A folder of this test's own, emptied at the end.
class Scratch {
public:
    Scratch() : path_(std::filesystem::temp_directory_path() / ("corvane-dxf-" + std::to_string(getpid()))) {
        std::filesystem::create_directories(path_);
    }
    ~Scratch() { std::filesystem::remove_all(path_); }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }

private:
    std::filesystem::path path_;
};

constexpr const char* kPython = "/usr/bin/python3";

bool haveIndependentReader() {
    return std::system((std::string(kPython) + " -c 'import ezdxf' >/dev/null 2>&1").c_str()) == 0;
}

int runScript(const std::string& name, const std::string& arguments) {
    const std::string script = std::string(CORVANE_SOURCE_DIR) + "/tests/host/dxf/" + name;
    return std::system((std::string(kPython) + " " + script + " " + arguments).c_str());
}

} // namespace

TEST(Drawings, SavingWhatWasReadAgainGivesTheSameBytes) {
    ASSERT_GE(sampleDrawings().size(), 20u);
    for (const auto& path : sampleDrawings()) {
        AcDbDatabase first(false);
        const ReadReport report = readDrawing(path, first);
        ASSERT_TRUE(report.ok) << report.message;
        for (const bool binary : {false, true}) {
            const std::string once = drawingBytes(first, as(AcDb::kDHL_Unknown, binary));
            Read second(once);
            ASSERT_TRUE(second.report.ok) << second.report.message;
            EXPECT_EQ(second.report.binary, binary);
            EXPECT_TRUE(drawingBytes(second.database, as(AcDb::kDHL_Unknown, binary)) == once)
                << path.filename() << (binary ? " binary" : " text");
        }
    }
}

TEST(Drawings, TextAndBinaryHoldTheSame) {
    for (const auto& path : sampleDrawings()) {
        Read original(contents(path));
        Read fromBinary(drawingBytes(original.database, as(AcDb::kDHL_Unknown, true)));
        ASSERT_TRUE(fromBinary.report.ok) << path.filename() << fromBinary.report.message;
        EXPECT_TRUE(drawingBytes(fromBinary.database) == drawingBytes(original.database)) << path.filename();
    }
}

TEST(Drawings, TheTwoFormsOfOneDrawingReadAlike) {
    Read text(contents(drawingsFolder() / "everything-r2018-ascii.dxf"));
    Read binary(contents(drawingsFolder() / "everything-r2018-binary.dxf"));
    const auto a = text.model(), b = binary.model();
    ASSERT_EQ(a.size(), b.size());
    ASSERT_GT(a.size(), 50u);
    for (size_t i = 0; i < a.size(); ++i) EXPECT_EQ(a[i]->dxfName(), b[i]->dxfName());
}

// In each version the drawing can be read again without a fault; newer kinds of entity survive as such
// where the version has them.
TEST(Drawings, EveryVersionComesBack) {
    for (const char* name : {"everything-r2018-ascii", "clipped-block", "blocks-colours-chinese-gbk-r2000",
                             "gis-assorted", "gis-ocs-hatch", "husky-traced"}) {
        Read original(contents(drawingsFolder() / (std::string(name) + ".dxf")));
        for (const AcDb::AcDbDwgVersion version : kVersions) {
            for (const bool binary : {false, true}) {
                const std::string bytes = drawingBytes(original.database, as(version, binary));
                Read back(bytes);
                ASSERT_TRUE(back.report.ok) << name << versionName(version) << back.report.message;
                EXPECT_EQ(back.report.version, version);
                EXPECT_EQ(back.database.originalFileVersion(), version);
                if (version >= AcDb::kDHL_1027) {
                    EXPECT_EQ(back.model().size(), original.model().size()) << name << versionName(version);
                }
                EXPECT_TRUE(drawingBytes(back.database, as(version, binary)) == bytes)
                    << name << versionName(version) << binary;
            }
        }
    }
}

TEST(Drawings, NothingIsLostToAnIndependentReader) {
    if (!haveIndependentReader()) GTEST_SKIP() << "python3-ezdxf is not installed";
    Scratch scratch;
    std::string pairs;
    for (const auto& path : sampleDrawings()) {
        AcDbDatabase database(false);
        ASSERT_TRUE(readDrawing(path, database).ok);
        const auto saved = scratch / path.filename().string();
        ASSERT_TRUE(writeDrawing(saved, database).ok);
        pairs += " " + path.string() + " " + saved.string();
    }
    EXPECT_EQ(runScript("compare_drawings.py", pairs), 0);
}

TEST(Drawings, AnIndependentAuditFindsNothingInNewDrawings) {
    if (!haveIndependentReader()) GTEST_SKIP() << "python3-ezdxf is not installed";
    Scratch scratch;
    AcDbDatabase fresh;
    std::string files;
    for (const AcDb::AcDbDwgVersion version : kVersions) {
        if (version == AcDb::kDHL_1012) continue; // read as R2000 there, with remarks
        for (const bool binary : {false, true}) {
            const auto file = scratch / (versionName(version) + (binary ? "-binary.dxf" : ".dxf"));
            ASSERT_TRUE(writeDrawing(file, fresh, as(version, binary)).ok);
            files += " " + file.string();
        }
    }
    EXPECT_EQ(runScript("audit_drawings.py", files), 0);
}

TEST(Drawings, AFailedSaveLeavesTheOldFile) {
    Scratch scratch;
    const auto file = scratch / "old.dxf";
    std::ofstream(file) << "old";
    Read large(drawing(manyLines(10000)));
    const WriteReport unwritable = writeDrawing(scratch / "no-such-folder" / "new.dxf", large.database);
    EXPECT_FALSE(unwritable.ok);
    EXPECT_NE(unwritable.message.find("no-such-folder"), std::string::npos) << unwritable.message;
    WriteOptions options;
    options.progress = [](double) { return false; };
    const WriteReport cancelled = writeDrawing(file, large.database, options);
    EXPECT_TRUE(cancelled.cancelled);
    EXPECT_FALSE(cancelled.ok);
    EXPECT_EQ(contents(file), "old");
}

// Named groups of objects: what is erased leaves them in the file, and is back after undo.
TEST(Drawings, GroupsForgetErasedMembers) {
    dxftest::Read read(dxftest::contents(dxftest::drawingsFolder() / "everything-r2018-ascii.dxf"));
    AcDbObjectId member;
    for (const auto& cell : read.database.cells()) {
        const auto* group = dynamic_cast<const host::KeptObject*>(cell.object);
        host::Group first;
        if (group && group->dxfName() == "GROUP" && group->groups().find(340, first))
            read.database.getAcDbObjectId(member, false, AcDbHandle(first.handle()));
    }
    ASSERT_TRUE(member.isValid());
    const std::string before = host::drawingBytes(read.database);
    const std::string pointer = "340\n" + host::utf8(member.handle().ascii()) + "\n";
    ASSERT_NE(before.find(pointer), std::string::npos);
    read.database.undoLog().begin(L"ERASE");
    {
        AcDbObjectPointer<AcDbEntity> entity(member, AcDb::kForWrite);
        ASSERT_EQ(entity->erase(), Acad::eOk);
    }
    read.database.undoLog().end();
    EXPECT_EQ(host::drawingBytes(read.database).find(pointer), std::string::npos);
    read.database.undoLog().undo();
    EXPECT_EQ(host::drawingBytes(read.database), before);
}
