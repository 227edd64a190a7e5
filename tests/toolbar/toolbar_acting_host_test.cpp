// What the user does with a toolbar, and with a navigation bar, with a host that does something itself within
// one of the calls that it makes meanwhile: in each of them in turn. It may delete the strip in those that
// are not the renderer's.
#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>
#include <type_traits>

#include "korvane/helm_disc.h"
#include "support/acting_host.h"
#include "support/mischievous_hub.h"
#include "toolbar/bar_scene.h"

using namespace Korvane;

namespace {

/// A strip, the collaborators that it has been given, and a host that hears of all it does.
template <class Bar, class Observer>
struct Stage {
  Stage() {
    hub.GetApplicationParameters().viewport_width = 800;
    hub.GetApplicationParameters().viewport_height = 600;
    observer.onHear = [this](const std::string&) { calls.Call(); };
    Restore();
    bar->AddObserver(&observer);
    bar->AddObserver(&second);
  }
  ~Stage() { EXPECT_FALSE(hub.broken); }

  void Restore() {
    bar->SetKorvane(&hub);
    bar->SetRenderer(&renderer);
  }
  /// As long as there is a strip.
  void Do(const std::function<void()>& step) const {
    if (bar != nullptr) step();
  }
  Toolbar* GetToolbar() const {
    if constexpr (std::is_base_of_v<Toolbar, Bar>) {
      return bar.get();
    } else {
      return bar != nullptr ? bar->GetToolbar() : nullptr;
    }
  }
  Vector2 GetMiddle(int tag) const {
    Toolbar* const toolbar = GetToolbar();
    for (int i = 0; toolbar != nullptr && i < toolbar->GetItems().GetCount(); ++i) {
      const ToolbarItem& item = toolbar->GetItems().GetAt(i);
      if (item.GetTag() == tag) return item.GetNonFlyoutIconBounds().center;
    }
    return {};
  }
  void Frames(int count, unsigned milliseconds = 60) {
    for (int i = 0; i < count; ++i) {
      platform.Advance(milliseconds);
      Do([&] { bar->Draw(); });
    }
  }
  void Move(const Vector2& place) {
    x = static_cast<int>(place.x);
    y = static_cast<int>(place.y);
    Do([&] { bar->OnMouseMove(x, y); });
  }
  void Press() {
    Do([&] { bar->OnLeftMouseDown(x, y); });
  }
  void Release() {
    Do([&] { bar->OnLeftMouseUp(x, y); });
  }
  void Click(const Vector2& place) {
    Move(place);
    Press();
    Frames(1);
    Release();
    Do([&] { bar->OnRightMouseDown(x, y); });
    Do([&] { bar->OnRightMouseUp(x, y); });
    Frames(1);
  }

  ManualPlatform platform;
  ActingHost calls;    // but for those of the renderer
  ActingHost drawing;  // those
  Journal journal;
  MischievousHub<ActingHost> hub{calls, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  ActingRenderer renderer{drawing};
  std::unique_ptr<Bar> bar = std::make_unique<Bar>();
  Observer observer{bar.get(), journal};
  Observer second{bar.get(), journal};  // only hears
  int x = 0;
  int y = 0;
};

using StripStage = Stage<OpenToolbar, JournalToolbarObserver>;
using BarStage = Stage<OpenNavigationBar, JournalBarObserver>;

// ---- what the user does ----

// To edges that have room for more items, or for less, and from one where it is disabled.
void DragInNarrowView(StripStage& s) {
  s.Do([&] { s.bar->SetViewportSize(800, 90); });
  s.Do([&] { s.bar->SetPosition(Toolbar::POSITION_LEFT); });
  s.Frames(6);
  for (const Vector2& place : {Vector2(400, 5), Vector2(5, 45), Vector2(400, 5)}) {
    s.Move(s.GetMiddle(1));
    s.Press();
    s.Move(place);
    s.Frames(1);
    s.Move({place.x, -200});  // where the strip does not go
    s.Frames(1);
    s.Move(place);
    s.Release();
    s.Frames(6, 20);
    s.Do([&] { s.bar->SetKeepInView(!s.bar->GetKeepInView()); });
    s.Frames(10);
  }
  s.Move(s.GetMiddle(1));
  s.Press();
  s.Move(s.GetMiddle(1) + Vector2(9, 9));
  for (const bool disabled : {true, false}) s.Do([&] { s.bar->SetDisabled(disabled); });
  s.Release();
  s.Do([&] { s.bar->SetPosition(Toolbar::POSITION_TOP_LEFT); });
  s.Frames(3);
  s.Move(s.GetMiddle(1));
  s.Press();
  s.Release();
  s.Frames(3);
}

void Use(StripStage& s) {
  s.Do([&] {
    ToolbarItem flyout = MakeItem(3, 1, 28, 28, 10);
    for (const int tag : {31, 32, 33}) flyout.GetFlyoutItems().Append(MakeItem(tag, 0, 28, 28));
    ToolbarItem::List& items = s.bar->GetItems();
    items.Append(MakeItem(1, 5, 24, 12));
    items.Append(MakeItem(2, 0, 28, 28));
    items.Append(flyout);
    items.Append(MakeItem(5, 2, 28, 28));
    items.Append(MakeItem(6, 6, 12, 12));
  });
  s.Do([&] { s.bar->Create(); });
  s.Do([&] { s.bar->SetVisible(true); });
  s.Do([&] { s.bar->SetWantAnimation(true); });
  s.Do([&] { s.bar->SetViewportSize(800, 600); });
  s.Frames(2);
  for (const int tag : {2, 3, 5, 6}) s.Click(s.GetMiddle(tag));
  const Vector2 other = s.GetMiddle(2);
  s.Do([&] { s.bar->OnRightMouseDown(static_cast<int>(other.x), static_cast<int>(other.y)); });
  s.Do([&] { s.bar->SetItemExcluded(2, true); });
  s.Do([&] { s.bar->SetItemSelected(5, true); });
  s.Do([&] { s.bar->SetItemEnabled(5, false); });
  s.Do([&] { s.bar->ChooseFlyoutItem(32); });
  s.Do([&] { s.bar->ApplyItemChanges(); });
  s.Frames(3);
  s.Move(s.GetMiddle(1));
  s.Press();
  for (const Vector2& place : {Vector2(600, 400), Vector2(30, 300), Vector2(400, 580)}) {
    s.Move(place);
    s.Frames(1);
  }
  s.Release();
  s.Frames(6);
  s.Do([&] { s.bar->SetViewportSize(300, 90); });
  s.Do([&] { s.bar->Refresh(); });
  s.Frames(4);
  DragInNarrowView(s);
  s.Do([&] { s.bar->SetFlyoutIcon(static_cast<TextureID>(200), 8, 8); });
  s.Do([&] { s.bar->SetRenderer(nullptr); });
  s.Do([&] { s.bar->SetRenderer(&s.renderer); });
  s.Do([&] { s.bar->Destroy(); });
  s.Do([&] { s.bar->Create(); });
  s.Frames(1);
}

void Use(BarStage& s) {
  s.observer.added = {1001, 1002};
  s.observer.chosen = 1001;
  s.Do([&] { s.bar->Create(); });
  s.Do([&] { s.bar->SetViewportSize(800, 600); });
  s.Frames(2);
  for (const int tag : {NavigationBar::TAG_FULL_NAVIGATION + 0, NavigationBar::TAG_MENU + 0,
                        NavigationBar::TAG_MORE_CONTROLS + 0, 1001, NavigationBar::TAG_CLOSE + 0})
    s.Click(s.GetMiddle(tag));
  s.Do([&] { s.bar->SetVisible(true); });
  s.Do([&] { s.bar->SetLinkedToOrientor(false); });
  s.Frames(2);
  s.Move(s.GetMiddle(NavigationBar::TAG_GRIP));
  s.Press();
  s.Move({400, 590});
  s.Frames(1);
  s.Release();
  s.Frames(4);
  for (const bool on : {true, false}) {
    s.Do([&] { s.bar->SetOrientorIsVisible(on); });
    s.Do([&] { s.bar->SetItemExcluded(NavigationBar::TAG_FULL_NAVIGATION, on); });
    s.Do([&] { s.bar->SetItemExcluded(NavigationBar::TAG_STORYBOARD, on); });
    s.Do([&] { s.bar->SetItemExcluded(NavigationBar::TAG_ORIENTOR, on); });
    s.Do([&] { s.bar->SetItemSelected(1002, on); });
    s.Do([&] { s.bar->SetItemEnabled(1002, on); });
    s.Frames(1);
  }
  s.Do([&] { s.bar->SetActiveHelmDisc(DiscType::TwoD); });
  s.Do([&] { s.bar->SetActiveHelmDisc(DiscType::None); });
  s.Do([&] { s.bar->ChooseFlyoutItem(NavigationBar::TAG_TWO_D); });
  s.Frames(2);
  s.Do([&] { s.bar->SetViewportSize(800, 150); });  // no room for all of it
  s.Frames(6);
  s.Click(s.GetMiddle(NavigationBar::TAG_MORE_CONTROLS));
  s.Do([&] { s.bar->SetRenderer(nullptr); });
  s.Do([&] { s.bar->SetRenderer(&s.renderer); });
  s.Do([&] { s.bar->Destroy(); });
  s.Do([&] { s.bar->Create(); });
  s.Frames(1);
}

// ---- what the host does ----

template <class AStage>
struct Act {
  const char* name;
  void (*commit)(AStage&);
  bool isForRenderer = true;  // may be done in its calls as well
};

template <class AStage>
constexpr Act<AStage> ACTS[] = {
    {"deletes_it", [](AStage& s) { s.bar.reset(); }},
    {"takes_the_hub", [](AStage& s) { s.Do([&] { s.bar->SetKorvane(nullptr); }); }},
    {"takes_the_renderer", [](AStage& s) { s.Do([&] { s.bar->SetRenderer(nullptr); }); }},
    {"destroys_it", [](AStage& s) { s.Do([&] { s.bar->Destroy(); }); }},
    {"makes_it_anew",
     [](AStage& s) {
       s.Do([&] { s.bar->Destroy(); });
       s.Do([&] { s.bar->Create(); });
     }},
    {"hides_it", [](AStage& s) { s.Do([&] { s.bar->SetVisible(false); }); }},
    {"lets_go", [](AStage& s) { s.Release(); }},
    {"moves_the_pointer",
     [](AStage& s) {
       s.Move({5, 5});
     }},
    {"takes_the_observer", [](AStage& s) { s.Do([&] { s.bar->RemoveObserver(&s.observer); }); }},
    {"clears_the_items",
     [](AStage& s) {
       if (Toolbar* const toolbar = s.GetToolbar()) toolbar->GetItems() = ToolbarItem::List();
     }},
    {"disables_it",
     [](AStage& s) {
       if (Toolbar* const toolbar = s.GetToolbar()) toolbar->SetDisabled(true);
     }},
    {"presses", [](AStage& s) { s.Press(); }},
    {"shrinks_the_view", [](AStage& s) { s.Do([&] { s.bar->SetViewportSize(0, 0); }); }},
};
constexpr int ACT_COUNT = static_cast<int>(std::size(ACTS<StripStage>));

template <class AStage>
long RunWith(ActingHost AStage::*host, const Act<AStage>& act, long number) {
  AStage stage;
  (stage.*host).ActIn(number, [&] { act.commit(stage); });
  Use(stage);
  const long calls = (stage.*host).GetCalls();
  stage.Release();
  stage.Frames(1);
  stage.Do([&] { EXPECT_FALSE(stage.bar->IsMouseDownOnItem()); });
  stage.Do([&] { stage.bar->Destroy(); });
  stage.bar.reset();
  EXPECT_EQ(stage.renderer.GetForeignDestroyCount(), 0);
  EXPECT_EQ(stage.renderer.GetLiveIconCount(), 0);
  return calls;
}

template <class AStage>
void TryAct(int index) {
  constexpr long STRIDE = 13;  // much is drawn alike
  const Act<AStage>& act = ACTS<AStage>[index];
  TryInEachCall([&](long number) { return RunWith(&AStage::calls, act, number); });
  if (act.isForRenderer)
    TryInEachCall([&](long number) { return RunWith(&AStage::drawing, act, number); }, STRIDE);
}

class ActingHostTest : public ::testing::TestWithParam<int> {};

TEST_P(ActingHostTest, may_do_it_in_each_call_of_a_toolbar) { TryAct<StripStage>(GetParam()); }
TEST_P(ActingHostTest, may_do_it_in_each_call_of_a_navigation_bar) { TryAct<BarStage>(GetParam()); }

INSTANTIATE_TEST_SUITE_P(Acts, ActingHostTest, ::testing::Range(0, ACT_COUNT), [](const auto& instance) {
  return std::string(ACTS<StripStage>[instance.param].name);
});

}  // namespace
