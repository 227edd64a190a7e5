#pragma once

#include <cstddef>
#include <map>
#include <memory>
#include <string>
#include <tuple>
#include <vector>

#include "facade/zov_counted_owner.h"
#include "korvane/camera_parameters.h"
#include "korvane/icon2d.h"
#include "korvane/icon3d.h"
#include "korvane/renderer.h"
#include "zov/zov_icons.h"
#include "zov/zov_renderer.h"

/// The renderer within a zovRenderer: what the library calls goes to the owner in the host's own types, and
/// so to its override.
class zovRendererP : public Korvane::Renderer {
 public:
  explicit zovRendererP(zovRenderer& outside);
  ~zovRendererP() override;

  bool Create() override;
  bool Destroy() override;
  void ApplyTextureUsage() override;
  bool LoadTexture(Korvane::TextureID id) override;
  void ReleaseTexture(Korvane::TextureID id) override;
  bool BeginRender(const Korvane::Box2& viewport, const Korvane::CameraParameters& camera,
                   RenderMode mode) override;
  bool EndRender() override;
  bool RenderGeometry(unsigned vertexCount, const float* vertices, const float* texCoords,
                      const MaterialParams* material) override;
  bool BeginSelection(const Korvane::Vector2& point, const Korvane::Box2& viewport,
                      const Korvane::CameraParameters& camera, RenderMode mode) override;
  bool EndSelection() override;
  bool RenderSelectionGeometry(unsigned vertexCount, const float* vertices, int id) override;
  int GetSelection() const override;
  bool Render(Korvane::ResourceIcon3D* icon) override;
  bool Render(Korvane::DynamicIcon2D* icon) override;
  bool Render(Korvane::ResourceIcon2D* icon) override;
  std::wstring LoadStringResource(int id) override;
  Korvane::PixelIcon2D* CreateImageData(Korvane::TextureID id) override;
  Korvane::DynamicIcon2D* CreateSceneScreenshot(int width, int height,
                                                const Korvane::CameraParameters& camera) override;
  Korvane::DynamicIcon2D* CreateTextLabel(const wchar_t* text, float size, int width, int height) override;
  Korvane::DynamicIcon2D* CreateTooltip(const wchar_t* text) override;
  Korvane::DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) override;
  Korvane::DynamicIcon2D* CreateMessageHUD(const wchar_t* text) override;
  Korvane::DynamicIcon2D* CreatePivotLabel(const wchar_t* text) override;
  Korvane::DynamicIcon2D* CreateMiniWheelLabel(const wchar_t* text) override;
  Korvane::DynamicIcon2D* CreateUCSMenuLabel(const wchar_t* activeName, const wchar_t* defaultName,
                                             bool highlighted, int width) override;
  bool DestroyIcon(Korvane::DynamicIcon2D*& icon) override;
  bool QueryRaySceneIntersection(const Korvane::Vector3& origin, const Korvane::Vector3& direction,
                                 Korvane::Vector3& hit) override;
  bool QueryMouseRaySceneIntersection(int x, int y, const Korvane::Vector3& origin,
                                      const Korvane::Vector3& direction, Korvane::Vector3& hit) override;
  bool QueryScreenRectRaySceneIntersection(int left, int bottom, int right, int top,
                                           Korvane::Vector3& hit) override;
  bool BeginMouseoverComponent(bool highlightFaces) override;
  bool GetMouseoverComponent(Korvane::Vector2 pixel, Korvane::Vector3& point,
                             Korvane::Vector3& normal) override;
  bool EndMouseoverComponent() override;
  bool SetCursorID(Korvane::CursorID id) override;
  bool SetCursorPosition(int x, int y) override;
  bool OpenMenu(Korvane::MenuID id) override;
  bool OpenUCSMenu(int x, int y) override;
  bool ProjectToScreen(Korvane::Vector3 point, Korvane::Vector2& pixel) override;
  bool SetCursorIcon(Korvane::CursorID id) override;

  /// The host's side of an icon that this renderer has made.
  std::shared_ptr<zovDynamicIcon2D> FindOutside(Korvane::DynamicIcon2D* icon) const;
  /// The same, and the library holds it no longer.
  std::shared_ptr<zovDynamicIcon2D> GiveAway(Korvane::DynamicIcon2D* icon);
  bool HasLent(Korvane::DynamicIcon2D* icon) const { return lent.find(icon) != lent.end(); }

  /// The owner is being asked something, or is in the middle of a pass, and must stay.
  bool IsCallingOut() const { return owner.IsCalled() || openPasses > 0 || roomTaken; }

 private:
  // What the library has of the host, as often as it was answered. Of two pointers to one icon either may be
  // the one that owns it, so each stays until the last was given back; the newest stands last.
  struct Lent {
    std::vector<std::shared_ptr<zovDynamicIcon2D>> answers;
    int times = 0;
  };
  struct Returned {
    std::shared_ptr<zovDynamicIcon2D> newest;
    Lent all;
  };
  // Grows, and is used again whatever it holds.
  struct Room {
    std::unique_ptr<float[]> numbers;
    std::size_t size = 0;
  };
  struct Numbers {
    Room vertices;
    Room texCoords;
  };

  // The many calls within a pass are counted as one.
  bool OpenPass(bool isOpen);
  void ClosePass();
  Returned TakeBack(Korvane::DynamicIcon2D* icon);
  template <class Make>
  Korvane::DynamicIcon2D* Hold(const Make& make);
  void Keep(const std::shared_ptr<zovDynamicIcon2D>& icon, Korvane::DynamicIcon2D* within);
  template <std::size_t perVertex>
  static qiIterator<float> CopyInto(Room& room, const float* values, unsigned vertexCount);
  bool RenderWithin(unsigned vertexCount, const float* vertices, const float* texCoords,
                    const MaterialParams* material);
  template <class Facade, class Inner>
  bool Show(const std::shared_ptr<Facade>& outside, Inner& icon);

  zovCountedOwner<zovRenderer> owner;
  std::map<Korvane::DynamicIcon2D*, Lent> lent;
  std::tuple<std::unique_ptr<Korvane::DynamicIcon2D>, std::unique_ptr<Korvane::ResourceIcon2D>,
             std::unique_ptr<Korvane::ResourceIcon3D>>
      spares;
  Numbers numbers;         // of the last geometry, kept for their room
  bool roomTaken = false;  // while the host draws, which may make the library draw more
  int openPasses = 0;
};
