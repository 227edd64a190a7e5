#include "views/view_tools.h"

#include <algorithm>
#include <array>

#include "korvane/center_tool.h"
#include "korvane/look_at_tool.h"
#include "korvane/look_move_tool.h"
#include "korvane/look_tool.h"
#include "korvane/orbit_tool.h"
#include "korvane/pan_tool.h"
#include "korvane/rect_zoom_tool.h"
#include "korvane/renderer.h"
#include "korvane/walk_tool.h"
#include "korvane/zoom_tool.h"

namespace zovview {

using Korvane::StringID;
using Korvane::Tool;

namespace {

// Texts that the library has no names for, since it leaves them to the host.
constexpr auto NOTE_NO_CLOSER = static_cast<StringID>(29);
constexpr auto NOTE_NO_FURTHER = static_cast<StringID>(30);
constexpr auto NOTE_WALK = static_cast<StringID>(34);
constexpr auto NOTE_NO_WALK = static_cast<StringID>(36);
constexpr auto NOTE_UP_DOWN = static_cast<StringID>(38);
constexpr auto LABEL_CENTRE = static_cast<StringID>(39);
constexpr auto NOTE_LOOK = static_cast<StringID>(49);
constexpr auto NOTE_RECTANGLE = static_cast<StringID>(56);
constexpr auto NOTE_LOOK_AT = static_cast<StringID>(57);

template <class Made>
Tool* Make() {
  return new Made;
}

// A zoom out ends where the model is small, and says so.
Tool* MakeZoom() {
  auto* const tool = new Korvane::ZoomTool;
  tool->SetConstrainZoom(true);
  return tool;
}

Tool* MakeCentre() { return new Korvane::CenterTool(nullptr, nullptr, LABEL_CENTRE); }

void AddZoomNotes(Tool& tool, Notes& notes) {
  auto& zoom = static_cast<Korvane::ZoomTool&>(tool);
  zoom.SetMaxZoomInHUD(notes.Get(NOTE_NO_CLOSER));
  zoom.SetMaxZoomOutHUD(notes.Get(NOTE_NO_FURTHER));
}

void AddCentreNotes(Tool& tool, Notes& notes) {
  static_cast<Korvane::CenterTool&>(tool).SetOffModelHUD(notes.Get(Korvane::STRING_OFF_MODEL));
}

void AddWalkNotes(Tool& tool, Notes& notes) {
  auto& walk = static_cast<Korvane::WalkTool&>(tool);
  walk.SetMessageHUD(notes.Get(NOTE_WALK));
  walk.SetWarningHUD(notes.Get(NOTE_NO_WALK));
  walk.SetUpDownHUD(notes.Get(NOTE_UP_DOWN));
}

using Korvane::STRING_NONE;
using Korvane::STRING_ORBIT;
using Korvane::STRING_PAN;
using Korvane::STRING_WHEEL_ZOOM;

// The centre tool does not take its note along with the pointer, and the pointer of a walk is a note itself.
constexpr std::array<ViewTool, 9> TOOLS = {{
    {TOOL_ORBIT, false, STRING_ORBIT, STRING_NONE, Make<Korvane::OrbitTool>, nullptr},
    {TOOL_PAN, false, STRING_PAN, STRING_NONE, Make<Korvane::PanTool>, nullptr},
    {TOOL_ZOOM, true, STRING_WHEEL_ZOOM, STRING_NONE, MakeZoom, AddZoomNotes},
    {TOOL_RECTANGLE, false, NOTE_RECTANGLE, STRING_NONE, Make<Korvane::RectZoomTool>, nullptr},
    {TOOL_LOOK, false, NOTE_LOOK, STRING_NONE, Make<Korvane::LookTool>, nullptr},
    {TOOL_LOOK_MOVE, false, NOTE_LOOK, STRING_NONE, Make<Korvane::LookMoveTool>, nullptr},
    {TOOL_LOOK_AT, true, NOTE_LOOK_AT, STRING_NONE, Make<Korvane::LookAtTool>, nullptr},
    {TOOL_CENTRE, true, STRING_NONE, STRING_NONE, MakeCentre, AddCentreNotes},
    {TOOL_WALK, true, STRING_NONE, NOTE_WALK, Make<Korvane::WalkTool>, AddWalkNotes},
}};

}  // namespace

Notes::Notes(Korvane::Renderer& onRenderer) : renderer(onRenderer) {}

Notes::~Notes() {
  for (const Note& note : taken) renderer.ReleaseStringTexture(note.id);
  renderer.ApplyTextureUsage();
}

Korvane::DynamicIcon2D* Notes::Get(StringID id) {
  if (id == STRING_NONE) return nullptr;
  const auto found =
      std::find_if(taken.begin(), taken.end(), [id](const Note& note) { return note.id == id; });
  if (found != taken.end()) return found->icon;
  taken.push_back({id, renderer.GetStringTexture(id)});
  return taken.back().icon;
}

std::span<const ViewTool> GetViewTools() { return TOOLS; }

const ViewTool* FindViewTool(int id) {
  const auto* const found =
      std::find_if(TOOLS.begin(), TOOLS.end(), [id](const ViewTool& tool) { return tool.id == id; });
  return found != TOOLS.end() ? found : nullptr;
}

}  // namespace zovview
