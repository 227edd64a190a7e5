#include <gtest/gtest.h>

#include "korvane/renderer.h"
#include "support/virtual_slot.h"

namespace {

using namespace Korvane;

// Reaches the protected operations; never made.
class Slots : public Renderer {
 public:
  static int LoadTextureSlot() { return VirtualSlot(&Slots::LoadTexture); }
  static int ReleaseTextureSlot() { return VirtualSlot(&Slots::ReleaseTexture); }
  static int SetCursorIconSlot() { return VirtualSlot(&Slots::SetCursorIcon); }
};

TEST(RendererSlots, stand_in_their_order_after_the_destructor) {
  const int slots[] = {
      VirtualSlot(&Renderer::Create),
      VirtualSlot(&Renderer::Destroy),
      VirtualSlot(&Renderer::ApplyTextureUsage),
      Slots::LoadTextureSlot(),
      Slots::ReleaseTextureSlot(),
      VirtualSlot(&Renderer::BeginRender),
      VirtualSlot(&Renderer::EndRender),
      VirtualSlot(&Renderer::RenderGeometry),
      VirtualSlot(&Renderer::BeginSelection),
      VirtualSlot(&Renderer::EndSelection),
      VirtualSlot(&Renderer::RenderSelectionGeometry),
      VirtualSlot(&Renderer::GetSelection),
      VirtualSlot(static_cast<bool (Renderer::*)(ResourceIcon3D*)>(&Renderer::Render)),
      VirtualSlot(static_cast<bool (Renderer::*)(DynamicIcon2D*)>(&Renderer::Render)),
      VirtualSlot(static_cast<bool (Renderer::*)(ResourceIcon2D*)>(&Renderer::Render)),
      VirtualSlot(&Renderer::LoadStringResource),
      VirtualSlot(&Renderer::CreateImageData),
      VirtualSlot(&Renderer::CreateSceneScreenshot),
      VirtualSlot(&Renderer::CreateTextLabel),
      VirtualSlot(&Renderer::CreateTooltip),
      VirtualSlot(&Renderer::CreateTooltipHUD),
      VirtualSlot(&Renderer::CreateMessageHUD),
      VirtualSlot(&Renderer::CreatePivotLabel),
      VirtualSlot(&Renderer::CreateMiniWheelLabel),
      VirtualSlot(&Renderer::CreateUCSMenuLabel),
      VirtualSlot(&Renderer::DestroyIcon),
      VirtualSlot(&Renderer::QueryRaySceneIntersection),
      VirtualSlot(&Renderer::QueryMouseRaySceneIntersection),
      VirtualSlot(&Renderer::QueryScreenRectRaySceneIntersection),
      VirtualSlot(&Renderer::BeginMouseoverComponent),
      VirtualSlot(&Renderer::GetMouseoverComponent),
      VirtualSlot(&Renderer::EndMouseoverComponent),
      VirtualSlot(&Renderer::SetCursorID),
      VirtualSlot(&Renderer::SetCursorPosition),
      VirtualSlot(&Renderer::OpenMenu),
      VirtualSlot(&Renderer::OpenUCSMenu),
      VirtualSlot(&Renderer::ProjectToScreen),
      Slots::SetCursorIconSlot(),
  };
  int expected = 2;  // the destructor takes the first two places
  for (const int slot : slots) {
    EXPECT_EQ(slot, expected);
    ++expected;
  }
}

TEST(RendererSlots, hold_none_of_the_counting_operations) {
  EXPECT_EQ(VirtualSlot(&Renderer::IncrementTextureUsage), -1);
  EXPECT_EQ(VirtualSlot(&Renderer::DecrementTextureUsage), -1);
  EXPECT_EQ(VirtualSlot(&Renderer::WantTexture), -1);
  EXPECT_EQ(VirtualSlot(&Renderer::GetStringTexture), -1);
  EXPECT_EQ(VirtualSlot(&Renderer::ReleaseStringTexture), -1);
  EXPECT_EQ(VirtualSlot(&Renderer::WantStringTexture), -1);
  EXPECT_EQ(VirtualSlot(&Renderer::CreateTooltipByID), -1);
  EXPECT_EQ(VirtualSlot(&Renderer::CreateTooltipHUDByID), -1);
  EXPECT_EQ(VirtualSlot(&Renderer::CreateMessageHUDByID), -1);
  EXPECT_EQ(VirtualSlot(&Renderer::CreatePivotLabelByID), -1);
  EXPECT_EQ(VirtualSlot(&Renderer::CreateMiniWheelLabelByID), -1);
  EXPECT_EQ(VirtualSlot(&Renderer::GetCursorID), -1);
  EXPECT_EQ(VirtualSlot(&Renderer::QueueSetCursorID), -1);
}

}  // namespace
