// The switch for running object snaps.
#include "editor/window/snap_button.h"

#include "editor/application/drawing.h"
#include "editor/application/editor.h"
#include "editor/application/object_snaps.h"

#include <QAction>
#include <QMenu>

#include <gtest/gtest.h>

namespace {

using namespace editor;

struct SnapButtonTest : testing::Test {
    int mode() { return std::get<int>(*editor.variables().get(L"OSMODE")); }
    void setMode(int value) { ASSERT_TRUE(editor.variables().set(L"OSMODE", value)); }

    Editor editor;
    SnapButton button;
};

TEST_F(SnapButtonTest, ShowsAndSetsTheVariable) {
    EXPECT_EQ(mode(), snapModeAtFirst);
    EXPECT_TRUE(button.isChecked());
    button.click();
    EXPECT_EQ(mode(), snapModeAtFirst | snapSwitchedOff) << "the kinds stay chosen";
    button.click();
    EXPECT_EQ(mode(), snapModeAtFirst);
    QAction* const middle = button.menu()->actions()[1];
    EXPECT_EQ(middle->text(), "Midpoint");
    EXPECT_FALSE(middle->isChecked());
    middle->trigger();
    EXPECT_EQ(mode(), snapModeAtFirst | 2);
    setMode(snapSwitchedOff | 4);
    button.refresh();
    EXPECT_FALSE(button.isChecked());
    EXPECT_FALSE(middle->isChecked());
    EXPECT_TRUE(button.menu()->actions()[2]->isChecked());
    EXPECT_FALSE(editor.variables().set(L"OSMODE", -1));
    EXPECT_FALSE(editor.variables().set(L"OSMODE", 2 * snapSwitchedOff));
}

TEST_F(SnapButtonTest, TheNearestPointOfTheChosenKindsIsMeant) {
    editor.documents().create();
    editor.execute(L"LINE 0,0 10,0 \n");
    const AcDbObjectId line = lastEntity(*acdbHostApplicationServices()->workingDatabase());
    const auto snapped = runningSnap(line, {9.5, 0.1, 0}, 1);
    ASSERT_TRUE(snapped);
    EXPECT_EQ(snapped->kind, SnapKind::End);
    EXPECT_EQ(snapped->point.x, 10);
    EXPECT_FALSE(runningSnap(line, {5.2, 0, 0}, 1)) << "middles are not chosen";
    setMode(2);
    EXPECT_EQ(runningSnap(line, {5.2, 0, 0}, 1).value().point.x, 5);
    EXPECT_FALSE(runningSnap(line, {8, 0, 0}, 1)) << "too far";
    setMode(2 | snapSwitchedOff);
    EXPECT_FALSE(runningSnap(line, {5.2, 0, 0}, 1));
    EXPECT_FALSE(runningSnap({}, {5.2, 0, 0}, 1));
}

TEST_F(SnapButtonTest, TheCentreOfARoundObjectIsMeantWhereverTheObjectIsPointedAt) {
    editor.documents().create();
    editor.execute(L"CIRCLE 3,4 100\n");
    const AcDbObjectId circle = lastEntity(*acdbHostApplicationServices()->workingDatabase());
    const auto snapped = runningSnap(circle, {103, 4, 0}, 1);
    ASSERT_TRUE(snapped);
    EXPECT_EQ(snapped->kind, SnapKind::Center);
    EXPECT_EQ(snapped->point.x, 3);
}

} // namespace
