#include "commands/view_commands.h"

#include <algorithm>
#include <initializer_list>
#include <iterator>

#include "commands/bar_commands.h"
#include "commands/cube_commands.h"
#include "commands/device_commands.h"
#include "commands/disc_commands.h"
#include "commands/language_commands.h"
#include "commands/named_view_commands.h"
#include "commands/story_commands.h"
#include "korvane/helm_disc.h"
#include "korvane/shot_parameters.h"
#include "korvane/view_manager.h"
#include "views/preferences.h"
#include "views/view_tools.h"
#include "zovhost/navigation_style.h"
#include "zovhost/scene_ground.h"
#include "zovhost/window.h"

namespace zovview {

using Korvane::DiscType;
using Korvane::ViewAlignShotParameters;

namespace {

constexpr double TRAVEL_SECONDS = 0.5;

using enum ViewCommand::Place;
using Look = Korvane::OrientorParameters;
using DiscParameters = Korvane::HelmDiscParameters;

using Strip = Korvane::Toolbar;
using zovhost::PivotPolicy;
using DeviceMode = Korvane::Cam3DController::NavigationMode;

constexpr unsigned ALT = zovhost::WindowEvent::ALT;
constexpr unsigned CONTROL = zovhost::WindowEvent::CONTROL;
constexpr unsigned SHIFT = zovhost::WindowEvent::SHIFT;

bool IsOrthographic(const ViewTarget& target) { return target.hub.GetView().IsOrthographic(); }
bool IsSnapping(const ViewTarget& target) { return target.hub.GetApplicationParameters().do_snap_orbit; }
bool KeepsUp(const ViewTarget& target) {
  return target.hub.GetApplicationParameters().preserve_orbit_up_direction;
}

bool IsMotionReduced(const ViewTarget& target) { return target.hub.IsMotionReduced(); }
void ToggleMotion(const ViewTarget& target) {
  if (target.preferences == nullptr) return;
  target.preferences->Edit([](Choices& choices) { choices.reducedMotion = !choices.reducedMotion; });
}

// In the order of the kit's grounds.
template <std::size_t GROUND>
void UseGround(const ViewTarget& target) {
  if (target.preferences == nullptr) return;
  target.preferences->Edit(
      [](Choices& choices) { choices.ground = zovhost::GetSceneGrounds()[GROUND].name; });
}
template <std::size_t GROUND>
bool IsGround(const ViewTarget& target) {
  return target.preferences != nullptr &&
         FindGround(target.preferences->Get().ground).name == zovhost::GetSceneGrounds()[GROUND].name;
}

template <ToolID ID>
void ChooseTool(const ViewTarget& target) {
  target.manager.SetActiveTool(ID);
}
template <ToolID ID>
bool IsToolActive(const ViewTarget& target) {
  return target.manager.GetActiveTool() == ID;
}
template <ToolID ID>
constexpr ViewCommand MakeToolCommand(const char* name, const char* label, const char* keyName,
                                      SDL_Keycode key) {
  return {Tools, name, label, keyName, key, ChooseTool<ID>, IsToolActive<ID>};
}

template <DiscType TYPE>
constexpr ViewCommand MakeDiscCommand(const char* name, const char* label, const char* keyName,
                                      SDL_Keycode key) {
  return {Discs, name, label, keyName, key, OpenDiscOf<TYPE>, IsDiscOpen<TYPE>};
}

template <DeviceMode MODE>
constexpr ViewCommand MakeDeviceCommand(const char* name, const char* label, const char* keyName,
                                        SDL_Keycode key) {
  return {Device, name, label, keyName, key, UseDeviceMode<MODE>, IsDeviceModeOf<MODE>};
}

template <std::size_t INDEX>
void UseStyle(const ViewTarget& target) {
  if (target.preferences == nullptr) return;
  const std::string name(zovhost::GetNavigationStyles()[INDEX].name);
  target.preferences->Edit([&name](Choices& choices) { choices.navigationStyle = name; });
}
template <std::size_t INDEX>
bool IsStyle(const ViewTarget& target) {
  return &GetNavigationStyle(target) == &zovhost::GetNavigationStyles()[INDEX];
}
// By the row of the kit's table.
template <std::size_t INDEX>
constexpr ViewCommand MakeStyleCommand(const char* name, const char* label) {
  return {Styles, name, label, "", SDLK_UNKNOWN, UseStyle<INDEX>, IsStyle<INDEX>};
}

template <PivotPolicy POLICY>
void UsePivot(const ViewTarget& target) {
  if (target.preferences == nullptr) return;
  const std::string name(zovhost::GetPivotPolicies()[static_cast<std::size_t>(POLICY)].name);
  target.preferences->Edit([&name](Choices& choices) { choices.pivotPolicy = name; });
}
template <PivotPolicy POLICY>
bool IsPivot(const ViewTarget& target) {
  return target.hub.GetPivotPolicy() == POLICY;
}
template <PivotPolicy POLICY>
constexpr ViewCommand MakePivotCommand(const char* name, const char* label) {
  return {Pivots, name, label, "", SDLK_UNKNOWN, UsePivot<POLICY>, IsPivot<POLICY>};
}

template <std::size_t INDEX>
constexpr ViewCommand MakeLanguageCommand(const char* name, const char* label) {
  return {Languages, name, label, "", SDLK_UNKNOWN, UseLanguage<INDEX>, IsLanguage<INDEX>};
}

void OpenModel(const ViewTarget& target) {
  if (target.askForFile) target.askForFile({FileRequest::Kind::OpenModel});
}
template <int ENLARGEMENT>
void SavePicture(const ViewTarget& target) {
  if (target.askForFile) target.askForFile({FileRequest::Kind::SavePicture, ENLARGEMENT});
}

constexpr ViewCommand COMMANDS[] = {
    {Views, "previous-view", "View before", "Alt+Left", SDLK_LEFT, StepBack, nullptr, ALT},
    {Views, "next-view", "View after", "Alt+Right", SDLK_RIGHT, StepForward, nullptr, ALT},
    {Views, "home", "Home", "Home", SDLK_HOME, GoHome},
    {Views, "isometric", "Isometric", "I", SDLK_i, ShowIsometric},
    {Views, "fit-all", "Fit all", "A", SDLK_a, FitAll},
    {Views, "fit-selection", "Fit selection", "F", SDLK_f, FitSelection},
    {Views, "front", "Front", "1", SDLK_1, ShowFront},
    {Views, "back", "Back", "2", SDLK_2, ShowBack},
    {Views, "left", "Left", "3", SDLK_3, ShowLeft},
    {Views, "right", "Right", "4", SDLK_4, ShowRight},
    {Views, "top", "Top", "5", SDLK_5, ShowTop},
    {Views, "bottom", "Bottom", "6", SDLK_6, ShowBottom},
    MakeToolCommand<TOOL_ORBIT>("orbit", "Orbit", "O", SDLK_o),
    MakeToolCommand<TOOL_PAN>("pan", "Pan", "H", SDLK_h),
    MakeToolCommand<TOOL_ZOOM>("zoom", "Zoom", "Z", SDLK_z),
    MakeToolCommand<TOOL_RECTANGLE>("rectangle-zoom", "Rectangle zoom", "R", SDLK_r),
    MakeToolCommand<TOOL_LOOK>("look", "Look", "L", SDLK_l),
    MakeToolCommand<TOOL_LOOK_MOVE>("look-and-move", "Look and move", "M", SDLK_m),
    MakeToolCommand<TOOL_LOOK_AT>("look-at-face", "Look at a face", "T", SDLK_t),
    MakeToolCommand<TOOL_CENTRE>("centre", "Centre", "C", SDLK_c),
    MakeToolCommand<TOOL_WALK>("walk", "Walk", "W", SDLK_w),
    {Settings, "toggle-projection", "Orthographic", "P", SDLK_p, ToggleProjection, IsOrthographic},
    {Settings, "toggle-snapping", "Snap to views", "S", SDLK_s, ToggleSnapping, IsSnapping},
    {Settings, "toggle-upright", "Keep upright", "U", SDLK_u, ToggleKeepUp, KeepsUp},
    {Settings, "toggle-motion", "Reduced motion", "", SDLK_UNKNOWN, ToggleMotion, IsMotionReduced},
    {Settings, "toggle-bar", "Navigation bar", "B", SDLK_b, ToggleBar, IsBarShown},
    {Settings, "toggle-tools", "Toolbar", "K", SDLK_k, ToggleTools, AreToolsShown},
    {Cube, "cube-home", "Home view", "", SDLK_UNKNOWN, GoHomeByCube},
    {Cube, "make-home", "Make this view the home", "", SDLK_UNKNOWN, MakeHome},
    {CubeProjection, "perspective", "Perspective", "", SDLK_UNKNOWN, UsePerspective, IsPlainPerspective},
    {CubeProjection, "parallel", "Parallel", "", SDLK_UNKNOWN, UseOrthographic, IsPlainOrthographic},
    {CubeProjection, "parallel-faces", "Perspective, faces parallel", "", SDLK_UNKNOWN, UseOrthographicFaces,
     HasOrthographicFaces},
    {CubeSettings, "toggle-lock", "Turn about the selection", "", SDLK_UNKNOWN, ToggleLock, IsLocked},
    {CubeSettings, "toggle-fit-on-click", "Fit on click", "", SDLK_UNKNOWN, ToggleFitOnClick, FitsOnClick},
    {CubeSettings, "toggle-compass", "Compass", "", SDLK_UNKNOWN, ToggleCompass, HasCompass},
    {CubeSettings, "toggle-coordinates", "List of coordinates", "", SDLK_UNKNOWN, ToggleCoordinates,
     HasCoordinates},
    {CubeSettings, "toggle-cube", "The cube", "", SDLK_UNKNOWN, ToggleCube, IsCubeShown},
    {CubeSize, "cube-size-automatic", "Automatic size", "", SDLK_UNKNOWN, UseCubeSize<Look::SIZE_AUTOMATIC>,
     IsCubeSize<Look::SIZE_AUTOMATIC>},
    {CubeSize, "cube-size-tiny", "Tiny", "", SDLK_UNKNOWN, UseCubeSize<Look::SIZE_TINY>,
     IsCubeSize<Look::SIZE_TINY>},
    {CubeSize, "cube-size-small", "Small", "", SDLK_UNKNOWN, UseCubeSize<Look::SIZE_SMALL>,
     IsCubeSize<Look::SIZE_SMALL>},
    {CubeSize, "cube-size-normal", "Normal", "", SDLK_UNKNOWN, UseCubeSize<Look::SIZE_NORMAL>,
     IsCubeSize<Look::SIZE_NORMAL>},
    {CubeSize, "cube-size-large", "Large", "", SDLK_UNKNOWN, UseCubeSize<Look::SIZE_LARGE>,
     IsCubeSize<Look::SIZE_LARGE>},
    {CubeCorner, "cube-top-right", "Top right", "", SDLK_UNKNOWN, UseCubeCorner<Look::LOCATION_TOP_RIGHT>,
     IsCubeCorner<Look::LOCATION_TOP_RIGHT>},
    {CubeCorner, "cube-bottom-right", "Bottom right", "", SDLK_UNKNOWN,
     UseCubeCorner<Look::LOCATION_BOTTOM_RIGHT>, IsCubeCorner<Look::LOCATION_BOTTOM_RIGHT>},
    {CubeCorner, "cube-top-left", "Top left", "", SDLK_UNKNOWN, UseCubeCorner<Look::LOCATION_TOP_LEFT>,
     IsCubeCorner<Look::LOCATION_TOP_LEFT>},
    {CubeCorner, "cube-bottom-left", "Bottom left", "", SDLK_UNKNOWN,
     UseCubeCorner<Look::LOCATION_BOTTOM_LEFT>, IsCubeCorner<Look::LOCATION_BOTTOM_LEFT>},
    {CubeOpacity, "cube-opacity-0", "0%", "", SDLK_UNKNOWN, UseCubeOpacity<0>, IsCubeOpacity<0>},
    {CubeOpacity, "cube-opacity-25", "25%", "", SDLK_UNKNOWN, UseCubeOpacity<25>, IsCubeOpacity<25>},
    {CubeOpacity, "cube-opacity-50", "50%", "", SDLK_UNKNOWN, UseCubeOpacity<50>, IsCubeOpacity<50>},
    {CubeOpacity, "cube-opacity-75", "75%", "", SDLK_UNKNOWN, UseCubeOpacity<75>, IsCubeOpacity<75>},
    {CubeOpacity, "cube-opacity-80", "80%", "", SDLK_UNKNOWN, UseCubeOpacity<80>, IsCubeOpacity<80>},
    {CubeOpacity, "cube-opacity-100", "100%", "", SDLK_UNKNOWN, UseCubeOpacity<100>, IsCubeOpacity<100>},
    {Coordinates, "up-of-model", "Of the model", "", SDLK_UNKNOWN, UseModelCoordinates,
     HasCoordinatesOf<CoordinateSystem::Model>},
    {Coordinates, "up-y", "Y upward", "", SDLK_UNKNOWN, UseYUpward,
     HasCoordinatesOf<CoordinateSystem::YUpward>},
    {Coordinates, "up-z", "Z upward", "", SDLK_UNKNOWN, UseZUpward,
     HasCoordinatesOf<CoordinateSystem::ZUpward>},
    {Bars, "bar-left", "At the left", "", SDLK_UNKNOWN, MoveBarTo<Strip::POSITION_LEFT>,
     IsBarAtEdge<Strip::POSITION_LEFT>},
    {Bars, "bar-top", "At the top", "", SDLK_UNKNOWN, MoveBarTo<Strip::POSITION_TOP>,
     IsBarAtEdge<Strip::POSITION_TOP>},
    {Bars, "bar-right", "At the right", "", SDLK_UNKNOWN, MoveBarTo<Strip::POSITION_RIGHT>,
     IsBarAtEdge<Strip::POSITION_RIGHT>},
    {Bars, "bar-bottom", "At the bottom", "", SDLK_UNKNOWN, MoveBarTo<Strip::POSITION_BOTTOM>,
     IsBarAtEdge<Strip::POSITION_BOTTOM>},
    {Bars, "bar-linked", "Under the cube", "", SDLK_UNKNOWN, LinkBar, IsBarLinked},
    {Ground, "ground-gradient", "Gradient", "", SDLK_UNKNOWN, UseGround<0>, IsGround<0>},
    {Ground, "ground-light", "Light", "", SDLK_UNKNOWN, UseGround<1>, IsGround<1>},
    {Ground, "ground-dark", "Dark", "", SDLK_UNKNOWN, UseGround<2>, IsGround<2>},
    {Ground, "ground-white", "White", "", SDLK_UNKNOWN, UseGround<3>, IsGround<3>},
    MakeDiscCommand<DiscType::ViewObject>("disc-view-object", "View object", "F2", SDLK_F2),
    MakeDiscCommand<DiscType::TourBuilding>("disc-tour-building", "Tour building", "F3", SDLK_F3),
    MakeDiscCommand<DiscType::FullNavigation>("disc-full-navigation", "Full navigation", "F4", SDLK_F4),
    MakeDiscCommand<DiscType::TwoD>("disc-2d", "2D", "F5", SDLK_F5),
    MakeDiscCommand<DiscType::MiniViewObject>("disc-mini-view-object", "Mini object", "F6", SDLK_F6),
    MakeDiscCommand<DiscType::MiniTourBuilding>("disc-mini-tour-building", "Mini tour", "F7", SDLK_F7),
    MakeDiscCommand<DiscType::MiniFullNavigation>("disc-mini-full-navigation", "Mini full", "F8", SDLK_F8),
    {DiscSettings, "toggle-disc-tooltips", "Tooltips", "", SDLK_UNKNOWN,
     ToggleDiscSwitch<&DiscParameters::showTooltips>, HasDiscSwitch<&DiscParameters::showTooltips>},
    {DiscSettings, "toggle-disc-notes", "Notes at the pointer", "", SDLK_UNKNOWN,
     ToggleDiscSwitch<&DiscParameters::showToolHUDs>, HasDiscSwitch<&DiscParameters::showToolHUDs>},
    {DiscSettings, "toggle-disc-messages", "Messages", "", SDLK_UNKNOWN,
     ToggleDiscSwitch<&DiscParameters::showMessages>, HasDiscSwitch<&DiscParameters::showMessages>},
    {DiscSettings, "toggle-click-zoom", "A click zooms", "", SDLK_UNKNOWN,
     ToggleDiscSwitch<&DiscParameters::clickZoom>, HasDiscSwitch<&DiscParameters::clickZoom>},
    {DiscSettings, "toggle-invert-look", "Invert looking up and down", "", SDLK_UNKNOWN,
     ToggleDiscSwitch<&DiscParameters::invertLookVertical>,
     HasDiscSwitch<&DiscParameters::invertLookVertical>},
    {DiscSize, "disc-size-small", "Small", "", SDLK_UNKNOWN,
     UseDiscSize<true, &DiscParameters::SIZE_LARGE_SMALL>,
     IsDiscSize<true, &DiscParameters::SIZE_LARGE_SMALL>},
    {DiscSize, "disc-size-normal", "Normal", "", SDLK_UNKNOWN,
     UseDiscSize<true, &DiscParameters::SIZE_LARGE_NORMAL>,
     IsDiscSize<true, &DiscParameters::SIZE_LARGE_NORMAL>},
    {DiscSize, "disc-size-large", "Large", "", SDLK_UNKNOWN,
     UseDiscSize<true, &DiscParameters::SIZE_LARGE_LARGE>,
     IsDiscSize<true, &DiscParameters::SIZE_LARGE_LARGE>},
    {DiscOpacity, "disc-opacity-25", "25%", "", SDLK_UNKNOWN,
     UseDiscOpacity<true, &DiscParameters::OPACITY_25>, IsDiscOpacity<true, &DiscParameters::OPACITY_25>},
    {DiscOpacity, "disc-opacity-50", "50%", "", SDLK_UNKNOWN,
     UseDiscOpacity<true, &DiscParameters::OPACITY_50>, IsDiscOpacity<true, &DiscParameters::OPACITY_50>},
    {DiscOpacity, "disc-opacity-75", "75%", "", SDLK_UNKNOWN,
     UseDiscOpacity<true, &DiscParameters::OPACITY_75>, IsDiscOpacity<true, &DiscParameters::OPACITY_75>},
    {DiscOpacity, "disc-opacity-100", "100%", "", SDLK_UNKNOWN,
     UseDiscOpacity<true, &DiscParameters::OPACITY_100>, IsDiscOpacity<true, &DiscParameters::OPACITY_100>},
    {MiniDiscSize, "mini-disc-size-small", "Small", "", SDLK_UNKNOWN,
     UseDiscSize<false, &DiscParameters::SIZE_MINI_SMALL>,
     IsDiscSize<false, &DiscParameters::SIZE_MINI_SMALL>},
    {MiniDiscSize, "mini-disc-size-normal", "Normal", "", SDLK_UNKNOWN,
     UseDiscSize<false, &DiscParameters::SIZE_MINI_NORMAL>,
     IsDiscSize<false, &DiscParameters::SIZE_MINI_NORMAL>},
    {MiniDiscSize, "mini-disc-size-large", "Large", "", SDLK_UNKNOWN,
     UseDiscSize<false, &DiscParameters::SIZE_MINI_LARGE>,
     IsDiscSize<false, &DiscParameters::SIZE_MINI_LARGE>},
    {MiniDiscSize, "mini-disc-size-extra", "Extra large", "", SDLK_UNKNOWN,
     UseDiscSize<false, &DiscParameters::SIZE_MINI_EXTRA>,
     IsDiscSize<false, &DiscParameters::SIZE_MINI_EXTRA>},
    {MiniDiscOpacity, "mini-disc-opacity-25", "25%", "", SDLK_UNKNOWN,
     UseDiscOpacity<false, &DiscParameters::OPACITY_25>, IsDiscOpacity<false, &DiscParameters::OPACITY_25>},
    {MiniDiscOpacity, "mini-disc-opacity-50", "50%", "", SDLK_UNKNOWN,
     UseDiscOpacity<false, &DiscParameters::OPACITY_50>, IsDiscOpacity<false, &DiscParameters::OPACITY_50>},
    {MiniDiscOpacity, "mini-disc-opacity-75", "75%", "", SDLK_UNKNOWN,
     UseDiscOpacity<false, &DiscParameters::OPACITY_75>, IsDiscOpacity<false, &DiscParameters::OPACITY_75>},
    {MiniDiscOpacity, "mini-disc-opacity-100", "100%", "", SDLK_UNKNOWN,
     UseDiscOpacity<false, &DiscParameters::OPACITY_100>, IsDiscOpacity<false, &DiscParameters::OPACITY_100>},
    {WalkSpeed, "walk-slower", "Slower", "", SDLK_UNKNOWN, WalkSlower},
    {WalkSpeed, "walk-faster", "Faster", "", SDLK_UNKNOWN, WalkFaster},
    {WalkSpeed, "walk-speed-50", "Half as fast", "", SDLK_UNKNOWN, UseWalkSpeed<50>, IsWalkSpeedOf<50>},
    {WalkSpeed, "walk-speed-100", "Normal", "", SDLK_UNKNOWN, UseWalkSpeed<100>, IsWalkSpeedOf<100>},
    {WalkSpeed, "walk-speed-200", "Twice as fast", "", SDLK_UNKNOWN, UseWalkSpeed<200>, IsWalkSpeedOf<200>},
    {WalkSpeed, "walk-speed-500", "Five times as fast", "", SDLK_UNKNOWN, UseWalkSpeed<500>,
     IsWalkSpeedOf<500>},
    {KeptViews, "keep-view", "Keep this view", "V", SDLK_v, KeepView},
    {KeptViews, "import-views", "Import...", "", SDLK_UNKNOWN, ImportViews},
    {KeptViews, "export-views", "Export...", "", SDLK_UNKNOWN, ExportViews},
    {Story, "toggle-storyboard", "Storyboard", "Y", SDLK_y, ToggleStoryboard, IsStoryboardShown},
    {Story, "play-story", "Play", "F9", SDLK_F9, PlayStory, IsStoryPlaying},
    {Story, "present-story", "Present", "F10", SDLK_F10, PresentStory},
    {Story, "add-sequence", "New sequence", "", SDLK_UNKNOWN, AddSequence},
    {Story, "add-shot", "New shot", "N", SDLK_n, AddShot},
    {Story, "undo", "Undo", "Ctrl+Z", SDLK_z, UndoEdit, nullptr, CONTROL},
    {Story, "redo", "Redo", "Ctrl+Y", SDLK_y, RedoEdit, nullptr, CONTROL},
    {Story, "toggle-loop", "Loop", "", SDLK_UNKNOWN, ToggleLoop, IsLooping},
    {StoryFile, "new-story", "New story", "", SDLK_UNKNOWN, AskForStory<StoryRequest::New>},
    {StoryFile, "open-story", "Open story...", "", SDLK_UNKNOWN, AskForStory<StoryRequest::Open>},
    {StoryFile, "save-story", "Save story", "", SDLK_UNKNOWN, AskForStory<StoryRequest::Save>},
    {StoryFile, "save-story-as", "Save as...", "", SDLK_UNKNOWN, AskForStory<StoryRequest::SaveAs>},
    {StoryFile, "export-story", "Export...", "", SDLK_UNKNOWN, AskForStory<StoryRequest::Export>},
    {File, "open-model", "Open...", "Ctrl+O", SDLK_o, OpenModel, nullptr, CONTROL},
    {Picture, "save-picture", "As large as the view", "Ctrl+S", SDLK_s, SavePicture<1>, nullptr, CONTROL},
    {Picture, "save-picture-2", "Twice as large", "", SDLK_UNKNOWN, SavePicture<2>},
    {Picture, "save-picture-4", "Four times as large", "", SDLK_UNKNOWN, SavePicture<4>},
    {Shot, "play-shot", "Play", "", SDLK_UNKNOWN, PlayShot},
    {Shot, "preview-shot", "Preview, and back", "", SDLK_UNKNOWN, PreviewShot},
    {Shot, "fly-to-shot", "Fly to its start", "", SDLK_UNKNOWN, FlyToShot},
    {Shot, "edit-shot", "Edit", "", SDLK_UNKNOWN, EditShot},
    {Shot, "record-walk", "Record a walk", "", SDLK_UNKNOWN, RecordWalk},
    {Shot, "delete-shot", "Delete", "", SDLK_UNKNOWN, DeleteShot},
    MakeDeviceCommand<DeviceMode::MODE_OBJECT>("device-object", "Move the model", "7", SDLK_7),
    MakeDeviceCommand<DeviceMode::MODE_WALK>("device-walk", "Walk", "8", SDLK_8),
    MakeDeviceCommand<DeviceMode::MODE_FLY>("device-fly", "Fly", "9", SDLK_9),
    MakeDeviceCommand<DeviceMode::MODE_PAN>("device-pan", "Move the page", "0", SDLK_0),
    {DeviceSettings, "device-upright", "Keep upright", "", SDLK_UNKNOWN, ToggleDeviceUpright,
     IsDeviceUpright},
    {DeviceSettings, "device-rotation", "Rotation", "", SDLK_UNKNOWN, ToggleDeviceRotation, DoesDeviceTurn},
    {DeviceSettings, "device-translation", "Translation", "", SDLK_UNKNOWN, ToggleDeviceTranslation,
     DoesDeviceMove},
    {DeviceSettings, "device-page", "Settings...", "E", SDLK_e, ToggleDevicePage},
    MakeStyleCommand<0>("style-own", "Middle pans, Shift orbits"),
    MakeStyleCommand<1>("style-middle-orbits", "Middle orbits, Shift pans"),
    MakeStyleCommand<2>("style-middle-turns", "Middle orbits, Ctrl pans"),
    MakeStyleCommand<3>("style-control-orbits", "Middle pans, Ctrl orbits"),
    MakeStyleCommand<4>("style-right-orbits", "Right orbits, middle pans"),
    MakeStyleCommand<5>("style-alt-drags", "Alt and left, middle, right"),
    MakeStyleCommand<6>("style-right-looks", "Right looks, W A S D move"),
    MakePivotCommand<PivotPolicy::Last>("pivot-last", "About the last point"),
    MakePivotCommand<PivotPolicy::Pointer>("pivot-pointer", "About the point under the pointer"),
    MakePivotCommand<PivotPolicy::Selection>("pivot-selection", "About the selection"),
    MakePivotCommand<PivotPolicy::Scene>("pivot-scene", "About the middle of the model"),
    MakeLanguageCommand<0>("language-system", "As the system"),
    MakeLanguageCommand<1>("language-en", "English"),
    MakeLanguageCommand<2>("language-de", "Deutsch"),
    MakeLanguageCommand<3>("language-fr", "Français"),
    MakeLanguageCommand<4>("language-es", "Español"),
    MakeLanguageCommand<5>("language-pl", "Polski"),
    MakeLanguageCommand<6>("language-ar", "العربية"),
    MakeLanguageCommand<7>("language-ja", "日本語"),
    MakeLanguageCommand<8>("language-zh", "简体中文"),
    {Nowhere, "redo-by-shift", "Redo", "Ctrl+Shift+Z", SDLK_z, RedoEdit, nullptr, CONTROL | SHIFT},
    {Nowhere, "stop-story", "Stop", "", SDLK_UNKNOWN, StopStory},
    {Nowhere, "level", "Level the view", "", SDLK_UNKNOWN, LevelView},
    {Nowhere, "disc-help", "Help", "", SDLK_UNKNOWN, ShowDiscHelp},
    {Nowhere, "close-disc", "Close the disc", "", SDLK_UNKNOWN, CloseDisc},
    {Nowhere, "dismiss", "Cancel, close the disc, select nothing", "Esc", SDLK_ESCAPE, Dismiss},
    {Nowhere, "clear-selection", "Clear the selection", "", SDLK_UNKNOWN, ClearSelection},
};

// Further keys: those of the number pad lie as the sides of a building do.
constexpr OtherKey OTHER_KEYS[] = {
    {SDLK_KP_1, 0, "Pad 1", "front"},
    {SDLK_KP_1, CONTROL, "Ctrl+Pad 1", "back"},
    {SDLK_KP_3, 0, "Pad 3", "right"},
    {SDLK_KP_3, CONTROL, "Ctrl+Pad 3", "left"},
    {SDLK_KP_7, 0, "Pad 7", "top"},
    {SDLK_KP_7, CONTROL, "Ctrl+Pad 7", "bottom"},
    {SDLK_KP_9, 0, "Pad 9", "isometric"},
    {SDLK_KP_5, 0, "Pad 5", "toggle-projection"},
    {SDLK_KP_0, 0, "Pad 0", "home"},
    {SDLK_KP_PERIOD, 0, "Pad .", "fit-selection"},
    {SDLK_KP_MULTIPLY, 0, "Pad *", "fit-all"},
};

constexpr std::string_view FROM_REST[] = {
    "next-view", "fit-all",        "fit-selection", "toggle-projection", "perspective", "parallel",
    "level",     "parallel-faces", "make-home",     "up-of-model",       "up-y",        "up-z",
};

// From where the directions add up to.
void Show(const ViewTarget& target,
          std::initializer_list<ViewAlignShotParameters::CameraDirection> directions) {
  ViewAlignShotParameters align;
  for (const auto direction : directions) align.directionFlags[direction] = true;
  align.duration = TRAVEL_SECONDS;
  align.fit = true;
  align.keepSceneUp = true;
  Travel(target, [&align](Korvane::CameraOperations& hub) { return hub.BeginShot(align); });
}

void Toggle(zovhost::ViewHub& hub, bool& setting) {
  setting = !setting;
  hub.RequestApplicationUpdate();
}

template <class Match>
const ViewCommand* Find(Match match) {
  const auto* const found = std::find_if(std::begin(COMMANDS), std::end(COMMANDS), match);
  return found != std::end(COMMANDS) ? found : nullptr;
}

}  // namespace

std::span<const ViewCommand> GetViewCommands() { return COMMANDS; }
std::span<const OtherKey> GetOtherKeys() { return OTHER_KEYS; }

const zovhost::NavigationStyle& GetNavigationStyle(const ViewTarget& target) {
  const Preferences* const chosen = target.preferences;
  return zovhost::FindNavigationStyle(chosen != nullptr ? chosen->Get().navigationStyle : std::string_view());
}

bool StartsFromRest(const ViewCommand& command) {
  return std::find(std::begin(FROM_REST), std::end(FROM_REST), command.name) != std::end(FROM_REST);
}

const ViewCommand* FindViewCommand(SDL_Keycode key, unsigned modifiers) {
  if (key == SDLK_UNKNOWN) return nullptr;
  const bool ofFunction = key >= SDLK_F1 && key <= SDLK_F12;  // others use such a one with Shift
  for (const unsigned held : {modifiers, ofFunction ? modifiers : modifiers & ~SHIFT}) {
    const ViewCommand* const found =
        Find([=](const ViewCommand& command) { return command.key == key && command.modifiers == held; });
    if (found != nullptr) return found;
  }
  const auto* const other =
      std::find_if(std::begin(OTHER_KEYS), std::end(OTHER_KEYS),
                   [=](const OtherKey& each) { return each.key == key && each.modifiers == modifiers; });
  return other != std::end(OTHER_KEYS) ? FindViewCommand(other->command) : nullptr;
}

const ViewCommand* FindViewCommand(std::string_view name) {
  return Find([name](const ViewCommand& command) { return command.name == name; });
}

// ---- views ----

void GoHome(const ViewTarget& target) {
  Korvane::TransitionShotParameters transition;
  transition.targetCamera = target.hub.GetHomeCamera();
  transition.targetCamera.projection_type = target.hub.GetView().projection_type;
  transition.easeEnd = 1.0;
  transition.duration = TRAVEL_SECONDS;
  Travel(target, [&transition](Korvane::CameraOperations& hub) { return hub.BeginShot(transition); });
}

void FitAll(const ViewTarget& target) {
  target.hub.EndShot();
  target.manager.FitAllToView();
}
void FitSelection(const ViewTarget& target) {
  target.hub.EndShot();
  target.manager.FitSelectionToView();
}
void LevelView(const ViewTarget& target) {
  target.hub.EndShot();
  target.manager.LevelCamera();
}

bool Travel(const ViewTarget& target, const std::function<bool(Korvane::CameraOperations&)>& begin) {
  target.hub.EndShot();
  return target.manager.MoveCamera(begin);
}

void ShowFront(const ViewTarget& target) { Show(target, {ViewAlignShotParameters::CAMERA_FRONT}); }
void ShowBack(const ViewTarget& target) { Show(target, {ViewAlignShotParameters::CAMERA_BACK}); }
void ShowLeft(const ViewTarget& target) { Show(target, {ViewAlignShotParameters::CAMERA_SIDE}); }
void ShowRight(const ViewTarget& target) { Show(target, {ViewAlignShotParameters::CAMERA_OPPOSITE_SIDE}); }
void ShowTop(const ViewTarget& target) { Show(target, {ViewAlignShotParameters::CAMERA_TOP}); }
void ShowBottom(const ViewTarget& target) { Show(target, {ViewAlignShotParameters::CAMERA_BOTTOM}); }
void ShowIsometric(const ViewTarget& target) {
  Show(target, {ViewAlignShotParameters::CAMERA_FRONT, ViewAlignShotParameters::CAMERA_OPPOSITE_SIDE,
                ViewAlignShotParameters::CAMERA_TOP});
}

// ---- settings ----

void ClearSelection(const ViewTarget& target) { target.selection.Clear(); }

void ToggleProjection(const ViewTarget& target) {
  SetOrthographic(target, !target.hub.GetView().IsOrthographic());
}

void ToggleSnapping(const ViewTarget& target) {
  Toggle(target.hub, target.hub.GetApplicationParameters().do_snap_orbit);
}

void ToggleKeepUp(const ViewTarget& target) {
  Toggle(target.hub, target.hub.GetApplicationParameters().preserve_orbit_up_direction);
  target.disc.GetParameters().keepSceneUpright = KeepsUp(target);
}

// ---- moves to a place of the view ----

bool CentreOnPixel(const ViewTarget& target, int x, int y) {
  const zovhost::Scene* const scene = target.selection.GetScene();
  zovhost::Scene::Hit hit;
  if (scene == nullptr || !FindHit(target.hub, *scene, x, y, hit)) return false;
  target.hub.EndShot();
  return target.manager.RestoreCenter(hit.point);
}

}  // namespace zovview
