#include "story_desk.h"

#include <imgui.h>
#include <imgui_stdlib.h>

#include <array>
#include <cfloat>
#include <system_error>
#include <utility>

#include "view_story.h"

namespace zovview {

namespace fs = std::filesystem;

namespace {

constexpr float WIDTH = 440.0F;  // points
constexpr const char* POPUP = "##story";
constexpr const char* FILE_NAME = "story.json";
constexpr const char* FOLDER_NAME = "story-film";
const ImVec2 BUTTON(110.0F, 0.0F);

struct Rate {
  const char* name;
  int picturesPerSecond;
};
constexpr std::array<Rate, 4> RATES = {
    {{"6 a second", 6}, {"12 a second", 12}, {"30 a second", 30}, {"60 a second", 60}}};

struct Size {
  const char* name;
  int width;
  int height;
};
constexpr std::array<Size, 4> SIZES = {{{"1280 x 800", 1280, 800},
                                        {"1280 x 720", 1280, 720},
                                        {"1920 x 1080", 1920, 1080},
                                        {"640 x 400", 640, 400}}};

template <class Row, std::size_t COUNT>
void Choose(const char* label, const std::array<Row, COUNT>& rows, int& row) {
  const auto at = static_cast<std::size_t>(row);
  if (!ImGui::BeginCombo(label, rows[at].name)) return;
  for (std::size_t i = 0; i < COUNT; ++i) {
    if (ImGui::Selectable(rows[i].name, i == at)) row = static_cast<int>(i);
  }
  ImGui::EndCombo();
}

// Texts of the panels are UTF-8 on every system.
fs::path ToPath(const std::string& text) { return fs::path(std::u8string(text.begin(), text.end())); }
std::string ToText(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
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
      return Guard(of, [this] { Show(Page::Opening, SuggestFile()); });
    case StoryRequest::Save:
      if (of.GetPath().empty()) return Show(Page::Saving, SuggestFile());
      if (!Save(of.GetPath())) surroundings.tell(problem);
      return;
    case StoryRequest::SaveAs:
      return Show(Page::Saving, SuggestFile());
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
  Guard(of, [this, file] {
    Read(file);
    if (!problem.empty()) surroundings.tell(problem);
  });
}

void StoryDesk::AskForFile(FileQuestion wanted) {
  if (IsOpen()) return;
  question = std::move(wanted);
  Show(Page::File, ToText(question.suggestion));
}

// ---- what is answered ----

void StoryDesk::Confirm() {
  switch (page) {
    case Page::None:
    case Page::Exporting:
      return;
    case Page::Losing:
      if (story->GetPath().empty()) return Show(Page::Saving, SuggestFile());
      if (Save(story->GetPath())) Finish();
      return;
    case Page::Opening:
      Read(ToPath(path));
      if (problem.empty()) Finish();
      return;
    case Page::Saving:
      if (Save(ToPath(path))) Finish();
      return;
    case Page::Export:
      return BeginExport();
    case Page::File:
      problem.clear();
      if (question.take(ToPath(path), problem)) Finish();
      return;
  }
}

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
  problem.clear();
  if (!suggestion.empty()) path = suggestion;
  surroundings.requestFrame();
}

// What comes next may ask something itself.
void StoryDesk::Finish() {
  Show(Page::None);
  if (const std::function<void()> action = std::exchange(then, nullptr)) action();
}

bool StoryDesk::Save(const fs::path& file) {
  problem.clear();
  return story->Write(file, problem);
}

void StoryDesk::Read(const fs::path& file) {
  problem.clear();
  if (!story->Read(file, problem)) return;
  story->Show(true);
  surroundings.opened(file);
}

std::string StoryDesk::SuggestFile() const {
  const fs::path& kept = story->GetPath();
  return ToText(kept.empty() ? surroundings.findFolder() / FILE_NAME : kept);
}

// ---- the export ----

void StoryDesk::BeginExport() {
  StoryExport::Options options;
  const Size& wanted = SIZES[static_cast<std::size_t>(size)];
  options.directory = ToPath(path);
  options.film = {wanted.width, wanted.height, RATES[static_cast<std::size_t>(rate)].picturesPerSecond};
  problem.clear();
  exported = surroundings.beginExport(*story->GetBoard().GetStory(), options, problem);
  if (exported != nullptr) Show(Page::Exporting);
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
  ImGui::SetNextWindowPos(ImVec2(screen.x * 0.5F, screen.y * 0.4F), ImGuiCond_Always, ImVec2(0.5F, 0.5F));
  ImGui::SetNextWindowSize(ImVec2(WIDTH, 0.0F));
  constexpr ImGuiWindowFlags STYLE = ImGuiWindowFlags_NoTitleBar | ImGuiWindowFlags_NoResize |
                                     ImGuiWindowFlags_NoMove | ImGuiWindowFlags_NoSavedSettings;
  if (!ImGui::BeginPopupModal(POPUP, nullptr, STYLE)) return;
  DrawPage();
  if (!problem.empty()) ImGui::TextWrapped("%s", problem.c_str());
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
    case Page::Opening:
      return DrawFile("Open the story", "Open", {});
    case Page::Saving:
      return DrawFile("Save the story as", "Save", story->GetPath());
    case Page::File:
      return DrawFile(question.text, question.button, {});
    case Page::Export:
      return DrawExport();
    case Page::Exporting:
      return DrawExporting();
  }
}

void StoryDesk::DrawLosing() {
  ImGui::TextWrapped("The story has changes that are in no file.");
  if (ImGui::Button("Save", BUTTON)) return Confirm();
  ImGui::SameLine();
  if (ImGui::Button("Lose them", BUTTON)) return Drop();
  ImGui::SameLine();
  if (ImGui::Button("Cancel", BUTTON)) Cancel();
}

// What is `present` may be written over without a word.
void StoryDesk::DrawFile(const char* text, const char* button, const fs::path& present) {
  const bool saves = page == Page::Saving || (page == Page::File && question.saves);
  ImGui::TextUnformatted(text);
  if (ImGui::IsWindowAppearing()) ImGui::SetKeyboardFocusHere();
  ImGui::SetNextItemWidth(-FLT_MIN);
  bool confirmed = ImGui::InputText("##path", &path, ImGuiInputTextFlags_EnterReturnsTrue);
  std::error_code ignored;
  if (saves && ToPath(path) != present && fs::exists(ToPath(path), ignored)) {
    ImGui::TextDisabled("There is such a file: it will be replaced.");
  }
  confirmed = ImGui::Button(button, BUTTON) || confirmed;
  ImGui::SameLine();
  if (ImGui::Button("Cancel", BUTTON)) return Cancel();
  if (confirmed) Confirm();
}

void StoryDesk::DrawExport() {
  ImGui::TextUnformatted("Export pictures and an animation into the folder");
  ImGui::SetNextItemWidth(-FLT_MIN);
  ImGui::InputText("##folder", &path);
  Choose("pictures", RATES, rate);
  Choose("pixels", SIZES, size);
  if (ImGui::Button("Export", BUTTON)) return Confirm();
  ImGui::SameLine();
  if (ImGui::Button("Cancel", BUTTON)) Cancel();
}

void StoryDesk::DrawExporting() {
  ImGui::TextUnformatted("The story is exported");
  ImGui::ProgressBar(exported != nullptr ? static_cast<float>(exported->GetProgress()) : 1.0F,
                     ImVec2(-FLT_MIN, 0.0F), "");
  if (ImGui::Button("Cancel", BUTTON)) Cancel();
}

}  // namespace zovview
