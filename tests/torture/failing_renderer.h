#pragma once

#include <array>
#include <map>
#include <memory>
#include <vector>

#include "korvane/icon2d.h"
#include "korvane/icon3d.h"
#include "korvane/pixel_icon2d.h"
#include "korvane/renderer.h"
#include "support/allocation_counter.h"

namespace torture {

/// An operation of the renderer that a host may let fail.
enum class Operation : int {
  Create,
  Destroy,
  LoadTexture,
  BeginRender,
  EndRender,
  RenderGeometry,
  BeginSelection,
  RenderSelectionGeometry,
  EndSelection,
  RenderIcon3D,
  RenderDynamic,
  RenderResource,
  LoadStringResource,
  CreateImageData,
  CreateSceneScreenshot,
  CreateTextLabel,
  CreateTooltip,
  CreateTooltipHUD,
  CreateMessageHUD,
  CreatePivotLabel,
  CreateMiniWheelLabel,
  CreateUCSMenuLabel,
  DestroyIcon,
  QueryRaySceneIntersection,
  QueryMouseRaySceneIntersection,
  QueryScreenRectRaySceneIntersection,
  BeginMouseoverComponent,
  GetMouseoverComponent,
  EndMouseoverComponent,
  ProjectToScreen,
  SetCursorID,
  SetCursorPosition,
  OpenMenu,
  OpenUCSMenu,
  SetCursorIcon,
};
constexpr int OPERATION_COUNT = 35;
const char* GetName(Operation operation);

/// A host that draws nothing, has a picture for every number, a scene that is a plane, and a part of it under
/// each pixel, and whose operations fail when the test says so: of one operation the call of a number, or all
/// from it on.
class FailingRenderer : public Korvane::Renderer {
 public:
  FailingRenderer();
  ~FailingRenderer() override;

  /// `nth` counts from 1, from now on.
  void Fail(Operation operation, long nth, bool forGood);
  void Succeed() { failing = nullptr; }
  /// Since the beginning, or the last Fail.
  long GetCalls(Operation operation) const { return calls[static_cast<std::size_t>(operation)]; }

  /// Icons made and not destroyed, textures loaded and not freed.
  int GetLiveIcons() const { return static_cast<int>(icons.size()); }
  int GetHeldTextures() const;
  /// Icons given back that this renderer had not made.
  int GetForeignDestroys() const { return foreignDestroys; }
  /// Begun and not ended.
  int GetOpenMouseovers() const { return openMouseovers; }

  bool Create() override { return Call(Operation::Create); }
  bool Destroy() override { return Call(Operation::Destroy); }
  bool LoadTexture(Korvane::TextureID id) override;
  void ReleaseTexture(Korvane::TextureID id) override;
  bool BeginRender(const Korvane::Box2& /*viewport*/, const Korvane::CameraParameters& /*camera*/,
                   RenderMode /*mode*/) override {
    return Call(Operation::BeginRender);
  }
  bool EndRender() override { return Call(Operation::EndRender); }
  bool RenderGeometry(unsigned /*count*/, const float* /*vertices*/, const float* /*texCoords*/,
                      const MaterialParams* /*material*/) override {
    return Call(Operation::RenderGeometry);
  }
  bool BeginSelection(const Korvane::Vector2& point, const Korvane::Box2& viewport,
                      const Korvane::CameraParameters& camera, RenderMode mode) override {
    return Call(Operation::BeginSelection) && Renderer::BeginSelection(point, viewport, camera, mode);
  }
  bool RenderSelectionGeometry(unsigned count, const float* vertices, int id) override {
    return Call(Operation::RenderSelectionGeometry) && Renderer::RenderSelectionGeometry(count, vertices, id);
  }
  bool EndSelection() override { return Call(Operation::EndSelection); }
  bool Render(Korvane::ResourceIcon3D* /*icon*/) override { return Call(Operation::RenderIcon3D); }
  bool Render(Korvane::DynamicIcon2D* icon) override {
    return icon->GetID() > 0 && Call(Operation::RenderDynamic);
  }
  bool Render(Korvane::ResourceIcon2D* /*icon*/) override { return Call(Operation::RenderResource); }
  std::wstring LoadStringResource(int id) override;
  Korvane::PixelIcon2D* CreateImageData(Korvane::TextureID id) override;
  Korvane::DynamicIcon2D* CreateSceneScreenshot(int /*width*/, int /*height*/,
                                                const Korvane::CameraParameters& /*camera*/) override {
    return MakeIcon(Operation::CreateSceneScreenshot);
  }
  Korvane::DynamicIcon2D* CreateTextLabel(const wchar_t* /*text*/, float /*size*/, int /*width*/,
                                          int /*height*/) override {
    return MakeIcon(Operation::CreateTextLabel);
  }
  Korvane::DynamicIcon2D* CreateTooltip(const wchar_t* /*text*/) override {
    return MakeIcon(Operation::CreateTooltip);
  }
  Korvane::DynamicIcon2D* CreateTooltipHUD(const wchar_t* /*text*/) override {
    return MakeIcon(Operation::CreateTooltipHUD);
  }
  Korvane::DynamicIcon2D* CreateMessageHUD(const wchar_t* /*text*/) override {
    return MakeIcon(Operation::CreateMessageHUD);
  }
  Korvane::DynamicIcon2D* CreatePivotLabel(const wchar_t* /*text*/) override {
    return MakeIcon(Operation::CreatePivotLabel);
  }
  Korvane::DynamicIcon2D* CreateMiniWheelLabel(const wchar_t* /*text*/) override {
    return MakeIcon(Operation::CreateMiniWheelLabel);
  }
  Korvane::DynamicIcon2D* CreateUCSMenuLabel(const wchar_t* /*text*/, const wchar_t* /*other*/, bool /*flag*/,
                                             int width) override;
  bool DestroyIcon(Korvane::DynamicIcon2D*& icon) override;
  bool QueryRaySceneIntersection(const Korvane::Vector3& origin, const Korvane::Vector3& direction,
                                 Korvane::Vector3& hit) override;
  bool QueryMouseRaySceneIntersection(int x, int y, const Korvane::Vector3& origin,
                                      const Korvane::Vector3& direction, Korvane::Vector3& hit) override {
    return Call(Operation::QueryMouseRaySceneIntersection) &&
           Renderer::QueryMouseRaySceneIntersection(x, y, origin, direction, hit);
  }
  bool QueryScreenRectRaySceneIntersection(int left, int bottom, int right, int top,
                                           Korvane::Vector3& hit) override;
  bool BeginMouseoverComponent(bool highlightFaces) override;
  bool GetMouseoverComponent(Korvane::Vector2 pixel, Korvane::Vector3& point,
                             Korvane::Vector3& normal) override;
  bool EndMouseoverComponent() override;
  bool ProjectToScreen(Korvane::Vector3 point, Korvane::Vector2& pixel) override;
  bool SetCursorID(Korvane::CursorID id) override {
    return Call(Operation::SetCursorID) && Renderer::SetCursorID(id);
  }
  bool SetCursorPosition(int /*x*/, int /*y*/) override { return Call(Operation::SetCursorPosition); }
  bool OpenMenu(Korvane::MenuID /*id*/) override { return Call(Operation::OpenMenu); }
  bool OpenUCSMenu(int /*x*/, int /*y*/) override { return Call(Operation::OpenUCSMenu); }
  bool SetCursorIcon(Korvane::CursorID /*id*/) override { return Call(Operation::SetCursorIcon); }

 private:
  bool Call(Operation operation);
  Korvane::DynamicIcon2D* MakeIcon(Operation operation);

  std::array<long, OPERATION_COUNT> calls{};
  long* failing = nullptr;  // the counter of the operation that fails
  long firstFailure = 0;
  bool failsForGood = false;
  std::map<int, int> held;
  std::vector<std::unique_ptr<Korvane::DynamicIcon2D>> icons;
  int iconsMade = 0;
  int foreignDestroys = 0;
  int openMouseovers = 0;
};

}  // namespace torture
