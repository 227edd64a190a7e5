#include "torture/failing_renderer.h"

#include <algorithm>

using namespace Korvane;

namespace torture {

namespace {

constexpr int SQUARE = 12;  // pixels
constexpr int COLUMNS = 6;
constexpr int ROWS = 5;
constexpr unsigned char SHADES[] = {0, 128, 255};
constexpr int LABEL_HEIGHT = 16;
constexpr double GROUND = -0.5;           // the scene, a little below its middle
constexpr double PIXELS_OF_A_UNIT = 100;  // of its parts, as they lie under the pointer

// A square of every colour that a region of a disc has.
std::vector<unsigned char> MakeRegionMap() {
  std::vector<unsigned char> map(std::size_t{4} * COLUMNS * SQUARE * ROWS * SQUARE);
  for (std::size_t row = 0; row < std::size_t{ROWS} * SQUARE; ++row) {
    for (std::size_t column = 0; column < std::size_t{COLUMNS} * SQUARE; ++column) {
      const std::size_t place = row / SQUARE * COLUMNS + column / SQUARE;
      unsigned char* const pixel = &map[4 * (row * COLUMNS * SQUARE + column)];
      if (place >= 27) continue;
      pixel[0] = SHADES[place / 9];
      pixel[1] = SHADES[place / 3 % 3];
      pixel[2] = SHADES[place % 3];
      pixel[3] = 255;
    }
  }
  return map;
}

}  // namespace

const char* GetName(Operation operation) {
  static constexpr std::array<const char*, OPERATION_COUNT> NAMES = {"Create",
                                                                     "Destroy",
                                                                     "LoadTexture",
                                                                     "BeginRender",
                                                                     "EndRender",
                                                                     "RenderGeometry",
                                                                     "BeginSelection",
                                                                     "RenderSelectionGeometry",
                                                                     "EndSelection",
                                                                     "RenderIcon3D",
                                                                     "RenderDynamic",
                                                                     "RenderResource",
                                                                     "LoadStringResource",
                                                                     "CreateImageData",
                                                                     "CreateSceneScreenshot",
                                                                     "CreateTextLabel",
                                                                     "CreateTooltip",
                                                                     "CreateTooltipHUD",
                                                                     "CreateMessageHUD",
                                                                     "CreatePivotLabel",
                                                                     "CreateMiniWheelLabel",
                                                                     "CreateUCSMenuLabel",
                                                                     "DestroyIcon",
                                                                     "QueryRaySceneIntersection",
                                                                     "QueryMouseRaySceneIntersection",
                                                                     "QueryScreenRectRaySceneIntersection",
                                                                     "BeginMouseoverComponent",
                                                                     "GetMouseoverComponent",
                                                                     "EndMouseoverComponent",
                                                                     "ProjectToScreen",
                                                                     "SetCursorID",
                                                                     "SetCursorPosition",
                                                                     "OpenMenu",
                                                                     "OpenUCSMenu",
                                                                     "SetCursorIcon"};
  return NAMES[static_cast<std::size_t>(operation)];
}

FailingRenderer::FailingRenderer() = default;
FailingRenderer::~FailingRenderer() = default;

void FailingRenderer::Fail(Operation operation, long nth, bool forGood) {
  calls.fill(0);
  failing = &calls[static_cast<std::size_t>(operation)];
  firstFailure = nth;
  failsForGood = forGood;
}

bool FailingRenderer::Call(Operation operation) {
  long& count = calls[static_cast<std::size_t>(operation)];
  ++count;
  return &count != failing || count < firstFailure || (count > firstFailure && !failsForGood);
}

DynamicIcon2D* FailingRenderer::MakeIcon(Operation operation) {
  const HostCode host;
  if (!Call(operation)) return nullptr;
  return icons.emplace_back(std::make_unique<DynamicIcon2D>(++iconsMade)).get();
}

bool FailingRenderer::LoadTexture(TextureID id) {
  const HostCode host;
  if (!Call(Operation::LoadTexture)) return false;
  ++held[id];
  return true;
}

void FailingRenderer::ReleaseTexture(TextureID id) {
  const HostCode host;
  --held[id];
}

int FailingRenderer::GetHeldTextures() const {
  return static_cast<int>(
      std::count_if(held.begin(), held.end(), [](const auto& entry) { return entry.second != 0; }));
}

std::wstring FailingRenderer::LoadStringResource(int id) {
  const HostCode host;
  return Call(Operation::LoadStringResource) ? L"a text of number " + std::to_wstring(id) : std::wstring();
}

PixelIcon2D* FailingRenderer::CreateImageData(TextureID /*id*/) {
  const HostCode host;
  static const std::vector<unsigned char> MAP = MakeRegionMap();
  if (!Call(Operation::CreateImageData)) return nullptr;
  return new PixelIcon2D(COLUMNS * SQUARE, ROWS * SQUARE, MAP.data(), PixelIcon2D::PIXEL_FORMAT_RGBA);
}

// With a size, by which it is under a pointer.
DynamicIcon2D* FailingRenderer::CreateUCSMenuLabel(const wchar_t* /*text*/, const wchar_t* /*other*/,
                                                   bool /*highlighted*/, int width) {
  DynamicIcon2D* const icon = MakeIcon(Operation::CreateUCSMenuLabel);
  if (icon != nullptr) icon->SetSize(width, LABEL_HEIGHT);
  return icon;
}

bool FailingRenderer::DestroyIcon(DynamicIcon2D*& icon) {
  const HostCode host;
  if (!Call(Operation::DestroyIcon)) return false;
  const auto owned =
      std::find_if(icons.begin(), icons.end(), [&](const auto& entry) { return entry.get() == icon; });
  if (owned == icons.end()) {
    ++foreignDestroys;
    return false;
  }
  icons.erase(owned);
  icon = nullptr;
  return true;
}

bool FailingRenderer::QueryRaySceneIntersection(const Vector3& origin, const Vector3& direction,
                                                Vector3& hit) {
  if (!Call(Operation::QueryRaySceneIntersection)) return false;
  const double distance = (GROUND - origin.y) / direction.y;
  if (!(distance > 0.0 && distance < 1e3)) return false;
  hit = origin + direction * distance;
  return true;
}

bool FailingRenderer::QueryScreenRectRaySceneIntersection(int left, int bottom, int right, int top,
                                                          Vector3& hit) {
  if (!Call(Operation::QueryScreenRectRaySceneIntersection)) return false;
  hit = Vector3((left + right) / (2.0 * PIXELS_OF_A_UNIT), GROUND, (bottom + top) / (2.0 * PIXELS_OF_A_UNIT));
  return true;
}

bool FailingRenderer::BeginMouseoverComponent(bool /*highlightFaces*/) {
  if (!Call(Operation::BeginMouseoverComponent)) return false;
  ++openMouseovers;
  return true;
}

bool FailingRenderer::GetMouseoverComponent(Vector2 pixel, Vector3& point, Vector3& normal) {
  if (!Call(Operation::GetMouseoverComponent)) return false;
  point = Vector3(pixel.x / PIXELS_OF_A_UNIT - 4.0, GROUND, 3.0 - pixel.y / PIXELS_OF_A_UNIT);
  normal = Vector3(0.0, 1.0, 0.0);
  return true;
}

bool FailingRenderer::EndMouseoverComponent() {
  --openMouseovers;
  return Call(Operation::EndMouseoverComponent);
}

bool FailingRenderer::ProjectToScreen(Vector3 point, Vector2& pixel) {
  if (!Call(Operation::ProjectToScreen)) return false;
  pixel = Vector2(point.x, point.y) * PIXELS_OF_A_UNIT;
  return true;
}

}  // namespace torture
