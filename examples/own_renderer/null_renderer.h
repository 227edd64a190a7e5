#pragma once

#include <string>

#include "korvane/korvane.h"

/// A renderer that draws nothing and knows no scene: with it everything runs, and nothing shows. Replace one
/// operation after the other; each says what it has to do. A false, a null or an empty text always means that
/// it did not work, and every caller is prepared for it.
class NullRenderer : public Korvane::Renderer {
 public:
  // ---- life ----

  /// Make shaders and buffers. The Create of a view manager calls it first.
  bool Create() override { return true; }
  /// Free everything, with the icons that are still there. The host calls it, after the view manager's.
  bool Destroy() override { return true; }

  // ---- a pass: open it, draw, close it ----

  /// Remember box, camera and mode, set the graphics state, and clear the depth within the box unless the
  /// mode is RENDER_SCENE. False: the caller skips the pass.
  bool BeginRender(const Korvane::Box2& /*viewport*/, const Korvane::CameraParameters& /*camera*/,
                   RenderMode /*mode*/) override {
    return true;
  }
  /// Put the graphics state back as it was found.
  bool EndRender() override { return true; }
  /// Draw quads of four vertices, or one line of two: three floats a vertex, two a texture coordinate, in the
  /// material's colour times its texture. The fronts run clockwise.
  bool RenderGeometry(unsigned /*vertexCount*/, const float* /*vertices*/, const float* /*texCoords*/,
                      const MaterialParams* /*material*/) override {
    return true;
  }
  /// Draw the ball of the pivot at the icon's position: its size is the diameter, in world units.
  bool Render(Korvane::ResourceIcon3D* /*icon*/) override { return true; }
  /// Draw a text or a screenshot that this renderer has made, in the icon's box and opacity.
  bool Render(Korvane::DynamicIcon2D* /*icon*/) override { return true; }
  /// Draw the picture of the icon's texture number, likewise.
  bool Render(Korvane::ResourceIcon2D* /*icon*/) override { return true; }

  // ---- pictures and texts ----

  /// The text of a number, in the language of the user; Korvane::StringID names them.
  std::wstring LoadStringResource(int /*id*/) override { return {}; }
  /// The pixels of a picture, new, for whoever asks which region a pixel lies in. The caller deletes it.
  Korvane::PixelIcon2D* CreateImageData(Korvane::TextureID /*id*/) override { return nullptr; }
  /// Draw the scene for the camera into a picture of this size, and make an icon of it.
  Korvane::DynamicIcon2D* CreateSceneScreenshot(int /*width*/, int /*height*/,
                                                const Korvane::CameraParameters& /*camera*/) override {
    return nullptr;
  }
  // Draw the text and make an icon of it, with its size in pixels set: the widgets place it by that. They
  // differ in their looks only; of the label the size is in points, and it is fitted into a box.
  Korvane::DynamicIcon2D* CreateTextLabel(const wchar_t* /*text*/, float /*size*/, int /*width*/,
                                          int /*height*/) override {
    return nullptr;
  }
  Korvane::DynamicIcon2D* CreateTooltip(const wchar_t* /*text*/) override { return nullptr; }
  Korvane::DynamicIcon2D* CreateTooltipHUD(const wchar_t* /*text*/) override { return nullptr; }
  Korvane::DynamicIcon2D* CreateMessageHUD(const wchar_t* /*text*/) override { return nullptr; }
  Korvane::DynamicIcon2D* CreatePivotLabel(const wchar_t* /*text*/) override { return nullptr; }
  Korvane::DynamicIcon2D* CreateMiniWheelLabel(const wchar_t* /*text*/) override { return nullptr; }
  /// The name of the coordinate system below the cube, with a second line if there is one, highlighted or
  /// not; at most 0.85 of the room in pixels.
  Korvane::DynamicIcon2D* CreateUCSMenuLabel(const wchar_t* /*text*/, const wchar_t* /*other*/,
                                             bool /*highlighted*/, int /*room*/) override {
    return nullptr;
  }
  /// Free an icon that one of these has made, and clear the caller's pointer.
  bool DestroyIcon(Korvane::DynamicIcon2D*& icon) override {
    icon = nullptr;
    return true;
  }

  // ---- the scene ----

  /// The first point of the scene along the ray, into `hit`. Without it nothing can be zoomed to, looked at
  /// or walked on.
  bool QueryRaySceneIntersection(const Korvane::Vector3& /*origin*/, const Korvane::Vector3& /*direction*/,
                                 Korvane::Vector3& /*hit*/) override {
    return false;
  }

  // ---- the pointer and menus ----

  /// Move the pointer to a pixel of the viewport, counted from the bottom left.
  bool SetCursorPosition(int /*x*/, int /*y*/) override { return false; }
  /// Open the host's menu of the cube, or another, at the pointer.
  bool OpenMenu(Korvane::MenuID /*id*/) override { return false; }
  /// Open the host's list of coordinate systems at a pixel.
  bool OpenUCSMenu(int /*x*/, int /*y*/) override { return false; }

 protected:
  /// Make the picture of a number ready to draw; Korvane::TextureID names them. False asks again later.
  bool LoadTexture(Korvane::TextureID /*id*/) override { return true; }
  /// Its last user is gone.
  void ReleaseTexture(Korvane::TextureID /*id*/) override {}
  /// Give the pointer a shape; CURSOR_NONE asks for no change.
  bool SetCursorIcon(Korvane::CursorID /*id*/) override { return true; }
};
