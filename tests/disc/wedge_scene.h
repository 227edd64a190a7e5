#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "disc/helm_disc_parts.h"
#include "interaction/tools/tool_fakes.h"
#include "korvane/helm_disc.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/rewind_history.h"
#include "korvane/track_menu.h"
#include "support/counted_history.h"

/// A disc of which any kind is said to be open.
class WedgeDisc : public Korvane::HelmDisc {
 public:
  Korvane::DiscType GetActiveDisc() const override { return type; }
  void SetActiveDisc(Korvane::DiscType chosen) override {
    type = chosen;
    ++choices;
  }

  Korvane::DiscType type = Korvane::DiscType::FullNavigation;
  int choices = 0;
  Korvane::HelmDiscParts& open = GetParts();
};

/// A renderer that keeps what is drawn where, and whose texts have sizes: 200 x 40.
class WedgeRenderer : public ToolRenderer {
 public:
  struct Drawn {
    int id;  // of the texture, or, below 0, of the text
    Korvane::Box2 bounds;
    double opacity;
  };

  using ToolRenderer::Render;
  bool Render(Korvane::ResourceIcon2D* icon) override {
    const bool drawn = ToolRenderer::Render(icon);
    if (!quiet) pictures.push_back({icon->GetTextureResourceID(), icon->GetBounds(), icon->GetOpacity()});
    Act();
    return drawn;
  }
  bool Render(Korvane::DynamicIcon2D* icon) override {
    if (!quiet) pictures.push_back({-FindText(icon), icon->GetBounds(), icon->GetOpacity()});
    const bool drawn = ToolRenderer::Render(icon);
    Act();
    return drawn;
  }
  /// All white.
  Korvane::PixelIcon2D* CreateImageData(Korvane::TextureID /*id*/) override {
    const std::vector<unsigned char> white(4 * 4 * 4, 255);
    return new Korvane::PixelIcon2D(4, 4, white.data(), Korvane::PixelIcon2D::PIXEL_FORMAT_RGBA);
  }
  bool LoadTexture(Korvane::TextureID id) override {
    ++held[id];
    return true;
  }
  void ReleaseTexture(Korvane::TextureID id) override { held.erase(id); }
  Korvane::DynamicIcon2D* CreateMessageHUD(const wchar_t* text) override {
    return Note(ToolRenderer::CreateMessageHUD(text), text);
  }
  Korvane::DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) override {
    return Note(ToolRenderer::CreateTooltipHUD(text), text);
  }
  Korvane::DynamicIcon2D* CreatePivotLabel(const wchar_t* text) override {
    lastPivotLabel = NumberOf(text);
    return ToolRenderer::CreatePivotLabel(text);
  }
  bool DestroyIcon(Korvane::DynamicIcon2D*& icon) override {
    texts.erase(icon);
    return ToolRenderer::DestroyIcon(icon);
  }
  bool EndRender() override {
    const bool ended = ToolRenderer::EndRender();
    Act();
    return ended;
  }
  bool QueryRaySceneIntersection(const Vector3& origin, const Vector3& direction, Vector3& hit) override {
    lastOrigin = origin;
    lastDirection = direction;
    const bool found = ToolRenderer::QueryRaySceneIntersection(origin, direction, hit);
    Act();
    return found;
  }

  /// The number of a text that is held; 0 for none.
  int FindText(const Korvane::DynamicIcon2D* icon) const {
    const auto found = texts.find(icon);
    return found != texts.end() ? found->second : 0;
  }
  const Korvane::DynamicIcon2D* GetText(int number) const {
    for (const auto& [icon, its] : texts) {
      if (its == number) return icon;
    }
    return nullptr;
  }
  std::vector<int> GetHeldTexts() const {
    std::vector<int> numbers;
    for (const auto& [icon, number] : texts) numbers.push_back(number);
    std::sort(numbers.begin(), numbers.end());
    return numbers;
  }
  std::vector<int> GetHeldTextures() const {
    std::vector<int> numbers;
    for (const auto& [id, count] : held) numbers.push_back(id);
    return numbers;
  }
  void Act() const {
    if (onCall) onCall();
  }

  std::vector<Drawn> pictures;
  std::map<int, int> held;
  int lastPivotLabel = -1;
  Vector3 lastOrigin;
  Vector3 lastDirection;
  std::function<void()> onCall;

 private:
  static int NumberOf(const wchar_t* text) { return std::stoi(std::wstring(text).substr(5)); }
  Korvane::DynamicIcon2D* Note(Korvane::DynamicIcon2D* icon, const wchar_t* text) {
    if (icon == nullptr) return nullptr;
    icon->SetSize(200, 40);
    texts[icon] = NumberOf(text);
    return icon;
  }

  std::map<const Korvane::DynamicIcon2D*, int> texts;
};

/// One wedge, alone on a menu over a view of 1024 x 768 pixels that looks from (0, 0, 10) at the origin, 45
/// degrees to each side. The mouse stands at (500, 300).
template <class Listener>
struct WedgeScene : ::testing::Test {
  static constexpr int WIDTH = 1024;
  static constexpr int HEIGHT = 768;

  WedgeScene() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})) {
    ball.SetKorvane(&hub);
    ball.SetRenderer(&renderer);
    hub.view.pivot = {1, 2, -3};
    hub.GetApplicationParameters().viewport_width = WIDTH;
    hub.GetApplicationParameters().viewport_height = HEIGHT;
    disc = std::make_unique<WedgeDisc>();
    disc->SetKorvane(&hub);
    disc->SetPivotBall(&ball);
    disc->open.history = std::make_unique<CountedHistory>();
    disc->GetHistory()->SetKorvane(&hub);
    renderer.scene = [](const Korvane::Vector3&, const Korvane::Vector3&) {
      return std::optional<Korvane::Vector3>({0, 0, 2});
    };
  }
  ~WedgeScene() override {
    renderer.onCall = nullptr;
    hub.onApply = nullptr;
    if (menu != nullptr) menu->Destroy();
    menu.reset();
    disc.reset();
  }

  template <class... Arguments>
  void Make(Arguments... arguments) {
    menu = std::make_unique<Korvane::TrackMenu>();
    menu->SetRendererShared(true);
    menu->SetKorvane(&hub);
    menu->SetRenderer(&renderer);
    menu->SetRegionMap(static_cast<Korvane::TextureID>(34));
    menu->SetViewportSize(WIDTH, HEIGHT);
    menu->SetLocation(500, 300);
    Korvane::TrackMenu::Region region;
    region.color = Korvane::Vector3(1, 1, 1);
    region.icon = new Korvane::ResourceIcon2D(static_cast<Korvane::TextureID>(35));
    region.listener = wedge = new Listener(menu.get(), disc.get(), arguments...);
    menu->AddRegion(region);
    menu->SetVisible(true);
    menu->OnMouseMove(500, 300);
    renderer.ApplyTextureUsage();
    ASSERT_EQ(menu->GetActiveRegion().listener, wedge);
    hub.recording = true;
    Forget();
  }
  void Forget() {
    hub.TakeLog();
    renderer.ClearCalls();
    renderer.pictures.clear();
  }
  void Press(int x = 500, int y = 300) { menu->OnLeftMouseDown(x, y); }
  void Move(int x, int y) { menu->OnMouseMove(x, y); }
  void Release(int x, int y) { menu->OnLeftMouseUp(x, y); }
  void Click(int x = 500, int y = 300) {
    Press(x, y);
    Release(x, y);
  }
  /// As the disc does where it closes.
  void PutAway() {
    menu->CancelPress();
    menu->SetVisible(false);
    menu->SetActive(false);
    renderer.ApplyTextureUsage();
  }
  void Frame(std::uint32_t milliseconds = 16) {
    platform.Advance(milliseconds);
    hub.PerformOperations();
    menu->Draw();
  }
  void RunFor(int milliseconds) {
    for (; milliseconds > 0; milliseconds -= 16) Frame();
  }
  /// What the wedge asked of the hub, in order, without the traffic of frames.
  std::vector<std::string> TakeAsked() {
    std::vector<std::string> asked;
    for (const std::string& line : hub.TakeLog()) {
      const bool own = line == "query" || line == "request" || line == "recalculate selection" ||
                       line == "begin shot hook" || line == "end shot hook" || line == "recalculate global";
      if (!own) asked.push_back(line);
    }
    return asked;
  }
  std::vector<WedgeRenderer::Drawn> TakePictures() { return std::exchange(renderer.pictures, {}); }
  /// One frame of the wedge alone.
  std::vector<WedgeRenderer::Drawn> Draw() {
    renderer.pictures.clear();
    wedge->OnDraw();
    return TakePictures();
  }
  bool IsOperating(Korvane::OperationType type) const { return hub.IsOperationActive(type); }
  Korvane::ApplicationParameters& Settings() { return hub.GetApplicationParameters(); }
  Korvane::HelmDiscParameters& Parameters() { return disc->GetParameters(); }
  /// How many elements the moves have left, the first being the start.
  int GetElementCount() const { return disc->GetHistory()->GetElementCount(); }
  int GetOpenRecords() const { return static_cast<const CountedHistory*>(disc->GetHistory())->open; }
  Korvane::TrackMenu::Region& Region() { return menu->GetActiveRegion(); }

  ManualPlatform platform;
  ToolHub hub;
  WedgeRenderer renderer;
  Korvane::PivotBall ball;
  std::unique_ptr<WedgeDisc> disc;
  std::unique_ptr<Korvane::TrackMenu> menu;
  Listener* wedge = nullptr;  // the menu's
};

/// What a wedge drew: the number of its texture, or of its text below 0, its middle and its size.
inline ::testing::AssertionResult IsDrawn(const WedgeRenderer::Drawn& drawn, int number,
                                          const Korvane::Vector2& middle, double width, double height) {
  const Korvane::Box2& box = drawn.bounds;
  const bool right = drawn.id == number && (box.center - middle).Length() < 1e-9 &&
                     std::abs(box.halfExtent.x * 2.0 - width) < 1e-9 &&
                     std::abs(box.halfExtent.y * 2.0 - height) < 1e-9;
  if (right) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << drawn.id << " at " << box.center.x << ", " << box.center.y << ", "
                                       << box.halfExtent.x * 2.0 << " x " << box.halfExtent.y * 2.0;
}
