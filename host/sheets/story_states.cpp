#include "story_states.h"

#include <epoxy/gl.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <utility>

#include "korvane/icon2d.h"
#include "korvane/resource_ids.h"
#include "painted.h"
#include "zovhost/gl_renderer.h"

namespace zovsheets {

using Korvane::CameraParameters;
using Korvane::DynamicIcon2D;
using Korvane::Renderer;
using Korvane::TextureID;
using Korvane::Vector2;
using zovhost::Image;
using zovhost::ResourcePack;
using Doing = StoryState::Doing;

namespace {

constexpr int kindMargin = 4;  // points, around each picture of a kind

constexpr StoryKind kinds[] = {
    {"frame", Korvane::TEXTURE_STORY_FRAME, Korvane::TEXTURE_STORY_FRAME},
    {"title-bar", Korvane::TEXTURE_STORY_TITLE_BAR, Korvane::TEXTURE_STORY_TITLE_BAR},
    {"title-buttons", Korvane::TEXTURE_STORY_PLAY, Korvane::TEXTURE_STORY_CLOSE_ACTIVE},
    {"sequences", Korvane::TEXTURE_SEQUENCE_SLIDE, Korvane::TEXTURE_SEQUENCE_SLIDE_SELECTED_ACTIVE},
    {"sequence-marks", Korvane::TEXTURE_SEQUENCE_SLIDE_PLAYING, Korvane::TEXTURE_SEQUENCE_SLIDE_PAUSED,
     Korvane::TEXTURE_SEQUENCE_SLIDE},
    {"sequence-adds", Korvane::TEXTURE_SEQUENCE_ADD, Korvane::TEXTURE_SEQUENCE_ADD_ACTIVE},
    {"sequence-shades", Korvane::TEXTURE_SEQUENCE_STACK_LEFT, Korvane::TEXTURE_SEQUENCE_STACK_RIGHT,
     Korvane::TEXTURE_SEQUENCE_SLIDE},
    {"sequence-buttons", Korvane::TEXTURE_SEQUENCE_PLAY, Korvane::TEXTURE_SEQUENCE_TARGET_ACTIVE},
    {"shots", Korvane::TEXTURE_SHOT_SLIDE, Korvane::TEXTURE_SHOT_SLIDE_SELECTED},
    {"shot-marks", Korvane::TEXTURE_SHOT_SLIDE_PLAYING, Korvane::TEXTURE_SHOT_SLIDE_PAUSED,
     Korvane::TEXTURE_SHOT_SLIDE},
    {"shot-adds", Korvane::TEXTURE_SHOT_ADD, Korvane::TEXTURE_SHOT_ADD_ACTIVE},
    {"shot-buttons", Korvane::TEXTURE_SHOT_PLAY, Korvane::TEXTURE_SHOT_TARGET_ACTIVE},
    {"drops", Korvane::TEXTURE_SEQUENCE_DROP, Korvane::TEXTURE_SHOT_DROP},
};

// ---- the panel, in points from the lower left ----

constexpr double viewWidth = 720.0;
constexpr double viewHeight = 280.0;
constexpr double left = 15.0;  // of the panel
constexpr double bottom = 15.0;
constexpr double titleX = left + 100.0;
constexpr double titleY = bottom + 243.0;
constexpr double titlePlaces[] = {0.0, 21.0, 42.0, 75.0};  // from the middle of the bar
constexpr double frameHeight = 100.0;
constexpr double frameCap = 32.0;
constexpr double frameMargin = 8.0;

// Of a slide: from its middle.
struct SlideShape {
  double side;
  double thumbnailWidth;
  double thumbnailHeight;
  double thumbnail;
  double name;
  Vector2 firstButton;
  Vector2 secondButton;
  double button;
  double y;  // of its middle
};

constexpr SlideShape sequenceShape = {128, 124, 90, 4, -54, {47, 46}, {47, -30}, 20, bottom + 15 + 64};
constexpr SlideShape shotShape = {64, 62, 45, 7.5, -24, {20, 20}, {20, -4}, 16, bottom + 167};

struct Slide {
  double x;  // of its middle, from the panel's left
  TextureID card;
  int thumbnail = -1;  // none
  TextureID over = Korvane::TEXTURE_NONE;
  TextureID firstButton = Korvane::TEXTURE_NONE;
  TextureID secondButton = Korvane::TEXTURE_NONE;
  TextureID shade = Korvane::TEXTURE_NONE;
};

struct Panel {
  std::array<TextureID, 4> title = {Korvane::TEXTURE_STORY_PLAY, Korvane::TEXTURE_STORY_STOP,
                                    Korvane::TEXTURE_STORY_LOOP, Korvane::TEXTURE_STORY_CLOSE};
  std::vector<Slide> sequences;
  std::vector<Slide> shots;
};

double PlaceOfSequence(int number) { return 15.0 + 64.0 + 134.0 * number; }
double PlaceOfShot(int number) { return 33.0 + 70.0 * number; }

Slide MakeSequence(int number) { return {PlaceOfSequence(number), Korvane::TEXTURE_SEQUENCE_SLIDE, number}; }
Slide MakeShot(int number) { return {PlaceOfShot(number), Korvane::TEXTURE_SHOT_SLIDE, number}; }

TextureID GetActive(TextureID id) { return static_cast<TextureID>(id + 1); }

// The buttons show on a slide under the mouse and on one that plays or waits.
void ShowButtons(Slide& slide, TextureID first, TextureID second) {
  slide.firstButton = first;
  slide.secondButton = second;
}

// Four sequences, of which the second is chosen, with its six shots, and what adds more.
Panel MakePanel() {
  Panel panel;
  for (int i = 0; i < 4; ++i) panel.sequences.push_back(MakeSequence(i));
  for (int i = 0; i < 6; ++i) panel.shots.push_back(MakeShot(i));
  panel.sequences.push_back({PlaceOfSequence(4), Korvane::TEXTURE_SEQUENCE_ADD});
  panel.shots.push_back({PlaceOfShot(6), Korvane::TEXTURE_SHOT_ADD});
  panel.sequences[1].card = Korvane::TEXTURE_SEQUENCE_SLIDE_SELECTED;
  panel.shots[2].card = Korvane::TEXTURE_SHOT_SLIDE_SELECTED;
  return panel;
}

// More slides are under the mouse than there can be, to show each of its kind.
Panel MakeChoosing() {
  Panel panel = MakePanel();
  for (TextureID& button : panel.title) button = GetActive(button);
  constexpr TextureID play = Korvane::TEXTURE_SEQUENCE_PLAY;
  constexpr TextureID target = Korvane::TEXTURE_SEQUENCE_TARGET;
  constexpr TextureID playShot = Korvane::TEXTURE_SHOT_PLAY;
  constexpr TextureID targetShot = Korvane::TEXTURE_SHOT_TARGET;
  ShowButtons(panel.sequences[0], GetActive(play), target);
  ShowButtons(panel.sequences[1], play, GetActive(target));
  ShowButtons(panel.sequences[3], play, target);
  ShowButtons(panel.shots[0], GetActive(playShot), targetShot);
  ShowButtons(panel.shots[1], playShot, GetActive(targetShot));
  ShowButtons(panel.shots[2], playShot, targetShot);
  for (const std::size_t i : {0U, 1U, 3U, 4U}) panel.sequences[i].card = GetActive(panel.sequences[i].card);
  for (const std::size_t i : {0U, 1U, 6U}) panel.shots[i].card = GetActive(panel.shots[i].card);
  return panel;
}

Panel MakePlaying() {
  Panel panel = MakePanel();
  panel.title[0] = Korvane::TEXTURE_STORY_PAUSE_ACTIVE;
  panel.title[2] = Korvane::TEXTURE_STORY_LOOP_ON;
  for (const std::size_t i : {1U, 2U}) {
    panel.sequences[i].over = Korvane::TEXTURE_SEQUENCE_SLIDE_PLAYING;
    ShowButtons(panel.sequences[i], Korvane::TEXTURE_SEQUENCE_PAUSE, Korvane::TEXTURE_SEQUENCE_TARGET);
  }
  for (const std::size_t i : {2U, 3U}) {
    panel.shots[i].over = Korvane::TEXTURE_SHOT_SLIDE_PLAYING;
    ShowButtons(panel.shots[i], Korvane::TEXTURE_SHOT_PAUSE, Korvane::TEXTURE_SHOT_TARGET);
  }
  panel.sequences[1].firstButton = Korvane::TEXTURE_SEQUENCE_PAUSE_ACTIVE;
  panel.shots[2].firstButton = Korvane::TEXTURE_SHOT_PAUSE_ACTIVE;
  return panel;
}

Panel MakePaused() {
  Panel panel = MakePanel();
  panel.title[2] = Korvane::TEXTURE_STORY_LOOP_ON_ACTIVE;
  for (const std::size_t i : {1U, 2U}) {
    panel.sequences[i].over = Korvane::TEXTURE_SEQUENCE_SLIDE_PAUSED;
    ShowButtons(panel.sequences[i], Korvane::TEXTURE_SEQUENCE_PLAY, Korvane::TEXTURE_SEQUENCE_TARGET);
  }
  for (const std::size_t i : {2U, 3U}) {
    panel.shots[i].over = Korvane::TEXTURE_SHOT_SLIDE_PAUSED;
    ShowButtons(panel.shots[i], Korvane::TEXTURE_SHOT_PLAY, Korvane::TEXTURE_SHOT_TARGET);
  }
  return panel;
}

// Two sequences lie in a stack at each side, and a bar stands where a slide would land.
Panel MakeDragging() {
  Panel panel = MakePanel();
  panel.sequences = {MakeSequence(0), MakeSequence(1), MakeSequence(2), MakeSequence(3), MakeSequence(2)};
  const double places[] = {79.0, 84.0, 240.0, 600.0, 610.0};
  for (std::size_t i = 0; i < std::size(places); ++i) {
    panel.sequences[i].x = places[i];
    if (i < 2) panel.sequences[i].shade = Korvane::TEXTURE_SEQUENCE_STACK_LEFT;
    if (i > 2) panel.sequences[i].shade = Korvane::TEXTURE_SEQUENCE_STACK_RIGHT;
  }
  panel.sequences[2].card = Korvane::TEXTURE_SEQUENCE_SLIDE_SELECTED_ACTIVE;
  panel.sequences.push_back({panel.sequences[2].x + 67.0, Korvane::TEXTURE_SEQUENCE_DROP});
  panel.shots.insert(panel.shots.begin(), {PlaceOfShot(1) + 35.0, Korvane::TEXTURE_SHOT_DROP});
  return panel;
}

constexpr struct {
  Doing doing;
  const char* name;
  Panel (*make)();
} doings[] = {
    {Doing::Editing, "editing", MakePanel},      {Doing::Choosing, "choosing", MakeChoosing},
    {Doing::Playing, "playing", MakePlaying},    {Doing::Paused, "paused", MakePaused},
    {Doing::Dragging, "dragging", MakeDragging},
};

// ---- what stands in for a scene ----

void FillPart(double x, double y, double width, double height, float red, float green, float blue) {
  glScissor(static_cast<int>(x), static_cast<int>(y), static_cast<int>(width), static_cast<int>(height));
  glClearColor(red, green, blue, 1.0F);
  glClear(GL_COLOR_BUFFER_BIT);
}

// The camera's height tells which: bright, dark, coloured or busy.
void DrawThumbnail(const CameraParameters& camera, int width, int height) {
  const int kind = static_cast<int>(std::lround(camera.eye.y)) % 4;
  const bool bright = kind == 0;
  const float tone = bright ? 0.97F : kind == 1 ? 0.03F : 0.55F;
  glEnable(GL_SCISSOR_TEST);
  FillPart(0, 0, width, height, tone, tone, kind == 2 ? 0.75F : tone);
  if (kind == 2) FillPart(0, 0, width, height / 3.0, 0.35F, 0.45F, 0.25F);
  const float house = bright ? 0.75F : kind == 1 ? 0.15F : 0.85F;
  FillPart(0.3 * width, 0.2 * height, 0.4 * width, 0.45 * height, house, house, house);
  for (int i = 0; kind == 3 && i < 24; ++i) {
    const float stripe = i % 2 == 0 ? 0.95F : 0.1F;
    FillPart(i * width / 24.0, i % 3 * height / 8.0, width / 24.0 + 1.0, 0.7 * height, stripe, 0.6F * stripe,
             0.4F * stripe);
  }
  glDisable(GL_SCISSOR_TEST);
}

// ---- drawing ----

class StoryScene {
 public:
  StoryScene(double pixelsForPoint, std::shared_ptr<const ResourcePack> pack)
      : scale(pixelsForPoint),
        viewport({viewWidth * scale / 2.0, viewHeight * scale / 2.0},
                 {viewWidth * scale / 2.0, viewHeight * scale / 2.0}),
        renderer(std::move(pack)) {}

  bool Create(const Panel& shown) {
    renderer.SetViewport(0, 0, static_cast<int>(viewWidth * scale), static_cast<int>(viewHeight * scale));
    renderer.SetDisplayScale(scale);
    renderer.SetSceneDraw(DrawThumbnail);
    if (!renderer.Create()) return false;
    for (int id = Korvane::TEXTURES_STORY.first; id <= Korvane::TEXTURES_STORY.last; ++id) {
      renderer.IncrementTextureUsage(static_cast<TextureID>(id));
    }
    renderer.ApplyTextureUsage();
    panel = shown;
    return true;
  }
  ~StoryScene() { renderer.Destroy(); }
  StoryScene(const StoryScene&) = delete;
  StoryScene& operator=(const StoryScene&) = delete;

  void Draw() {
    if (!renderer.BeginRender(viewport, {}, Renderer::RENDER_OVERLAY)) return;
    DrawFrame();
    DrawPicture(Korvane::TEXTURE_STORY_TITLE_BAR, {titleX, titleY}, 186.0, 32.0);
    for (std::size_t i = 0; i < panel.title.size(); ++i) {
      DrawPicture(panel.title[i], {titleX + titlePlaces[i], titleY}, 16.0, 16.0);
    }
    for (const Slide& slide : panel.sequences) DrawSlide(slide, sequenceShape, Korvane::STRING_SEQUENCE_NAME);
    for (const Slide& slide : panel.shots) DrawSlide(slide, shotShape, Korvane::STRING_SHOT_NAME);
    renderer.EndRender();
  }
  bool IsWhole() const { return renderer.GetPlaceholderCount() == 0; }

 private:
  void DrawPicture(TextureID id, const Vector2& middle, double width, double height) {
    if (id == Korvane::TEXTURE_NONE) return;
    Korvane::ResourceIcon2D icon(id);
    icon.SetSize(width * scale, height * scale);
    icon.SetPosition(middle * scale);
    renderer.Render(&icon);
  }

  void DrawMade(DynamicIcon2D* icon, const Vector2& middle) {
    if (icon == nullptr) return;
    icon->SetPosition(middle * scale);
    renderer.Render(icon);
    renderer.DestroyIcon(icon);
  }

  // In three pieces, of which the middle one is stretched.
  void DrawFrame() {
    const double right = left + panel.shots.back().x + shotShape.side / 2.0 + frameMargin;
    const double places[] = {left, left + frameCap, right - frameCap, right};
    constexpr double whole = 256.0;
    const double shares[] = {0.0, frameCap / whole, 1.0 - frameCap / whole, 1.0};
    Renderer::MaterialParams material;
    material.texture = Korvane::TEXTURE_STORY_FRAME;
    for (int i = 0; i < 3; ++i) {
      const double middle = (places[i] + places[i + 1]) / 2.0;
      const Korvane::Box2 piece(Vector2(middle, shotShape.y) * scale,
                                Vector2(places[i + 1] - middle, frameHeight / 2.0) * scale);
      float vertices[12];
      piece.ToArray(vertices, 0.0F);
      const auto from = static_cast<float>(shares[i]);
      const auto to = static_cast<float>(shares[i + 1]);
      const float texCoords[] = {from, 1, from, 0, to, 0, to, 1};
      renderer.RenderGeometry(4, vertices, texCoords, &material);
    }
  }

  void DrawSlide(const Slide& slide, const SlideShape& shape, Korvane::StringID name) {
    const Vector2 middle(left + slide.x, shape.y);
    const bool isDrop =
        slide.card == Korvane::TEXTURE_SEQUENCE_DROP || slide.card == Korvane::TEXTURE_SHOT_DROP;
    DrawPicture(slide.card, middle, isDrop ? 6.0 : shape.side, shape.side);
    if (slide.thumbnail < 0) return;
    CameraParameters camera;
    camera.eye.y = slide.thumbnail;
    DrawMade(renderer.CreateSceneScreenshot(static_cast<int>(shape.thumbnailWidth * scale),
                                            static_cast<int>(shape.thumbnailHeight * scale), camera),
             middle + Vector2(0.0, shape.thumbnail));
    std::wstring label = renderer.LoadStringResource(name);
    if (const std::size_t at = label.find(L"%d"); at != std::wstring::npos) {
      label.replace(at, 2, std::to_wstring(slide.thumbnail + 1));
    }
    DrawMade(renderer.CreateTextLabel(label.c_str(), 10.0F, static_cast<int>(shape.side), 16),
             middle + Vector2(0.0, shape.name));
    DrawPicture(slide.over, middle, shape.side, shape.side);
    DrawPicture(slide.firstButton, middle + shape.firstButton, shape.button, shape.button);
    DrawPicture(slide.secondButton, middle + shape.secondButton, shape.button, shape.button);
    DrawPicture(slide.shade, middle, shape.side, shape.side);
  }

  const double scale;
  const Korvane::Box2 viewport;
  zovhost::GLRenderer renderer;
  Panel panel;
};

}  // namespace

std::span<const StoryKind> GetStoryKinds() { return kinds; }

bool PaintStoryKind(const ResourcePack& pack, const StoryKind& kind, Ground ground, double scale,
                    Image& image) {
  std::vector<Image> pictures;
  const int margin = static_cast<int>(std::lround(kindMargin * scale));
  int width = margin;
  int height = 0;
  for (int id = kind.first; id <= kind.last; ++id) {
    Image& picture = pictures.emplace_back();
    if (!pack.RenderPicture(id, scale, picture)) return false;
    width += picture.width + margin;
    height = std::max(height, picture.height + 2 * margin);
  }
  image = MakeGround(ground, width, height);
  int x = margin;
  for (const Image& picture : pictures) {
    Image below;
    if (kind.below >= 0 && !pack.RenderPicture(kind.below, scale, below)) return false;
    Lay(below, x, margin, 1, image);
    Lay(picture, x, margin, 1, image);
    x += picture.width + margin;
  }
  return true;
}

std::vector<StoryState> GetStoryStates() {
  std::vector<StoryState> states;
  for (const double scale : {1.0, 2.0}) {
    for (const auto& row : doings) {
      for (const Ground ground : grounds) {
        const std::string name = std::string(row.name) + "-on-" + std::string(GetName(ground));
        states.push_back({name + (scale > 1.5 ? "-at-2x" : ""), row.doing, ground, scale});
      }
    }
  }
  return states;
}

bool PaintStory(const StoryState& state, Image& image) {
  StoryScene scene(state.scale, state.pack);
  const auto pixels = [&state](double points) { return static_cast<int>(std::lround(points * state.scale)); };
  return scene.Create(doings[static_cast<int>(state.doing)].make()) &&
         PaintOnGround([&scene] { scene.Draw(); }, state.ground, pixels(viewWidth), pixels(viewHeight),
                       image) &&
         scene.IsWhole();
}

}  // namespace zovsheets
