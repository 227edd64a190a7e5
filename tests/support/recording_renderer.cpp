#include "support/recording_renderer.h"

#include <algorithm>
#include <sstream>
#include <utility>

#include "korvane/camera_parameters.h"
#include "korvane/icon3d.h"
#include "korvane/pixel_icon2d.h"

using namespace Korvane;

namespace {

template <class... Values>
std::string List(const Values&... values) {
  std::ostringstream line;
  const char* separator = "";
  ((line << std::exchange(separator, ", ") << values), ...);
  return line.str();
}

// The texts of tests are plain ASCII; anything else shows as a question mark.
std::string Narrow(const wchar_t* text) {
  if (text == nullptr) return "null";
  std::string narrow;
  for (; *text != L'\0'; ++text) narrow += *text >= 0 && *text < 128 ? static_cast<char>(*text) : '?';
  return narrow;
}

// Appended piece by piece: "(" + text makes GCC 12 warn of an overlap that cannot be (-Wrestrict, at -O3).
std::string Describe(const Vector3& v) { return std::string("(").append(List(v.x, v.y, v.z)).append(")"); }

}  // namespace

RecordingRenderer::RecordingRenderer() = default;
RecordingRenderer::~RecordingRenderer() = default;

bool RecordingRenderer::Record(const std::string& operation, const std::string& arguments) {
  calls.push_back(operation + "(" + arguments + ")");
  const auto failure = failures.find(operation);
  if (failure == failures.end()) return true;
  if (failure->second > 0 && --failure->second == 0) failures.erase(failure);
  return false;
}

DynamicIcon2D* RecordingRenderer::MakeIcon(const std::string& operation, const std::string& arguments) {
  if (!Record(operation, arguments)) return nullptr;
  return icons.emplace_back(std::make_unique<DynamicIcon2D>(++iconsMade)).get();
}

std::vector<std::string> RecordingRenderer::TakeCalls() {
  geometry.clear();
  return std::exchange(calls, {});
}

void RecordingRenderer::ClearCalls() {
  calls.clear();
  geometry.clear();
}

int RecordingRenderer::CountCalls(const std::string& operation) const {
  return static_cast<int>(std::count_if(calls.begin(), calls.end(), [&](const std::string& call) {
    return call.compare(0, operation.size() + 1, operation + "(") == 0;
  }));
}

bool RecordingRenderer::Create() { return Record("Create"); }
bool RecordingRenderer::Destroy() { return Record("Destroy"); }

bool RecordingRenderer::LoadTexture(TextureID id) { return Record("LoadTexture", List(int{id})); }
void RecordingRenderer::ReleaseTexture(TextureID id) { Record("ReleaseTexture", List(int{id})); }

bool RecordingRenderer::BeginRender(const Box2& viewport, const CameraParameters& /*camera*/,
                                    RenderMode mode) {
  return Record("BeginRender", List(viewport.center.x, viewport.center.y, viewport.halfExtent.x,
                                    viewport.halfExtent.y, int{mode}));
}

bool RecordingRenderer::EndRender() { return Record("EndRender"); }

bool RecordingRenderer::RenderGeometry(unsigned vertexCount, const float* vertices, const float* texCoords,
                                       const MaterialParams* material) {
  Geometry drawn;
  if (vertices != nullptr) drawn.vertices.assign(vertices, vertices + std::size_t{3} * vertexCount);
  if (texCoords != nullptr) drawn.texCoords.assign(texCoords, texCoords + std::size_t{2} * vertexCount);
  if (material != nullptr) drawn.material = *material;
  geometry.push_back(drawn);
  return Record("RenderGeometry",
                List(vertexCount, int{drawn.material.texture}, int{drawn.material.drawMode}));
}

bool RecordingRenderer::Render(ResourceIcon3D* icon) {
  return Record("RenderIcon3D", List(int{icon->GetModelResourceID()}));
}
bool RecordingRenderer::Render(DynamicIcon2D* icon) { return Record("RenderDynamic", List(icon->GetID())); }
bool RecordingRenderer::Render(ResourceIcon2D* icon) {
  return Record("RenderResource", List(int{icon->GetTextureResourceID()}));
}

std::wstring RecordingRenderer::LoadStringResource(int id) {
  return Record("LoadStringResource", List(id)) ? L"text " + std::to_wstring(id) : std::wstring();
}

// One opaque white pixel; the caller owns it.
PixelIcon2D* RecordingRenderer::CreateImageData(TextureID id) {
  if (!Record("CreateImageData", List(int{id}))) return nullptr;
  const unsigned char white[4] = {255, 255, 255, 255};
  return new PixelIcon2D(1, 1, white, PixelIcon2D::PIXEL_FORMAT_RGBA);
}

DynamicIcon2D* RecordingRenderer::CreateSceneScreenshot(int width, int height,
                                                        const CameraParameters& camera) {
  return MakeIcon("CreateSceneScreenshot", List(width, height, Describe(camera.eye)));
}

DynamicIcon2D* RecordingRenderer::CreateTextLabel(const wchar_t* text, float size, int first, int second) {
  return MakeIcon("CreateTextLabel", List(Narrow(text), size, first, second));
}

DynamicIcon2D* RecordingRenderer::CreateTooltip(const wchar_t* text) {
  return MakeIcon("CreateTooltip", Narrow(text));
}
DynamicIcon2D* RecordingRenderer::CreateTooltipHUD(const wchar_t* text) {
  return MakeIcon("CreateTooltipHUD", Narrow(text));
}
DynamicIcon2D* RecordingRenderer::CreateMessageHUD(const wchar_t* text) {
  return MakeIcon("CreateMessageHUD", Narrow(text));
}
DynamicIcon2D* RecordingRenderer::CreatePivotLabel(const wchar_t* text) {
  return MakeIcon("CreatePivotLabel", Narrow(text));
}
DynamicIcon2D* RecordingRenderer::CreateMiniWheelLabel(const wchar_t* text) {
  return MakeIcon("CreateMiniWheelLabel", Narrow(text));
}

DynamicIcon2D* RecordingRenderer::CreateUCSMenuLabel(const wchar_t* text, const wchar_t* other, bool flag,
                                                     int number) {
  return MakeIcon("CreateUCSMenuLabel", List(Narrow(text), Narrow(other), flag, number));
}

bool RecordingRenderer::DestroyIcon(DynamicIcon2D*& icon) {
  const auto owned =
      std::find_if(icons.begin(), icons.end(), [&](const auto& entry) { return entry.get() == icon; });
  const bool known = owned != icons.end();
  if (!known) ++foreignDestroys;
  if (!Record("DestroyIcon", List(known ? (*owned)->GetID() : -1))) return false;
  if (known) icons.erase(owned);
  icon = nullptr;
  return known;
}

bool RecordingRenderer::QueryRaySceneIntersection(const Vector3& origin, const Vector3& direction,
                                                  Vector3& hit) {
  const bool done = Record("QueryRaySceneIntersection", List(Describe(origin), Describe(direction)));
  if (!done || sceneHit == nullptr) return false;
  hit = *sceneHit;
  return true;
}

bool RecordingRenderer::SetCursorPosition(int x, int y) { return Record("SetCursorPosition", List(x, y)); }
bool RecordingRenderer::OpenMenu(MenuID id) { return Record("OpenMenu", List(int{id})); }
bool RecordingRenderer::OpenUCSMenu(int x, int y) { return Record("OpenUCSMenu", List(x, y)); }
bool RecordingRenderer::SetCursorIcon(CursorID id) { return Record("SetCursorIcon", List(int{id})); }
