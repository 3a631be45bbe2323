// Objects of a module's class: through the public filers, kept while the class is away, alive when
// it comes; undo across all of it.
#include "support.h"

#include "host/db/filer.h"

namespace {

class Link : public AcDbObject {
public:
    ACRX_DECLARE_MEMBERS(Link)
    Link() = default;
    double weight = 0;
    std::wstring label;
    AcDbObjectId target;

    Acad::ErrorStatus setWeight(double value) {
        if (auto es = assertWriteEnabled(); es != Acad::eOk) return es;
        return weight = value, Acad::eOk;
    }
    Acad::ErrorStatus dwgOutFields(AcDbDwgFiler* filer) const override {
        filer->writeItem(weight), filer->writeItem(label.c_str());
        return filer->writeItem(target);
    }
    Acad::ErrorStatus dwgInFields(AcDbDwgFiler* filer) override {
        if (auto es = assertWriteEnabled(); es != Acad::eOk) return es; // as careful classes do
        filer->readItem(&weight), filer->readItem(label);
        return filer->readItem(&target);
    }
    Acad::ErrorStatus dxfOutFields(AcDbDxfFiler* filer) const override {
        filer->writeItem(100, L"Link");
        filer->writeItem(40, weight), filer->writeItem(1, label.c_str());
        return filer->writeItem(330, target);
    }
    Acad::ErrorStatus dxfInFields(AcDbDxfFiler* filer) override {
        if (!filer->atSubclassData(L"Link")) return Acad::eBadDxfSequence;
        resbuf group;
        while (filer->readResBuf(&group) == Acad::eOk) {
            if (group.restype == 40)
                weight = group.resval.rreal;
            else if (group.restype == 1)
                label = group.resval.rstring;
            else if (group.restype == 330)
                acdbGetObjectId(target, group.resval.rlname);
        }
        filer->resetFilerStatus();
        return Acad::eOk;
    }
    static void rxInit() {
        gpDesc = newAcRxClass(
            L"Link", L"AcDbObject", 33, 0, 0, [] { return static_cast<AcRxObject*>(new Link); }, L"LINK",
            L"Tests");
    }
};
ACRX_NO_CONS_DEFINE_MEMBERS(Link, AcDbObject)

class CustomObject : public testing::Test {
protected:
    ~CustomObject() override {
        if (Link::desc() && acrxFindAcRxClass(L"Link")) deleteAcRxClass(Link::desc());
    }
    // As a reader brings it in while nobody knows the class.
    AcDbObjectId placeKept() {
        auto kept = std::make_unique<host::KeptObject>("LINK");
        host::GroupList groups;
        groups.append(host::Group::ofText(100, "Link"));
        groups.append(host::Group::ofReal(40, 1.5));
        groups.append(host::Group::ofText(1, "née"));
        groups.append(host::Group::ofHandle(330, database.layerZero().handle()));
        kept->setGroups(groups);
        kept->tailForWrite().persistentReactors.push_back(database.layerZero());
        return database.place(std::move(kept), 0x900, database.namedObjectsDictionaryId());
    }
    AcDbDatabase database;
};

TEST_F(CustomObject, ComesToLifeAndGoesBackToSleepUnchanged) {
    const AcDbObjectId id = placeKept();
    const std::string asleep = rendering(database);
    EXPECT_EQ(id.objectClass()->isDerivedFrom(AcDbObject::desc()), true);
    EXPECT_STREQ(id.objectClass()->name(), L"LINK");
    Link::rxInit();
    acrxBuildClassHierarchy();
    AcDbObjectPointer<Link> link(id, AcDb::kForRead);
    ASSERT_EQ(link.openStatus(), Acad::eOk);
    EXPECT_EQ(link->weight, 1.5);
    EXPECT_EQ(link->label, L"née");
    EXPECT_EQ(link->target, database.layerZero());
    EXPECT_TRUE(link->isPersistentReactor(database.layerZero()));
    link.close();
    EXPECT_EQ(rendering(database), asleep);
    deleteAcRxClass(Link::desc());
    EXPECT_EQ(link.open(id, AcDb::kForRead), Acad::eNotThatKindOfClass);
    EXPECT_EQ(rendering(database), asleep);
    const auto& rows = database.fileClasses();
    EXPECT_EQ(std::count_if(rows.begin(), rows.end(), [](auto& row) { return row.className == "Link"; }), 1)
        << "files go on naming the class";
}

TEST_F(CustomObject, UndoReachesAcrossTheComingAndGoingOfTheClass) {
    Link::rxInit();
    const AcDbObjectId id = placeKept();
    acrxBuildClassHierarchy();
    std::vector<std::string> states{rendering(database)};
    AcDbObjectId made;
    auto step = [&](auto change) {
        change();
        database.undoLog().commit();
        states.push_back(rendering(database));
    };
    step([&] { AcDbObjectPointer<Link>(id, AcDb::kForWrite)->setWeight(7); });
    step([&] {
        auto* link = new Link;
        database.addAcDbObject(made, link);
        link->setWeight(8);
        link->close();
    });
    step([&] { AcDbObjectPointer<Link>(made, AcDb::kForWrite)->setWeight(9); });
    auto check = [&](const char* caption) {
        for (size_t i = states.size() - 1; i-- > 0;) {
            database.undoLog().undo();
            EXPECT_EQ(rendering(database), states[i]) << caption << ", back to " << i;
        }
        for (size_t i = 1; i < states.size(); ++i) {
            database.undoLog().redo();
            EXPECT_EQ(rendering(database), states[i]) << caption << ", on to " << i;
        }
    };
    check("class there");
    database.undoLog().undo();
    deleteAcRxClass(Link::desc());
    database.undoLog().redo();
    check("class gone");
    Link::rxInit();
    acrxBuildClassHierarchy();
    check("class back");
    AcDbObjectPointer<Link> link(made, AcDb::kForRead);
    ASSERT_EQ(link.openStatus(), Acad::eOk);
    EXPECT_EQ(link->weight, 9);
    link.close();
    // Taken away by undo while the class went and came back.
    database.undoLog().undo(2);
    deleteAcRxClass(Link::desc());
    Link::rxInit();
    acrxBuildClassHierarchy();
    database.undoLog().redo(2);
    ASSERT_EQ(link.open(made, AcDb::kForRead), Acad::eOk);
    EXPECT_EQ(link->weight, 9);
}

TEST_F(CustomObject, CopiesThroughItsFiler) {
    Link::rxInit();
    Link link;
    link.weight = 4;
    link.label = L"copy me";
    std::unique_ptr<AcRxObject> copy(link.clone());
    ASSERT_TRUE(Link::cast(copy.get()));
    EXPECT_EQ(Link::cast(copy.get())->weight, 4);
    EXPECT_EQ(Link::cast(copy.get())->label, L"copy me");
}

TEST(Classes, AreFoundByNameAndFormATree) {
    AcDbDatabase database;
    EXPECT_EQ(acrxFindAcRxClass(L"AcDbLayerTableRecord"), AcDbLayerTableRecord::desc());
    EXPECT_TRUE(AcDbBlockTableRecord::desc()->isDerivedFrom(AcDbSymbolTableRecord::desc()));
    EXPECT_FALSE(AcDbSymbolTableRecord::desc()->isDerivedFrom(AcDbBlockTableRecord::desc()));
    EXPECT_EQ(newAcRxClass(L"Orphan", L"NoSuchParent"), nullptr);
    EXPECT_EQ(newAcRxClass(L"AcDbEntity", L"AcDbObject"), AcDbEntity::desc()) << "the name is taken";
    EXPECT_EQ(host::findClassByDxfName("XRECORD"), AcDbXrecord::desc());
    host::KeptEntity kept("MYSTERY");
    EXPECT_TRUE(kept.isKindOf(AcDbEntity::desc()));
    EXPECT_EQ(host::findClassByDxfName("MYSTERY"), nullptr) << "what is only kept is nobody's class";
}

} // namespace
