// The library's welcome screen with the kit's pictures and maps: what lies under the pointer is lit, and is
// what a click chooses.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "graphics_canvas.h"
#include "korvane/helm_disc.h"
#include "korvane/helm_disc_observer.h"
#include "korvane/icon2d.h"
#include "korvane/track_menu.h"
#include "support/memory_hub.h"

namespace {

using Korvane::DiscType;
using Korvane::ResourceIcon2D;
using Korvane::TextureID;
using Korvane::WelcomeMenuPart;
using zovhost::Image;
using zovhost::ResourcePack;

constexpr int side = 512;
constexpr int keeps = 0;  // an area that changes nothing

// A part of a page, in pixels from the top left, without its rounded corners; what shows with the pointer
// there, and what a click there is: -1 for a part of which only the picture tells.
struct Area {
  double left, top, right, bottom;
  int picture;
  int part;
  DiscType disc;
};

struct Page {
  std::string name;
  bool advanced;
  int plain;
  int title;
  std::vector<Area> areas;  // the later lie above the earlier; the first is the ground, the second the title
};

void PrintTo(const Page& page, std::ostream* out) { *out << page.name; }

const std::vector<Page>& GetPages() {
  static const std::vector<Page> pages = {
      {"advanced",
       true,
       77,
       78,
       {{8, 8, 504, 504, 78, 0, DiscType::FullNavigation},
        {32, 32, 480, 116, 78, 0, DiscType::FullNavigation},
        {32, 132, 480, 436, keeps, -1, DiscType::None},
        {32, 132, 252, 280, 79, 7, DiscType::MiniViewObject},
        {260, 132, 480, 280, 80, 6, DiscType::MiniTourBuilding},
        {32, 288, 252, 436, 81, 5, DiscType::MiniFullNavigation},
        {260, 288, 480, 436, 82, 4, DiscType::FullNavigation},
        {176, 452, 336, 486, keeps, 3, DiscType::None}}},
      {"basic",
       false,
       84,
       85,
       {{8, 8, 504, 504, 85, 1, DiscType::ViewObject},
        {32, 32, 480, 116, 85, 1, DiscType::ViewObject},
        {32, 132, 480, 436, keeps, -1, DiscType::None},
        {32, 132, 252, 436, 86, 9, DiscType::ViewObject},
        {260, 132, 480, 436, 87, 8, DiscType::TourBuilding},
        {176, 452, 336, 486, keeps, 2, DiscType::None}}},
  };
  return pages;
}

bool Contains(const Area& area, double x, double y) {
  return x > area.left && x < area.right && y > area.top && y < area.bottom;
}
// Within 12 pixels of one of its corners, where the rounding decides.
bool IsNearCorner(const Area& area, double x, double y) {
  const double inX = std::min(x - area.left, area.right - x);
  const double inY = std::min(y - area.top, area.bottom - y);
  return std::abs(inX) < 12 && std::abs(inY) < 12;
}

const Area* FindArea(const Page& page, double x, double y) {
  const Area* found = nullptr;
  for (const Area& area : page.areas) {
    if (Contains(area, x, y)) found = &area;
  }
  return found;
}

// Notes the last picture that it drew.
class NotingRenderer : public zovhost::GLRenderer {
 public:
  using GLRenderer::GLRenderer;
  using GLRenderer::Render;
  bool Render(ResourceIcon2D* icon) override {
    drawn = icon->GetTextureResourceID();
    return GLRenderer::Render(icon);
  }
  int drawn = -1;
};

class PartObserver : public Korvane::HelmDiscObserver {
 public:
  explicit PartObserver(Korvane::HelmDisc* disc) : HelmDiscObserver(disc) {}
  void OnActivated(DiscType /*type*/) override {}
  void OnClosed() override {}
  void OnClicked(Korvane::HelmDiscZone /*zone*/) override {}
  void OnDragBegin(Korvane::HelmDiscZone /*zone*/) override {}
  void OnDragEnd() override {}
  void OnKeyDown(Korvane::KeyID /*key*/) override {}
  void OnKeyUp(Korvane::KeyID /*key*/) override {}
  void OnWelcomeClicked(WelcomeMenuPart part) override { clicked = static_cast<int>(part); }
  void OnWelcomeClosed() override {}
  void OnWelcomeEntered() override {}
  void OnWelcomeExited() override {}

  int clicked = -1;
};

class GraphicsWelcome : public testing::TestWithParam<Page> {
 protected:
  GraphicsWelcome() {
    EXPECT_TRUE(target.Create(side, side, 0));
    EXPECT_TRUE(renderer.Create());
    renderer.SetViewport(0, 0, side, side);
    disc.SetKorvane(&hub);
    disc.SetRenderer(&renderer);
    disc.AddObserver(&observer);
    PutUp();
  }
  ~GraphicsWelcome() override { disc.Destroy(); }

  void PutUp() {
    disc.GetParameters().alwaysShowWelcome = true;
    disc.GetParameters().welcomeStartsAdvanced = GetParam().advanced;
    EXPECT_TRUE(disc.Create());
    disc.SetViewportSize(side, side);
    disc.SetWelcomeMenuPosition(0, 0);
  }
  // Pixels from the top left, as the pages are described.
  static int Up(int y) { return side - 1 - y; }
  void MoveTo(int x, int y) { disc.OnMouseMove(x, Up(y)); }
  void Enter() { MoveTo(side / 2, 20); }
  Image DrawDisc() {
    Clear();
    disc.DrawOverlay();
    return Read();
  }
  Image DrawPicture(int id) {
    Clear();
    ResourceIcon2D icon(static_cast<TextureID>(id));
    icon.SetSize(side, side);
    icon.SetPosition({side / 2.0, side / 2.0});
    const Korvane::Box2 whole({side / 2.0, side / 2.0}, {side / 2.0, side / 2.0});
    renderer.IncrementTextureUsage(icon.GetTextureResourceID());
    renderer.ApplyTextureUsage();
    EXPECT_TRUE(renderer.BeginRender(whole, Korvane::CameraParameters(), Korvane::Renderer::RENDER_OVERLAY));
    EXPECT_TRUE(renderer.Render(&icon));
    EXPECT_TRUE(renderer.EndRender());
    renderer.DecrementTextureUsage(icon.GetTextureResourceID());
    renderer.ApplyTextureUsage();
    return Read();
  }
  void Clear() {
    EXPECT_TRUE(target.Bind());
    glClearColor(0.2F, 0.4F, 0.6F, 1.0F);
    glClear(GL_COLOR_BUFFER_BIT);
  }
  Image Read() {
    Image image;
    EXPECT_TRUE(target.Read(image));
    return image;
  }

  zovtest::OffscreenContext context;
  zovhost::OffscreenTarget target;
  NotingRenderer renderer{ResourcePack::GetDefault()};
  MemoryHub hub;
  Korvane::HelmDisc disc;
  PartObserver observer{&disc};
};
INSTANTIATE_TEST_SUITE_P(Pages, GraphicsWelcome, testing::ValuesIn(GetPages()),
                         [](const auto& page) { return page.param.name; });

TEST_P(GraphicsWelcome, lights_what_the_pointer_is_on_all_over_the_page) {
  const Page& page = GetParam();
  int last = page.title;
  for (int y = 3; y < side; y += 19) {
    for (int x = 5; x < side; x += 19) {
      const auto isCorner = [&](const Area& area) { return IsNearCorner(area, x + 0.5, y + 0.5); };
      if (std::any_of(page.areas.begin(), page.areas.end(), isCorner)) continue;
      const bool isEntering = !disc.IsOverWelcome();
      if (isEntering) Enter();
      MoveTo(x, y);
      const Area* const area = FindArea(page, x + 0.5, y + 0.5);
      const int kept = isEntering ? page.title : last;
      last = area == nullptr ? page.plain : area->picture == keeps ? kept : area->picture;
      renderer.drawn = -1;
      disc.DrawOverlay();
      ASSERT_EQ(renderer.drawn, last) << x << ' ' << y;
      ASSERT_EQ(disc.IsOverWelcome(), area != nullptr) << x << ' ' << y;
    }
  }
  EXPECT_EQ(renderer.GetPlaceholderCount(), 0) << renderer.GetLastPlaceholder();
}

TEST_P(GraphicsWelcome, draws_the_picture_of_each_part_over_the_whole_screen) {
  const Page& page = GetParam();
  EXPECT_TRUE(DrawDisc().rgba == DrawPicture(page.plain).rgba);
  for (const Area& area : page.areas) {
    if (area.picture == keeps) continue;
    MoveTo(side / 2, 20);
    MoveTo(static_cast<int>(area.left + 14), static_cast<int>(area.top + 14));
    EXPECT_TRUE(DrawDisc().rgba == DrawPicture(area.picture).rgba) << area.picture;
    EXPECT_FALSE(DrawDisc().rgba == DrawPicture(page.plain).rgba) << area.picture;
  }
}

// To paint one takes tens of milliseconds.
TEST_P(GraphicsWelcome, what_was_lit_before_is_not_painted_again) {
  const auto lightEach = [this] {
    for (const Area& area : GetParam().areas) {
      if (area.picture == keeps) continue;
      Enter();
      MoveTo(static_cast<int>(area.left + 14), static_cast<int>(area.top + 14));
      disc.DrawOverlay();
    }
    MoveTo(2, 2);  // beside the page
    disc.DrawOverlay();
  };
  const auto pictures = std::count_if(GetParam().areas.begin() + 1, GetParam().areas.end(),
                                      [](const Area& area) { return area.picture != keeps; });
  lightEach();
  const int painted = renderer.GetDrawnPictureCount();
  EXPECT_EQ(painted, pictures + 1) << "each once, and the plain one";
  for (int round = 0; round < 3; ++round) lightEach();
  EXPECT_EQ(renderer.GetDrawnPictureCount(), painted);
  renderer.SetResources(ResourcePack::MakeDefault());  // with other words, perhaps
  lightEach();
  EXPECT_EQ(renderer.GetDrawnPictureCount(), 2 * painted);
}

// At 3 pixels a point one of them has 1536 x 1536 pixels of 4 bytes; within 64 MiB lie 7.
TEST_P(GraphicsWelcome, only_so_many_pictures_are_kept) {
  disc.Destroy();
  renderer.SetDisplayScale(3.0);
  const auto use = [this](int id) {
    renderer.IncrementTextureUsage(static_cast<TextureID>(id));
    renderer.ApplyTextureUsage();
    renderer.DecrementTextureUsage(static_cast<TextureID>(id));
    renderer.ApplyTextureUsage();
  };
  const int before = renderer.GetDrawnPictureCount();
  for (const int id : {77, 78, 79, 80, 81, 82, 84, 85}) use(id);
  EXPECT_EQ(renderer.GetDrawnPictureCount(), before + 8);
  use(78);  // the second of the eight
  EXPECT_EQ(renderer.GetDrawnPictureCount(), before + 8);
  use(77);
  EXPECT_EQ(renderer.GetDrawnPictureCount(), before + 9);
}

TEST_P(GraphicsWelcome, a_click_chooses_what_it_shows) {
  for (const Area& area : GetParam().areas) {
    if (area.part < 0) continue;
    PutUp();
    Enter();
    const int x = static_cast<int>(area.left + 14);
    const int y = static_cast<int>(area.top + 14);
    MoveTo(x, y);
    observer.clicked = -1;
    EXPECT_TRUE(disc.OnLeftMouseDown(x, Up(y)));
    EXPECT_EQ(observer.clicked, area.part);
    EXPECT_EQ(disc.GetActiveDisc(), area.disc);
    disc.OnLeftMouseUp(x, Up(y));
    disc.SetActiveDisc(DiscType::None);
  }
}

// Each map has the colours that the library knows and no other, in bytes; only those of its own page.
TEST_P(GraphicsWelcome, the_map_is_of_the_colours_of_the_library) {
  using Colour = std::array<int, 3>;
  std::vector<Colour> known = {{255, 0, 0}, {0, 0, 128}, {0, 255, 255}};
  const std::vector<Colour> own =
      GetParam().advanced
          ? std::vector<Colour>{{0, 128, 0}, {255, 255, 0}, {0, 255, 0}, {255, 0, 255}, {0, 0, 255}}
          : std::vector<Colour>{{128, 0, 0}, {128, 128, 0}, {128, 0, 128}};
  known.insert(known.end(), own.begin(), own.end());
  std::sort(known.begin(), known.end());
  Image map;
  ASSERT_TRUE(ResourcePack::GetDefault()->RenderHitMap(GetParam().advanced ? 83 : 88, map));
  std::vector<Colour> found;
  for (std::size_t at = 0; at < map.rgba.size(); at += 4) {
    if (map.rgba[at + 3] == 0) continue;
    const Colour colour = {map.rgba[at], map.rgba[at + 1], map.rgba[at + 2]};
    if (std::find(found.begin(), found.end(), colour) == found.end()) found.push_back(colour);
  }
  std::sort(found.begin(), found.end());
  EXPECT_EQ(found, known);
}

}  // namespace
