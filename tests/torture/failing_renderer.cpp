#include "torture/failing_renderer.h"

#include <algorithm>

using namespace Korvane;

namespace torture {

namespace {

constexpr int SQUARE = 12;  // pixels
constexpr int COLUMNS = 6;
constexpr int ROWS = 5;
constexpr unsigned char SHADES[] = {0, 128, 255};

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

// The ground, a little below the middle of the scene.
bool FailingRenderer::QueryRaySceneIntersection(const Vector3& origin, const Vector3& direction,
                                                Vector3& hit) {
  constexpr double GROUND = -0.5;
  if (!Call(Operation::QueryRaySceneIntersection)) return false;
  const double distance = (GROUND - origin.y) / direction.y;
  if (!(distance > 0.0 && distance < 1e3)) return false;
  hit = origin + direction * distance;
  return true;
}

}  // namespace torture
