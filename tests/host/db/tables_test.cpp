// Names in tables and dictionaries, blocks and their entities, header variables.
#include "support.h"

#include "host/db/dictionary.h"

namespace {

Acad::ErrorStatus add(AcDbDatabase& database, const wchar_t* name, AcDbObjectId& id) {
    AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId(), AcDb::kForWrite);
    auto layer = std::make_unique<AcDbLayerTableRecord>();
    if (auto es = layer->setName(name); es != Acad::eOk) return es;
    const auto es = table->add(id, layer.get());
    if (es == Acad::eOk) layer.release()->close();
    return es;
}

TEST(SymbolTables, NamesIgnoreCaseInAnyScript) {
    AcDbDatabase database;
    AcDbObjectId id, other;
    ASSERT_EQ(add(database, L"Überzug", id), Acad::eOk);
    EXPECT_EQ(database.find(AcDbLayerTable::desc(), L"üBERZUG"), id);
    EXPECT_EQ(add(database, L"ÜBERZUG", other), Acad::eDuplicateRecordName);
    AcDbObjectPointer<AcDbLayerTableRecord> layer(id, AcDb::kForWrite);
    EXPECT_EQ(layer->name(), L"Überzug");
    for (const wchar_t* bad : {L"", L"a/b", L"a|b", L"*", L"a*b", L"x`", L"q=1"})
        EXPECT_EQ(layer->setName(bad), Acad::eInvalidInput) << host::utf8(bad);
    EXPECT_EQ(layer->setName(L"0"), Acad::eDuplicateRecordName);
    EXPECT_EQ(layer->setName(L"ÜBERZUG"), Acad::eOk) << "its own name in another case";
    database.setClayer(id);
    EXPECT_EQ(layer->setName(L"Корпус"), Acad::eOk);
    EXPECT_EQ(database.find(AcDbLayerTable::desc(), L"корпус"), id);
    EXPECT_TRUE(database.find(AcDbLayerTable::desc(), L"Überzug").isNull());
    EXPECT_EQ(database.clayer(), id) << "the current layer keeps its rank under the new name";
    layer->erase();
    layer.close();
    EXPECT_TRUE(database.find(AcDbLayerTable::desc(), L"корпус").isNull()) << "erased ones count as missing";
    EXPECT_EQ(database.clayer(), database.layerZero());
    EXPECT_EQ(add(database, L"КОРПУС", other), Acad::eOk) << "the name is free again";
    database.undoLog().undo(100);
    EXPECT_EQ(rendering(database), rendering(AcDbDatabase()));
}

TEST(SymbolTables, IteratorsWalkBothWaysPastTheErased) {
    AcDbDatabase database;
    const AcDbObjectId a = addLayer(database, L"A"), b = addLayer(database, L"B"),
                       c = addLayer(database, L"C");
    AcDbObjectPointer<AcDbLayerTableRecord>(b, AcDb::kForWrite)->erase();
    AcDbObjectPointer<AcDbLayerTable> table(database.layerTableId(), AcDb::kForRead);
    for (const bool forward : {true, false}) {
        AcDbSymbolTableIterator* walk = nullptr;
        table->newIterator(walk, forward);
        std::vector<AcDbObjectId> seen;
        for (; !walk->done(); walk->step(forward)) walk->getRecordId(seen.emplace_back());
        delete walk;
        std::vector<AcDbObjectId> expected{database.layerZero(), a, c};
        if (!forward) std::reverse(expected.begin(), expected.end());
        EXPECT_EQ(seen, expected);
    }
    EXPECT_NE(rendering(*table.object()).find("70 3\n"), std::string::npos) << "files count the live ones";
}

TEST(Blocks, AnonymousNumbersStandAboveAllThatEverWere) {
    AcDbDatabase database;
    auto addBlock = [&](const wchar_t* name) {
        AcDbObjectPointer<AcDbBlockTable> table(database.blockTableId(), AcDb::kForWrite);
        auto* block = new AcDbBlockTableRecord;
        block->setName(name);
        EXPECT_EQ(table->add(block), Acad::eOk);
        const std::wstring given = block->name();
        if (given == L"*U8") block->erase();
        block->close();
        return given;
    };
    EXPECT_EQ(addBlock(L"*U7"), L"*U7");
    EXPECT_EQ(addBlock(L"*U"), L"*U8");
    database.undoLog().commit();
    EXPECT_EQ(addBlock(L"*u"), L"*u9") << "an erased one's number isn't given again";
    EXPECT_EQ(addBlock(L"*D"), L"*D1") << "each letter counts for itself";
    database.undoLog().undo();
    EXPECT_EQ(addBlock(L"*U"), L"*U9") << "one that was undone never was";
}

TEST(Blocks, AppendingSaysWhatIsWrong) {
    AcDbDatabase database;
    AcDbObjectPointer<AcDbBlockTableRecord> space(database.modelSpaceId(), AcDb::kForRead);
    TestMark mark;
    EXPECT_EQ(space->appendAcDbEntity(nullptr), Acad::eNullEntityPointer);
    EXPECT_EQ(space->appendAcDbEntity(&mark), Acad::eWasOpenForRead);
    space.close();
    AcDbBlockTableRecord free;
    EXPECT_EQ(free.appendAcDbEntity(&mark), Acad::eNoDatabase);
    const AcDbObjectId id = addMark(database);
    AcDbObjectPointer<TestMark> resident(id, AcDb::kForWrite);
    space.open(database.modelSpaceId(), AcDb::kForWrite);
    EXPECT_EQ(space->appendAcDbEntity(resident), Acad::eAlreadyInDb);
    EXPECT_EQ(resident->layerId(), database.layerZero()) << "the current layer, when it had none";
    EXPECT_EQ(resident->linetypeId(), database.byLayerLinetype());
    EXPECT_EQ(resident->blockId(), database.modelSpaceId());
}

TEST(Blocks, EntitiesChangeHandsInTheOrderGiven) {
    AcDbDatabase database;
    const AcDbObjectId a = addMark(database), b = addMark(database), c = addMark(database);
    AcDbObjectPointer<AcDbBlockTableRecord> sheet(database.paperSpaceId(), AcDb::kForWrite);
    AcDbObjectIdArray ids{c, a, c};
    EXPECT_EQ(sheet->assumeOwnershipOf(ids), Acad::eOk);
    EXPECT_EQ(sheet->entities(), (std::vector{c, a}));
    AcDbObjectPointer<AcDbBlockTableRecord> model(database.modelSpaceId(), AcDb::kForRead);
    EXPECT_EQ(model->entities(), std::vector{b});
    AcDbObjectPointer<TestMark> reader(b, AcDb::kForRead);
    ids = {b};
    EXPECT_EQ(sheet->assumeOwnershipOf(ids), Acad::eWasOpenForRead);
    EXPECT_EQ(model->entities(), std::vector{b}) << "a refusal changes nothing";
    AcDbObjectPointer<TestMark> moved(a, AcDb::kForRead);
    const std::string groups = rendering(*moved.object());
    EXPECT_NE(groups.find("67 1\n410 Layout1\n8 0\n"), std::string::npos) << groups;
}

TEST(Blocks, ExtentsLeaveOutTheErased) {
    AcDbDatabase database;
    EXPECT_EQ(database.extmin().x, 1e20);
    addMark(database, -5);
    addMark(database, 10);
    AcDbObjectPointer<TestMark>(addMark(database, 99), AcDb::kForWrite)->erase();
    EXPECT_EQ(database.extmin().x, -5);
    EXPECT_EQ(database.extmax().x, 10);
}

TEST(Dictionaries, KeysIgnoreCaseAndReplace) {
    AcDbDatabase database;
    AcDbDictionary* root = nullptr;
    ASSERT_EQ(database.getNamedObjectsDictionary(root, AcDb::kForWrite), Acad::eOk);
    AcDbObjectId first, second, found;
    auto put = [&](const wchar_t* key, AcDbObjectId& id) {
        auto* record = new AcDbXrecord;
        EXPECT_EQ(root->setAt(key, record, id), Acad::eOk);
        record->close();
    };
    const auto before = root->numEntries();
    put(L"Daten", first);
    put(L"DATEN", second);
    EXPECT_TRUE(first.isErased()) << "replaced, not doubled";
    EXPECT_EQ(root->numEntries(), before + 1);
    EXPECT_EQ(root->getAt(L"daten", found), Acad::eOk);
    EXPECT_EQ(found, second);
    EXPECT_EQ(root->setName(L"daten", L"Zahlen"), Acad::eOk);
    EXPECT_EQ(root->setName(L"Zahlen", L"ACAD_GROUP"), Acad::eDuplicateKey);
    EXPECT_FALSE(root->has(L"Daten"));
    EXPECT_EQ(root->remove(L"ZAHLEN"), Acad::eOk);
    EXPECT_FALSE(second.isErased());
    EXPECT_TRUE(root->has(L"ACAD_LAYOUT")) << "the others are still found";
    root->close();
    database.undoLog().undo(100);
    EXPECT_EQ(rendering(database), rendering(AcDbDatabase()));
}

TEST(HeaderVariables, KeepTheirOrderAndType) {
    AcDbDatabase database;
    database.setHeaderPoint("$INSBASE", {1, 2, 3});
    EXPECT_EQ(database.headerPoint("$INSBASE").z, 3);
    EXPECT_EQ(database.headerInteger("$LTSCALE", 0), 1);
    EXPECT_EQ(database.headerReal("$CLAYER", -1), -1) << "text is no number";
    EXPECT_EQ(database.headerText("$NOSUCH", L"none"), L"none");
    EXPECT_EQ(database.header()[0].name, "$ACADVER");
    EXPECT_EQ(database.setClayer(database.byLayerLinetype()), Acad::eInvalidInput);
    AcDbDatabase other;
    EXPECT_EQ(database.setClayer(other.layerZero()), Acad::eWrongDatabase);
}

TEST(Handles, DuplicatesGetTheNextFreeOne) {
    AcDbDatabase database(false);
    auto place = [&](Adesk::UInt64 handle) {
        return database.place(std::make_unique<AcDbXrecord>(), handle, {}).handle().value();
    };
    EXPECT_EQ(place(0x20), 0x20u);
    EXPECT_EQ(place(0x20), 0x21u);
    EXPECT_EQ(place(0x10), 0x10u);
    EXPECT_EQ(place(0), 0x22u);
    EXPECT_EQ(place(~0ull), 0x23u) << "no room above such a handle";
    const AcDbObjectId ahead(database.cellOf(0x30, true));
    EXPECT_EQ(place(0x30), 0x30u);
    EXPECT_TRUE(ahead.isValid()) << "the forward reference has found its object";
    EXPECT_EQ(database.handseed().value(), 0x31u);
}

} // namespace
