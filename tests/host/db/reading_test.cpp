// Objects taking groups in as from a file and giving them back; the filling of gaps.
#include "support.h"

#include "host/db/filed.h"
#include "host/db/rows.h"

namespace {

// Takes groups in as a reader hands them out: by marker, unknown ones kept.
template <class T> AcDbObjectId read(AcDbDatabase& database, std::unique_ptr<T> object, const char* rows) {
    host::DrawingContext context(&database);
    std::string marker, keptMarker;
    auto& kept = object->tailForWrite().kept;
    const host::GroupList groups = host::groupsOf(rows);
    for (const auto group : groups) {
        if (group.code == 100) {
            marker = group.text;
            continue;
        }
        context.subclass = marker;
        if (object->inGroup(group, context)) continue;
        if (keptMarker != marker) kept.append(host::Group::ofText(100, keptMarker = marker));
        kept.append(group);
    }
    object->inDone(context);
    return database.place(std::move(object), 0, database.modelSpaceId());
}

std::string written(AcDbObjectId id, AcDb::AcDbDwgVersion version = AcDb::kDHL_1032) {
    const std::string all = rendering(*id.cell()->object, version);
    const size_t start = all.find("extension 0\n");
    return all.substr(start + 12);
}

// Each row comes back as it went in.
TEST(Reading, GroupsComeBack) {
    struct Row {
        const char* caption;
        std::unique_ptr<AcDbObject> (*make)();
        const char* rows;
    };
    const Row rows[] = {
        {"an entity's own", [] { return std::unique_ptr<AcDbObject>(new AcDbSequenceEnd); },
         "100|AcDbEntity|8|0|6|Continuous|62|30|370|25|48|0.5|60|1|420|16711935|440|33554559|430|BOOK$Pink|"
         "347|1F"},
        {"a true colour alone", [] { return std::unique_ptr<AcDbObject>(new AcDbSequenceEnd); },
         "100|AcDbEntity|8|0|420|255"},
        {"an unknown entity", [] { return std::unique_ptr<AcDbObject>(new host::KeptEntity("MYSTERY")); },
         "100|AcDbEntity|8|0|284|1|100|AcDbOne|10|1.0|20|2.0|62|5|100|AcDbTwo|1|text"},
        {"an unknown object", [] { return std::unique_ptr<AcDbObject>(new host::KeptObject("MYSTERY")); },
         "100|AcDbOne|330|1F|1|a|100|AcDbTwo|1|b"},
        {"a linetype", [] { return std::unique_ptr<AcDbObject>(new AcDbLinetypeTableRecord); },
         "100|AcDbSymbolTableRecord|100|AcDbLinetypeTableRecord|2|GAS|70|0|3|Gas "
         "line|72|65|73|2|40|2.0|49|1.0|74|"
         "2|75|0|340|14|46|0.1|50|0.0|44|-0.1|45|-0.05|9|GAS|49|-1.0|74|0"},
        {"a text style", [] { return std::unique_ptr<AcDbObject>(new AcDbTextStyleTableRecord); },
         "100|AcDbSymbolTableRecord|100|AcDbTextStyleTableRecord|2|T|70|4|40|2.5|41|0.8|50|15.0|71|2|42|2.5|"
         "3|"
         "txt|4|big.shx"},
        {"a layer with a material", [] { return std::unique_ptr<AcDbObject>(new AcDbLayerTableRecord); },
         "100|AcDbSymbolTableRecord|100|AcDbLayerTableRecord|2|L|70|5|62|-3|6|Continuous|290|0|370|50|390|1F|"
         "347|"
         "20"},
        {"a dictionary", [] { return std::unique_ptr<AcDbObject>(new AcDbDictionary); },
         "100|AcDbDictionary|280|1|281|0|3|Key|360|1F|3|Other|350|7FF"},
        {"an xrecord", [] { return std::unique_ptr<AcDbObject>(new AcDbXrecord); },
         "100|AcDbXrecord|280|1|1|text|280|7|10|1.0|20|2.0|330|1F|310|bytes"},
    };
    for (const auto& row : rows) {
        AcDbDatabase database;
        const AcDbObjectId id = read(database, row.make(), row.rows);
        EXPECT_EQ(written(id), text(host::groupsOf(row.rows))) << row.caption;
    }
}

TEST(Reading, OldFilesHaveNoMarkersAndNoNewGroups) {
    AcDbDatabase database;
    const AcDbObjectId id =
        read(database, std::make_unique<host::KeptEntity>("SHAPE"), "8|0|62|1|10|5.0|2|GATE");
    EXPECT_EQ(written(id, AcDb::kDHL_1009), "8 0\n62 1\n10 5.0\n2 GATE\n");
    AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForWrite);
    entity->setLineWeight(AcDb::kLnWt050);
    AcCmColor color;
    color.setRGB(1, 2, 3);
    entity->setColor(color);
    EXPECT_EQ(written(id, AcDb::kDHL_1009), "8 0\n62 178\n10 5.0\n2 GATE\n") << "the nearest index stands in";
}

TEST(Reading, ANewColourLosesTheOldOnesName) {
    AcDbDatabase database;
    const AcDbObjectId id = read(database, std::make_unique<AcDbSequenceEnd>(),
                                 "100|AcDbEntity|8|0|62|1|420|16711680|430|BOOK$Red|284|2");
    AcDbObjectPointer<AcDbEntity>(id, AcDb::kForWrite)->setColorIndex(5);
    EXPECT_EQ(written(id), "100 AcDbEntity\n8 0\n62 5\n284 2\n");
}

TEST(Reading, BadValuesArePutRight) {
    AcDbDatabase database;
    const AcDbObjectId id =
        read(database, std::make_unique<AcDbSequenceEnd>(), "100|AcDbEntity|8|no such layer|62|999|48|-1");
    EXPECT_EQ(written(id), "100 AcDbEntity\n8 0\n");
}

TEST(Completion, FillsAShellAndThenHasNothingToDo) {
    AcDbDatabase shell(false);
    EXPECT_TRUE(shell.modelSpaceId().isNull());
    const auto notes = shell.complete();
    EXPECT_EQ(std::count(notes.begin(), notes.end(), "Layer 0 was missing and has been made."), 1);
    EXPECT_TRUE(shell.modelSpaceId().isValid() && shell.paperSpaceId().isValid());
    EXPECT_TRUE(shell.layerZero().isValid() && shell.byLayerLinetype().isValid());
    const std::string first = rendering(shell);
    EXPECT_TRUE(shell.complete().empty());
    EXPECT_EQ(rendering(shell), first);
    EXPECT_EQ(shell.undoLog().undoSteps(), 0u);
    const auto* model = AcDbBlockTableRecord::cast(shell.modelSpaceId().cell()->object);
    const auto* layout = AcDbLayout::cast(model->getLayoutId().cell()->object);
    ASSERT_TRUE(layout);
    EXPECT_EQ(layout->layoutName(), L"Model");
    EXPECT_EQ(layout->getBlockTableRecordId(), shell.modelSpaceId());
}

TEST(Completion, SaysNothingOfWhatOldFilesNeverHad) {
    AcDbDatabase shell(false);
    shell.setOriginalFileVersion(AcDb::kDHL_1009);
    EXPECT_TRUE(shell.complete().empty());
    EXPECT_TRUE(shell.modelSpaceId().isValid());
}

TEST(NewDrawings, HaveNoIdThatLeadsNowhere) {
    AcDbDatabase database;
    for (const auto& cell : database.cells()) {
        ASSERT_TRUE(cell.object) << cell.handle;
        host::CapturingWriter writer;
        cell.object->outGroups(writer);
        for (const auto group : writer.groups)
            if (group.type == host::GroupType::handle && group.handle()) {
                const auto* target = database.cellOf(group.handle(), false);
                EXPECT_TRUE(target && target->object) << cell.object->dxfName() << ' ' << group.code;
            }
    }
    EXPECT_EQ(database.insunits(), 4);
    EXPECT_EQ(database.surftab1(), 6);
    EXPECT_EQ(database.splinesegs(), 8);
    EXPECT_TRUE(database.tilemode());
    EXPECT_EQ(database.currentSpaceId(), database.modelSpaceId());
}

} // namespace
