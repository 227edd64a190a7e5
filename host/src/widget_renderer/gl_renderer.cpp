#include "zovhost/gl_renderer.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <utility>

#include "gl/gl_program.h"
#include "korvane/icon3d.h"
#include "korvane/pixel_icon2d.h"
#include "pictures/bar_pictures.h"
#include "pictures/text_font.h"
#include "widget_renderer/gl_renderer_impl.h"
#include "zovhost/offscreen_target.h"
#include "zovhost/scene.h"
#include "zovhost/wide_text.h"

namespace zovhost {

using Korvane::Box2;
using Korvane::CameraParameters;
using Korvane::CursorID;
using Korvane::DynamicIcon2D;
using Korvane::Icon2D;
using Korvane::MenuID;
using Korvane::PixelIcon2D;
using Korvane::ResourceIcon2D;
using Korvane::ResourceIcon3D;
using Korvane::TextureID;
using Korvane::Vector3;

namespace {

constexpr double largestScale = 4.0;
constexpr double mostSheets = 4.0;         // that an opacity above 1 lays over each other
constexpr double captionGap = 1.0;         // points, between a small disc and its caption
constexpr std::size_t longestText = 2048;  // characters; the rest could not be read on a screen
constexpr int largestScreenshot = 4096;    // pixels
// Screenshots are small, and drawn with finer pixels than they are shown with.
constexpr int screenshotOversampling = 2;

bool AreFinite(const float* values, std::size_t count) {
  return std::all_of(values, values + count, [](float value) { return std::isfinite(value); });
}

// What an icon is drawn with; false when there is nothing to see or no place to show it.
bool IsDrawable(const Icon2D& icon, double& opacity) {
  const Box2& bounds = icon.GetBounds();
  opacity = std::min(icon.GetOpacity(), mostSheets);
  const bool placed = std::isfinite(bounds.center.x) && std::isfinite(bounds.center.y);
  const bool sized = bounds.halfExtent.x > 0.0 && bounds.halfExtent.y > 0.0 &&
                     std::isfinite(bounds.halfExtent.x) && std::isfinite(bounds.halfExtent.y);
  return icon.IsVisible() && placed && sized && opacity > 0.0;
}

std::string ToUtf8(const wchar_t* wide) {
  if (wide == nullptr) return {};
  std::size_t length = 0;
  while (length < longestText && wide[length] != L'\0') ++length;
  return WideToUtf8({wide, length});
}

// The same text of another pack. One that was changed by hand, or has none there, stays.
void Translate(int id, const ResourcePack& before, const ResourcePack& now, std::string& text) {
  if (id >= 0 && before.GetString(id) == text && !now.GetString(id).empty()) text = now.GetString(id);
}

}  // namespace

RendererHost::~RendererHost() = default;
bool RendererHost::ApplyCursor(CursorID) { return false; }
bool RendererHost::WarpPointer(int, int) { return false; }
bool RendererHost::OpenMenu(MenuID) { return false; }
bool RendererHost::OpenUCSMenu(int, int) { return false; }

// ---- what the host tells ----

GLRenderer::GLRenderer(std::shared_ptr<const ResourcePack> resources) : impl(std::make_unique<Impl>()) {
  impl->resources = resources ? std::move(resources) : ResourcePack::GetDefault();
}

GLRenderer::~GLRenderer() {
  if (impl->created) impl->DestroyObjects();
}

void GLRenderer::SetHost(RendererHost* host) { impl->host = host; }

void GLRenderer::SetViewport(int x, int y, int width, int height) { impl->viewport = {x, y, width, height}; }

void GLRenderer::SetDisplayScale(double scale) {
  const double usable = scale >= 1.0 ? std::min(scale, largestScale) : 1.0;
  if (usable == impl->scale) return;
  const double growth = usable / impl->scale;
  impl->scale = usable;
  impl->ReloadTextures();
  impl->RedrawLabels(*impl->resources, growth);
}

void GLRenderer::SetCamera(const CameraParameters& camera) {
  impl->camera = camera;
  impl->hasCamera = true;
  if (impl->face.Update()) impl->ShowFace();
}

void GLRenderer::SetSceneSphere(const SceneSphere& sphere) { impl->depths = SceneDepths(sphere); }
void GLRenderer::SetSceneDraw(SceneDraw draw) { impl->sceneDraw = std::move(draw); }
void GLRenderer::SetSceneRay(SceneRay ray) { impl->sceneRay = std::move(ray); }

void GLRenderer::SetFaceShow(FaceShow show) { impl->faceShow = std::move(show); }

void GLRenderer::SetScene(const Scene* scene) {
  EndMouseoverComponent();
  impl->scene = scene;
  impl->depths = scene != nullptr ? SceneDepths(*scene) : SceneDepths();
  impl->sceneRay = nullptr;
  if (scene == nullptr) return;
  impl->sceneRay = [scene](const Vector3& origin, const Vector3& direction, Vector3& point) {
    Scene::Hit hit;
    if (!scene->Intersect(origin, direction, hit)) return false;
    point = hit.point;
    return true;
  };
}

int GLRenderer::GetPlaceholderCount() const { return impl->textures.GetPlaceholderCount(); }
int GLRenderer::GetLastPlaceholder() const { return impl->textures.GetLastPlaceholder(); }
int GLRenderer::GetDrawnPictureCount() const { return impl->textures.GetDrawnCount(); }

const ResourcePack& GLRenderer::GetResources() const { return *impl->resources; }

void GLRenderer::SetResources(std::shared_ptr<const ResourcePack> resources) {
  const std::shared_ptr<const ResourcePack> before = std::move(impl->resources);
  impl->resources = resources ? std::move(resources) : ResourcePack::GetDefault();
  impl->ReloadTextures();
  impl->RedrawLabels(*before, 1.0);
}

void GLRenderer::Impl::ReloadTextures() {
  if (!created) return;
  const GLStateGuard guard;
  textures.Reload(*resources, scale);
}

// ---- life, textures, passes ----

bool GLRenderer::Create() {
  if (impl->created) return true;
  return IsContextFit() && impl->CreateObjects();
}

bool GLRenderer::Destroy() {
  if (!impl->created) return false;
  impl->DestroyObjects();
  return true;
}

bool GLRenderer::LoadTexture(TextureID id) {
  if (!impl->created) return false;
  const GLStateGuard guard;
  return impl->textures.Load(*impl->resources, id, impl->scale);
}

void GLRenderer::ReleaseTexture(TextureID id) {
  if (impl->created) impl->textures.Release(id);
}

bool GLRenderer::BeginRender(const Box2& viewport, const CameraParameters& camera, RenderMode mode) {
  return impl->BeginPass(viewport, camera, mode);
}

bool GLRenderer::EndRender() { return impl->EndPass(); }

bool GLRenderer::RenderGeometry(unsigned vertexCount, const float* vertices, const float* texCoords,
                                const MaterialParams* material) {
  if (!impl->IsOpen() || vertices == nullptr || material == nullptr) return false;
  const unsigned used = vertexCount == 2 ? 2 : vertexCount - vertexCount % 4;
  if (used == 0 || !AreFinite(vertices, std::size_t{3} * used) || !AreFinite(material->colour, 4))
    return false;
  if (texCoords != nullptr && !AreFinite(texCoords, std::size_t{2} * used)) return false;
  impl->DrawGeometry(used, vertices, texCoords, *material);
  return true;
}

bool GLRenderer::Render(ResourceIcon3D* icon) {
  if (!impl->IsProjected() || icon == nullptr || !icon->IsVisible()) return false;
  const double size = icon->GetSize();
  if (!icon->GetPosition().IsFinite() || !(size > 0.0) || !std::isfinite(size)) return false;
  if (!AreFinite(icon->GetMaterial().colour, 4)) return false;
  switch (icon->GetModelResourceID()) {
    case Korvane::MODEL_PIVOT_BALL:
      impl->DrawBall(*icon);
      return true;
    case Korvane::MODEL_PIVOT_SHADOW:
      impl->DrawBallShadow(*icon);
      return true;
  }
  return false;
}

bool GLRenderer::Render(DynamicIcon2D* icon) {
  double opacity = 0.0;
  if (!impl->IsOverlay() || icon == nullptr || !IsDrawable(*icon, opacity)) return false;
  const GLuint texture = impl->icons.FindTexture(icon->GetID());
  if (texture == 0) return false;
  impl->DrawIcon(texture, impl->icons.FindPlace(*icon), icon->GetFlip(), std::min(opacity, 1.0));
  return true;
}

bool GLRenderer::Render(ResourceIcon2D* icon) {
  double opacity = 0.0;
  if (!impl->IsOverlay() || icon == nullptr || !IsDrawable(*icon, opacity)) return false;
  const GLuint texture = impl->textures.FindSized(*impl->resources, icon->GetTextureResourceID(),
                                                  icon->GetBounds().halfExtent.x * 2.0, impl->scale);
  if (texture == 0) return false;
  opacity = FindBarOpacity(icon->GetTextureResourceID(), opacity);
  const int sheets = static_cast<int>(std::ceil(opacity));
  for (int sheet = 0; sheet < sheets; ++sheet) {
    impl->DrawIcon(texture, icon->GetBounds(), false, std::min(opacity - sheet, 1.0));
  }
  return true;
}

// ---- texts and pictures ----

std::wstring GLRenderer::LoadStringResource(int id) {
  impl->lastText = id;
  return Utf8ToWide(impl->resources->GetString(id));
}

PixelIcon2D* GLRenderer::CreateImageData(TextureID id) {
  Image image;
  if (!impl->resources->RenderHitMap(id, image)) return nullptr;
  return new PixelIcon2D(image.width, image.height, image.rgba.data(), PixelIcon2D::PIXEL_FORMAT_RGBA);
}

DynamicIcon2D* GLRenderer::CreateSceneScreenshot(int width, int height, const CameraParameters& camera) {
  const bool sized = width > 0 && height > 0 && width <= largestScreenshot && height <= largestScreenshot;
  if (!impl->created || !impl->sceneDraw || !sized) return nullptr;
  const GLStateGuard guard;
  OffscreenTarget target;
  const int fineWidth = width * screenshotOversampling;
  const int fineHeight = height * screenshotOversampling;
  if (!target.Create(fineWidth, fineHeight) || !target.Bind()) return nullptr;
  impl->sceneDraw(WidenToViewport(camera, width, height), fineWidth, fineHeight);
  if (!target.Resolve()) return nullptr;
  DynamicIcon2D* icon = impl->icons.Add(target.TakeTexture(), width, height);
  icon->SetFlip(true);  // what has been drawn has its first row at the bottom
  return icon;
}

DynamicIcon2D* GLRenderer::Impl::MakeLabel(const TextStyle& style, const wchar_t* text,
                                           const wchar_t* second) {
  if (!created) return nullptr;
  LabelText label{.style = style, .text = ToUtf8(text), .second = ToUtf8(second)};
  label.textID = FindTextID(label.text);
  label.secondID = FindTextID(label.second);
  const GLStateGuard guard;
  const LabelPicture picture = PaintLabel(label);
  return picture.texture != 0 ? icons.AddLabel(std::move(label), picture) : nullptr;
}

LabelPicture GLRenderer::Impl::PaintLabel(const LabelText& label) const {
  Image image;
  const LanguageInUse inUse(resources->GetLanguage().tag);
  if (!PaintText(label.style, label.text, label.second, scale, image)) return {};
  return {UploadTexture(image, {}), image.width, image.height};
}

// Some texts have several numbers; the one that was asked for last is meant.
int GLRenderer::Impl::FindTextID(const std::string& text) const {
  if (text.empty() || text == resources->GetString(lastText)) return text.empty() ? -1 : lastText;
  int id = ResourcePack::stringCount - 1;
  while (id >= 0 && resources->GetString(id) != text) --id;
  return id;
}

void GLRenderer::Impl::RedrawLabels(const ResourcePack& before, double growth) {
  if (!created) return;
  const GLStateGuard guard;
  const auto draw = [&](LabelText& label) {
    Translate(label.textID, before, *resources, label.text);
    Translate(label.secondID, before, *resources, label.second);
    return PaintLabel(label);
  };
  icons.RedrawLabels(draw, growth);
}

DynamicIcon2D* GLRenderer::CreateTextLabel(const wchar_t* text, float size, int width, int height) {
  TextStyle style = GetLabelStyle(LabelKind::Plain);
  const bool usable = size > 0.0F && size <= 512.0F;
  if (usable) style.size = static_cast<double>(size);
  style.width = std::clamp(width, 0, 4096);
  style.height = std::clamp(height, 0, 4096);
  return impl->MakeLabel(style, text);
}

DynamicIcon2D* GLRenderer::CreateTooltip(const wchar_t* text) {
  return impl->MakeLabel(GetLabelStyle(LabelKind::Tooltip), text);
}

DynamicIcon2D* GLRenderer::CreateTooltipHUD(const wchar_t* text) {
  return impl->MakeLabel(GetLabelStyle(LabelKind::TooltipHUD), text);
}

DynamicIcon2D* GLRenderer::CreateMessageHUD(const wchar_t* text) {
  return impl->MakeLabel(GetLabelStyle(LabelKind::MessageHUD), text);
}

DynamicIcon2D* GLRenderer::CreatePivotLabel(const wchar_t* text) {
  return impl->MakeLabel(GetLabelStyle(LabelKind::PivotLabel), text);
}

DynamicIcon2D* GLRenderer::CreateMiniWheelLabel(const wchar_t* text) {
  DynamicIcon2D* icon = impl->MakeLabel(GetLabelStyle(LabelKind::MiniWheelLabel), text);
  if (icon != nullptr) impl->icons.SetRiding(icon->GetID(), captionGap * impl->scale);
  return icon;
}

DynamicIcon2D* GLRenderer::CreateUCSMenuLabel(const wchar_t* activeName, const wchar_t* defaultName,
                                              bool highlighted, int width) {
  const double points = std::clamp(width, 0, 4096) / impl->scale;
  return impl->MakeLabel(MakeMenuLabelStyle(highlighted, points), activeName, defaultName);
}

bool GLRenderer::DestroyIcon(DynamicIcon2D*& icon) {
  if (icon == nullptr || !impl->icons.Destroy(icon)) return false;
  icon = nullptr;
  return true;
}

// ---- the pointer and menus ----

bool GLRenderer::SetCursorIcon(CursorID id) {
  if (id == Korvane::CURSOR_NONE) return true;  // no change is asked for
  return id >= 0 && id < Korvane::CURSOR_NONE && impl->host != nullptr && impl->host->ApplyCursor(id);
}

bool GLRenderer::SetCursorPosition(int x, int y) {
  return impl->host != nullptr && impl->host->WarpPointer(x, y);
}
bool GLRenderer::OpenMenu(MenuID id) { return impl->host != nullptr && impl->host->OpenMenu(id); }
bool GLRenderer::OpenUCSMenu(int x, int y) { return impl->host != nullptr && impl->host->OpenUCSMenu(x, y); }

}  // namespace zovhost
