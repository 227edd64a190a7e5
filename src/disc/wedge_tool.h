#pragma once

#include <utility>

#include "disc/disc_region_listener.h"
#include "korvane/camera_operations.h"
#include "korvane/renderer.h"
#include "korvane/tool.h"

namespace Korvane {

/// Wires a tool to what a wedge works with.
class ToolWires {
 public:
  /// Comes before each use of the tool. What is gone meanwhile is taken away from it first; a gesture that
  /// goes on is ended where the hub or the renderer is another one.
  void Connect(Tool& tool, const DiscRegionListener& wedge) {
    if (IsAsBefore(tool, wedge)) return;
    if (hub.Get() == nullptr) tool.SetKorvane(nullptr);
    if (renderer.Get() == nullptr) tool.SetRenderer(nullptr);
    tool.SetPivotBall(wedge.GetPivotBall());
    if (hub.Get() != wedge.GetHub() || renderer.Get() != wedge.GetRenderer()) tool.EndGesture();
    hub.Set(wedge.GetHub());
    renderer.Set(wedge.GetRenderer());
    tool.SetKorvane(hub.Get());
    tool.SetRenderer(renderer.Get());
    tool.SetPivotBall(wedge.GetPivotBall());
    tool.SetRewindHistory(wedge.GetHistory());
  }

 private:
  // So it is in nearly every use; what is gone is not what the tool still points to.
  bool IsAsBefore(const Tool& tool, const DiscRegionListener& wedge) const {
    return hub.Get() == wedge.GetHub() && renderer.Get() == wedge.GetRenderer() &&
           tool.GetKorvane() == hub.Get() && tool.GetRenderer() == renderer.Get() &&
           tool.GetPivotBall() == wedge.GetPivotBall() && tool.GetRewindHistory() == wedge.GetHistory();
  }

  Borrowed<CameraOperations> hub;
  Borrowed<Renderer> renderer;
};

/// A tool to which a wedge lends the mouse, part of the wedge. With the wedge its gesture ends.
template <class T>
class WedgeTool {
 public:
  template <class... Arguments>
  explicit WedgeTool(const DiscRegionListener& listener, Arguments... arguments)
      : wedge(listener), tool(arguments...) {}
  WedgeTool(const WedgeTool&) = delete;
  WedgeTool& operator=(const WedgeTool&) = delete;
  ~WedgeTool() { EndGesture(); }

  /// The tool, wired.
  T* operator->() {
    wires.Connect(tool, wedge);
    return &tool;
  }
  /// A gesture, or a shot of the tool's own, goes on.
  bool IsBusy() { return (*this)->IsOperating() || tool.IsAnimating(); }
  bool IsAnimating() { return (*this)->IsAnimating(); }
  void EndGesture() { (*this)->EndGesture(); }

 private:
  const DiscRegionListener& wedge;
  ToolWires wires;
  T tool;
};

/// A wedge that lends the mouse to one tool. Derived ones say what a press means.
template <class T>
class ToolRegionListener : public DiscRegionListener {
 public:
  template <class... Arguments>
  explicit ToolRegionListener(TrackMenu* menu, HelmDisc* helmDisc, Arguments... arguments)
      : DiscRegionListener(menu, helmDisc), tool(*this, arguments...) {}

  void OnMouseMove(int x, int y) override {
    DiscRegionListener::OnMouseMove(x, y);
    tool->OnMouseMove(x, y);
  }
  void OnLeftMouseUp(int x, int y) override {
    DiscRegionListener::OnLeftMouseUp(x, y);
    Press(*this).Then([&] { tool->OnMouseUp(x, y); }).ShowMenu();
  }
  void OnDraw() override {
    DiscRegionListener::OnDraw();
    tool->OnDraw();
  }
  void OnTrackMenuActivate(bool active) override {
    DiscRegionListener::OnTrackMenuActivate(active);
    if (!active) tool.EndGesture();
  }

 protected:
  WedgeTool<T> tool;
};

/// A wedge that lends the mouse to a tool, or, pressed with Shift, to another. The menu comes back when the
/// animated end of what they do is over. Derived ones say what a press means.
template <class Plain, class WithShift>
class ShiftToolRegionListener : public DiscRegionListener {
 public:
  /// `allowed`, and a setting of the disc: whether there is another.
  ShiftToolRegionListener(TrackMenu* menu, HelmDisc* helmDisc, bool allowed,
                          bool HelmDiscParameters::*setting)
      : DiscRegionListener(menu, helmDisc),
        allowsShift(allowed),
        shiftSetting(setting),
        tool(*this),
        shiftTool(*this) {}

  void OnMouseMove(int x, int y) override {
    DiscRegionListener::OnMouseMove(x, y);
    if (!IsAnimating()) GetToolOfMode().OnMouseMove(x, y);
  }
  void OnDraw() override {
    DiscRegionListener::OnDraw();
    DrawUntilDone([&] { GetToolOfMode().OnDraw(); }, [&] { return tool.IsBusy() || shiftTool.IsBusy(); });
  }
  void OnTrackMenuActivate(bool active) override {
    DiscRegionListener::OnTrackMenuActivate(active);
    if (active) return;
    tool.EndGesture();
    shiftTool.EndGesture();
  }

 protected:
  bool IsAnimating() { return tool.IsAnimating() || shiftTool.IsAnimating(); }
  /// For a press: with or without Shift. What the other tool still does, whose release went missing, ends.
  void ChooseByShift() {
    usesShiftTool = IsShiftDown() && allowsShift && IsSet(shiftSetting);
    if (usesShiftTool) {
      tool.EndGesture();
    } else {
      shiftTool.EndGesture();
    }
  }
  /// Wired.
  virtual Tool& GetToolOfMode() {
    if (usesShiftTool) return *shiftTool.operator->();
    return *tool.operator->();
  }

 private:
  const bool allowsShift;
  bool HelmDiscParameters::*const shiftSetting;

 protected:
  bool usesShiftTool = false;  // as the last press has chosen
  WedgeTool<Plain> tool;
  WedgeTool<WithShift> shiftTool;
};

}  // namespace Korvane
