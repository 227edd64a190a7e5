#include "korvane/renderer.h"

#include <gtest/gtest.h>

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "korvane/camera_parameters.h"
#include "support/recording_renderer.h"

namespace {

using namespace Korvane;
using Calls = std::vector<std::string>;

TextureID Texture(int id) { return static_cast<TextureID>(id); }
StringID String(int id) { return static_cast<StringID>(id); }
CursorID Cursor(int id) { return static_cast<CursorID>(id); }

class RendererTest : public ::testing::Test {
 protected:
  Calls Apply() {
    renderer.ClearCalls();
    renderer.ApplyTextureUsage();
    return renderer.TakeCalls();
  }

  RecordingRenderer renderer;
};

// ---- the record ----

TEST_F(RendererTest, material_has_its_defaults) {
  const Renderer::MaterialParams material;
  for (const float part : material.colour) EXPECT_EQ(part, 1.0F);
  EXPECT_EQ(int{material.texture}, 185);
  EXPECT_EQ(material.drawMode, 0);
  EXPECT_EQ(material.lineWidth, 1.0F);
}

TEST_F(RendererTest, modes_have_their_numbers) {
  EXPECT_EQ(int{Renderer::RENDER_OVERLAY}, 0);
  EXPECT_EQ(int{Renderer::RENDER_PERSPECTIVE}, 1);
  EXPECT_EQ(int{Renderer::RENDER_SCENE}, 2);
  EXPECT_EQ(int{Renderer::DRAW_QUADS}, 0);
  EXPECT_EQ(int{Renderer::DRAW_CUBE_LABELS}, 2);
  EXPECT_EQ(int{Renderer::DRAW_SOLID}, 3);
  EXPECT_EQ(int{Renderer::DRAW_CUBE_SHADOW}, 4);
  EXPECT_EQ(int{Renderer::DRAW_THROUGH}, 5);
  EXPECT_EQ(int{Renderer::DRAW_OVERLAY_ICONS}, 6);
}

// ---- texture usage ----

TEST_F(RendererTest, counting_neither_loads_nor_frees_anything) {
  renderer.IncrementTextureUsage(Texture(3));
  renderer.DecrementTextureUsage(Texture(3));
  renderer.WantTexture(Texture(4), true);
  renderer.WantTexture(Texture(4), false);
  EXPECT_TRUE(renderer.GetCalls().empty());
}

TEST_F(RendererTest, a_second_increment_with_no_apply_in_between_leads_to_one_load) {
  renderer.IncrementTextureUsage(Texture(3));
  renderer.IncrementTextureUsage(Texture(3));
  EXPECT_EQ(Apply(), Calls{"LoadTexture(3)"});
  EXPECT_EQ(Apply(), Calls{});
}

TEST_F(RendererTest, a_decrement_to_0_and_an_increment_to_1_before_the_next_apply_lead_to_nothing) {
  renderer.IncrementTextureUsage(Texture(3));
  Apply();
  renderer.DecrementTextureUsage(Texture(3));
  renderer.IncrementTextureUsage(Texture(3));
  EXPECT_EQ(Apply(), Calls{});
}

TEST_F(RendererTest, an_increment_and_a_decrement_before_the_first_apply_lead_to_nothing) {
  renderer.IncrementTextureUsage(Texture(3));
  renderer.DecrementTextureUsage(Texture(3));
  EXPECT_EQ(Apply(), Calls{});
}

TEST_F(RendererTest, a_texture_is_released_when_its_last_user_is_gone_and_loaded_again_for_the_next) {
  renderer.IncrementTextureUsage(Texture(3));
  renderer.IncrementTextureUsage(Texture(3));
  Apply();
  renderer.DecrementTextureUsage(Texture(3));
  EXPECT_EQ(Apply(), Calls{});
  renderer.DecrementTextureUsage(Texture(3));
  EXPECT_EQ(Apply(), Calls{"ReleaseTexture(3)"});
  EXPECT_EQ(Apply(), Calls{});
  renderer.IncrementTextureUsage(Texture(3));
  EXPECT_EQ(Apply(), Calls{"LoadTexture(3)"});
}

TEST_F(RendererTest, a_count_never_goes_below_0) {
  renderer.IncrementTextureUsage(Texture(3));
  for (int i = 0; i < 5; ++i) renderer.DecrementTextureUsage(Texture(3));
  EXPECT_EQ(Apply(), Calls{});
  renderer.IncrementTextureUsage(Texture(3));
  EXPECT_EQ(Apply(), Calls{"LoadTexture(3)"});
}

TEST_F(RendererTest, a_decrement_of_an_unknown_texture_is_left_alone) {
  renderer.DecrementTextureUsage(Texture(9));
  EXPECT_EQ(Apply(), Calls{});
  renderer.IncrementTextureUsage(Texture(9));
  EXPECT_EQ(Apply(), Calls{"LoadTexture(9)"});
}

TEST_F(RendererTest, the_texture_that_means_none_is_ignored) {
  renderer.IncrementTextureUsage(TEXTURE_NONE);
  renderer.WantTexture(TEXTURE_NONE, true);
  EXPECT_EQ(Apply(), Calls{});
  renderer.DecrementTextureUsage(TEXTURE_NONE);
  EXPECT_EQ(Apply(), Calls{});
}

TEST_F(RendererTest, wanting_a_texture_increments_and_not_wanting_it_decrements) {
  renderer.WantTexture(Texture(3), true);
  renderer.WantTexture(Texture(3), true);
  renderer.WantTexture(Texture(3), false);
  EXPECT_EQ(Apply(), Calls{"LoadTexture(3)"});
  renderer.WantTexture(Texture(3), false);
  EXPECT_EQ(Apply(), Calls{"ReleaseTexture(3)"});
}

TEST_F(RendererTest, a_texture_that_failed_to_load_is_tried_again_at_every_later_apply) {
  renderer.FailAlways("LoadTexture");
  renderer.IncrementTextureUsage(Texture(3));
  EXPECT_EQ(Apply(), Calls{"LoadTexture(3)"});
  EXPECT_EQ(Apply(), Calls{"LoadTexture(3)"});
  renderer.Succeed("LoadTexture");
  EXPECT_EQ(Apply(), Calls{"LoadTexture(3)"});
  EXPECT_EQ(Apply(), Calls{});
}

TEST_F(RendererTest, a_texture_that_failed_to_load_is_not_released) {
  renderer.FailOnce("LoadTexture");
  renderer.IncrementTextureUsage(Texture(3));
  Apply();
  renderer.DecrementTextureUsage(Texture(3));
  EXPECT_EQ(Apply(), Calls{});
}

TEST_F(RendererTest, apply_releases_textures_then_destroys_texts_then_loads_textures_each_in_key_order) {
  for (const int id : {7, 2}) renderer.IncrementTextureUsage(Texture(id));
  for (const int id : {30, 5}) renderer.GetStringTexture(String(id));  // icons 1 and 2
  Apply();
  for (const int id : {7, 2}) renderer.DecrementTextureUsage(Texture(id));
  for (const int id : {30, 5}) renderer.ReleaseStringTexture(String(id));
  for (const int id : {9, 1}) renderer.IncrementTextureUsage(Texture(id));
  const Calls expected = {"ReleaseTexture(2)", "ReleaseTexture(7)", "DestroyIcon(2)",
                          "DestroyIcon(1)",    "LoadTexture(1)",    "LoadTexture(9)"};
  EXPECT_EQ(Apply(), expected);
}

// ---- string textures ----

// The operation that makes the icon of a text, written down apart from the library; empty for none.
std::string CreatorOf(int id) {
  if (id <= 27) return "CreateTooltip";
  if (id <= 38) return "CreateMessageHUD";
  if (id <= 42) return "CreatePivotLabel";
  if (id <= 46) return "";
  if (id <= 57) return "CreateTooltipHUD";
  if (id <= 66) return "CreateMiniWheelLabel";
  if (id <= 98) return "";
  if (id <= 100) return "CreateMessageHUD";
  return "";
}

class StringTextureTest : public ::testing::TestWithParam<int> {};

TEST_P(StringTextureTest, is_made_by_the_range_of_its_number) {
  const int id = GetParam();
  RecordingRenderer renderer;
  DynamicIcon2D* const icon = renderer.GetStringTexture(String(id));
  Calls expected = {"LoadStringResource(" + std::to_string(id) + ")"};
  if (id == 102) expected.clear();
  if (!CreatorOf(id).empty()) expected.push_back(CreatorOf(id) + "(text " + std::to_string(id) + ")");
  EXPECT_EQ(renderer.TakeCalls(), expected);
  EXPECT_EQ(icon != nullptr, !CreatorOf(id).empty());
  // What was made is shared from then on; what was not is asked for again.
  EXPECT_EQ(renderer.GetStringTexture(String(id)), icon);
  EXPECT_EQ(renderer.GetCalls().size(), icon != nullptr ? 0U : expected.size());
  EXPECT_EQ(renderer.GetLiveIconCount(), icon != nullptr ? 1 : 0);
}

INSTANTIATE_TEST_SUITE_P(all_numbers, StringTextureTest, ::testing::Range(0, 103));
INSTANTIATE_TEST_SUITE_P(past_the_last, StringTextureTest, ::testing::Values(103, 1000, 2147483647));

TEST_F(RendererTest, a_text_of_a_negative_number_has_no_icon) {
  EXPECT_EQ(renderer.GetStringTexture(String(-1)), nullptr);
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
}

TEST_F(RendererTest, a_text_without_an_icon_leaves_no_cache_and_no_usage_entry) {
  EXPECT_EQ(renderer.GetStringTexture(String(45)), nullptr);
  EXPECT_EQ(renderer.ReleaseStringTexture(String(45)), nullptr);
  EXPECT_EQ(Apply(), Calls{});
}

TEST_F(RendererTest, a_null_from_the_host_caches_nothing) {
  renderer.FailOnce("CreateTooltip");
  EXPECT_EQ(renderer.GetStringTexture(String(5)), nullptr);
  EXPECT_EQ(Apply(), Calls{});
  EXPECT_NE(renderer.GetStringTexture(String(5)), nullptr);
}

TEST_F(RendererTest, a_text_is_destroyed_when_its_last_user_is_gone) {
  renderer.GetStringTexture(String(5));
  renderer.GetStringTexture(String(5));
  renderer.ReleaseStringTexture(String(5));
  EXPECT_EQ(Apply(), Calls{});
  renderer.ReleaseStringTexture(String(5));
  EXPECT_EQ(Apply(), Calls{"DestroyIcon(1)"});
  EXPECT_EQ(renderer.GetLiveIconCount(), 0);
  EXPECT_EQ(Apply(), Calls{});
}

TEST_F(RendererTest, a_text_released_and_taken_again_before_apply_keeps_its_icon) {
  DynamicIcon2D* const icon = renderer.GetStringTexture(String(5));
  renderer.ReleaseStringTexture(String(5));
  EXPECT_EQ(renderer.GetStringTexture(String(5)), icon);
  EXPECT_EQ(Apply(), Calls{});
  EXPECT_EQ(renderer.CountCalls("CreateTooltip"), 0);
}

TEST_F(RendererTest, a_text_taken_again_after_apply_is_made_anew_with_a_count_of_one) {
  renderer.GetStringTexture(String(5));
  renderer.ReleaseStringTexture(String(5));
  Apply();
  renderer.GetStringTexture(String(5));
  EXPECT_EQ(renderer.TakeCalls(), (Calls{"LoadStringResource(5)", "CreateTooltip(text 5)"}));
  renderer.ReleaseStringTexture(String(5));
  EXPECT_EQ(Apply(), Calls{"DestroyIcon(2)"});
}

TEST_F(RendererTest, the_count_of_a_text_never_goes_below_0) {
  renderer.GetStringTexture(String(5));
  for (int i = 0; i < 5; ++i) renderer.ReleaseStringTexture(String(5));
  renderer.GetStringTexture(String(5));
  EXPECT_EQ(Apply(), Calls{});
  EXPECT_EQ(renderer.GetLiveIconCount(), 1);
  renderer.ReleaseStringTexture(String(5));
  renderer.ReleaseStringTexture(String(5));
  EXPECT_EQ(Apply(), Calls{"DestroyIcon(1)"});
}

TEST_F(RendererTest, release_of_a_text_always_returns_null) {
  renderer.GetStringTexture(String(5));
  EXPECT_EQ(renderer.ReleaseStringTexture(String(5)), nullptr);
  EXPECT_EQ(renderer.ReleaseStringTexture(String(6)), nullptr);
  EXPECT_EQ(renderer.ReleaseStringTexture(STRING_NONE), nullptr);
}

TEST_F(RendererTest, the_text_that_means_none_is_never_loaded) {
  EXPECT_EQ(renderer.GetStringTexture(STRING_NONE), nullptr);
  EXPECT_EQ(renderer.WantStringTexture(STRING_NONE, true), nullptr);
  EXPECT_TRUE(renderer.GetCalls().empty());
}

TEST_F(RendererTest, wanting_a_text_gets_it_and_not_wanting_it_releases_it) {
  DynamicIcon2D* const icon = renderer.WantStringTexture(String(5), true);
  EXPECT_NE(icon, nullptr);
  EXPECT_EQ(renderer.WantStringTexture(String(5), false), nullptr);
  EXPECT_EQ(Apply(), Calls{"DestroyIcon(1)"});
}

TEST_F(RendererTest, icons_made_by_number_bypass_the_cache) {
  DynamicIcon2D* icons[] = {renderer.CreateTooltipByID(70), renderer.CreateTooltipHUDByID(71),
                            renderer.CreateMessageHUDByID(72), renderer.CreatePivotLabelByID(5),
                            renderer.CreateMiniWheelLabelByID(5)};
  const Calls expected = {"LoadStringResource(70)", "CreateTooltip(text 70)",
                          "LoadStringResource(71)", "CreateTooltipHUD(text 71)",
                          "LoadStringResource(72)", "CreateMessageHUD(text 72)",
                          "LoadStringResource(5)",  "CreatePivotLabel(text 5)",
                          "LoadStringResource(5)",  "CreateMiniWheelLabel(text 5)"};
  EXPECT_EQ(renderer.TakeCalls(), expected);
  EXPECT_EQ(Apply(), Calls{});
  EXPECT_NE(renderer.GetStringTexture(String(5)), icons[3]);
  for (DynamicIcon2D*& icon : icons) {
    ASSERT_NE(icon, nullptr);
    EXPECT_TRUE(renderer.DestroyIcon(icon));
    EXPECT_EQ(icon, nullptr);
  }
  EXPECT_EQ(renderer.GetLiveIconCount(), 1);
}

TEST_F(RendererTest, an_icon_by_number_may_be_null) {
  renderer.FailOnce("CreateTooltip");
  EXPECT_EQ(renderer.CreateTooltipByID(3), nullptr);
}

TEST(RendererDestructor, does_not_destroy_icons_still_in_the_cache) {
  static int destroyed = 0;
  class Counting : public RecordingRenderer {
   public:
    bool DestroyIcon(DynamicIcon2D*& icon) override {
      ++destroyed;
      return RecordingRenderer::DestroyIcon(icon);
    }
  };
  destroyed = 0;
  { Counting().GetStringTexture(String(5)); }
  EXPECT_EQ(destroyed, 0);
}

// ---- the cursor queue ----

TEST_F(RendererTest, the_cursor_is_the_normal_pointer_at_first) {
  EXPECT_EQ(int{renderer.GetCursorID()}, 26);
  EXPECT_EQ(int{CURSOR_ARROW}, 26);
  EXPECT_EQ(int{CURSOR_NONE}, 27);
}

TEST_F(RendererTest, a_cursor_set_with_the_queue_closed_is_shown_even_when_it_is_current) {
  EXPECT_TRUE(renderer.SetCursorID(CURSOR_ARROW));
  EXPECT_EQ(renderer.TakeCalls(), Calls{"SetCursorIcon(26)"});
}

TEST_F(RendererTest, a_cursor_set_with_the_queue_closed_becomes_current_and_answers_as_the_host_does) {
  EXPECT_TRUE(renderer.SetCursorID(CURSOR_PAN));
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_PAN);
  renderer.FailOnce("SetCursorIcon");
  EXPECT_FALSE(renderer.SetCursorID(CURSOR_ZOOM));
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_ZOOM);
}

TEST_F(RendererTest, cursors_set_with_the_queue_open_wait_and_the_last_one_counts) {
  renderer.QueueSetCursorID(true);
  EXPECT_FALSE(renderer.SetCursorID(CURSOR_PAN));
  EXPECT_FALSE(renderer.SetCursorID(CURSOR_ZOOM));
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_ARROW);
  EXPECT_TRUE(renderer.GetCalls().empty());
  renderer.QueueSetCursorID(false);
  EXPECT_EQ(renderer.TakeCalls(), Calls{"SetCursorIcon(2)"});
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_ZOOM);
}

TEST_F(RendererTest, closing_a_queue_after_a_single_set_of_the_current_cursor_calls_nothing) {
  renderer.QueueSetCursorID(true);
  renderer.SetCursorID(CURSOR_ARROW);
  renderer.QueueSetCursorID(false);
  EXPECT_TRUE(renderer.GetCalls().empty());
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_ARROW);
}

TEST_F(RendererTest, a_frame_that_asked_for_no_cursor_sends_27_and_the_next_such_frame_nothing) {
  renderer.QueueSetCursorID(true);
  renderer.QueueSetCursorID(false);
  EXPECT_EQ(renderer.TakeCalls(), Calls{"SetCursorIcon(27)"});
  EXPECT_EQ(renderer.GetCursorID(), CURSOR_NONE);
  renderer.QueueSetCursorID(false);
  renderer.QueueSetCursorID(true);
  renderer.QueueSetCursorID(false);
  EXPECT_TRUE(renderer.GetCalls().empty());
}

TEST_F(RendererTest, opening_an_open_queue_keeps_what_is_queued) {
  renderer.QueueSetCursorID(true);
  renderer.SetCursorID(CURSOR_PAN);
  renderer.QueueSetCursorID(true);
  renderer.QueueSetCursorID(false);
  EXPECT_EQ(renderer.TakeCalls(), Calls{"SetCursorIcon(3)"});
}

TEST_F(RendererTest, opening_a_closed_queue_forgets_what_was_left_in_it) {
  renderer.QueueSetCursorID(true);
  renderer.SetCursorID(CURSOR_ARROW);  // equal to the current one, so it stays queued at the close
  renderer.QueueSetCursorID(false);
  renderer.QueueSetCursorID(true);
  renderer.QueueSetCursorID(false);
  EXPECT_EQ(renderer.TakeCalls(), Calls{"SetCursorIcon(27)"});
}

TEST_F(RendererTest, closing_a_closed_queue_calls_nothing) {
  renderer.QueueSetCursorID(false);
  EXPECT_TRUE(renderer.GetCalls().empty());
}

TEST_F(RendererTest, a_cursor_after_the_queue_was_closed_is_shown_at_once) {
  renderer.QueueSetCursorID(true);
  renderer.SetCursorID(CURSOR_PAN);
  renderer.QueueSetCursorID(false);
  renderer.ClearCalls();
  renderer.SetCursorID(CURSOR_LOOK);
  EXPECT_EQ(renderer.TakeCalls(), Calls{"SetCursorIcon(4)"});
}

// ---- what a host may know better ----

TEST_F(RendererTest, a_mouse_ray_ignores_the_pixel_and_forwards_to_the_ray) {
  renderer.SetSceneHit(Vector3(7.0, 8.0, 9.0));
  Vector3 hit;
  EXPECT_TRUE(
      renderer.QueryMouseRaySceneIntersection(-5, 999, Vector3(1.0, 2.0, 3.0), Vector3(0.0, 0.0, 1.0), hit));
  EXPECT_EQ(hit, Vector3(7.0, 8.0, 9.0));
  EXPECT_EQ(renderer.TakeCalls(), Calls{"QueryRaySceneIntersection((1, 2, 3), (0, 0, 1))"});
  renderer.FailOnce("QueryRaySceneIntersection");
  EXPECT_FALSE(renderer.QueryMouseRaySceneIntersection(0, 0, Vector3(), Vector3(), hit));
}

TEST_F(RendererTest, questions_that_a_host_may_answer_are_false_by_default_and_write_nothing) {
  const Vector3 untouched(-1.0, -2.0, -3.0);
  Vector3 point = untouched;
  Vector3 normal = untouched;
  Vector2 pixel(-4.0, -5.0);
  EXPECT_FALSE(renderer.EndSelection());
  EXPECT_FALSE(renderer.QueryScreenRectRaySceneIntersection(0, 0, 10, 10, point));
  EXPECT_FALSE(renderer.BeginMouseoverComponent(true));
  EXPECT_FALSE(renderer.GetMouseoverComponent(Vector2(1.0, 2.0), point, normal));
  EXPECT_FALSE(renderer.EndMouseoverComponent());
  EXPECT_FALSE(renderer.ProjectToScreen(Vector3(1.0), pixel));
  EXPECT_EQ(point, untouched);
  EXPECT_EQ(normal, untouched);
  EXPECT_EQ(pixel, Vector2(-4.0, -5.0));
  EXPECT_TRUE(renderer.GetCalls().empty());
}

// ---- the numbers shared with the host ----

TEST(ResourceNumbers, of_cursors) {
  const CursorID inOrder[] = {CURSOR_ORBIT_CUBE,
                              CURSOR_ORBIT,
                              CURSOR_ZOOM,
                              CURSOR_PAN,
                              CURSOR_LOOK,
                              CURSOR_LOOK_AT,
                              CURSOR_WALK,
                              CURSOR_WALK_FORWARD,
                              CURSOR_WALK_BACK,
                              CURSOR_WALK_LEFT,
                              CURSOR_WALK_RIGHT,
                              CURSOR_WALK_FORWARD_LEFT,
                              CURSOR_WALK_FORWARD_RIGHT,
                              CURSOR_WALK_BACK_LEFT,
                              CURSOR_WALK_BACK_RIGHT,
                              CURSOR_RUN_FORWARD,
                              CURSOR_RUN_BACK,
                              CURSOR_RUN_LEFT,
                              CURSOR_RUN_RIGHT,
                              CURSOR_RUN_FORWARD_LEFT,
                              CURSOR_RUN_FORWARD_RIGHT,
                              CURSOR_RUN_BACK_LEFT,
                              CURSOR_RUN_BACK_RIGHT,
                              CURSOR_NO_TARGET,
                              CURSOR_CUBE_PART};
  int number = 0;
  for (const CursorID id : inOrder) EXPECT_EQ(int{id}, number++);
  EXPECT_EQ(int{Cursor(26)}, int{CURSOR_ARROW});
  EXPECT_EQ(int{Cursor(27)}, int{CURSOR_NONE});
}

TEST(ResourceNumbers, of_keys) {
  const std::map<int, KeyID> keys = {{0, KEY_SHIFT},  {1, KEY_CONTROL}, {2, KEY_DISC},    {3, KEY_UP},
                                     {4, KEY_DOWN},   {5, KEY_RIGHT},   {6, KEY_LEFT},    {7, KEY_DELETE},
                                     {8, KEY_ESCAPE}, {9, KEY_SLOWER},  {10, KEY_FASTER}, {11, KEY_RUN},
                                     {12, KEY_SPACE}};
  for (const auto& [number, key] : keys) EXPECT_EQ(int{key}, number);
}

TEST(ResourceNumbers, of_menus_models_and_what_means_none) {
  EXPECT_EQ(int{MENU_TOUR_BUILDING}, 0);
  EXPECT_EQ(int{MENU_VIEW_OBJECT}, 1);
  EXPECT_EQ(int{MENU_FULL_NAVIGATION}, 2);
  EXPECT_EQ(int{MENU_TWO_D}, 3);
  EXPECT_EQ(int{MENU_ORIENTOR}, 4);
  EXPECT_EQ(int{MENU_STORYBOARD}, 5);
  EXPECT_EQ(int{MODEL_PIVOT_BALL}, 0);
  EXPECT_EQ(int{MODEL_PIVOT_SHADOW}, 1);
  EXPECT_EQ(int{TEXTURE_NONE}, 185);
  EXPECT_EQ(int{STRING_NONE}, 102);
}

// A host that begins a gesture anew when it is told that the text of the last one goes.
TEST_F(RendererTest, a_text_that_is_asked_for_while_it_is_destroyed_is_made_anew) {
  struct Reviving : RecordingRenderer {
    bool DestroyIcon(DynamicIcon2D*& icon) override {
      if (revived == nullptr) revived = GetStringTexture(STRING_ORBIT);
      return RecordingRenderer::DestroyIcon(icon);
    }
    DynamicIcon2D* revived = nullptr;
  } reviving;
  const DynamicIcon2D* const first = reviving.GetStringTexture(STRING_ORBIT);
  reviving.ReleaseStringTexture(STRING_ORBIT);
  reviving.ApplyTextureUsage();
  ASSERT_NE(reviving.revived, nullptr);
  EXPECT_NE(reviving.revived, first);
  EXPECT_EQ(reviving.GetLiveIconCount(), 1);
  EXPECT_EQ(reviving.GetStringTexture(STRING_ORBIT), reviving.revived);
}

// A host that begins a gesture while the text of another one is being made.
TEST_F(RendererTest, a_text_that_is_asked_for_while_it_is_made_is_made_and_counted_once_for_each) {
  struct Eager : RecordingRenderer {
    DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) override {
      if (!asked) {
        asked = true;
        within = GetStringTexture(STRING_ORBIT);
      }
      return RecordingRenderer::CreateTooltipHUD(text);
    }
    DynamicIcon2D* within = nullptr;
    bool asked = false;
  } eager;
  const DynamicIcon2D* const outer = eager.GetStringTexture(STRING_ORBIT);
  ASSERT_NE(outer, nullptr);
  EXPECT_EQ(outer, eager.within);
  EXPECT_EQ(eager.GetLiveIconCount(), 1);
  eager.ReleaseStringTexture(STRING_ORBIT);
  eager.ApplyTextureUsage();
  EXPECT_EQ(eager.GetLiveIconCount(), 1);  // the other one goes on showing it
  eager.ReleaseStringTexture(STRING_ORBIT);
  eager.ApplyTextureUsage();
  EXPECT_EQ(eager.GetLiveIconCount(), 0);
}

// A host that lends the same icon for the same text, and counts how often.
TEST_F(RendererTest, of_two_answers_with_one_icon_the_second_is_given_back) {
  struct Lending : RecordingRenderer {
    std::wstring LoadStringResource(int id) override {
      if (!std::exchange(asked, true)) GetStringTexture(STRING_ORBIT);
      return RecordingRenderer::LoadStringResource(id);
    }
    DynamicIcon2D* CreateTooltipHUD(const wchar_t* /*text*/) override {
      ++lent;
      return &icon;
    }
    bool DestroyIcon(DynamicIcon2D*& given) override {
      EXPECT_EQ(given, &icon);
      --lent;
      given = nullptr;
      return true;
    }
    DynamicIcon2D icon{1};
    bool asked = false;
    int lent = 0;
  } lending;
  EXPECT_EQ(lending.GetStringTexture(STRING_ORBIT), &lending.icon);
  EXPECT_EQ(lending.lent, 1);
  for (int i = 0; i < 2; ++i) lending.ReleaseStringTexture(STRING_ORBIT);
  lending.ApplyTextureUsage();
  EXPECT_EQ(lending.lent, 0);
}

}  // namespace
