#include "commands/command_icons.h"

#include <algorithm>
#include <iterator>
#include <string_view>

#include "commands/view_commands.h"
#include "korvane/resource_ids.h"
#include "zovhost/host_pictures.h"

namespace zovview {

using namespace zovhost;  // NOLINT(google-build-using-namespace): the names of its pictures

namespace {

struct CommandIcon {
  std::string_view command;
  int picture;
};

constexpr CommandIcon ICONS[] = {
    {"previous-view", HOST_PICTURE_PREVIOUS_VIEW},
    {"next-view", HOST_PICTURE_NEXT_VIEW},
    {"home", HOST_PICTURE_HOME},
    {"isometric", HOST_PICTURE_ISOMETRIC},
    {"fit-all", HOST_PICTURE_FIT},
    {"fit-selection", HOST_PICTURE_FIT_SELECTION},
    {"front", HOST_PICTURE_FRONT},
    {"back", HOST_PICTURE_BACK},
    {"left", HOST_PICTURE_LEFT},
    {"right", HOST_PICTURE_RIGHT},
    {"top", HOST_PICTURE_TOP},
    {"bottom", HOST_PICTURE_BOTTOM},
    {"orbit", HOST_PICTURE_ORBIT},
    {"pan", HOST_PICTURE_PAN},
    {"zoom", HOST_PICTURE_ZOOM},
    {"rectangle-zoom", HOST_PICTURE_RECTANGLE_ZOOM},
    {"look", HOST_PICTURE_LOOK},
    {"look-and-move", HOST_PICTURE_LOOK_MOVE},
    {"look-at-face", HOST_PICTURE_LOOK_AT},
    {"centre", HOST_PICTURE_CENTRE},
    {"walk", HOST_PICTURE_WALK},
    {"toggle-projection", HOST_PICTURE_PROJECTION},
    {"disc-view-object", Korvane::TEXTURE_BAR_VIEW_OBJECT},
    {"disc-tour-building", Korvane::TEXTURE_BAR_TOUR_BUILDING},
    {"disc-full-navigation", Korvane::TEXTURE_BAR_FULL_NAVIGATION},
    {"disc-2d", Korvane::TEXTURE_BAR_TWO_D},
    {"disc-mini-view-object", Korvane::TEXTURE_BAR_MINI_VIEW_OBJECT},
    {"disc-mini-tour-building", Korvane::TEXTURE_BAR_MINI_TOUR_BUILDING},
    {"disc-mini-full-navigation", Korvane::TEXTURE_BAR_MINI_FULL_NAVIGATION},
    {"keep-view", HOST_PICTURE_KEEP_VIEW},
    {"import-views", HOST_PICTURE_IMPORT},
    {"export-views", HOST_PICTURE_EXPORT},
    {"toggle-storyboard", Korvane::TEXTURE_BAR_STORYBOARD},
    {"play-story", HOST_PICTURE_PLAY},
    {"present-story", HOST_PICTURE_PRESENT},
    {"add-sequence", HOST_PICTURE_ADD_SEQUENCE},
    {"add-shot", HOST_PICTURE_ADD_SHOT},
    {"undo", HOST_PICTURE_UNDO},
    {"redo", HOST_PICTURE_REDO},
    {"toggle-loop", HOST_PICTURE_LOOP},
    {"new-story", HOST_PICTURE_NEW_FILE},
    {"open-story", HOST_PICTURE_OPEN_FILE},
    {"save-story", HOST_PICTURE_SAVE},
    {"save-story-as", HOST_PICTURE_SAVE_AS},
    {"export-story", HOST_PICTURE_EXPORT},
    {"device-object", HOST_PICTURE_DEVICE_OBJECT},
    {"device-walk", HOST_PICTURE_DEVICE_WALK},
    {"device-fly", HOST_PICTURE_DEVICE_FLY},
    {"device-pan", HOST_PICTURE_DEVICE_PAN},
    {"device-upright", HOST_PICTURE_UPRIGHT},
    {"device-rotation", HOST_PICTURE_ROTATION},
    {"device-translation", HOST_PICTURE_TRANSLATION},
    {"device-page", HOST_PICTURE_SETTINGS},
};

}  // namespace

int FindCommandIcon(const ViewCommand& command) {
  const auto* const found = std::ranges::find(ICONS, command.name, &CommandIcon::command);
  return found != std::end(ICONS) ? found->picture : -1;
}

std::vector<int> GetPanelIcons() {
  std::vector<int> pictures = {HOST_PICTURE_FOLD, HOST_PICTURE_UNFOLD};
  for (const CommandIcon& icon : ICONS) {
    if (std::ranges::find(pictures, icon.picture) == pictures.end()) pictures.push_back(icon.picture);
  }
  return pictures;
}

}  // namespace zovview
