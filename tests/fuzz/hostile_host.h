#pragma once

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <limits>
#include <map>

#include "fuzz/fuzz_input.h"
#include "korvane/korvane.h"
#include "support/counting_renderer.h"
#include "support/memory_hub.h"

/// Answers calls of the library at random, and now and then with an action of the host. The numbers follow
/// from those that it begins with, so that an input does the same each time.
class Moods {
 public:
  /// One answer in `oneOf` is unkind.
  Moods(std::uint32_t start, int oneOf) : state(start * 2654435761U + 1), rarity(oneOf) {}

  std::uint32_t Draw() {
    state ^= state << 13;
    state ^= state >> 17;
    state ^= state << 5;
    return state;
  }
  bool IsOneOf(int count) { return Draw() % static_cast<std::uint32_t>(count) == 0; }
  void Call() {
    if (!act || depth >= DEEPEST || left == 0 || !IsOneOf(rarity)) return;
    ++depth;
    --left;
    act();
    --depth;
  }
  bool IsWithinCall() const { return depth > 0; }
  bool Fails() {
    Call();
    return act && IsOneOf(2 * rarity);
  }
  double DrawWild() {
    static constexpr double WILD[] = {std::numeric_limits<double>::quiet_NaN(),
                                      std::numeric_limits<double>::infinity(),
                                      std::numeric_limits<double>::max(),
                                      std::numeric_limits<double>::denorm_min(),
                                      0.0,
                                      -1e30};
    return WILD[Draw() % std::size(WILD)];
  }

  std::function<void()> act;  // null at rest

 private:
  static constexpr int DEEPEST = 4;
  std::uint32_t state;
  const int rarity;
  int depth = 0;
  int left = 400;  // actions in all
};

/// Aborts when it is shown a camera that is none.
class HostileHub : public MemoryHub {
 public:
  explicit HostileHub(Moods& theMoods) : moods(theMoods) { view = GetHomeCamera(); }

  void ApplyCameraParameters(const Korvane::CameraParameters& camera) override {
    if (!camera.IsFinite()) std::abort();
    view = camera;
    moods.Call();
  }
  void QueryCameraParameters(Korvane::CameraParameters& camera) const override {
    camera = view;
    moods.Call();
  }
  void RequestApplicationUpdate() override { moods.Call(); }
  void RecalculateSelectionBounds() override { moods.Call(); }
  void RecalculateGlobalBounds() override { moods.Call(); }

 protected:
  void OnBeginShot(Korvane::Shot* /*shot*/) override { moods.Call(); }
  void OnEndShot(Korvane::Shot* /*shot*/) override { moods.Call(); }

 private:
  Moods& moods;
};

class HostileRenderer : public CountingRenderer {
 public:
  explicit HostileRenderer(Moods& theMoods) : moods(theMoods) {}

  bool LoadTexture(Korvane::TextureID id) override {
    if (moods.Fails()) return false;
    ++loans[id];
    return true;
  }
  void ReleaseTexture(Korvane::TextureID id) override {
    --loans[id];
    moods.Call();
  }
  bool BeginRender(const Korvane::Box2& /*viewport*/, const Korvane::CameraParameters& /*camera*/,
                   RenderMode /*mode*/) override {
    return !moods.Fails();
  }
  bool EndRender() override { return !moods.Fails(); }
  bool RenderGeometry(unsigned /*count*/, const float* /*vertices*/, const float* /*texCoords*/,
                      const MaterialParams* /*material*/) override {
    return !moods.Fails();
  }
  bool Render(Korvane::ResourceIcon3D* /*icon*/) override { return !moods.Fails(); }
  bool Render(Korvane::DynamicIcon2D* /*icon*/) override { return !moods.Fails(); }
  bool Render(Korvane::ResourceIcon2D* /*icon*/) override { return !moods.Fails(); }
  std::wstring LoadStringResource(int /*id*/) override { return moods.Fails() ? L"" : L"text"; }
  Korvane::PixelIcon2D* CreateImageData(Korvane::TextureID id) override {
    return moods.Fails() ? nullptr : CountingRenderer::CreateImageData(id);
  }
  Korvane::DynamicIcon2D* CreateSceneScreenshot(int width, int height,
                                                const Korvane::CameraParameters& camera) override {
    return moods.Fails() ? nullptr : CountingRenderer::CreateSceneScreenshot(width, height, camera);
  }
  Korvane::DynamicIcon2D* CreateTextLabel(const wchar_t* text, float size, int width, int height) override {
    return moods.Fails() ? nullptr : CountingRenderer::CreateTextLabel(text, size, width, height);
  }
  Korvane::DynamicIcon2D* CreateTooltip(const wchar_t* text) override {
    return moods.Fails() ? nullptr : CountingRenderer::CreateTooltip(text);
  }
  Korvane::DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) override {
    return moods.Fails() ? nullptr : CountingRenderer::CreateTooltipHUD(text);
  }
  Korvane::DynamicIcon2D* CreateMessageHUD(const wchar_t* text) override {
    return moods.Fails() ? nullptr : CountingRenderer::CreateMessageHUD(text);
  }
  Korvane::DynamicIcon2D* CreatePivotLabel(const wchar_t* text) override {
    return moods.Fails() ? nullptr : CountingRenderer::CreatePivotLabel(text);
  }
  bool DestroyIcon(Korvane::DynamicIcon2D*& icon) override {
    const bool destroyed = CountingRenderer::DestroyIcon(icon);
    moods.Call();
    return destroyed;
  }
  bool QueryRaySceneIntersection(const Korvane::Vector3& /*origin*/, const Korvane::Vector3& /*direction*/,
                                 Korvane::Vector3& hit) override {
    hit = Korvane::Vector3(moods.Draw() % 9, moods.Draw() % 7, moods.Draw() % 5);
    if (moods.IsOneOf(8)) hit.y = moods.DrawWild();
    return !moods.Fails();
  }
  bool QueryScreenRectRaySceneIntersection(int /*left*/, int /*bottom*/, int /*right*/, int /*top*/,
                                           Korvane::Vector3& hit) override {
    return QueryRaySceneIntersection(hit, hit, hit);
  }
  bool SetCursorPosition(int /*x*/, int /*y*/) override { return !moods.Fails(); }
  bool SetCursorIcon(Korvane::CursorID /*id*/) override { return !moods.Fails(); }
  bool OpenMenu(Korvane::MenuID /*id*/) override { return !moods.Fails(); }
  bool OpenUCSMenu(int /*x*/, int /*y*/) override { return !moods.Fails(); }

  bool missed = false;  // it, or a widget, was taken away before its end

  /// Whether all that was asked for has been given back; says what has not.
  bool IsClean() const {
    bool clean = GetLiveIconCount() == 0 && GetForeignDestroyCount() == 0;
    if (!clean)
      std::fprintf(stderr, "%d icons left, %d not its own\n", GetLiveIconCount(), GetForeignDestroyCount());
    for (const auto& [id, count] : loans) {
      if (count == 0) continue;
      std::fprintf(stderr, "texture %d: %d left\n", id, count);
      clean = false;
    }
    return clean;
  }

 private:
  std::map<int, int> loans;  // of textures
  Moods& moods;
};
