#include "stories/story_desk.h"

#include <imgui.h>

#include <algorithm>
#include <array>
#include <cfloat>
#include <system_error>
#include <utility>

#include "files/text_path.h"
#include "stories/view_story.h"
#include "zovhost/panel_texts.h"
#include "zovhost/phrases.h"
#include "zovhost/text_field.h"

namespace zovview {

namespace fs = std::filesystem;

namespace {

constexpr float LEAST_WIDTH = 440.0F;  // points
constexpr float LEAST_BUTTON = 110.0F;
constexpr std::array<const char*, 5> BUTTONS = {"Open", "Save", "Export", "Lose them", "Cancel"};
constexpr int BUTTONS_OF_LINE = 3;
constexpr std::array<const char*, 2> FIELDS = {"Pictures", "Pixels"};
constexpr const char* POPUP = "##story";
constexpr const char* FILE_NAME = "story.json";
constexpr const char* FOLDER_NAME = "story-film";

constexpr std::array<int, 4> RATES = {6, 12, 30, 60};  // pictures for a second

struct Size {
  int width;
  int height;
};
constexpr std::array<Size, 4> SIZES = {{{1280, 800}, {1280, 720}, {1920, 1080}, {640, 400}}};

std::string Describe(int rate) { return zovhost::Say("{} a second", {std::to_string(rate)}); }
std::string Describe(const Size& size) {
  return std::to_string(size.width) + " \u00d7 " + std::to_string(size.height);
}

template <class Row, std::size_t COUNT>
void Choose(const char* name, const std::array<Row, COUNT>& rows, int& row) {
  const auto at = static_cast<std::size_t>(row);
  zovhost::DrawFieldName(name, zovhost::FindFieldColumn(FIELDS, 0.0F));
  ImGui::PushID(name);
  const bool open = ImGui::BeginCombo("##row", Describe(rows[at]).c_str());
  if (!open) zovhost::NoteTabStop();
  for (std::size_t i = 0; open && i < COUNT; ++i) {
    if (ImGui::Selectable(Describe(rows[i]).c_str(), i == at)) row = static_cast<int>(i);
  }
  if (open) ImGui::EndCombo();
  ImGui::PopID();
}

ImVec2 GetButtonSize() {
  const float words = zovhost::MeasureWidest(BUTTONS) + 2.0F * ImGui::GetStyle().FramePadding.x;
  return ImVec2(std::max(LEAST_BUTTON, words), 0.0F);
}

float GetWidth() {
  const ImGuiStyle& style = ImGui::GetStyle();
  const float buttons = BUTTONS_OF_LINE * GetButtonSize().x + (BUTTONS_OF_LINE - 1) * style.ItemSpacing.x;
  return std::max(LEAST_WIDTH, buttons + 2.0F * style.WindowPadding.x);
}

// `first`: keys are on it when the question comes.
bool DrawButton(const char* name, bool first = false) {
  const bool pressed = ImGui::Button(zovhost::SayLabel(name), GetButtonSize());
  zovhost::NoteTabStop(first);
  return pressed;
}

// While the text has the keys.
enum class TypedEnd : int { None, Enter, Escape };

TypedEnd DrawPath(const char* id, std::string& path) {
  ImGui::SetNextItemWidth(-FLT_MIN);
  constexpr ImGuiInputTextFlags STYLE =
      ImGuiInputTextFlags_EnterReturnsTrue | ImGuiInputTextFlags_AutoSelectAll;
  const bool entered = zovhost::DrawTextField(id, path, STYLE);
  zovhost::NoteTabStop();
  if (entered) return TypedEnd::Enter;
  const bool escaped = ImGui::IsItemDeactivated() && ImGui::IsKeyPressed(ImGui::GetKeyIndex(ImGuiKey_Escape));
  return escaped ? TypedEnd::Escape : TypedEnd::None;
}

}  // namespace

bool IsStoryFile(const fs::path& file) { return file.extension() == ".json"; }

// ---- what is asked ----

void StoryDesk::Ask(StoryRequest request, ViewStory& of) {
  if (IsOpen()) return;
  story = &of;
  switch (request) {
    case StoryRequest::New:
      return Guard(of, [&of] { of.BeginEmpty(); });
    case StoryRequest::Open:
      return Guard(of, [this] { AskForStory(false); });
    case StoryRequest::Save:
      if (of.GetPath().empty()) return AskForStory(true);
      if (std::string error; !of.Write(of.GetPath(), error)) surroundings.tell(error);
      return;
    case StoryRequest::SaveAs:
      return AskForStory(true);
    case StoryRequest::Export:
      return Show(Page::Export, ToText(surroundings.findFolder() / FOLDER_NAME));
  }
}

void StoryDesk::Guard(ViewStory& of, std::function<void()> action) {
  if (IsOpen()) return;
  story = &of;
  then = std::move(action);
  if (of.IsChanged()) return Show(Page::Losing);
  Finish();
}

void StoryDesk::Open(const fs::path& file, ViewStory& of) {
  Guard(of, [this, file, &of] {
    if (std::string error; !Read(of, file, error)) surroundings.tell(error);
  });
}

// Whatever was to follow on it follows when the file is taken.
void StoryDesk::AskForStory(bool saves) {
  ViewStory& of = *story;
  FileQuestion wanted;
  wanted.text = saves ? "Save the story as" : "Open the story";
  wanted.button = saves ? "Save" : "Open";
  wanted.saves = saves;
  wanted.suggestion = of.GetPath().empty() ? surroundings.findFolder() / FILE_NAME : of.GetPath();
  if (saves) wanted.present = of.GetPath();
  wanted.take = [this, saves, &of](const fs::path& file, std::string& error) {
    return saves ? of.Write(file, error) : Read(of, file, error);
  };
  wanted.then = std::exchange(then, nullptr);
  Show(Page::None);
  if (!surroundings.askForFile) return AskForFile(std::move(wanted));
  surroundings.askForFile(std::move(wanted));
}

void StoryDesk::AskForFile(FileQuestion wanted) {
  if (IsOpen()) return;
  question = std::move(wanted);
  then = question.then;
  Show(Page::File, ToText(question.suggestion));
}

// ---- what is answered ----

void StoryDesk::Confirm() {
  switch (page) {
    case Page::None:
    case Page::Exporting:
      return;
    case Page::Losing:
      problem.clear();
      if (story->GetPath().empty()) return AskForStory(true);
      if (story->Write(story->GetPath(), problem)) Finish();
      return;
    case Page::Export:
      return BeginExport();
    case Page::File:
      return TakeFile();
  }
}

// Who gave one that will not do types another.
void StoryDesk::TakeFile() {
  problem.clear();
  if (question.take(FindTyped(), problem)) return Finish();
  focuses = true;
  surroundings.requestFrame();
}

// A name alone is one beside what was suggested.
fs::path StoryDesk::FindTyped() const { return question.suggestion.parent_path() / ToPath(path); }

void StoryDesk::Drop() {
  if (page == Page::Losing) Finish();
}

void StoryDesk::Cancel() {
  exported.reset();
  then = nullptr;
  Show(Page::None);
}

void StoryDesk::Show(Page next, const std::string& suggestion) {
  page = next;
  focuses = true;
  problem.clear();
  if (!suggestion.empty()) path = suggestion;
  surroundings.requestFrame();
}

// What comes next may ask something itself.
void StoryDesk::Finish() {
  Show(Page::None);
  if (const std::function<void()> action = std::exchange(then, nullptr)) action();
}

bool StoryDesk::Read(ViewStory& into, const fs::path& file, std::string& error) const {
  if (!into.Read(file, error)) return false;
  into.Show(true);
  surroundings.opened(file);
  return true;
}

// ---- the export ----

void StoryDesk::BeginExport() {
  StoryExport::Options options;
  const Size& wanted = SIZES[static_cast<std::size_t>(size)];
  options.directory = ToPath(path);
  options.film = {wanted.width, wanted.height, RATES[static_cast<std::size_t>(rate)]};
  problem.clear();
  exported = surroundings.beginExport(*story->GetBoard().GetStory(), options, problem);
  if (exported != nullptr) return Show(Page::Exporting);
  focuses = true;
  surroundings.requestFrame();
}

void StoryDesk::Advance() {
  if (exported == nullptr) return;
  surroundings.requestFrame();
  const StoryExport::State state = exported->TakeNext(problem);
  if (state == StoryExport::State::Going) return;
  surroundings.tell(state == StoryExport::State::Done ? exported->Describe() : problem);
  exported.reset();
  Finish();
}

// ---- drawing ----

void StoryDesk::Draw() {
  if (IsOpen() && !ImGui::IsPopupOpen(POPUP)) ImGui::OpenPopup(POPUP);
  const ImVec2 screen = ImGui::GetIO().DisplaySize;
  zovhost::PlaceNextPanel(screen.x * 0.5F, screen.y * 0.4F, 0.5F, 0.5F, true);
  ImGui::SetNextWindowSize(ImVec2(GetWidth(), 0.0F));
  constexpr ImGuiWindowFlags STYLE = ImGuiWindowFlags_NoTitleBar | ImGuiWindowFlags_NoResize |
                                     ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoSavedSettings;
  if (!ImGui::BeginPopupModal(POPUP, nullptr, STYLE)) return;
  DrawPage();
  if (!problem.empty())
    ImGui::TextWrapped("%s", zovhost::ToPanelText(zovhost::GetPhrases().TranslateLine(problem)).c_str());
  if (!IsOpen()) {
    ImGui::CloseCurrentPopup();
    surroundings.requestFrame();  // without it
  }
  ImGui::EndPopup();
}

void StoryDesk::DrawPage() {
  switch (page) {
    case Page::None:
      return;
    case Page::Losing:
      return DrawLosing();
    case Page::File:
      return DrawFile();
    case Page::Export:
      return DrawExport();
    case Page::Exporting:
      return DrawExporting();
  }
}

void StoryDesk::DrawLosing() {
  ImGui::TextWrapped("%s", zovhost::Say("The story has changes that are in no file."));
  if (DrawButton("Save", true)) return Confirm();
  ImGui::SameLine();
  if (DrawButton("Lose them")) return Drop();
  ImGui::SameLine();
  if (DrawButton("Cancel")) Cancel();
}

void StoryDesk::DrawFile() {
  ImGui::TextUnformatted(zovhost::Say(question.text));
  if (std::exchange(focuses, false)) ImGui::SetKeyboardFocusHere();
  const TypedEnd end = DrawPath("##path", path);
  std::error_code ignored;
  if (question.saves && FindTyped() != question.present && fs::exists(FindTyped(), ignored)) {
    ImGui::TextDisabled("%s", zovhost::Say("There is such a file: it will be replaced."));
  }
  const bool confirmed = DrawButton(question.button) || end == TypedEnd::Enter;
  ImGui::SameLine();
  if (DrawButton("Cancel") || end == TypedEnd::Escape) return Cancel();
  if (confirmed) Confirm();
}

void StoryDesk::DrawExport() {
  ImGui::TextUnformatted(zovhost::Say("Export pictures and an animation into the folder"));
  if (std::exchange(focuses, false)) ImGui::SetKeyboardFocusHere();
  const TypedEnd end = DrawPath("##folder", path);
  if (StoryExport::ReplacesFiles(ToPath(path))) {
    ImGui::TextDisabled("%s", zovhost::Say("There are files of a film: they will be replaced."));
  }
  Choose(FIELDS[0], RATES, rate);
  Choose(FIELDS[1], SIZES, size);
  const bool confirmed = DrawButton("Export") || end == TypedEnd::Enter;
  ImGui::SameLine();
  if (DrawButton("Cancel") || end == TypedEnd::Escape) return Cancel();
  if (confirmed) Confirm();
}

void StoryDesk::DrawExporting() {
  ImGui::TextUnformatted(zovhost::Say("The story is exported"));
  ImGui::ProgressBar(exported != nullptr ? static_cast<float>(exported->GetProgress()) : 1.0F,
                     ImVec2(-FLT_MIN, 0.0F), "");
  if (DrawButton("Cancel")) Cancel();
}

}  // namespace zovview
