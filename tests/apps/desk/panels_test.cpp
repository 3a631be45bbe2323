// The panels of layers and properties, worked with mouse and keys; each change is one step to take back.
#include <QAbstractItemView>
#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "apps/desk/colors.h"
#include "apps/desk/dialog_window.h"
#include "host/ent/line.h"
#include "tests/apps/desk/desk_play.h"

namespace desktest {
namespace {

const QString kView = "ZOOM W -10,-10 110,90";

class PanelsTest : public DeskTest {
protected:
    QTreeWidget* layers() { return desk_->window().layers().list(); }
    desk::PropertiesPanel& properties() { return desk_->window().properties(); }
    int rowOf(const QString& layer) {
        const auto found = layers()->findItems(layer, Qt::MatchExactly);
        return found.isEmpty() ? -1 : layers()->indexOfTopLevelItem(found.front());
    }
    // A click on the check box of a row.
    std::function<void()> clickCheck(const QString& layer, int column) {
        return [this, layer, column] {
            QTreeWidgetItem* item = layers()->topLevelItem(rowOf(layer));
            QRect cell = layers()->visualItemRect(item);
            cell.setLeft(layers()->columnViewportPosition(column));
            QTest::mouseClick(layers()->viewport(), Qt::LeftButton, {},
                              cell.topLeft() + QPoint(10, cell.height() / 2));
        };
    }
    std::function<void()> choose(QComboBox* (desk::PropertiesPanel::*box)(), const QString& text) {
        return [this, box, text] {
            QComboBox* widget = (properties().*box)();
            const int row = widget->findText(text);
            ASSERT_GE(row, 0) << text.toStdString();
            widget->setFocus();
            widget->showPopup();
            widget->view()->setCurrentIndex(widget->model()->index(row, 0));
            QTest::keyClick(widget->view(), Qt::Key_Return);
        };
    }
    AcDbObjectId layerId(const wchar_t* name) { return drawing().find(AcDbLayerTable::desc(), name); }
    template <class T> T ofLayer(const wchar_t* name, T (AcDbLayerTableRecord::*fact)() const) {
        AcDbObjectPointer<AcDbLayerTableRecord> layer(layerId(name), AcDb::kForRead);
        return layer ? ((*layer).*fact)() : T();
    }
    std::wstring layerOfFirst() {
        AcDbObjectPointer<AcDbEntity> entity(entities().at(0), AcDb::kForRead);
        return entity->layerName();
    }
};

TEST_F(PanelsTest, ChecksSwitchLayersAndAreTakenBackOneByOne) {
    bool off = false, locked = false, unlocked = false, on = true, shownOn = false;
    play({type("-LAYER N Walls "), clickCheck("Walls", 1),
          [&] { off = ofLayer(L"Walls", &AcDbLayerTableRecord::isOff); }, clickCheck("Walls", 3),
          [&] { locked = ofLayer(L"Walls", &AcDbLayerTableRecord::isLocked); }, type("U"),
          [&] { unlocked = !ofLayer(L"Walls", &AcDbLayerTableRecord::isLocked); }, type("U"),
          [&] {
              on = !ofLayer(L"Walls", &AcDbLayerTableRecord::isOff);
              shownOn = layers()->topLevelItem(rowOf("Walls"))->checkState(1) == Qt::Checked;
          }});
    EXPECT_TRUE(off && locked && unlocked && on && shownOn) << transcript().toStdString();
}

TEST_F(PanelsTest, TheCurrentLayerRefusesToFreezeAndSaysWhy) {
    bool frozen = true, shown = true;
    play({clickCheck("0", 2), [&] {
              frozen = ofLayer(L"0", &AcDbLayerTableRecord::isFrozen);
              shown = layers()->topLevelItem(rowOf("0"))->checkState(2) == Qt::Checked;
          }});
    EXPECT_FALSE(frozen);
    EXPECT_FALSE(shown);
    EXPECT_TRUE(transcript().contains("The current layer can't be frozen.")) << transcript().toStdString();
}

TEST_F(PanelsTest, ANewLayerIsRenamedInPlaceAndMadeCurrent) {
    QString current;
    bool gone = false;
    const auto button = [this](const QString& text) {
        return [this, text] {
            for (QPushButton* one : desk_->window().layers().findChildren<QPushButton*>())
                if (one->text() == text) QTest::mouseClick(one, Qt::LeftButton);
        };
    };
    play({button("New Layer"),
          [&] {
              QTest::keyClick(layers(), Qt::Key_F2);
              auto* editor = layers()->findChild<QLineEdit*>();
              ASSERT_TRUE(editor);
              editor->selectAll();
              QTest::keyClicks(editor, "Roof");
              QTest::keyClick(editor, Qt::Key_Return);
          },
          [&] { layers()->setCurrentItem(layers()->topLevelItem(rowOf("Roof"))); }, button("Set Current"),
          [&] {
              AcDbObjectPointer<AcDbLayerTableRecord> layer(drawing().clayer(), AcDb::kForRead);
              current = QString::fromStdWString(layer->name());
          },
          type("U"), type("U"), type("U"), [&] { gone = rowOf("Roof") < 0 && rowOf("Layer1") < 0; }});
    EXPECT_EQ(current, "Roof") << transcript().toStdString();
    EXPECT_TRUE(gone);
}

TEST_F(PanelsTest, NamesThatCannotBeAreRefusedWithAReason) {
    play({type("-LAYER N Walls "), [&] {
              EXPECT_NE(desk::renameLayer(layerId(L"Walls"), "a/b"), "");
              EXPECT_NE(desk::renameLayer(layerId(L"Walls"), "  "), "");
              EXPECT_NE(desk::renameLayer(layerId(L"Walls"), "0"), "");
              EXPECT_NE(desk::renameLayer(layerId(L"0"), "Zero"), "");
              EXPECT_EQ(desk::renameLayer(layerId(L"Walls"), "walls"), "") << "the case alone may change";
          }});
}

TEST_F(PanelsTest, ThePropertiesOfASelectionAreShownAndChangedInOneStep) {
    QString facts;
    std::wstring moved, back;
    size_t stillSelected = 0;
    play({type("-LAYER N Walls "), type(kView), type("LINE 0,0 30,40 "), click(15, 20),
          [&] { facts = properties().factsShown(); }, choose(&desk::PropertiesPanel::layerBox, "Walls"),
          [&] { moved = layerOfFirst(), stillSelected = desk_->frontEnd().selection().size(); }, type("U"),
          [&] { back = layerOfFirst(); }});
    EXPECT_TRUE(facts.contains("Line")) << facts.toStdString();
    EXPECT_TRUE(facts.contains("50.0000")) << facts.toStdString();
    EXPECT_EQ(moved, L"Walls");
    EXPECT_EQ(stillSelected, 1u);
    EXPECT_EQ(back, L"0");
}

TEST_F(PanelsTest, ColoursAndLinetypesOfManyObjectsButNotOfLockedOnes) {
    int red = 0, own = 0;
    play({type("LINE 0,0 30,40 "), type("CIRCLE 0,0 9"), type("-LAYER M Locked "), type("LINE 1,1 2,2 "),
          trigger("selectAll"), type("-LAYER LO Locked "), trigger("selectAll"),
          [&] {
              desk_->frontEnd().setSelection(entities()); // the locked one with them
          },
          choose(&desk::PropertiesPanel::colorBox, "Red"),
          choose(&desk::PropertiesPanel::linetypeBox, "ByBlock"),
          [&] {
              for (const AcDbObjectId id : entities()) {
                  AcDbObjectPointer<AcDbEntity> entity(id, AcDb::kForRead);
                  red += entity->colorIndex() == 1;
                  own += entity->linetypeId() == drawing().byBlockLinetype();
              }
          }});
    EXPECT_EQ(red, 2);
    EXPECT_EQ(own, 2);
    EXPECT_TRUE(transcript().contains("1 objects on locked layers")) << transcript().toStdString();
}

TEST_F(PanelsTest, AMixedSelectionIsCountedByKindAndLeavesOpenWhatDiffers) {
    desk::SelectionFacts facts;
    play({type("LINE 0,0 30,40 "), type("LINE 0,0 3,4 "), type("-LAYER M Other "), type("CIRCLE 0,0 10"),
          [&] { facts = desk::factsOf(entities()); }});
    EXPECT_EQ(facts.kinds, (QStringList{"Circle (1)", "Line (2)"}));
    EXPECT_FALSE(facts.layer);
    EXPECT_TRUE(facts.color && facts.color->isByLayer());
    ASSERT_TRUE(facts.length && facts.area);
    EXPECT_NEAR(*facts.length, 55 + 62.83185307179586, 1e-9);
    EXPECT_NEAR(*facts.area, 314.1592653589793, 1e-9);
}

TEST_F(PanelsTest, WithoutASelectionTheColourIsThatOfNewObjects) {
    Adesk::UInt16 drawn = 0;
    play({choose(&desk::PropertiesPanel::colorBox, "Green"), type("LINE 0,0 1,1 "), [&] {
              AcDbObjectPointer<AcDbEntity> entity(entities().at(0), AcDb::kForRead);
              drawn = entity->colorIndex();
          }});
    EXPECT_EQ(drawn, 3);
}

TEST_F(PanelsTest, ABlockTellsTheCommandThatMadeIt) {
    QString facts;
    play({type("LINE 0,0 100,0 "), type("CIRCLE 0,50 2"), type("AAC 50,0 2,50 0,0"), pause(),
          [&] {
              ASSERT_FALSE(host::modalDialogs().empty()) << transcript().toStdString();
              QTest::keyClick(desk_->dialogs().windowOf(host::modalDialogs().back()), Qt::Key_Return);
          },
          pause(),
          [&] {
              desk_->frontEnd().setSelection({entities().back()});
              facts = properties().factsShown();
          }});
    EXPECT_TRUE(facts.contains("AAC - Array along one curve"))
        << facts.toStdString() << transcript().toStdString();
}

TEST(Colors, ComeBackFromWhatTheyLookLike) {
    for (int index = 1; index <= 255; ++index) {
        AcCmColor color;
        color.setColorIndex(Adesk::UInt16(index));
        const AcCmColor back = desk::colorOf(desk::seenColor(color));
        EXPECT_TRUE(back.isByACI()) << index;
        EXPECT_EQ(desk::seenColor(back), desk::seenColor(color)) << index;
    }
    EXPECT_TRUE(desk::colorOf(QColor(12, 34, 57)).isByColor());
    EXPECT_EQ(desk::colorName(desk::colorOf(QColor(12, 34, 57))), "12,34,57");
}

} // namespace
} // namespace desktest
