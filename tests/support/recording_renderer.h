#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "korvane/icon2d.h"
#include "korvane/renderer.h"

/// A host that draws nothing and remembers everything. Each call to a pure operation becomes one line,
/// its name and arguments, e.g. `LoadTexture(3)` or `CreateTooltip(text 5)`.
///
/// Every call succeeds until it is told to fail by the name of the operation. Icons are real; those that
/// were not destroyed are counted, and freed with the renderer. Text `n` reads "text n".
class RecordingRenderer : public Korvane::Renderer {
 public:
  /// What one RenderGeometry was given.
  struct Geometry {
    std::vector<float> vertices;   // 3 a vertex
    std::vector<float> texCoords;  // 2 a vertex; empty when null was given
    MaterialParams material;
  };

  RecordingRenderer();
  ~RecordingRenderer() override;

  /// The operation answers false or null (an empty text for LoadStringResource) the next time only.
  void FailOnce(const std::string& operation) { failures[operation] = 1; }
  /// Until Succeed is called.
  void FailAlways(const std::string& operation) { failures[operation] = -1; }
  void Succeed(const std::string& operation) { failures.erase(operation); }

  const std::vector<std::string>& GetCalls() const { return calls; }
  /// The lines since the last Take (or Clear), and forgets them.
  std::vector<std::string> TakeCalls();
  void ClearCalls();
  /// How many lines begin with `operation` followed by its bracket.
  int CountCalls(const std::string& operation) const;
  const std::vector<Geometry>& GetGeometry() const { return geometry; }

  /// Icons made and not destroyed; what is left when all widgets are gone is a leak.
  int GetLiveIconCount() const { return static_cast<int>(icons.size()); }
  /// DestroyIcon calls for an icon that this renderer had not made, or had destroyed before.
  int GetForeignDestroyCount() const { return foreignDestroys; }

  /// What the scene answers to a ray; no scene until it is set.
  void SetSceneHit(const Korvane::Vector3& hit) { sceneHit = std::make_unique<Korvane::Vector3>(hit); }

  bool Create() override;
  bool Destroy() override;
  bool LoadTexture(Korvane::TextureID id) override;
  void ReleaseTexture(Korvane::TextureID id) override;
  bool BeginRender(const Korvane::Box2& viewport, const Korvane::CameraParameters& camera,
                   RenderMode mode) override;
  bool EndRender() override;
  bool RenderGeometry(unsigned vertexCount, const float* vertices, const float* texCoords,
                      const MaterialParams* material) override;
  bool Render(Korvane::ResourceIcon3D* icon) override;
  bool Render(Korvane::DynamicIcon2D* icon) override;
  bool Render(Korvane::ResourceIcon2D* icon) override;
  std::wstring LoadStringResource(int id) override;
  Korvane::PixelIcon2D* CreateImageData(Korvane::TextureID id) override;
  Korvane::DynamicIcon2D* CreateSceneScreenshot(int width, int height,
                                                const Korvane::CameraParameters& camera) override;
  Korvane::DynamicIcon2D* CreateTextLabel(const wchar_t* text, float size, int first, int second) override;
  Korvane::DynamicIcon2D* CreateTooltip(const wchar_t* text) override;
  Korvane::DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) override;
  Korvane::DynamicIcon2D* CreateMessageHUD(const wchar_t* text) override;
  Korvane::DynamicIcon2D* CreatePivotLabel(const wchar_t* text) override;
  Korvane::DynamicIcon2D* CreateMiniWheelLabel(const wchar_t* text) override;
  Korvane::DynamicIcon2D* CreateUCSMenuLabel(const wchar_t* text, const wchar_t* other, bool flag,
                                             int number) override;
  bool DestroyIcon(Korvane::DynamicIcon2D*& icon) override;
  bool QueryRaySceneIntersection(const Korvane::Vector3& origin, const Korvane::Vector3& direction,
                                 Korvane::Vector3& hit) override;
  bool SetCursorPosition(int x, int y) override;
  bool OpenMenu(Korvane::MenuID id) override;
  bool OpenUCSMenu(int x, int y) override;
  bool SetCursorIcon(Korvane::CursorID id) override;

 private:
  /// Notes the call and says whether it is to succeed.
  bool Record(const std::string& operation, const std::string& arguments = {});
  Korvane::DynamicIcon2D* MakeIcon(const std::string& operation, const std::string& arguments);

  std::vector<std::string> calls;
  std::map<std::string, int> failures;  // -1: every call fails; otherwise how many are still to fail
  std::vector<Geometry> geometry;
  std::vector<std::unique_ptr<Korvane::DynamicIcon2D>> icons;
  std::unique_ptr<Korvane::Vector3> sceneHit;
  int iconsMade = 0;
  int foreignDestroys = 0;
};
