#pragma once

#include <array>
#include <optional>
#include <string>

#include "korvane/shot_editor.h"
#include "korvane/shot_specification.h"
#include "zovhost/page_edges.h"
#include "zovhost/page_keys.h"

namespace zovhost {

/// The editor of a shot as a panel of the Gui: its name, its type, its times, its distances and angles with
/// their units, and buttons that preview it, take the view of now, record a walk, and reset what it does.
///
///     zovhost::ShotEditorPanel editor;
///     storyboard.SetShotEditor(&editor);
///     ...
///     gui.BeginFrame();
///     editor.Draw(right, top);
///     gui.EndFrame();
///
/// Live, as it is at first, a change is taken as soon as a control is let go; else with its button "Apply".
class ShotEditorPanel : public Korvane::ShotEditor {
 public:
  /// Numbers to edit; which of them show depends on the type of the shot.
  static constexpr int NUMBER_COUNT = 11;

  /// Does nothing: the library keeps it for itself.
  void OnEditorReserved() override {}
  void SetPreviewState(bool isPreviewing) override { previewing = isPreviewing; }
  void SetRecordingState(bool isRecording) override { recording = isRecording; }
  void SetPanelVisible(bool isVisible) override { visible = isVisible; }
  void TransferControls(bool toShot) override;

  /// Within a frame of the Gui. Its upper right corner stands there when it appears, in points from the top
  /// left of the window; from there the user may move it. It is no higher than its room down to `foot`, or
  /// 110 points, and is scrolled where that is too little; a foot that is not below the top leaves it as high
  /// as it is.
  void Draw(float right, float top, float foot = 0.0F);
  bool IsPanelVisible() const { return visible; }
  /// Where it was drawn last; none: it was not.
  std::optional<PageEdges> GetEdges() const { return edges; }
  /// With the next frame the name is typed, and Tab and arrows go on from there to the other fields: until
  /// Enter has ended the name, or Escape, or a press beside the panel.
  void TypeName() { typingName = true; }
  /// Where Tab has led into it, Escape closes it.
  PageKeys& GetKeys() { return keys; }
  /// As by its cross.
  void Close();
  bool IsLive() const { return live; }
  void SetLive(bool value) { live = value; }

 private:
  struct Controls {
    std::string name;
    int type = 0;
    int position = 0;
    int transition = 0;
    bool keepsTarget = false;
    std::array<double, NUMBER_COUNT> numbers{};
  };

  void ReadShot(const Korvane::ShotSpecification& edited);
  void WriteShot(Korvane::ShotSpecification& edited) const;
  struct Layout;
  static Layout MakeLayout();
  void DrawControls(const Layout& layout);
  bool DrawName(const Layout& layout);
  bool DrawChoices(const Layout& layout);
  bool DrawNumbers(const Layout& layout);
  void DrawSaving(const Layout& layout);
  void DrawActions(const Layout& layout);
  void DrawWalk();

  Controls controls;
  std::optional<PageEdges> edges;
  std::optional<float> topBefore;  // where it stood in the last frame
  double viewDistance = 1.0;       // from the eye to the centre, by which distances are dragged
  bool visible = false;
  bool previewing = false;
  bool recording = false;
  bool live = true;
  bool loop = false;
  bool typingName = false;  // from the next frame on
  bool ofName = false;      // the keys came to type it
  bool scrolls = false;
  PageKeys keys;
};

}  // namespace zovhost
