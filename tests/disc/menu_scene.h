#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "disc/track_menu_parts.h"
#include "korvane/icon2d.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/region_listener.h"
#include "korvane/track_menu.h"
#include "support/allocation_counter.h"
#include "support/cameras.h"
#include "support/journal.h"
#include "support/manual_platform.h"
#include "support/memory_hub.h"
#include "support/recording_renderer.h"

/// An image of flat colours, transparent at first. Rows count from the top.
struct MapImage {
  MapImage() = default;
  MapImage(int imageWidth, int imageHeight)
      : width(imageWidth),
        height(imageHeight),
        bytes(static_cast<std::size_t>(imageWidth) * static_cast<std::size_t>(imageHeight) * 4) {}

  /// Colours of 0 to 255.
  void Fill(int left, int top, int columns, int rows, int red, int green, int blue, int alpha = 255) {
    for (int row = top; row < top + rows; ++row) {
      for (int column = left; column < left + columns; ++column) {
        unsigned char* const pixel = &bytes[(static_cast<std::size_t>(row) * static_cast<std::size_t>(width) +
                                             static_cast<std::size_t>(column)) *
                                            4];
        pixel[0] = static_cast<unsigned char>(red);
        pixel[1] = static_cast<unsigned char>(green);
        pixel[2] = static_cast<unsigned char>(blue);
        pixel[3] = static_cast<unsigned char>(alpha);
      }
    }
  }

  /// An icon of `scale` times this many pixels, its centre at 0.
  std::unique_ptr<Korvane::PixelIcon2D> MakeIcon(double scale = 1.0) const {
    auto icon = std::make_unique<Korvane::PixelIcon2D>(width, height, bytes.data(),
                                                       Korvane::PixelIcon2D::PIXEL_FORMAT_RGBA);
    icon->SetSize(width * scale, height * scale);
    return icon;
  }

  int width = 0;
  int height = 0;
  std::vector<unsigned char> bytes;
};

/// A host whose textures have images: those that the test gives it, and one white pixel for any other.
class MapRenderer : public RecordingRenderer {
 public:
  MapRenderer() = default;
  /// Counts its end as well.
  explicit MapRenderer(int* endCount) : ends(endCount) {}
  ~MapRenderer() override {
    if (ends != nullptr) ++*ends;
  }

  Korvane::PixelIcon2D* CreateImageData(Korvane::TextureID id) override {
    Korvane::PixelIcon2D* const white = RecordingRenderer::CreateImageData(id);
    if (onImage) onImage();
    const auto found = images.find(id);
    if (white == nullptr || found == images.end()) return white;
    delete white;
    const MapImage& image = found->second;
    return image.MakeIcon().release();
  }
  using RecordingRenderer::Render;
  bool Render(Korvane::ResourceIcon2D* icon) override {
    const bool drawn = RecordingRenderer::Render(icon);
    if (onRender) onRender();
    return drawn;
  }
  bool Render(Korvane::DynamicIcon2D* icon) override {
    drawnTexts.push_back(icon->GetPosition());
    return RecordingRenderer::Render(icon);
  }
  Korvane::DynamicIcon2D* CreatePivotLabel(const wchar_t* text) override {
    lastPivotLabel = text;
    return RecordingRenderer::CreatePivotLabel(text);
  }
  bool LoadTexture(Korvane::TextureID id) override {
    const bool loaded = RecordingRenderer::LoadTexture(id);
    if (onLoad) onLoad(id);
    return loaded;
  }
  bool OpenMenu(Korvane::MenuID id) override {
    const bool opened = RecordingRenderer::OpenMenu(id);
    if (onMenu) onMenu();
    return opened;
  }
  Korvane::DynamicIcon2D* CreateTooltip(const wchar_t* text) override {
    Korvane::DynamicIcon2D* const icon = RecordingRenderer::CreateTooltip(text);
    if (onTooltip) onTooltip();
    return icon;
  }

  std::wstring lastPivotLabel;
  std::map<int, MapImage> images;
  std::vector<Korvane::Vector2> drawnTexts;  // where they stood
  std::function<void()> onImage;
  std::function<void()> onRender;
  std::function<void(Korvane::TextureID id)> onLoad;
  std::function<void()> onMenu;
  std::function<void()> onTooltip;

 private:
  int* ends = nullptr;
};

/// Writes down what it hears, as `name.Operation`, after the base has noted it, and then does what the test
/// wants.
class JournalListener : public Korvane::RegionListener {
 public:
  JournalListener(std::string listenerName, Journal& theJournal, Korvane::TrackMenu* menu)
      : RegionListener(menu), name(std::move(listenerName)), journal(theJournal) {}
  ~JournalListener() override {
    const HostCode ours;
    journal.Add(name + ".~");
    if (onEnd) onEnd();
  }

  void OnMouseMove(int x, int y) override {
    RegionListener::OnMouseMove(x, y);
    Hear(At("OnMouseMove", x, y));
  }
  void OnLeftMouseDown(int x, int y) override {
    RegionListener::OnLeftMouseDown(x, y);
    Hear(At("OnLeftMouseDown", x, y));
  }
  void OnLeftMouseUp(int x, int y) override {
    RegionListener::OnLeftMouseUp(x, y);
    Hear(At("OnLeftMouseUp", x, y));
  }
  void OnKeyDown(Korvane::KeyID key) override { Hear("OnKeyDown(" + std::to_string(key) + ")"); }
  void OnKeyUp(Korvane::KeyID key) override { Hear("OnKeyUp(" + std::to_string(key) + ")"); }
  void OnDraw() override { Hear("OnDraw"); }
  void OnTrackMenuActivate(bool active) override {
    Hear(active ? "OnTrackMenuActivate(true)" : "OnTrackMenuActivate(false)");
  }
  bool IsWelcomeListener() override { return isWelcome; }

  using RegionListener::downX;
  using RegionListener::downY;
  using RegionListener::mouseX;
  using RegionListener::mouseY;

  std::string name;
  Journal& journal;
  bool isWelcome = false;
  std::function<void(const std::string& operation)> onHear;
  std::function<void()> onEnd;
  int heard = 0;  // written after the test's part, so that a listener that has gone shows

 private:
  static std::string At(const char* operation, int x, int y) {
    return std::string(operation) + "(" + std::to_string(x) + ", " + std::to_string(y) + ")";
  }
  void Hear(const std::string& operation) {
    journal.Add(name + "." + operation);
    if (onHear) onHear(operation);
    ++heard;
  }
};

class OpenTrackMenu : public Korvane::TrackMenu {
 public:
  using TrackMenu::DrawTrackMenu;
  using TrackMenu::Update;
  using TrackMenu::UpdateActiveRegion;
  using TrackMenu::UpdatePosition;

  Korvane::TrackMenuParts& open = GetParts();

  Korvane::Vector2 GetPlace() { return GetRegionMap()->GetPosition(); }
};

/// A menu of 100 x 100 pixels in a view of 800 x 600, at (400, 300): red on the left, green on the right,
/// blue a square of 20 pixels in the middle, and 10 transparent pixels all around. One pixel of the map is
/// one of the screen.
struct MenuScene {
  using Region = Korvane::TrackMenu::Region;
  using Vector3 = Korvane::Vector3;

  static constexpr int MAP = 17;
  static constexpr int OTHER_MAP = 26;

  MenuScene() : hub(LookAt({0, 0, 10}, {0, 0, 0}, {0, 1, 0})) {
    MapImage image(100, 100);
    image.Fill(10, 10, 40, 80, 255, 0, 0);
    image.Fill(50, 10, 40, 80, 0, 255, 0);
    image.Fill(40, 40, 20, 20, 0, 0, 255);
    renderer.images[MAP] = image;
    renderer.images[OTHER_MAP] = MapImage(64, 32);
    menu.SetRendererShared(true);
    menu.SetKorvane(&hub);
    menu.SetRenderer(&renderer);
  }
  ~MenuScene() { menu.Destroy(); }

  /// The map, and the size of the view.
  void Prepare() {
    menu.SetRegionMap(static_cast<Korvane::TextureID>(MAP));
    menu.SetViewportSize(800, 600);
    menu.SetSize(100, 100);
    menu.SetLocation(400, 300);
  }
  /// The three regions and the disabled one, visible; the mouse in the middle of the blue square.
  void Open() {
    Prepare();
    menu.SetDisabledRegion(MakeRegion("none", Vector3(0, 0, 0), 90));
    menu.AddRegion(MakeRegion("red", Vector3(1, 0, 0), 91));
    menu.AddRegion(MakeRegion("green", Vector3(0, 1, 0), 92));
    menu.AddRegion(MakeRegion("blue", Vector3(0, 0, 1), 93));
    menu.SetVisible(true);
    menu.OnMouseMove(400, 300);
    Forget();
  }
  Region MakeRegion(const std::string& name, const Vector3& colour, int texture) {
    Region region;
    region.color = colour;
    listeners[name] = new JournalListener(name, journal, &menu);
    region.listener = listeners[name];
    region.icon = new Korvane::ResourceIcon2D(static_cast<Korvane::TextureID>(texture));
    return region;
  }
  void Forget() {
    journal.lines.clear();
    renderer.ClearCalls();
    renderer.drawnTexts.clear();
    hub.requested = 0;
  }
  /// The name of the listener of the active region.
  std::string GetActive() {
    for (const auto& [name, listener] : listeners) {
      if (listener == menu.GetActiveRegion().listener) return name;
    }
    return "nothing";
  }

  ManualPlatform platform;
  Journal journal;
  MemoryHub hub;
  MapRenderer renderer;
  std::map<std::string, JournalListener*> listeners;  // the menu's
  OpenTrackMenu menu;
};
