#include <gtest/gtest.h>

#include "interaction/view_manager/fakes.h"
#include "support/virtual_slot.h"

using namespace Korvane;

namespace {

// The order is what a host's compiled overrides rely on.
TEST(ViewManagerSlots, stand_in_their_order) {
  using V = OpenViewManager;
  const int slots[] = {
      VirtualSlot(&V::SetKorvane),
      VirtualSlot(&V::SetRenderer),
      VirtualSlot(&V::SetCam3DController),
      VirtualSlot(&V::SetNavigationBar),
      VirtualSlot(&V::SetHelmDisc),
      VirtualSlot(&V::SetStoryboard),
      VirtualSlot(&V::SetOrientor),
      VirtualSlot(&V::AddToolbar),
      VirtualSlot(&V::RemoveToolbar),
      VirtualSlot(&V::Create),
      VirtualSlot(&V::Destroy),
      VirtualSlot(&V::SetViewportSize),
      VirtualSlot(&V::Refresh),
      VirtualSlot(&V::OnDraw),
      VirtualSlot(&V::OnDrawInScene),
      VirtualSlot(&V::OnDrawOverlay),
      VirtualSlot(&V::OnSetCursor),
      VirtualSlot(&V::OnMouseMove),
      VirtualSlot(&V::OnMouseWheel),
      VirtualSlot(&V::OnLeftMouseDown),
      VirtualSlot(&V::OnLeftMouseUp),
      VirtualSlot(&V::OnMiddleMouseDown),
      VirtualSlot(&V::OnMiddleMouseUp),
      VirtualSlot(&V::OnRightMouseDown),
      VirtualSlot(&V::OnRightMouseUp),
      VirtualSlot(&V::OnKeyDown),
      VirtualSlot(&V::OnKeyUp),
      VirtualSlot(&V::FitBoundsToView),
      VirtualSlot(&V::FitAllToView),
      VirtualSlot(&V::FitBoundBoxToView),
      VirtualSlot(&V::FitSelectionToView),
      VirtualSlot(&V::FitToView),
      VirtualSlot(&V::LevelCamera),
      VirtualSlot(&V::RestoreCenter),
      VirtualSlot(&V::SetOrientorVisible),
      VirtualSlot(&V::IsOrientorVisible),
      VirtualSlot(&V::SetNavigationBarVisible),
      VirtualSlot(&V::IsNavigationBarVisible),
      VirtualSlot(&V::SetNavigationBarLinkedToOrientor),
      VirtualSlot(&V::IsNavigationBarLinkedToOrientor),
      VirtualSlot(&V::SetRibbonVisible),
      VirtualSlot(&V::IsRibbonVisible),
      VirtualSlot(&V::SetRibbonSize),
      VirtualSlot(&V::GetRibbonWidth),
      VirtualSlot(&V::GetRibbonHeight),
      VirtualSlot(&V::AddTool),
      VirtualSlot(&V::RemoveTool),
      VirtualSlot(&V::SetActiveTool),
      VirtualSlot(&V::GetActiveTool),
      VirtualSlot(&V::SetCleanScreen),
      VirtualSlot(&V::OnReelshowStartPlayback),
      VirtualSlot(&V::OnReelshowStopPlayback),
      VirtualSlot(&V::WantActiveToolEnabled),
      VirtualSlot(&V::WantCam3DControllerEnabled),
      VirtualSlot(&V::WantMiddleMouseNavigation),
      VirtualSlot(&V::WantHelmDiscEnabled),
      VirtualSlot(&V::WantHelmDiscVisible),
      VirtualSlot(&V::WantOrientorEnabled),
      VirtualSlot(&V::BeginMiddleMouseNavigation),
      VirtualSlot(&V::EndMiddleMouseNavigation),
      VirtualSlot(&V::BeginOrbitingWithMouse),
      VirtualSlot(&V::EndOrbitingWithMouse),
      VirtualSlot(&V::BeginPanningWithMouse),
      VirtualSlot(&V::EndPanningWithMouse),
      VirtualSlot(&V::BeginZoomingWithMouse),
      VirtualSlot(&V::EndZoomingWithMouse),
      VirtualSlot(&V::InstantiatePivotBall),
      VirtualSlot(&V::RemoveAllTools),
      VirtualSlot(&V::IsMouseInRibbonRegion),
      VirtualSlot(&V::IsMouseInToolbarRegion),
      VirtualSlot(&V::LinkNavBarToOrientor),
  };
  int expected = 2;  // past the destructor
  for (const int slot : slots) EXPECT_EQ(slot, expected++);
  EXPECT_EQ(expected, 73);
}

TEST(ViewManagerSlots, hold_none_of_the_plain_operations) {
  using V = OpenViewManager;
  EXPECT_EQ(VirtualSlot(&V::GetPivotBall), -1);
  EXPECT_EQ(VirtualSlot(&V::GetRewindHistory), -1);
  EXPECT_EQ(VirtualSlot(&V::GetTooltip), -1);
  EXPECT_EQ(VirtualSlot(&V::GetOrientorBounds), -1);
  EXPECT_EQ(VirtualSlot(&V::GetOrientorSize), -1);
  EXPECT_EQ(VirtualSlot(&V::IsLeftMouseDown), -1);
  EXPECT_EQ(VirtualSlot(&V::IsRightMouseDown), -1);
  EXPECT_EQ(VirtualSlot(&V::SaveHelmDiscPosition), -1);
  EXPECT_EQ(VirtualSlot(&V::RestoreHelmDiscPosition), -1);
}

// Relative order: what the widgets will add may stand between.
void ExpectRising(const std::vector<int>& slots) {
  int before = 1;  // the destructor
  for (std::size_t i = 0; i < slots.size(); ++i) {
    EXPECT_GT(slots[i], before) << "entry " << i;
    before = slots[i];
  }
}

TEST(CollaboratorSlots, of_the_disc_stand_in_their_order) {
  using D = HelmDisc;
  ExpectRising({VirtualSlot(&D::SetKorvane), VirtualSlot(&D::GetKorvane), VirtualSlot(&D::SetRenderer),
                VirtualSlot(&D::Create), VirtualSlot(&D::Destroy), VirtualSlot(&D::SetActiveDisc),
                VirtualSlot(&D::GetActiveDisc), VirtualSlot(&D::DrawOverlay), VirtualSlot(&D::OpenMenu),
                VirtualSlot(&D::OnMouseMove), VirtualSlot(&D::OnLeftMouseDown),
                VirtualSlot(&D::OnLeftMouseUp), VirtualSlot(&D::OnKeyDown), VirtualSlot(&D::OnKeyUp)});
}

TEST(CollaboratorSlots, of_the_storyboard_stand_in_their_order) {
  using S = Storyboard;
  ExpectRising({VirtualSlot(&S::SetKorvane), VirtualSlot(&S::SetRenderer), VirtualSlot(&S::SetRewindHistory),
                VirtualSlot(&S::SetShotEditor), VirtualSlot(&S::SetUndoQueue), VirtualSlot(&S::Create),
                VirtualSlot(&S::Destroy), VirtualSlot(&S::Draw), VirtualSlot(&S::OnMouseMove),
                VirtualSlot(&S::OnLeftMouseDown), VirtualSlot(&S::OnLeftMouseUp),
                VirtualSlot(&S::OnRightMouseDown), VirtualSlot(&S::OnKeyDown), VirtualSlot(&S::OnKeyUp),
                VirtualSlot(&S::OpenMenu)});
}

TEST(CollaboratorSlots, of_the_toolbar_stand_in_their_order) {
  using T = Toolbar;
  ExpectRising({VirtualSlot(&T::Create), VirtualSlot(&T::Destroy), VirtualSlot(&T::Draw),
                VirtualSlot(&T::OnMouseMove), VirtualSlot(&T::OnLeftMouseDown),
                VirtualSlot(&T::OnLeftMouseUp), VirtualSlot(&T::OnRightMouseDown),
                VirtualSlot(&T::OnRightMouseUp)});
}

TEST(CollaboratorSlots, of_the_navigation_bar_stand_in_their_order) {
  using N = NavigationBar;
  ExpectRising({VirtualSlot(&N::SetViewportSize), VirtualSlot(&N::SetOrientorIsVisible),
                VirtualSlot(&N::SetLinkedToOrientor), VirtualSlot(&N::SetActiveHelmDisc),
                VirtualSlot(&N::Create), VirtualSlot(&N::Destroy), VirtualSlot(&N::Draw),
                VirtualSlot(&N::OnMouseMove), VirtualSlot(&N::OnLeftMouseDown),
                VirtualSlot(&N::OnLeftMouseUp), VirtualSlot(&N::OnRightMouseDown),
                VirtualSlot(&N::OnRightMouseUp), VirtualSlot(&N::SetItemSelected)});
}

TEST(CollaboratorSlots, of_the_controller_stand_in_their_order) {
  using C = Cam3DController;
  ExpectRising({VirtualSlot(&C::SetPivotBall), VirtualSlot(&C::GetPivotBall), VirtualSlot(&C::SetRenderer),
                VirtualSlot(&C::GetRenderer), VirtualSlot(&C::Create), VirtualSlot(&C::Destroy),
                VirtualSlot(&C::Draw), VirtualSlot(&C::SetEnabled), VirtualSlot(&C::GetEnabled)});
}

TEST(CollaboratorSlots, of_the_disc_observer_stand_in_their_order) {
  using O = HelmDiscObserver;
  const int slots[] = {
      VirtualSlot(&O::OnActivated),      VirtualSlot(&O::OnClosed),         VirtualSlot(&O::OnClicked),
      VirtualSlot(&O::OnDragBegin),      VirtualSlot(&O::OnDragEnd),        VirtualSlot(&O::OnKeyDown),
      VirtualSlot(&O::OnKeyUp),          VirtualSlot(&O::OnWelcomeClicked), VirtualSlot(&O::OnWelcomeClosed),
      VirtualSlot(&O::OnWelcomeEntered), VirtualSlot(&O::OnWelcomeExited)};
  int expected = 2;
  for (const int slot : slots) EXPECT_EQ(slot, expected++);
}

TEST(CollaboratorSlots, of_the_storyboard_observer_stand_in_their_order) {
  using O = StoryboardObserver;
  const int slots[] = {VirtualSlot(&O::OnOpened),           VirtualSlot(&O::OnClosed),
                       VirtualSlot(&O::OnModeChanged),      VirtualSlot(&O::OnPartClicked),
                       VirtualSlot(&O::OnShotCreated),      VirtualSlot(&O::OnPlaybackStory),
                       VirtualSlot(&O::OnPlaybackSequence), VirtualSlot(&O::OnPlaybackSingleShot),
                       VirtualSlot(&O::OnPreviewShot),      VirtualSlot(&O::OnPlaybackStopped),
                       VirtualSlot(&O::OnPlaybackResumed),  VirtualSlot(&O::OnTargetShot)};
  int expected = 2;
  for (const int slot : slots) EXPECT_EQ(slot, expected++);
}

}  // namespace
