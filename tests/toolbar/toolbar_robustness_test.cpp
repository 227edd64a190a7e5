// Hosts that act in every callback, bad input, and a storm of events.
#include <gtest/gtest.h>

#include <cstdlib>
#include <limits>
#include <memory>
#include <set>

#include "support/counting_renderer.h"
#include "support/random.h"
#include "toolbar/toolbar_scene.h"

using namespace Korvane;

namespace {

class ToolbarRobustnessTest : public ToolbarScene, public ::testing::Test {
 protected:
  ToolbarRobustnessTest() { Start(); }
};

TEST_F(ToolbarRobustnessTest, an_observer_may_remove_itself_and_others) {
  JournalToolbarObserver second(&toolbar, journal, "second ");
  toolbar.AddObserver(&second);
  observer.onHear = [&](const std::string&) {
    toolbar.RemoveObserver(&observer);
    toolbar.RemoveObserver(&second);
  };
  Press(Middle(2));
  Release(Middle(2));
  EXPECT_EQ(journal.Take(), (Lines{"pressed 2"}));
}

TEST_F(ToolbarRobustnessTest, the_items_may_go_while_an_observer_is_told_of_one) {
  JournalToolbarObserver second(&toolbar, journal, "second ");
  toolbar.AddObserver(&second);
  const Vector2 place = Middle(2);
  observer.onHear = [&](const std::string&) { toolbar.GetItems().RemoveAll(); };
  Move(place);
  Press(place);
  Release(place);
  EXPECT_EQ(journal.Take(), (Lines{"entered 2", "second entered 2"}));
  EXPECT_EQ(toolbar.GetCurrentTooltipItemTag(), 0);
  EXPECT_FALSE(toolbar.OnRightMouseDown(static_cast<int>(place.x), static_cast<int>(place.y)));
  toolbar.Draw();
}

TEST_F(ToolbarRobustnessTest, an_item_that_is_hidden_while_it_is_pressed_is_not_clicked) {
  const Vector2 place = Middle(2);
  Press(place);
  toolbar.SetItemExcluded(2, true);
  toolbar.Draw();
  Release(place);
  EXPECT_EQ(journal.Count("clicked 2"), 0);
}

/// A strip that somebody deletes.
struct Heap {
  explicit Heap(ToolbarScene& scene) : strip(std::make_unique<OpenToolbar>()) {
    strip->SetKorvane(&scene.hub);
    strip->SetRenderer(&scene.renderer);
    strip->GetItems() = scene.toolbar.GetItems();
    strip->Create();
    strip->SetVisible(true);
    strip->SetWantAnimation(true);
    strip->SetViewportSize(800, 600);
    strip->Draw();
  }
  std::unique_ptr<OpenToolbar> strip;
};

TEST_F(ToolbarRobustnessTest, the_strip_may_be_deleted_in_every_callback) {
  const Vector2 button = Middle(2);
  const Vector2 arrow = Arrow(3);
  const Vector2 grip = Middle(1);
  const auto at = [](const Vector2& v) {
    return std::make_pair(static_cast<int>(v.x), static_cast<int>(v.y));
  };
  using Gesture = std::function<void(Heap&)>;
  const auto press = [&](const Vector2& point) {
    return [=](Heap& heap) { heap.strip->OnLeftMouseDown(at(point).first, at(point).second); };
  };
  const auto move = [&](const Vector2& point) {
    return [=](Heap& heap) { heap.strip->OnMouseMove(at(point).first, at(point).second); };
  };
  const auto release = [&](const Vector2& point) {
    return [=](Heap& heap) { heap.strip->OnLeftMouseUp(at(point).first, at(point).second); };
  };
  const Gesture draw = [](Heap& heap) { heap.strip->Draw(); };
  const std::vector<std::pair<std::string, std::vector<Gesture>>> scripts = {
      {"entered 2", {move(button)}},
      {"left 2", {move(button), move({10, 10})}},
      {"pressed 2", {press(button)}},
      {"clicked 2", {press(button), release(button)}},
      {"flyout 3", {press(arrow)}},
      {"menu 2", {[&](Heap& heap) { heap.strip->OnRightMouseDown(at(button).first, at(button).second); }}},
      {"dragged", {press(grip), move({300, 300}), release({100, 300})}},
      {"position", {[](Heap& heap) { heap.strip->SetPosition(Toolbar::POSITION_LEFT); }}},
      {"excluded 5", {[](Heap& heap) { heap.strip->SetViewportSize(800, 110); }, draw}},
  };
  for (const auto& [line, script] : scripts) {
    Heap heap(*this);
    Journal told;
    JournalToolbarObserver deleting(heap.strip.get(), told);
    JournalToolbarObserver later(heap.strip.get(), told, "later ");
    heap.strip->AddObserver(&deleting);
    heap.strip->AddObserver(&later);
    deleting.onHear = [&heap, line = line](const std::string& heard) {
      if (heard == line) heap.strip.reset();
    };
    for (const Gesture& gesture : script) {
      if (heap.strip != nullptr) gesture(heap);
    }
    EXPECT_EQ(heap.strip, nullptr) << line;
    EXPECT_EQ(told.Count("later " + line), 0) << line;
  }
}

/// A hub whose host acts when it is asked for a frame.
class ActingHub : public MemoryHub {
 public:
  void RequestApplicationUpdate() override {
    MemoryHub::RequestApplicationUpdate();
    if (onRequest) std::exchange(onRequest, nullptr)();
  }
  std::function<void()> onRequest;
};

TEST_F(ToolbarRobustnessTest, the_strip_may_be_deleted_when_it_asks_for_a_frame) {
  const std::function<void(OpenToolbar&)> actions[] = {
      [](OpenToolbar& strip) { strip.OnMouseMove(782, 330); },
      [](OpenToolbar& strip) { strip.OnLeftMouseDown(782, 330); },
      [](OpenToolbar& strip) { strip.OnLeftMouseDown(782, 350); },
      [](OpenToolbar& strip) { strip.OnRightMouseDown(782, 330); },
      [](OpenToolbar& strip) { strip.SetVisible(false); },
      [](OpenToolbar& strip) { strip.SetDisabled(true); },
      [](OpenToolbar& strip) { strip.SetPosition(Toolbar::POSITION_TOP); },
      [](OpenToolbar& strip) { strip.SetItemExcluded(5, true); },
      [](OpenToolbar& strip) { strip.SetViewportSize(700, 500); },
      [](OpenToolbar& strip) { strip.ApplyItemChanges(); },
      [](OpenToolbar& strip) { strip.SetFlyoutIcon(static_cast<TextureID>(3), 8, 8); },
  };
  for (const auto& action : actions) {
    ActingHub acting;
    Heap heap(*this);
    heap.strip->OnMouseMove(766, 300);
    heap.strip->SetKorvane(&acting);
    acting.onRequest = [&heap] { heap.strip.reset(); };
    action(*heap.strip);
    EXPECT_EQ(heap.strip, nullptr);
  }
}

/// A renderer whose host acts at its n-th call.
class ActingRenderer : public CountingRenderer {
 public:
  bool BeginRender(const Box2& a, const CameraParameters& b, RenderMode c) override {
    return Act() && CountingRenderer::BeginRender(a, b, c);
  }
  bool EndRender() override { return Act() && CountingRenderer::EndRender(); }
  bool RenderGeometry(unsigned a, const float* b, const float* c, const MaterialParams* d) override {
    return Act() && CountingRenderer::RenderGeometry(a, b, c, d);
  }
  using CountingRenderer::Render;
  bool Render(ResourceIcon2D* icon) override { return Act() && CountingRenderer::Render(icon); }
  bool SetCursorIcon(CursorID id) override { return Act() && CountingRenderer::SetCursorIcon(id); }
  bool LoadTexture(TextureID /*id*/) override { return Act(); }
  void ReleaseTexture(TextureID /*id*/) override { Act(); }

  int countdown = -1;
  std::function<void()> onCall;

 private:
  bool Act() {
    if (countdown-- == 0) onCall();
    return true;
  }
};

TEST_F(ToolbarRobustnessTest, hosts_may_do_anything_in_any_call_of_the_renderer) {
  const std::function<void(OpenToolbar&)> acts[] = {
      [](OpenToolbar& strip) { strip.GetItems().RemoveAll(); },
      [](OpenToolbar& strip) { strip.SetRenderer(nullptr); },
      [](OpenToolbar& strip) { strip.SetKorvane(nullptr); },
      [](OpenToolbar& strip) { strip.Destroy(); },
      [](OpenToolbar& strip) { strip.SetVisible(false); },
      [](OpenToolbar& strip) { strip.ApplyItemChanges(); },
      [](OpenToolbar& strip) { strip.SetPosition(Toolbar::POSITION_TOP); },
      [](OpenToolbar& strip) { strip.OnLeftMouseDown(782, 355); },
  };
  int acted = 0;
  for (const auto& act : acts) {
    for (int call = 0; call < 40; ++call) {
      ActingRenderer acting;
      Heap heap(*this);
      acting.onCall = [&] {
        ++acted;
        act(*heap.strip);
      };
      acting.countdown = call;
      heap.strip->SetRenderer(&acting);
      heap.strip->OnMouseMove(782, 330);
      heap.strip->Draw();
      heap.strip->OnLeftMouseDown(782, 355);
      heap.strip->OnLeftMouseUp(100, 300);
      heap.strip->Draw();
      EXPECT_EQ(acting.begun, acting.ended);
    }
  }
  EXPECT_GT(acted, 200);
}

TEST_F(ToolbarRobustnessTest, hubs_and_renderers_that_are_gone_are_forgotten) {
  {
    MemoryHub shortLived;
    CountingRenderer alsoShort;
    toolbar.SetKorvane(&shortLived);
    toolbar.SetRenderer(&alsoShort);
    toolbar.Draw();
  }
  toolbar.OnMouseMove(782, 330);
  toolbar.Draw();
  toolbar.SetItemExcluded(2, true);
  toolbar.Destroy();
}

// ---- bad input ----

TEST_F(ToolbarRobustnessTest, stands_ten_thousand_items) {
  ToolbarItem::List& items = toolbar.GetItems();
  for (int i = 0; i < 10000; ++i) items.Append(MakeItem(1000 + i, i % 8, 10, 10));
  toolbar.ApplyItemChanges();
  toolbar.Draw();
  Move({782, 300});
  EXPECT_TRUE(toolbar.IsItemExcluded(1000 + 9999));
  EXPECT_LE(Bounds().halfExtent.y, 300.0);
}

TEST_F(ToolbarRobustnessTest, stands_sizes_and_numbers_of_any_kind) {
  const int most = std::numeric_limits<int>::max();
  const int least = std::numeric_limits<int>::min();
  for (const int size : {0, -1, most, least}) {
    toolbar.GetItems().RemoveAll();
    for (int type = -2; type < 10; ++type) toolbar.GetItems().Append(MakeItem(type, type, size, size, size));
    toolbar.ApplyItemChanges();
    for (const int limit : {most, least, 0, 65535}) {
      toolbar.SetViewportSize(limit, limit);
      toolbar.SetSizeLimits(limit, limit);
      toolbar.SetRibbonSize(limit, limit);
      toolbar.Refresh();
      toolbar.Draw();
      toolbar.OnMouseMove(limit, limit);
      toolbar.OnLeftMouseDown(most, least);
      toolbar.OnLeftMouseUp(least, most);
      ASSERT_TRUE(Bounds().center.IsFinite());
      ASSERT_TRUE(toolbar.GetEdgeOffset().IsFinite());
    }
  }
}

// ---- the storm ----

int StormSize() {
  const char* const wanted = std::getenv("ZOV_TEST_STORM");
  return wanted != nullptr ? std::atoi(wanted) : 60000;
}

class ToolbarStorm : public ToolbarScene, public ::testing::Test {
 protected:
  ToolbarStorm() {
    Start();
    journal.recording = false;
    toolbar.SetRenderer(&silent);
    observer.onHear = [this](const std::string&) { ActInside(); };
  }
  ~ToolbarStorm() override { toolbar.SetRenderer(nullptr); }

  // A host that changes what it is told of, now and then.
  void ActInside() {
    if (depth > 3 || random.Integer(0, 3) != 0) return;
    ++depth;
    Change();
    --depth;
  }

  void Change() {
    ToolbarItem::List& items = toolbar.GetItems();
    const int tag = random.Integer(0, 40);
    switch (random.Integer(0, 15)) {
      case 0:
        items.RemoveAt(random.Integer(-1, items.GetCount()));
        break;
      case 1:
        if (items.GetCount() < 20)
          items.InsertAt(
              random.Integer(0, items.GetCount()),
              MakeItem(tag, random.Integer(-1, 8), random.Integer(-5, 60), random.Integer(-5, 60), 10));
        break;
      case 2:
        toolbar.ApplyItemChanges();
        break;
      case 3:
        toolbar.SetItemExcluded(tag, random.Coin());
        break;
      case 4:
        toolbar.SetItemSelected(tag, random.Coin());
        break;
      case 5:
        toolbar.SetItemEnabled(tag, random.Coin());
        break;
      case 6:
        toolbar.ChooseFlyoutItem(tag);
        break;
      case 7:
        toolbar.SetVisible(random.Coin());
        break;
      case 8:
        toolbar.SetDisabled(random.Integer(0, 3) == 0);
        break;
      case 9:
        toolbar.SetPosition(static_cast<Toolbar::Position>(random.Integer(-1, 8)));
        break;
      case 10:
        toolbar.SetViewportSize(random.OneOf(SIZES), random.OneOf(SIZES));
        break;
      case 11:
        toolbar.SetRibbonSize(random.OneOf(SIZES), random.OneOf(SIZES));
        break;
      case 12:
        toolbar.SetRenderer(random.Integer(0, 5) == 0 ? nullptr : static_cast<Renderer*>(&silent));
        break;
      case 13:
        if (random.Integer(0, 5) == 0) toolbar.Destroy();
        toolbar.Create();
        break;
      case 14:
        if (items.IsEmpty()) Fill();
        break;
      default:
        toolbar.SetOrientorBounds(Box2({random.Uniform(0, 800), random.Uniform(0, 600)}, {60, 60}));
        toolbar.SetOrientorLocation(static_cast<OrientorParameters::Location>(random.Integer(-1, 4)));
        break;
    }
  }

  void Step() {
    const Box2 box = Bounds();
    const bool near = random.Integer(0, 3) != 0;
    const double spread = near ? 1.2 : 50.0;
    const int x = static_cast<int>(box.center.x + random.Uniform(-spread, spread) * (box.halfExtent.x + 1.0));
    const int y = static_cast<int>(box.center.y + random.Uniform(-spread, spread) * (box.halfExtent.y + 1.0));
    switch (random.Integer(0, 9)) {
      case 0:
        toolbar.OnLeftMouseDown(x, y);
        break;
      case 1:
      case 2:
        toolbar.OnLeftMouseUp(x, y);
        break;
      case 3:
        toolbar.OnRightMouseDown(x, y);
        break;
      case 4:
        Change();
        break;
      case 5:
      case 6:
        platform.Advance(static_cast<std::uint32_t>(random.Integer(0, 150)));
        hub.GetApplicationParameters().mouse_drag = random.Integer(0, 5) == 0;
        toolbar.Draw();
        break;
      default:
        toolbar.OnMouseMove(x, y);
        break;
    }
  }

  static constexpr int SIZES[] = {0, 1, 40, 123, 600, 800, 800, 65535};
  Random random;
  CountingRenderer silent;
  int depth = 0;
};

TEST_F(ToolbarStorm, of_random_events_does_no_harm) {
  const int events = StormSize();
  for (int i = 0; i < events; ++i) {
    Step();
    ASSERT_TRUE(Bounds().center.IsFinite()) << i;
    ASSERT_TRUE(toolbar.GetEdgeOffset().IsFinite()) << i;
    ASSERT_EQ(silent.begun, silent.ended) << i;
    const double opacity = toolbar.open.fade.Get();
    ASSERT_TRUE(opacity >= 0.0 && opacity <= 1.0) << i;
  }
  observer.onHear = nullptr;
  // Once it is left alone it comes to rest and asks for nothing.
  toolbar.SetRenderer(&silent);
  toolbar.SetViewportSize(800, 600);
  toolbar.SetDisabled(false);
  toolbar.OnLeftMouseUp(0, 0);
  Settle();
  hub.requested = 0;
  toolbar.Draw();
  EXPECT_EQ(hub.requested, 0);
  EXPECT_GT(silent.begun, events / 100);
  RecordProperty("events", events);
}

}  // namespace
