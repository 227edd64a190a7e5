#include "zovhost/bcf_file.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <chrono>
#include <ctime>
#include <map>
#include <sstream>
#include <utility>

#include "views/bcf_schema.h"
#include "views/zip_archive.h"
#include "zovhost/named_views.h"
#include "zovhost/whole_file.h"

namespace zovhost {

namespace fs = std::filesystem;

namespace {

constexpr const char* VIEWPOINT_EXTENSION = ".bcfv";
constexpr const char* MARKUP_NAME = "markup.bcf";
constexpr const char* VIEWPOINT_NAME = "viewpoint.bcfv";
constexpr const char* SNAPSHOT_NAME = "snapshot.png";
constexpr const char* AUTHOR = "zovtools";
constexpr const char* TOPIC_TYPE = "View";
constexpr const char* TOPIC_STATUS = "Open";
constexpr const char* UNTITLED = "View";
constexpr const char* VERSION_TEXT =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Version VersionId=\"3.0\"/>\n";

std::string GetExtension(const fs::path& file) {
  std::string extension = file.extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
  return extension;
}

std::string ToText(const fs::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

// The folder of a file in an archive, with the stroke behind it.
std::string FolderOf(const std::string& name) { return name.substr(0, name.rfind('/') + 1); }

// On one line whatever it holds.
std::string Quote(std::string name) {
  std::replace_if(
      name.begin(), name.end(), [](char byte) { return byte < ' ' || byte > '~'; }, '?');
  return name;
}

// ---- reading ----

// Empty for a markup that is broken: its views are not.
std::string ReadTitle(std::string_view markup) {
  pugi::xml_document document;
  std::string ignored;
  if (!LoadXml(markup, document, ignored)) return {};
  const auto child = [](const pugi::xml_node& node, std::string_view name) {
    return node.find_child([name](const pugi::xml_node& each) { return LocalName(each.name()) == name; });
  };
  return child(child(document.document_element(), "Topic"), "Title").child_value();
}

class ContainerReader {
 public:
  ContainerReader(const ZipReader& opened, std::string& reason) : archive(opened), error(reason) {}

  bool Read(std::vector<BcfView>& views) {
    if (archive.GetCount() > MOST_BCF_FILES) return Refuse("it holds too many files");
    for (std::size_t i = 0; i < archive.GetCount(); ++i) {
      const std::string name = archive.GetName(i);
      if (fs::path(name).filename() == MARKUP_NAME && !ReadMarkup(i, name)) return false;
    }
    for (std::size_t i = 0; i < archive.GetCount(); ++i) {
      const std::string name = archive.GetName(i);
      if (GetExtension(name) == VIEWPOINT_EXTENSION && !ReadViewpoint(i, name, views)) return false;
    }
    return !views.empty() || Refuse("there is no viewpoint with a camera in it");
  }

 private:
  bool Refuse(const std::string& wrong) {
    error = wrong;
    return false;
  }

  bool ReadBytes(std::size_t index, const std::string& name, std::string& bytes) {
    if (!archive.Read(index, left, bytes, error)) return Refuse(Quote(name) + ": " + error);
    left -= bytes.size();
    return true;
  }

  bool ReadMarkup(std::size_t index, const std::string& name) {
    std::string bytes;
    if (!ReadBytes(index, name, bytes)) return false;
    titles[FolderOf(name)] = ReadTitle(bytes);
    return true;
  }

  bool ReadViewpoint(std::size_t index, const std::string& name, std::vector<BcfView>& views) {
    std::string bytes;
    BcfView view;
    if (!ReadBytes(index, name, bytes)) return false;
    if (!ParseBcfViewpoint(bytes, view.viewpoint, error)) return Refuse(Quote(name) + ": " + error);
    if (view.viewpoint.camera == BcfViewpoint::Camera::None) return true;
    view.name = titles[FolderOf(name)];
    views.push_back(std::move(view));
    return true;
  }

  const ZipReader& archive;
  std::string& error;
  std::map<std::string, std::string> titles;  // by folder
  std::size_t left = MOST_BCF_TEXT;           // bytes that may yet be read
};

bool ReadOne(const std::string& bytes, const fs::path& file, std::vector<BcfView>& views,
             std::string& error) {
  BcfView view;
  view.name = ToText(file.stem());
  if (!ParseBcfViewpoint(bytes, view.viewpoint, error)) return false;
  if (view.viewpoint.camera == BcfViewpoint::Camera::None) {
    error = "there is no camera in it";
    return false;
  }
  views = {view};
  return true;
}

// ---- writing ----

// Of now, in UTC, as xs:dateTime has it.
std::string FormatDate() {
  const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
  std::tm parts{};
#if defined(_WIN32)
  gmtime_s(&parts, &now);
#else
  gmtime_r(&now, &parts);
#endif
  std::array<char, 32> text{};
  std::strftime(text.data(), text.size(), "%Y-%m-%dT%H:%M:%SZ", &parts);
  return text.data();
}

std::string Print(const pugi::xml_document& document) {
  std::ostringstream text;
  document.save(text, "  ");
  return text.str();
}

void PutText(pugi::xml_node owner, const char* name, const std::string& text) {
  owner.append_child(name).text().set(text.c_str());
}

// The types and states that the topics have.
std::string FormatExtensions() {
  pugi::xml_document document;
  pugi::xml_node root = document.append_child("Extensions");
  PutText(root.append_child("TopicTypes"), "TopicType", TOPIC_TYPE);
  PutText(root.append_child("TopicStatuses"), "TopicStatus", TOPIC_STATUS);
  return Print(document);
}

std::string FormatMarkup(const BcfView& view, const std::string& topic, const std::string& author,
                         const std::string& date) {
  pugi::xml_document document;
  pugi::xml_node of = document.append_child("Markup").append_child("Topic");
  of.append_attribute("Guid") = topic.c_str();
  of.append_attribute("TopicType") = TOPIC_TYPE;
  of.append_attribute("TopicStatus") = TOPIC_STATUS;
  PutText(of, "Title", view.name.empty() ? UNTITLED : view.name);
  PutText(of, "CreationDate", date);
  PutText(of, "CreationAuthor", author);
  pugi::xml_node viewpoint = of.append_child("Viewpoints").append_child("ViewPoint");
  viewpoint.append_attribute("Guid") = view.viewpoint.guid.c_str();
  PutText(viewpoint, "Viewpoint", VIEWPOINT_NAME);
  if (!view.snapshot.empty()) PutText(viewpoint, "Snapshot", SNAPSHOT_NAME);
  return Print(document);
}

BcfView WithGuid(BcfView view) {
  if (view.viewpoint.guid.empty()) view.viewpoint.guid = MakeGuid();
  return view;
}

bool FormatOne(const std::vector<BcfView>& views, std::string& bytes, std::string& error) {
  if (views.size() == 1) return FormatBcfViewpoint(WithGuid(views.front()).viewpoint, bytes, error);
  error = "one viewpoint takes one view, not " + std::to_string(views.size());
  return false;
}

}  // namespace

bool IsBcfContainer(const fs::path& file) {
  const std::string extension = GetExtension(file);
  return extension == ".bcf" || extension == ".bcfzip";
}

bool IsBcfFile(const fs::path& file) {
  return IsBcfContainer(file) || GetExtension(file) == VIEWPOINT_EXTENSION;
}

bool ParseBcfContainer(std::string_view bytes, std::vector<BcfView>& views, std::string& error) {
  const std::unique_ptr<ZipReader> archive = ZipReader::Open(bytes, error);
  std::vector<BcfView> read;
  if (archive == nullptr || !ContainerReader(*archive, error).Read(read)) return false;
  views = std::move(read);
  return true;
}

bool FormatBcfContainer(const std::vector<BcfView>& views, std::string_view author, std::string& bytes,
                        std::string& error) {
  const std::string date = FormatDate();
  std::vector<ZipEntry> entries = {{"bcf.version", VERSION_TEXT}, {"extensions.xml", FormatExtensions()}};
  for (const BcfView& each : views) {
    const BcfView view = WithGuid(each);
    const std::string topic = MakeGuid();
    std::string viewpoint;
    if (!FormatBcfViewpoint(view.viewpoint, viewpoint, error)) {
      error.insert(0, Quote(view.name) + ": ");
      return false;
    }
    entries.push_back({topic + "/" + MARKUP_NAME, FormatMarkup(view, topic, std::string(author), date)});
    entries.push_back({topic + "/" + VIEWPOINT_NAME, std::move(viewpoint)});
    if (!view.snapshot.empty()) entries.push_back({topic + "/" + SNAPSHOT_NAME, view.snapshot, false});
  }
  return WriteZip(entries, bytes, error);
}

bool ReadBcfFile(const fs::path& file, std::vector<BcfView>& views, std::string& error) {
  const bool isContainer = IsBcfContainer(file);
  std::string bytes;
  if (!ReadWholeFile(file, isContainer ? LARGEST_BCF_CONTAINER : LARGEST_BCF_VIEWPOINT, bytes, error)) {
    return false;
  }
  const bool good = isContainer ? ParseBcfContainer(bytes, views, error) : ReadOne(bytes, file, views, error);
  if (!good) error.insert(0, file.string() + ": ");
  return good;
}

bool WriteBcfFile(const fs::path& file, const std::vector<BcfView>& views, std::string& error) {
  std::string bytes;
  const bool good =
      IsBcfContainer(file) ? FormatBcfContainer(views, AUTHOR, bytes, error) : FormatOne(views, bytes, error);
  if (!good) {
    error.insert(0, file.string() + ": ");
    return false;
  }
  WholeFile output(file);
  output.Write(bytes.data(), bytes.size());
  return output.Finish(error);
}

}  // namespace zovhost
