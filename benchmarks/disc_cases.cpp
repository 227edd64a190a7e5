// The disc that follows the cursor: the mouse on it and the mouse that drags it along, on the way through the
// view manager, beside the same search in the same picture; a step along a film strip of a hundred views,
// beside the sum of two of them; a draw, beside the corners of what it hands to the renderer.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "benchmark_case.h"
#include "benchmark_hub.h"
#include "conversions.h"
#include "korvane/helm_disc.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/rewind_history.h"
#include "korvane/track_menu.h"
#include "korvane/view_manager.h"
#include "support/counting_renderer.h"

using namespace Korvane;

namespace {

constexpr int WIDTH = 1024;
constexpr int HEIGHT = 768;

using Colour = std::array<unsigned char, 3>;

// A round picture of eight wedges of colours that the regions of the full disc have.
class WedgePicture {
 public:
  static constexpr int SIDE = 256;
  static constexpr std::array<Colour, 8> COLOURS = {{{255, 0, 0},
                                                     {0, 0, 255},
                                                     {255, 255, 0},
                                                     {0, 255, 0},
                                                     {0, 0, 128},
                                                     {128, 0, 0},
                                                     {0, 128, 0},
                                                     {128, 128, 128}}};

  WedgePicture() : bytes(std::size_t{4} * SIDE * SIDE) {
    for (int row = 0; row < SIDE; ++row) {
      for (int column = 0; column < SIDE; ++column) Paint(row, column);
    }
  }
  const unsigned char* GetBytes() const { return bytes.data(); }

 private:
  void Paint(int row, int column) {
    const double x = column - SIDE / 2.0;
    const double y = row - SIDE / 2.0;
    if (std::hypot(x, y) > SIDE / 2.0 - 2.0) return;
    const double turn = std::atan2(y, x) / 6.283185307179586 + 0.5;
    const Colour& colour = COLOURS[static_cast<std::size_t>(turn * 8.0) % COLOURS.size()];
    unsigned char* const pixel = &bytes[static_cast<std::size_t>(4 * (row * SIDE + column))];
    std::copy(colour.begin(), colour.end(), pixel);
    pixel[3] = 255;
  }

  std::vector<unsigned char> bytes;
};

const WedgePicture& GetPicture() {
  static const WedgePicture picture;
  return picture;
}

class DiscRenderer : public CountingRenderer {
 public:
  using CountingRenderer::Render;
  bool Render(ResourceIcon2D* icon) override {
    drawnWidth = icon->GetWidth();
    return CountingRenderer::Render(icon);
  }
  PixelIcon2D* CreateImageData(TextureID /*id*/) override {
    return new PixelIcon2D(WedgePicture::SIDE, WedgePicture::SIDE, GetPicture().GetBytes(),
                           PixelIcon2D::PIXEL_FORMAT_RGBA);
  }
  double drawnWidth = 0.0;
};

// A view on which a disc is open.
struct DiscView {
  DiscView() {
    hub.view = GetBenchmarkCamera();
    hub.GetApplicationParameters().viewport_width = WIDTH;
    hub.GetApplicationParameters().viewport_height = HEIGHT;
    disc.GetParameters().suppressWelcome = true;
    manager.SetKorvane(&hub);
    manager.SetRenderer(&renderer);
    manager.SetHelmDisc(&disc);
    manager.SetViewportSize(WIDTH, HEIGHT);
    manager.Create();
    disc.SetActiveDisc(DiscType::FullNavigation);
    GetMenu().SetLocation(WIDTH / 2, HEIGHT / 2);
  }
  ~DiscView() { manager.Destroy(); }
  DiscView(const DiscView&) = delete;
  DiscView& operator=(const DiscView&) = delete;

  TrackMenu& GetMenu() const { return *disc.GetActiveTrackMenu(); }
  PixelIcon2D& GetMap() const { return *GetMenu().GetRegionMap(); }

  BenchmarkHub hub;
  DiscRenderer renderer;
  HelmDisc disc;
  ViewManager manager;
};

// The same picture at the same place, in the same order of arithmetic.
class BareDisc {
 public:
  void Restart(const PixelIcon2D& map) {
    centre = map.GetPosition();
    side = map.GetWidth();
    colour = nullptr;
  }
  void Move(const Vector2& mouse) {
    if (Take(mouse)) return;
    Vector2 inner = centre;
    Vector2 outer = mouse;
    Vector2 middle;
    for (int i = 0; i < 25; ++i) {
      middle = (inner + outer) * 0.5;
      (Find(middle) != nullptr ? inner : outer) = middle;
    }
    if (Find(middle) == nullptr) middle += Vector2(Inward(middle.x, centre.x), Inward(middle.y, centre.y));
    centre += mouse - middle;
    Take(mouse);
  }
  const Vector2& GetCentre() const { return centre; }
  /// The last that the mouse was on; null at first.
  const unsigned char* GetColour() const { return colour; }

 private:
  bool Take(const Vector2& mouse) {
    const unsigned char* const found = Find(mouse);
    if (found != nullptr) colour = found;
    return found != nullptr;
  }
  static double Inward(double from, double to) { return to > from ? 0.5 : -0.5; }
  const unsigned char* Find(const Vector2& point) const {
    const double scale = WedgePicture::SIDE / side;
    const double column = std::ceil((point.x - centre.x + side / 2.0) * scale);
    const double row = std::floor((centre.y + side / 2.0 - point.y) * scale);
    if (!(column >= 0.0 && column < WedgePicture::SIDE && row >= 0.0 && row < WedgePicture::SIDE))
      return nullptr;
    const unsigned char* const pixel =
        GetPicture().GetBytes() + 4 * (static_cast<int>(row) * WedgePicture::SIDE + static_cast<int>(column));
    return pixel[3] != 0 ? pixel : nullptr;
  }

  Vector2 centre;
  double side = 1.0;
  const unsigned char* colour = nullptr;
};

bool IsSame(const Vector3& colour, const unsigned char* bytes) {
  const double parts[] = {colour.x, colour.y, colour.z};
  return std::equal(std::begin(parts), std::end(parts), bytes,
                    [](double part, unsigned char byte) { return std::abs(part - byte / 255.0) < 0.01; });
}

class DiscMoveCase : public BenchmarkCase {
 public:
  /// The mouse goes round in circles of up to this radius around the middle of the view.
  DiscMoveCase(std::string caseName, double radius, double aimInNanoseconds)
      : name(std::move(caseName)), aim(aimInNanoseconds) {
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      const double angle = 0.19634954 * static_cast<double>(i);  // a circle of 32
      const double distance =
          radius * (0.3 + 0.7 * static_cast<double>(i) / static_cast<double>(pixels.size()));
      pixels[i] = Vector2(WIDTH / 2 + std::floor(distance * std::cos(angle)),
                          HEIGHT / 2 + std::floor(distance * std::sin(angle)));
    }
  }

  std::string GetName() const override { return name; }
  double GetAimInNanoseconds() const override { return aim; }

  void Restart() override {
    library = std::make_unique<DiscView>();
    bare.Restart(library->GetMap());
    const Vector2 start(WIDTH / 2 + 9, HEIGHT / 2 + 9);
    library->manager.OnMouseMove(static_cast<int>(start.x), static_cast<int>(start.y));
    bare.Move(start);
    libraryNext = bareNext = 0;
  }
  void StepLibrary() override {
    const Vector2& mouse = pixels[libraryNext++ % pixels.size()];
    library->manager.OnMouseMove(static_cast<int>(mouse.x), static_cast<int>(mouse.y));
    benchmark::DoNotOptimize(library->GetMenu());
  }
  void StepBare() override {
    bare.Move(pixels[bareNext++ % pixels.size()]);
    benchmark::DoNotOptimize(std::as_const(bare));
  }
  bool Agrees() const override {
    const bool sameColour =
        bare.GetColour() != nullptr && IsSame(library->GetMenu().GetActiveRegion().color, bare.GetColour());
    return sameColour && (library->GetMap().GetPosition() - bare.GetCentre()).Length() < 1e-6;
  }

 private:
  std::string name;
  double aim;
  std::array<Vector2, 256> pixels;
  std::unique_ptr<DiscView> library;
  BareDisc bare;
  std::size_t libraryNext = 0;
  std::size_t bareNext = 0;
};

// A slide on a strip of a hundred views that stand in a row, all in the same direction: pictures of 6 pixels
// with gaps of 2, the last at 1000, so that nothing scrolls.
class ScrubCase : public BenchmarkCase {
 public:
  std::string GetName() const override { return "film strip: slide over 100"; }
  double GetAimInNanoseconds() const override { return 3000.0; }

  void Restart() override {
    hub.view = MakeView(0);
    history = std::make_unique<RewindHistory>();
    history->SetKorvane(&hub);
    history->SetSnapEnabled(false);
    history->SetThumbnailSize(6.0F);
    history->SetThumbnailGapSize(PITCH - 6.0F);
    history->SetViewportSize(WIDTH, HEIGHT);
    for (int i = 0; i < COUNT; ++i) {
      views[static_cast<std::size_t>(i)] = MakeView(i);
      history->AddHistoryElement(MakeView(i), nullptr);
    }
    history->OpenTimeline(Vector2(LAST, 300.0), MakeView(COUNT - 1));
    libraryStep = bareStep = 0;
  }
  void StepLibrary() override {
    history->SlideTimeline(Vector2(XOf(++libraryStep), 300.0));
    CameraParameters camera;
    if (history->GetInterpolatedCamera(camera)) hub.ApplyCameraParameters(camera);
    benchmark::DoNotOptimize(std::as_const(hub.view));
  }
  void StepBare() override {
    const double place = COUNT - 1 - (LAST - XOf(++bareStep)) / PITCH;
    const auto low = static_cast<std::size_t>(place);
    const double share = place - std::floor(place);
    const CameraParameters& from = views[low];
    const CameraParameters& to = views[std::min<std::size_t>(low + 1, COUNT - 1)];
    bare.eye = from.eye * (1.0 - share) + to.eye * share;
    bare.centre = from.centre * (1.0 - share) + to.centre * share;
    benchmark::DoNotOptimize(std::as_const(bare));
  }
  bool Agrees() const override {
    return (hub.view.eye - bare.eye).Length() < 1e-9 && (hub.view.centre - bare.centre).Length() < 1e-9;
  }

 private:
  static constexpr int COUNT = 100;
  static constexpr float PITCH = 8.0F;  // pixels
  static constexpr double LAST = 1000.0;

  static CameraParameters MakeView(int index) {
    CameraParameters camera = GetBenchmarkCamera();
    const Vector3 way = Vector3(0.5, 0.25, -0.125) * index;
    camera.eye += way;
    camera.centre += way;
    return camera;
  }
  // To and fro over all of it, 3 pixels a step.
  static double XOf(int step) {
    const int phase = step % 512;
    return LAST - 3.0 * (phase < 256 ? phase : 512 - phase);
  }

  BenchmarkHub hub;
  std::unique_ptr<RewindHistory> history;
  std::array<CameraParameters, COUNT> views;
  CameraParameters bare;
  int libraryStep = 0;
  int bareStep = 0;
};

class DiscDrawCase : public BenchmarkCase {
 public:
  std::string GetName() const override { return "disc drawn"; }
  double GetAimInNanoseconds() const override { return 1000.0; }

  void Restart() override {
    library = std::make_unique<DiscView>();
    library->manager.OnMouseMove(WIDTH / 2 + 40, HEIGHT / 2 + 30);
    library->disc.Draw();
    map = &library->GetMap();
    const long before = library->renderer.icons;
    library->disc.Draw();
    iconsOfFrame = library->renderer.icons - before;
    bareIcons = library->renderer.icons;
  }
  void StepLibrary() override { library->disc.Draw(); }
  void StepBare() override {
    Vector3 colour;
    if (!map->GetColor(Vector2(WIDTH / 2 + 40, HEIGHT / 2 + 30), colour)) return;
    for (long i = 0; i < iconsOfFrame; ++i) {
      const Vector2 low = map->GetBounds().Min();
      const Vector2 high = map->GetBounds().Max();
      corners = {low.x, low.y, high.x, low.y, high.x, high.y, low.x, high.y};
      benchmark::DoNotOptimize(corners.data());
      benchmark::ClobberMemory();
    }
    bareIcons += iconsOfFrame;
  }
  bool Agrees() const override {
    const bool drawn = iconsOfFrame > 0 && library->renderer.icons == bareIcons;
    return drawn && library->renderer.drawnWidth == corners[2] - corners[0];
  }

 private:
  std::unique_ptr<DiscView> library;
  const PixelIcon2D* map = nullptr;
  std::array<double, 8> corners{};
  long iconsOfFrame = 0;
  long bareIcons = 0;
};

}  // namespace

std::vector<BenchmarkCase*> GetDiscCases() {
  static DiscMoveCase on("view manager: mouse on a disc", 55.0, 3000.0);
  static DiscMoveCase along("view manager: disc dragged along", 300.0, 3000.0);
  static ScrubCase scrub;
  static DiscDrawCase draw;
  return {&on, &along, &scrub, &draw};
}
