// The desk's parts that need no window: index, projection, menu files.
#include <gtest/gtest.h>

#include <random>

#include "apps/desk/box_index.h"
#include "apps/desk/menu_file.h"
#include "apps/desk/screen_map.h"
#include "apps/desk/view_state.h"
#include "host/os/files.h"

namespace desktest {
namespace {

TEST(BoxIndex, FindsWhatAPlainSearchFinds) {
    std::mt19937 random(20240607);
    std::uniform_real_distribution<double> place(-1000, 1000), size(0, 30);
    for (const size_t count : {0u, 1u, 16u, 17u, 5000u}) {
        std::vector<AcDbExtents2d> boxes(count);
        for (size_t i = 0; i < count; ++i) {
            if (i % 50 == 7) continue; // not valid: never found
            boxes[i].addPoint({place(random), place(random)});
            boxes[i].addPoint(boxes[i].minPoint() + AcGeVector2d(size(random), size(random)));
        }
        const desk::BoxIndex index(boxes);
        for (int trial = 0; trial < 50; ++trial) {
            AcDbExtents2d window;
            window.addPoint({place(random), place(random)});
            window.addPoint({place(random), place(random)});
            std::vector<std::uint32_t> found, plain;
            index.find(window, found);
            for (std::uint32_t i = 0; i < count; ++i)
                if (boxes[i].isValid() && boxes[i].minPoint().x <= window.maxPoint().x &&
                    boxes[i].maxPoint().x >= window.minPoint().x &&
                    boxes[i].minPoint().y <= window.maxPoint().y &&
                    boxes[i].maxPoint().y >= window.minPoint().y)
                    plain.push_back(i);
            EXPECT_EQ(found, plain) << count << " boxes, trial " << trial;
        }
    }
}

TEST(ScreenMap, PixelsLeadToThePlaneAndBackFromEverySide) {
    const AcGeVector3d sides[] = {{0, 0, 1}, {1, -1, 1}, {-3, 2, 5}};
    for (const AcGeVector3d& direction : sides)
        for (const double far : {1.0, 1e6}) {
            host::ViewFrame view;
            view.direction = direction;
            view.target.set(far, -far, 0);
            view.height = 40;
            view.twist = 0.3;
            const desk::ScreenMap map(view, {800, 600});
            const AcGePoint3d origin(far, -far, 3);
            const AcGeVector3d normal(0.1, 0.2, 1);
            const AcGePoint3d on = map.toPlane({120, 450}, origin, normal);
            EXPECT_NEAR(normal.dotProduct(on - origin), 0, 1e-9 * far);
            AcGePoint2d back;
            ASSERT_TRUE(map.toScreen(on, back));
            EXPECT_NEAR(back.x, 120, 1e-6);
            EXPECT_NEAR(back.y, 450, 1e-6);
        }
}

TEST(ScreenMap, PanMovesThePlaceUnderTheHandAlong) {
    host::ViewFrame view;
    view.center.set(5, 6);
    view.height = 12;
    const desk::ScreenMap map(view, {640, 480});
    const AcGePoint2d held = map.toDisplay({100, 100});
    const desk::ScreenMap moved(desk::panned(map, {100, 100}, {180, 30}), {640, 480});
    EXPECT_NEAR(moved.toDisplay({180, 30}).distanceTo(held), 0, 1e-12);
}

TEST(MenuFile, HoldsEveryCommandUnderItsSection) {
    const auto file = desk::readMenuFile(CORVANE_SOURCE_DIR "/resources/Corvane_eng.cuix");
    ASSERT_EQ(file.error, "");
    ASSERT_EQ(file.menus.size(), 3u);
    EXPECT_EQ(file.menus[0].caption, "Corvane Curves");
    bool found = false;
    for (const desk::MenuItem& item : file.menus[0].items.at(0).items)
        found = found || (item.caption == "PLYH" && item.line == L"_SCVN_PLYH" && !item.help.isEmpty());
    EXPECT_TRUE(found);
}

// Cut anywhere or with any byte changed the archive gives its member or a reason, and never more.
TEST(MenuFile, DamagedArchivesGiveAReason) {
    std::string whole;
    ASSERT_FALSE(host::readWhole(CORVANE_SOURCE_DIR "/resources/Corvane_eng.cuix", whole));
    ASSERT_EQ(desk::zipMember(whole, "Menu.cui").error, "");
    EXPECT_NE(desk::zipMember(whole, "Other.cui").error, "");
    for (size_t size = 0; size < whole.size(); size += 37)
        EXPECT_NE(desk::zipMember(whole.substr(0, size), "Menu.cui").error, "") << size << " bytes";
    for (size_t at = 0; at < whole.size(); at += 3) {
        std::string damaged = whole;
        damaged[at] = char(damaged[at] ^ 0xFF);
        const desk::ZipMember member = desk::zipMember(damaged, "Menu.cui");
        EXPECT_TRUE(member.error.empty() != member.bytes.empty()) << "byte " << at;
    }
}

} // namespace
} // namespace desktest
