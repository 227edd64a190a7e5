#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>

#include "support/counting_renderer.h"

/// Counts the calls that the library makes to its host, and acts within one of them.
class ActingHost {
 public:
  /// From now on, within the call of this number, from 1.
  void ActIn(long number, std::function<void()> action) {
    calls = 0;
    wanted = number;
    act = std::move(action);
  }
  /// Every call out comes here.
  void Call() {
    if (++calls != wanted) return;
    if (const std::function<void()> once = std::exchange(act, nullptr)) once();
  }
  long GetCalls() const { return calls; }

 private:
  long calls = 0;
  long wanted = 0;
  std::function<void()> act;
};

/// `play(number)` lets the host act within the call of that number, in none for 0, and answers how many calls
/// there were. Plays for each of them, or some.
inline void TryInEachCall(const std::function<long(long)>& play, long stride = 1) {
  const long calls = play(0);
  ASSERT_GT(calls, 0);
  for (long number = 1; number <= calls && !testing::Test::HasFailure(); number += stride) {
    SCOPED_TRACE(number);
    play(number);
  }
}

/// A renderer that lets a host act in every call, after it has been answered; or one host in those that draw
/// and ask, and another in those that make pictures and texts, let them go, and set the cursor.
class ActingRenderer : public CountingRenderer {
 public:
  explicit ActingRenderer(ActingHost& theHost) : ActingRenderer(theHost, theHost) {}
  ActingRenderer(ActingHost& drawingHost, ActingHost& makingHost) : host(drawingHost), maker(makingHost) {}

  bool LoadTexture(Korvane::TextureID id) override { return TellMaker(CountingRenderer::LoadTexture(id)); }
  void ReleaseTexture(Korvane::TextureID id) override {
    CountingRenderer::ReleaseTexture(id);
    maker.Call();
  }
  bool BeginRender(const Korvane::Box2& viewport, const Korvane::CameraParameters& camera,
                   RenderMode mode) override {
    return Tell(CountingRenderer::BeginRender(viewport, camera, mode));
  }
  bool EndRender() override { return Tell(CountingRenderer::EndRender()); }
  bool RenderGeometry(unsigned count, const float* vertices, const float* texCoords,
                      const MaterialParams* material) override {
    return Tell(CountingRenderer::RenderGeometry(count, vertices, texCoords, material));
  }
  bool BeginSelection(const Korvane::Vector2& point, const Korvane::Box2& viewport,
                      const Korvane::CameraParameters& camera, RenderMode mode) override {
    return Tell(CountingRenderer::BeginSelection(point, viewport, camera, mode));
  }
  bool Render(Korvane::ResourceIcon3D* icon) override { return Tell(CountingRenderer::Render(icon)); }
  bool Render(Korvane::DynamicIcon2D* icon) override { return Tell(CountingRenderer::Render(icon)); }
  bool Render(Korvane::ResourceIcon2D* icon) override { return Tell(CountingRenderer::Render(icon)); }
  std::wstring LoadStringResource(int id) override {
    return TellMaker(CountingRenderer::LoadStringResource(id));
  }
  Korvane::PixelIcon2D* CreateImageData(Korvane::TextureID id) override {
    return TellMaker(CountingRenderer::CreateImageData(id));
  }
  Korvane::DynamicIcon2D* CreateSceneScreenshot(int width, int height,
                                                const Korvane::CameraParameters& camera) override {
    return Tell(CountingRenderer::CreateSceneScreenshot(width, height, camera));
  }
  Korvane::DynamicIcon2D* CreateTextLabel(const wchar_t* text, float size, int width, int height) override {
    return TellMaker(CountingRenderer::CreateTextLabel(text, size, width, height));
  }
  Korvane::DynamicIcon2D* CreateTooltip(const wchar_t* text) override {
    return TellMaker(CountingRenderer::CreateTooltip(text));
  }
  Korvane::DynamicIcon2D* CreateTooltipHUD(const wchar_t* text) override {
    return TellMaker(CountingRenderer::CreateTooltipHUD(text));
  }
  Korvane::DynamicIcon2D* CreateMessageHUD(const wchar_t* text) override {
    return TellMaker(CountingRenderer::CreateMessageHUD(text));
  }
  Korvane::DynamicIcon2D* CreatePivotLabel(const wchar_t* text) override {
    return TellMaker(CountingRenderer::CreatePivotLabel(text));
  }
  Korvane::DynamicIcon2D* CreateMiniWheelLabel(const wchar_t* text) override {
    return TellMaker(CountingRenderer::CreateMiniWheelLabel(text));
  }
  Korvane::DynamicIcon2D* CreateUCSMenuLabel(const wchar_t* text, const wchar_t* other, bool flag,
                                             int width) override {
    return TellMaker(CountingRenderer::CreateUCSMenuLabel(text, other, flag, width));
  }
  bool DestroyIcon(Korvane::DynamicIcon2D*& icon) override {
    return TellMaker(CountingRenderer::DestroyIcon(icon));
  }
  bool QueryRaySceneIntersection(const Korvane::Vector3& origin, const Korvane::Vector3& direction,
                                 Korvane::Vector3& hit) override {
    return Tell(CountingRenderer::QueryRaySceneIntersection(origin, direction, hit));
  }
  bool SetCursorPosition(int x, int y) override { return Tell(CountingRenderer::SetCursorPosition(x, y)); }
  bool SetCursorIcon(Korvane::CursorID id) override { return TellMaker(CountingRenderer::SetCursorIcon(id)); }
  bool OpenMenu(Korvane::MenuID id) override { return TellMaker(CountingRenderer::OpenMenu(id)); }
  bool OpenUCSMenu(int x, int y) override { return TellMaker(CountingRenderer::OpenUCSMenu(x, y)); }

 private:
  template <class Answer>
  Answer Tell(Answer answer) {
    host.Call();
    return answer;
  }
  template <class Answer>
  Answer TellMaker(Answer answer) {
    maker.Call();
    return answer;
  }

  ActingHost& host;
  ActingHost& maker;
};
