#include "zovhost/named_views_file.h"

#include <cstdint>
#include <optional>
#include <utility>

#include "stories/camera_fields.h"
#include "stories/field_taker.h"
#include "zovhost/whole_file.h"
#include "zovhost/wide_text.h"

namespace zovhost {

namespace fs = std::filesystem;

namespace {

constexpr const char* VIEWS_MARK = "zovtools views";
constexpr int VIEWS_VERSION = 1;
constexpr const char* VIEWS_FIELD = "views";
constexpr const char* GUID_FIELD = "guid";
constexpr const char* EXTENSION = ".views.json";
constexpr const char* NO_MODEL = "generated-building";
constexpr int CAMERA_FIELD_DEPTH = 4;  // the file is 0 deep, its list 1, a view 2, a camera 3
constexpr std::size_t LARGEST_FILE = std::size_t{16} << 20;  // bytes

bool TakeName(FieldTaker& fields, const char* field, std::string& text) {
  std::wstring wide;
  if (!fields.TakeText(field, wide)) return false;
  text = WideToUtf8(wide);
  return true;
}

bool TakeView(Json& object, NamedViews& views, std::string& error) {
  FieldTaker fields(object, error);
  std::string name;
  std::string guid;
  Korvane::CameraParameters camera;
  if (!fields.IsObject() || !fields.Needs(field::NAME) || !TakeName(fields, field::NAME, name) ||
      !TakeName(fields, GUID_FIELD, guid) || !fields.Needs(field::CAMERA)) {
    return false;
  }
  Json ofCamera = *fields.Take(field::CAMERA);
  const bool good = TakeCamera(ofCamera, camera, error);
  if (!Within(std::string(".") + field::CAMERA, good, error)) return false;
  return views.Add(name, camera, guid).has_value() || RefuseField(field::CAMERA, "it shows nothing", error);
}

bool TakeViews(Json& list, NamedViews& views, std::string& error) {
  const auto refuse = [&error](const char* wrong) {
    error = std::string(VIEWS_FIELD) + ": " + wrong;
    return false;
  };
  if (!list.is_array()) return refuse("it is no list");
  if (list.size() > NamedViews::MOST) return refuse("there are too many");
  for (Json& object : list) {
    const std::string at = VIEWS_FIELD + ("[" + std::to_string(views.GetCount()) + "]");
    if (!Within(at, TakeView(object, views, error), error)) return false;
  }
  return true;
}

// The same for the same text on every machine.
std::uint64_t Hash(std::string_view text) {
  std::uint64_t hash = 0xCBF29CE484222325U;
  for (const char byte : text) hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3U;
  return hash;
}

fs::path Append(const fs::path& path, const std::string& text) {
  fs::path whole = path;
  whole += text;
  return whole;
}

bool IsThere(const fs::path& file) {
  std::error_code failure;
  return !file.empty() && fs::symlink_status(file, failure).type() != fs::file_type::not_found;
}

}  // namespace

// ---- texts ----

bool ParseNamedViews(std::string_view text, NamedViews& views, std::string& error) {
  Json file;
  if (!ParseJson(text, file, error)) return false;
  FieldTaker fields(file, error);
  if (!fields.TakeHead(VIEWS_MARK, VIEWS_VERSION, "it is no list of views")) return false;
  std::optional<Json> list = fields.Take(VIEWS_FIELD);
  if (!list) {
    error = std::string(VIEWS_FIELD) + ": it is missing";
    return false;
  }
  NamedViews read;
  if (!TakeViews(*list, read, error)) return false;
  views = std::move(read);
  return true;
}

std::string FormatNamedViews(const NamedViews& views) {
  OrderedJson file;
  file[field::FORMAT] = VIEWS_MARK;
  file[field::VERSION] = VIEWS_VERSION;
  OrderedJson& list = file[VIEWS_FIELD] = OrderedJson::array();
  std::string ignored;  // a camera that can be shown can be written
  for (const NamedView& view : views.Get()) {
    OrderedJson& object = list.emplace_back();
    object[field::NAME] = view.name;
    object[GUID_FIELD] = view.guid;
    PutCameraField(view.camera, object, ignored);
  }
  return PrintJson(file, CAMERA_FIELD_DEPTH);
}

// ---- files ----

namespace {

// What another program has added to the file since it was read or written here stays in it. False where the
// file is none that may be written over.
bool AddOthers(const fs::path& file, const NamedViews& former, NamedViews& views) {
  std::string ignored;
  std::string text;
  NamedViews present;
  if (!IsThere(file)) return true;
  if (!ReadWholeFile(file, LARGEST_FILE, text, ignored)) return false;
  if (!ParseNamedViews(text, present, ignored)) return false;
  for (const NamedView& view : present.Get()) {
    const bool known = former.FindGuid(view.guid).has_value() || views.FindGuid(view.guid).has_value();
    if (!known) views.Add(view.name, view.camera, view.guid);
  }
  return true;
}

}  // namespace

fs::path NamedViewsFile::FindPlaceBeside(const fs::path& model) {
  return model.empty() ? fs::path() : Append(model, EXTENSION);
}

fs::path NamedViewsFile::FindOwnPlace(const fs::path& model, const fs::path& ownFolder) {
  if (ownFolder.empty()) return {};
  if (model.empty()) return ownFolder / Append(NO_MODEL, EXTENSION);
  std::error_code failure;
  const fs::path whole = fs::absolute(model, failure).lexically_normal();
  return ownFolder / Append(model.filename(), "-" + std::to_string(Hash(whole.string())) + EXTENSION);
}

NamedViewsFile::NamedViewsFile(const fs::path& model, const fs::path& ownFolder)
    : beside(FindPlaceBeside(model)), own(FindOwnPlace(model, ownFolder)) {
  kept = FormatNamedViews({});
}

bool NamedViewsFile::Read(NamedViews& views, std::string& error) {
  views.Clear();
  closed = false;
  place = IsThere(own) ? own : IsThere(beside) ? beside : fs::path();
  kept = FormatNamedViews(views);
  if (place.empty()) return true;
  std::string text;
  closed = !ReadWholeFile(place, LARGEST_FILE, text, error);
  if (closed) return false;
  closed = !ParseNamedViews(text, views, error);
  if (closed) error.insert(0, place.string() + ": ");
  kept = FormatNamedViews(views);
  return !closed;
}

bool NamedViewsFile::Keep(const NamedViews& views, std::string& error) {
  std::string text = FormatNamedViews(views);
  if (text == kept || (beside.empty() && own.empty())) return true;
  NamedViews former;
  NamedViews written = views;
  const fs::path first = !place.empty() ? place : !beside.empty() ? beside : own;
  if (!closed && ParseNamedViews(kept, former, error) && !AddOthers(first, former, written)) {
    closed = true;
    place = first;
  }
  kept = std::move(text);
  if (closed && IsThere(place)) {
    error = place.string() + ": it stays as it is, so the views are not kept";
    return false;
  }
  closed = false;
  const std::string whole = FormatNamedViews(written);
  if (Write(first, whole, error)) return true;
  return first != own && !own.empty() && Write(own, whole, error);
}

bool NamedViewsFile::Write(const fs::path& to, const std::string& text, std::string& error) {
  std::error_code ignored;  // the file then tells what is wrong
  if (to == own) fs::create_directories(to.parent_path(), ignored);
  WholeFile file(to);
  file.Write(text.data(), text.size());
  if (!file.Finish(error)) return false;
  error.clear();
  place = to;
  return true;
}

}  // namespace zovhost
