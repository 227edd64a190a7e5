// What the user does with a disc, with a host that does something itself within one of the calls that the
// disc makes meanwhile: in each of them in turn.
#include <cmath>
#include <functional>
#include <memory>
#include <string>
#include <tuple>

#include "disc/disc_scene.h"
#include "support/acting_host.h"
#include "support/mischievous_hub.h"

using namespace Korvane;

namespace {

class DiscRenderer : public ActingRenderer {
 public:
  using ActingRenderer::ActingRenderer;
  PixelIcon2D* CreateImageData(TextureID id) override {
    std::unique_ptr<PixelIcon2D> white(ActingRenderer::CreateImageData(id));
    static const MapImage MAP = MakeMapOfAllColours();
    return white != nullptr ? MAP.MakeIcon().release() : nullptr;
  }
};

/// Counts the records that are open. It may end within what it calls.
class ActingHistory : public RewindHistory {
 public:
  ActingHistory(ActingHost& theHost, int& openRecords) : host(theHost), open(openRecords) {}
  bool BeginElementRecord(const CameraParameters& camera) override {
    ++open;
    host.Call();
    return RewindHistory::BeginElementRecord(camera);
  }
  bool EndElementRecord(const CameraParameters& camera) override {
    --open;
    host.Call();
    return RewindHistory::EndElementRecord(camera);
  }

 private:
  ActingHost& host;
  int& open;
};

class ActingDisc : public HelmDisc {
 public:
  explicit ActingDisc(ActingHistory* history) { GetParts().history.reset(history); }
};

struct Stage {
  Stage() {
    hub.GetApplicationParameters().viewport_width = 800;
    hub.GetApplicationParameters().viewport_height = 600;
    observer.onHear = [this](const std::string&) { told.Call(); };
    Restore();
    disc->AddObserver(&observer);
    disc->Create();
    disc->SetViewportSize(800, 600);
  }
  ~Stage() { EXPECT_FALSE(hub.broken); }

  void Restore() {
    disc->SetKorvane(&hub);
    disc->SetRenderer(&renderer);
  }
  /// As long as there is a disc.
  void Do(const std::function<void()>& step) const {
    if (disc != nullptr) step();
  }
  void Frame(unsigned milliseconds = 40) {
    platform.Advance(milliseconds);
    hub.PerformOperations();
    Do([&] { disc->Draw(); });
    Do([&] { disc->DrawPivotBall(); });
  }
  void Frames(int count, unsigned milliseconds = 150) {
    for (int i = 0; i < count; ++i) Frame(milliseconds);
  }
  void Open(DiscType type) {
    Do([&] { disc->OnMouseMove(400, 300); });
    Do([&] { disc->SetActiveDisc(type); });
    Frame();
  }
  // The square of the map that has the colour of the region.
  bool PointAt(HelmDiscZone zone) {
    TrackMenu* const menu = disc != nullptr ? disc->GetActiveTrackMenu() : nullptr;
    if (menu == nullptr || menu->GetRegionMap() == nullptr) return false;
    for (int i = 0; menu->GetRegion(i) != nullptr; ++i) {
      if (menu->GetRegion(i)->zone != static_cast<int>(zone)) continue;
      const Vector3& colour = menu->GetRegion(i)->color;
      const int place = static_cast<int>(std::lround(18 * colour.x + 6 * colour.y + 2 * colour.z));
      const int row = place / 6;
      const Box2& bounds = menu->GetRegionMap()->GetBounds();
      x = static_cast<int>(bounds.center.x + bounds.halfExtent.x * ((place % 6 + 0.5) / 3.0 - 1.0));
      y = static_cast<int>(bounds.center.y + bounds.halfExtent.y * (1.0 - (row + 0.5) / 2.5));
      disc->OnMouseMove(x, y);
      return true;
    }
    return false;
  }
  void Move(int toX, int toY) {
    x = toX;
    y = toY;
    Do([&] { disc->OnMouseMove(x, y); });
  }
  void Press() {
    Do([&] { disc->OnLeftMouseDown(x, y); });
  }
  void Release() {
    Do([&] { disc->OnLeftMouseUp(x, y); });
  }
  void Key(KeyID key, bool down) {
    Do([&] { (void)(down ? disc->OnKeyDown(key) : disc->OnKeyUp(key)); });
  }

  ManualPlatform platform;
  ActingHost calls;    // of the hub
  ActingHost told;     // of the observer and the history
  ActingHost drawing;  // of the renderer,
  ActingHost making;   // and where it makes pictures and texts, or lets them go
  Journal journal;
  MischievousHub<ActingHost> hub{calls, LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})};
  DiscRenderer renderer{drawing, making};
  DiscRenderer other{drawing, making};
  int openRecords = 0;
  bool leavesRecord = false;  // a rectangle that comes to nothing does
  std::unique_ptr<ActingDisc> disc = std::make_unique<ActingDisc>(new ActingHistory(told, openRecords));
  JournalDiscObserver observer{disc.get(), journal};
  int x = 400;
  int y = 300;
};

// ---- what the user does ----

struct Use {
  const char* name;
  DiscType type;
  HelmDiscZone zone;
  KeyID modifier;
  bool hits = true;  // the scene
};
constexpr auto NO_KEY = static_cast<KeyID>(-1);
using Zone = HelmDiscZone;
constexpr Use USES[] = {
    {"orbits", DiscType::FullNavigation, Zone::Orbit, NO_KEY},
    {"orbits_another_axis", DiscType::FullNavigation, Zone::Orbit, KEY_SHIFT},
    {"pans", DiscType::FullNavigation, Zone::Pan, NO_KEY},
    {"zooms", DiscType::FullNavigation, Zone::Zoom, NO_KEY},
    {"zooms_by_keys", DiscType::FullNavigation, Zone::Zoom, KEY_CONTROL},
    {"walks", DiscType::FullNavigation, Zone::Walk, NO_KEY},
    {"walks_up", DiscType::FullNavigation, Zone::Walk, KEY_SHIFT},
    {"looks", DiscType::FullNavigation, Zone::Look, NO_KEY},
    {"looks_at", DiscType::FullNavigation, Zone::Look, KEY_SHIFT},
    {"lifts", DiscType::FullNavigation, Zone::UpDown, NO_KEY},
    {"centres", DiscType::FullNavigation, Zone::Center, NO_KEY},
    {"rewinds", DiscType::FullNavigation, Zone::Rewind, NO_KEY},
    {"opens_the_menu", DiscType::FullNavigation, Zone::Menu, NO_KEY},
    {"closes", DiscType::FullNavigation, Zone::Close, NO_KEY},
    {"flies_forward", DiscType::TourBuilding, Zone::Forward, NO_KEY},
    {"looks_at_an_object", DiscType::ViewObject, Zone::Center, NO_KEY},
    {"rolls_a_page", DiscType::TwoD, Zone::Orbit, NO_KEY},
    {"orbits_small", DiscType::MiniFullNavigation, Zone::Orbit, NO_KEY},
    {"walks_small", DiscType::MiniTourBuilding, Zone::Walk, KEY_SHIFT},
    {"picks_a_pivot", DiscType::FullNavigation, Zone::Orbit, KEY_CONTROL},
    {"picks_no_pivot", DiscType::FullNavigation, Zone::Orbit, KEY_CONTROL, false},
    {"zooms_to_a_rectangle", DiscType::FullNavigation, Zone::Zoom, KEY_SHIFT},
    {"centres_nothing", DiscType::FullNavigation, Zone::Center, NO_KEY, false},
    {"flies_at_nothing", DiscType::TourBuilding, Zone::Forward, NO_KEY, false},
};

void Live(Stage& s) {
  for (const DiscType type : {DiscType::FullNavigation, DiscType::MiniViewObject, DiscType::TwoD}) {
    s.Open(type);
    s.Do([&] { s.disc->OpenMenu(); });
  }
  for (const KeyID key : {KEY_DISC, KEY_DISC, KEY_SHIFT, KEY_CONTROL}) {
    s.Key(key, true);
    s.Frame();
    s.Key(key, false);
    s.Frame();
  }
  s.Do([&] { s.disc->SetOpensAtPointer(true); });
  s.Open(DiscType::TwoD);
  s.Key(KEY_SHIFT, true);
  s.Open(DiscType::FullNavigation);
  s.Key(KEY_SHIFT, false);
  s.PointAt(HelmDiscZone::Pan);
  s.Frames(12, 250);  // in which a tooltip comes
  s.Do([&] { s.disc->SetLargeDiscSize(96); });
  s.Do([&] { s.disc->SetMiniDiscSize(32); });
  s.Do([&] { s.disc->SetLargeDiscOpacity(0.5F); });
  s.Do([&] { s.disc->UpdateSettings(); });
  s.Do([&] { s.disc->IncrementWalkSpeed(); });
  s.Do([&] { s.disc->SetRenderer(nullptr); });
  s.Do([&] { s.disc->SetRenderer(&s.renderer); });
  s.Do([&] { s.disc->SetKorvane(nullptr); });
  s.Do([&] { s.disc->SetKorvane(&s.hub); });
  s.Do([&] { s.disc->SetEnabled(false); });
  s.Do([&] { s.disc->SetEnabled(true); });
  s.Do([&] { s.disc->SetVisible(false); });
  s.Do([&] { s.disc->SetVisible(true); });
  s.Do([&] { s.disc->SetViewportSize(700, 500); });
  s.Do([&] { s.disc->Destroy(); });
  s.Do([&] { s.disc->GetParameters().alwaysShowWelcome = true; });
  s.Do([&] { s.disc->Create(); });
  s.Do([&] { s.disc->SetWelcomeMenuPosition(0, 0); });
  for (int x = 20; x < 512; x += 60) {
    s.Move(x, 300 - x / 4);
    s.Press();
    s.Release();
    s.Frame();
  }
  s.Open(DiscType::None);
}

void UseWedge(Stage& s, const Use& use) {
  s.leavesRecord = use.zone == Zone::Zoom && use.modifier == KEY_SHIFT;
  if (use.hits) s.renderer.SetSceneHit(Vector3(0.5, 0.25, 1.0));
  for (int i = 0; i < 2; ++i) {  // something to go back to
    s.Do([&] { s.disc->GetHistory()->BeginElementRecord(s.hub.view); });
    s.Do([&] { s.disc->GetHistory()->EndElementRecord(LookAt({3.0 + i, 0, 10}, {0, 0, 0}, {0, 1, 0})); });
  }
  s.Open(use.type);
  if (use.modifier != NO_KEY) s.Key(use.modifier, true);
  s.PointAt(use.zone);
  s.Press();
  s.Frame();
  for (int step = 1; step <= 3; ++step) {
    s.Move(s.x + 15 * step, s.y - 10 * step);
    for (const KeyID key : {KEY_UP, KEY_RUN}) {
      if (step == 2) s.Key(key, true);
    }
    s.Frame();
  }
  s.Key(KEY_UP, false);
  s.Release();
  s.Key(KEY_RUN, false);
  if (use.modifier != NO_KEY) s.Key(use.modifier, false);
  s.Frames(8);
  s.PointAt(use.zone);  // a click as well
  s.Press();
  s.Release();
  s.Frames(8);
  s.Open(DiscType::None);
}

// ---- what the host does ----

struct Act {
  const char* name;
  void (*commit)(Stage&);
  bool isForAll = true;  // may be done within the calls of renderer and observer as well
  long stride = 1;       // from one call to the next in which it is done
};
constexpr Act ACTS[] = {
    {"deletes_the_disc", [](Stage& s) { s.disc.reset(); }, false},
    {"takes_the_hub", [](Stage& s) { s.Do([&] { s.disc->SetKorvane(nullptr); }); }},
    {"takes_the_renderer", [](Stage& s) { s.Do([&] { s.disc->SetRenderer(nullptr); }); }},
    {"destroys", [](Stage& s) { s.Do([&] { s.disc->Destroy(); }); }},
    {"closes", [](Stage& s) { s.Do([&] { s.disc->SetActiveDisc(DiscType::None); }); }},
    {"opens_another", [](Stage& s) { s.Do([&] { s.disc->SetActiveDisc(DiscType::MiniTourBuilding); }); }},
    {"disables", [](Stage& s) { s.Do([&] { s.disc->SetEnabled(false); }); }},
    {"hides", [](Stage& s) { s.Do([&] { s.disc->SetVisible(false); }); }},
    {"lets_go", [](Stage& s) { s.Release(); }},
    {"ends_the_move", [](Stage& s) { s.hub.EndShot(); }},
    {"ends_the_operation", [](Stage& s) { s.hub.EndOperation(OPERATION_ALL); }},
    {"takes_the_ball", [](Stage& s) { s.Do([&] { s.disc->SetPivotBall(nullptr); }); }},
    {"clears_the_history", [](Stage& s) { s.Do([&] { s.disc->GetHistory()->ClearHistory(); }); }},
    {"gives_another_renderer", [](Stage& s) { s.Do([&] { s.disc->SetRenderer(&s.other); }); }, true, 3},
    {"makes_it_anew",
     [](Stage& s) {
       s.Do([&] { s.disc->Destroy(); });
       s.Do([&] { s.disc->Create(); });
     },
     true, 3},
    {"drops_the_welcome_screen",
     [](Stage& s) {
       s.Do([&] { s.disc->GetParameters().suppressWelcome = true; });
       s.Do([&] { s.disc->Create(); });
     },
     true, 3},
    {"shrinks_the_view", [](Stage& s) { s.Do([&] { s.disc->SetViewportSize(0, 0); }); }, true, 3},
    {"moves_the_pointer", [](Stage& s) { s.Move(s.x + 40, s.y + 10); }, true, 3},
    {"puts_the_menu_away",
     [](Stage& s) {
       TrackMenu* const menu = s.disc != nullptr ? s.disc->GetActiveTrackMenu() : nullptr;
       if (menu == nullptr) return;
       menu->SetVisible(false);
       if (s.disc != nullptr) menu->SetActive(false);
     },
     true, 3},
};

void Rest(Stage& s) {
  if (s.disc == nullptr) return;
  s.Restore();
  s.Release();
  for (const KeyID key : {KEY_SHIFT, KEY_CONTROL, KEY_UP, KEY_RUN}) s.Key(key, false);
  s.Open(DiscType::None);
  s.hub.EndShot();
  s.hub.EndOperation(OPERATION_ALL);
  s.Frames(2);
  EXPECT_FALSE(s.disc->IsDragActive());
  EXPECT_LE(s.openRecords, s.leavesRecord ? 1 : 0);
}

long RunWith(const std::function<void(Stage&)>& use, ActingHost Stage::*host, const Act& act, long number) {
  Stage stage;
  (stage.*host).ActIn(number, [&] { act.commit(stage); });
  use(stage);
  const long calls = (stage.*host).GetCalls();
  Rest(stage);
  EXPECT_FALSE(stage.hub.IsOperationActive(OPERATION_ALL));
  EXPECT_EQ(stage.disc == nullptr, !act.isForAll && number > 0);
  stage.Do([&] { stage.disc->Destroy(); });
  stage.disc.reset();
  EXPECT_EQ(stage.renderer.GetForeignDestroyCount(), 0);
  EXPECT_EQ(stage.other.GetForeignDestroyCount(), 0);
  return calls;
}

class ActingHostTest : public ::testing::TestWithParam<std::tuple<int, int>> {
 protected:
  static const Act& GetAct() { return ACTS[std::get<1>(GetParam())]; }
  static std::function<void(Stage&)> GetUse() {
    const auto index = static_cast<std::size_t>(std::get<0>(GetParam()));
    if (index >= std::size(USES)) return Live;
    return [index](Stage& stage) { UseWedge(stage, USES[index]); };
  }
};

TEST_P(ActingHostTest, may_do_it_in_each_call) {
  TryInEachCall([](long number) { return RunWith(GetUse(), &Stage::calls, GetAct(), number); },
                GetAct().stride);
}

TEST_P(ActingHostTest, may_do_it_as_observer_and_history_hear) {
  if (!GetAct().isForAll) return;
  TryInEachCall([](long number) { return RunWith(GetUse(), &Stage::told, GetAct(), number); });
}

TEST_P(ActingHostTest, may_do_it_while_the_disc_is_drawn) {
  constexpr long STRIDE = 31;  // much is drawn alike
  if (!GetAct().isForAll) return;
  TryInEachCall([](long number) { return RunWith(GetUse(), &Stage::drawing, GetAct(), number); }, STRIDE);
}

TEST_P(ActingHostTest, may_do_it_while_pictures_and_texts_are_made_and_let_go) {
  constexpr long STRIDE = 11;
  TryInEachCall([](long number) { return RunWith(GetUse(), &Stage::making, GetAct(), number); }, STRIDE);
}

INSTANTIATE_TEST_SUITE_P(Uses, ActingHostTest,
                         ::testing::Combine(::testing::Range(0, static_cast<int>(std::size(USES)) + 1),
                                            ::testing::Range(0, static_cast<int>(std::size(ACTS)))),
                         [](const auto& instance) {
                           const auto use = static_cast<std::size_t>(std::get<0>(instance.param));
                           return std::string(use < std::size(USES) ? USES[use].name : "lives") +
                                  "_and_the_host_" + ACTS[std::get<1>(instance.param)].name;
                         });

}  // namespace
