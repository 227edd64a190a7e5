#include "viewer_panel.h"

#include <imgui.h>

#include <algorithm>
#include <array>
#include <cfloat>

#include "viewer_hub.h"

namespace zovview {

using ProjectionType = Korvane::CameraParameters::ProjectionType;

namespace {

constexpr float MARGIN = 12.0F;  // points
constexpr float BAR_WIDTH = 320.0F;
constexpr float WIDEST_PANEL = 420.0F;
constexpr float TITLE_BUTTON_WIDTH = 48.0F;  // of the arrow that folds the panel, with its space
constexpr float HELP_COLUMN = 96.0F;
constexpr ImGuiWindowFlags STILL = ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoResize |
                                   ImGuiWindowFlags_AlwaysAutoResize | ImGuiWindowFlags_NoSavedSettings |
                                   ImGuiWindowFlags_NoFocusOnAppearing | ImGuiWindowFlags_NoNav;
constexpr ImGuiWindowFlags NOTICE = STILL | ImGuiWindowFlags_NoDecoration | ImGuiWindowFlags_NoInputs;

struct HelpLine {
  const char* keys;
  const char* action;
};
constexpr std::array<HelpLine, 10> HELP = {{
    {"Left drag", "orbit"},
    {"Middle drag", "pan"},
    {"Right drag", "zoom"},
    {"Wheel", "zoom"},
    {"Home", "start view"},
    {"P", "projection"},
    {"S", "snapping"},
    {"U", "keep upright"},
    {"F1", "this panel"},
    {"Drop a file", "open it"},
}};

// 1234567 as "1 234 567".
std::string GroupDigits(std::size_t number) {
  std::string digits = std::to_string(number);
  for (std::size_t end = digits.size(); end > 3; end -= 3) digits.insert(end - 3, 1, ' ');
  return digits;
}

void DrawProgress(const LoadingStatus& status) {
  const ImVec2 size = ImGui::GetIO().DisplaySize;
  ImGui::SetNextWindowPos(ImVec2(size.x * 0.5F, size.y * 0.5F), ImGuiCond_Always, ImVec2(0.5F, 0.5F));
  if (ImGui::Begin("##progress", nullptr, NOTICE)) {
    ImGui::Text("Opening %s", status.name.c_str());
    ImGui::ProgressBar(static_cast<float>(status.fraction), ImVec2(BAR_WIDTH, 0.0F), "");
    ImGui::TextDisabled("%s", status.step.c_str());
  }
  ImGui::End();
}

void DrawMessage(const std::string& message) {
  const ImVec2 size = ImGui::GetIO().DisplaySize;
  ImGui::SetNextWindowPos(ImVec2(size.x * 0.5F, size.y - MARGIN), ImGuiCond_Always, ImVec2(0.5F, 1.0F));
  if (ImGui::Begin("##message", nullptr, NOTICE)) {
    ImGui::PushTextWrapPos(size.x - 4.0F * MARGIN);
    ImGui::TextUnformatted(message.c_str());
    ImGui::PopTextWrapPos();
  }
  ImGui::End();
}

}  // namespace

ViewerPanel::ViewerPanel(ViewerHub& operations) : hub(operations) {}

void ViewerPanel::Draw(const PanelContents& contents) {
  if (visible) DrawSettings(contents);
  if (contents.loading.has_value()) DrawProgress(*contents.loading);
  if (!contents.message.empty()) DrawMessage(contents.message);
}

void ViewerPanel::DrawSettings(const PanelContents& contents) {
  if (contents.name.empty()) return;
  ImGui::SetNextWindowPos(ImVec2(MARGIN, MARGIN));
  // The size follows what is inside; the name in the title has to be asked room for.
  const float nameWidth = ImGui::CalcTextSize(contents.name.c_str()).x + TITLE_BUTTON_WIDTH;
  ImGui::SetNextWindowSizeConstraints(ImVec2(std::min(nameWidth, WIDEST_PANEL), 0.0F),
                                      ImVec2(WIDEST_PANEL, FLT_MAX));
  // The title is what changes, the rest names the panel.
  const std::string title = contents.name + "###settings";
  if (ImGui::Begin(title.c_str(), nullptr, STILL)) {
    ImGui::TextDisabled("%s triangles", GroupDigits(contents.triangleCount).c_str());

    Korvane::ApplicationParameters& parameters = hub.GetApplicationParameters();
    bool orthographic = hub.GetView().IsOrthographic();
    if (ImGui::Checkbox("Orthographic", &orthographic)) SetOrthographic(hub, orthographic);
    ImGui::Checkbox("Snap to views", &parameters.do_snap_orbit);
    ImGui::Checkbox("Keep upright", &parameters.preserve_orbit_up_direction);
    DrawHelp();
  }
  ImGui::End();
}

void ViewerPanel::DrawHelp() const {
  if (!ImGui::CollapsingHeader("Help")) return;
  for (const HelpLine& line : HELP) {
    ImGui::TextDisabled("%s", line.keys);
    ImGui::SameLine(HELP_COLUMN);
    ImGui::TextUnformatted(line.action);
  }
}

// ---- changes ----

// The orthographic size has followed the distance all along, so the scale of the picture stays.
void SetOrthographic(ViewerHub& hub, bool orthographic) {
  Korvane::CameraParameters camera = hub.GetView();
  camera.projection_type = orthographic ? ProjectionType::Orthographic : ProjectionType::Perspective;
  hub.SetView(camera);
}

void ToggleProjection(ViewerHub& hub) { SetOrthographic(hub, !hub.GetView().IsOrthographic()); }

void ToggleSnapping(ViewerHub& hub) {
  bool& snapping = hub.GetApplicationParameters().do_snap_orbit;
  snapping = !snapping;
  hub.RequestApplicationUpdate();
}

void ToggleKeepUp(ViewerHub& hub) {
  bool& keepUp = hub.GetApplicationParameters().preserve_orbit_up_direction;
  keepUp = !keepUp;
  hub.RequestApplicationUpdate();
}

void GoHome(ViewerHub& hub) { hub.SetView(hub.GetHomeCamera()); }

}  // namespace zovview
