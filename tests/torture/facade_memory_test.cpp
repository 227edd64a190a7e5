// A host of the facade whose memory runs out: at each allocation once, from each on for good, and while its
// objects are made.
#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <new>
#include <optional>
#include <string>
#include <vector>

#include "facade/facade_scene.h"
#include "korvane/icon2d.h"
#include "korvane/icon3d.h"
#include "support/allocation_counter.h"
#include "torture/trial.h"
#include "zov/zov_icon_utils.h"

using namespace torture;

namespace {

constexpr int FACES = 6;
constexpr std::size_t ENOUGH = 20'000;  // entries, so that the host's own notes never grow

/// Has room for all that it notes, and keeps each icon until the next of its kind is drawn.
struct RoomyRenderer : FacadeRenderer {
  RoomyRenderer() {
    counting = false;
    keeping = true;
    for (auto* const notes : {&loaded, &released, &destroyed, &lastNumbers}) notes->reserve(ENOUGH);
    lastVertices.reserve(ENOUGH);
    lastTexCoords.reserve(ENOUGH);
  }
};

/// A host with one cube, and what its user does.
class FacadeView {
 public:
  FacadeView() {
    hub = std::make_shared<FacadeHost>();
    renderer = std::make_shared<RoomyRenderer>();
    second = std::make_shared<RoomyRenderer>();
    cube = std::make_unique<zovOrientor>();
    listener = std::make_shared<FacadeListener>(*cube);
    listener->told.reserve(ENOUGH);
    zovApplicationParameters& parameters = hub->get_application_parameters();
    parameters.set_viewport_width(WIDTH);
    parameters.set_viewport_height(HEIGHT);
    cube->set_camera_operations(hub);
    cube->set_renderer(renderer);
    cube->set_viewport_size(WIDTH, HEIGHT);
    cube->get_parameters().set_draw_compass(true);
    cube->get_parameters().set_draw_ucs_menu(true);
  }
  ~FacadeView() { cube->destroy(); }

  void Reset() {
    hub->view = zovCameraParameters();
    hub->view.set_eye(qmPoint3(6.0, 5.0, -4.0));
    hub->view.set_up(qmUnitVec3(qmVector3(0.0, 1.0, 0.0)));
    for (auto set : {&zovCameraParameters::set_horizontal_fov, &zovCameraParameters::set_vertical_fov})
      (hub->view.*set)(qmAngle(30.0, qmAngleDegrees));
    cube->destroy();
    platform.Advance(60'000);
    Frames(2);
    listener->told.clear();
  }

  /// What the hosts have kept of them has something to stand on all the same.
  void EndIcons() {
    picture.reset();
    model.reset();
    for (const auto& host : {renderer, second}) {
      if (host->lastResource != nullptr) host->lastResource->set_opacity(host->lastResource->opacity());
      if (host->lastIcon3D != nullptr) host->lastIcon3D->set_size(host->lastIcon3D->size());
      host->lastResource.reset();
      host->lastIcon3D.reset();
    }
    picture.emplace(Korvane::TEXTURE_CUBE_FACES);
    model.emplace(Korvane::MODEL_PIVOT_BALL);
  }

  /// Nothing that may throw is left to the caller.
  void Play() {
    static_cast<void>(cube->create());
    added = cube->add_observer(listener);
    Frames(3);
    for (const int part : {0, 12, FRONT_RIGHT_TOP}) Use(part);
    Use(Korvane::Orientor::OVERLAY_HOME);
    Drag();
    Show();
    Exchange();
    cube->remove_observer(listener);
    Frames(2);
  }

  ManualPlatform platform;
  std::shared_ptr<FacadeHost> hub;
  std::shared_ptr<RoomyRenderer> renderer;
  std::shared_ptr<RoomyRenderer> second;
  std::unique_ptr<zovOrientor> cube;
  std::shared_ptr<FacadeListener> listener;
  std::optional<Korvane::ResourceIcon2D> picture{Korvane::TEXTURE_CUBE_FACES};
  std::optional<Korvane::ResourceIcon3D> model{Korvane::MODEL_PIVOT_BALL};
  bool added = false;
  bool named = false;
  bool explained = false;
  int refusedExchanges = 0;

 private:
  void Frames(int count) {
    for (int i = 0; i < count; ++i) {
      platform.Advance(50);
      hub->perform_operations();
      cube->draw();
    }
  }
  void Rest() {
    for (int i = 0; i < 100 && hub->perform_operations(); ++i) platform.Advance(50);
    Frames(1);
  }
  void Point(int x, int y) {
    for (int i = 0; i < 2; ++i) {
      cube->on_mouse_move(x, y);
      cube->set_viewport_mouse_position(x, HEIGHT - y - 1);
    }
    Frames(1);
  }
  bool Find(int part, int& x, int& y) { return cube->korvane().GetPartPosition(part, x, y); }
  bool Find(Korvane::Orientor::OverlayPart part, int& x, int& y) {
    return cube->korvane().GetOverlayPartPosition(part, x, y);
  }
  template <class Part>
  void Use(Part part) {
    int x = 0;
    int y = 0;
    if (!Find(part, x, y)) return;
    Point(x, y);
    named = !cube->get_active_part_name().empty() || named;
    explained = !cube->get_tooltip().empty() || explained;
    cube->on_left_mouse_down(x, y);
    Frames(1);
    cube->on_left_mouse_up(x, y);
    Rest();
  }
  void Drag() {
    int x = 0;
    int y = 0;
    int part = 0;
    while (part < FACES && !Find(part, x, y)) ++part;
    Point(x, y);
    cube->on_left_mouse_down(x, y);
    for (int step = 1; step <= 3; ++step) Point(x + 20 * step, y - 10 * step);
    cube->on_left_mouse_up(x + 60, y - 30);
    Rest();
  }
  // What other widgets draw of their own.
  void Show() {
    for (const auto& host : {renderer, second}) {
      host->korvane().Render(&*picture);
      host->korvane().Render(&*model);
      const auto wrapped = zovIconUtils::wrap_icon(&*picture);
      if (wrapped != nullptr) wrapped->set_opacity(0.5);
    }
  }
  // To the second and back, each as far as there is memory for it.
  void Exchange() {
    cube->destroy();
    for (const auto& next : {second, renderer}) {
      try {
        cube->set_renderer(next);
      } catch (const std::bad_alloc&) {
        ++refusedExchanges;
        continue;
      }
      static_cast<void>(cube->create());
      Frames(2);
      cube->destroy();
    }
    try {
      cube->set_renderer(renderer);
    } catch (const std::bad_alloc&) {
      ++refusedExchanges;
    }
  }
};

struct Sight {
  qmPoint3 eye;
  qmPoint3 centre;
  std::size_t told = 0;
  bool operator==(const Sight&) const = default;
};

Sight PlayWhole(FacadeView& view) {
  view.Reset();
  view.Play();
  return {view.hub->view.eye(), view.hub->view.centre(), view.listener->told.size()};
}

struct Sound {
  Sight sight;
  std::uint64_t allocations = 0;
  bool usesAll = false;  // what the host can be asked for
};

// Of what goes well; the first time makes what lasts as long as the program.
const Sound& GetSound() {
  static const Sound SOUND = [] {
    Sound sound;
    for (int i = 0; i < 2; ++i) {
      FacadeView view;
      view.Reset();
      const AllocationFault counting(~std::uint64_t{0}, 1);
      view.Play();
      sound.allocations = counting.GetCounted();
      sound.sight = PlayWhole(view);
      sound.usesAll = view.added && view.named && view.explained && view.refusedExchanges == 0 &&
                      sound.sight.told > 4 && view.renderer->lastResource != nullptr &&
                      view.second->lastResource != nullptr && view.renderer->lastIcon3D != nullptr &&
                      view.renderer->lastDynamic != nullptr;
    }
    return sound;
  }();
  return SOUND;
}

std::string Describe(const FacadeView& view, const Sight& sight) {
  std::string wrong;
  if (!(sight == GetSound().sight)) wrong += "another view; ";
  if (view.refusedExchanges > 3) wrong += "too many refusals; ";
  return wrong;
}

std::string PlayWithFault(std::uint64_t first, std::uint64_t count) {
  GetSound();
  std::string wrong;
  const AllocationCounter counter;
  const int alive = OwnIcon::alive;
  {
    FacadeView view;
    view.Reset();
    try {
      const AllocationFault failing(first, count);
      view.Play();
    } catch (const std::bad_alloc&) {
      wrong = "an exception has come out; ";
    }
    view.EndIcons();
    view.cube->remove_observer(view.listener);
    view.cube->set_renderer(view.renderer);
    wrong += Describe(view, PlayWhole(view));
  }
  if (OwnIcon::alive != alive) wrong += "icons; ";
  const std::int64_t texts = wrong.empty() ? 0 : 1;
  if (const std::int64_t live = counter.GetLive(); live > texts)
    wrong += std::to_string(live) + " allocations";
  return wrong;
}

class FacadeMemory : public testing::TestWithParam<std::uint64_t> {};

TEST_P(FacadeMemory, may_run_out_at_each_allocation) {
  const auto allocations = static_cast<long>(GetSound().allocations);
  EXPECT_GT(allocations, 200);
  EXPECT_TRUE(GetSound().usesAll);
  EXPECT_EQ(ForEachNumber(allocations, 150,
                          [](long n) { return PlayWithFault(static_cast<std::uint64_t>(n), GetParam()); }),
            "");
}

INSTANTIATE_TEST_SUITE_P(Runs, FacadeMemory, testing::Values(1, ~std::uint64_t{0}),
                         [](const auto& run) { return std::string(run.param == 1 ? "once" : "for_good"); });

TEST(FacadeMemoryTest, may_run_out_while_the_objects_are_made) {
  { const FacadeView first; }
  for (std::uint64_t n = 1;; ++n) {
    const AllocationCounter counter;
    bool made = false;
    try {
      const AllocationFault failing(n, 1);
      const FacadeView view;
      made = failing.GetCounted() < n;
    } catch (const std::bad_alloc&) {
    }
    EXPECT_EQ(counter.GetLive(), 0) << n;
    if (made) break;
    ASSERT_LT(n, 1000U);
  }
}

// A host that made an icon for which there is no place any more is told to destroy it.
TEST(FacadeMemoryTest, an_icon_that_cannot_be_held_goes_back) {
  RoomyRenderer host;
  host.keepsOwn = true;
  host.own.reserve(ENOUGH);
  int held = 0;
  for (std::uint64_t n = 1; held == 0 && n < 100; ++n) {
    host.own.clear();
    host.destroyed.clear();
    const AllocationFault failing(n, 1);
    Korvane::DynamicIcon2D* icon = host.korvane().CreateTooltip(L"a text");
    EXPECT_EQ(host.destroyed.size(), icon == nullptr ? host.own.size() : 0U) << n;
    if (icon == nullptr) continue;
    ++held;
    EXPECT_GT(n, 2U);
    EXPECT_TRUE(host.korvane().DestroyIcon(icon));
  }
  EXPECT_EQ(held, 1);
}

}  // namespace
