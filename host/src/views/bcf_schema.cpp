#include "views/bcf_schema.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <span>

namespace zovhost {

namespace {

constexpr int ANY_NUMBER = 1 << 30;
constexpr const char* BLANKS = " \t\r\n";

struct Member;

// Elements in an order, a number, or whatever else.
struct Kind {
  enum class Content : int { Anything, Number, Members };
  Content content;
  std::span<const Member> members = {};
};

struct Member {
  const char* name;
  const Kind& kind;
  int least = 1;
  int most = 1;
};

constexpr Kind ANYTHING = {Kind::Content::Anything};
constexpr Kind NUMBER = {Kind::Content::Number};

constexpr Member VECTOR_MEMBERS[] = {{"X", NUMBER}, {"Y", NUMBER}, {"Z", NUMBER}};
constexpr Kind VECTOR = {Kind::Content::Members, VECTOR_MEMBERS};

constexpr Member PERSPECTIVE_MEMBERS[] = {{"CameraViewPoint", VECTOR},
                                          {"CameraDirection", VECTOR},
                                          {"CameraUpVector", VECTOR},
                                          {"FieldOfView", NUMBER},
                                          {"AspectRatio", NUMBER, 0}};
constexpr Kind PERSPECTIVE = {Kind::Content::Members, PERSPECTIVE_MEMBERS};

constexpr Member ORTHOGONAL_MEMBERS[] = {{"CameraViewPoint", VECTOR},
                                         {"CameraDirection", VECTOR},
                                         {"CameraUpVector", VECTOR},
                                         {"ViewToWorldScale", NUMBER},
                                         {"AspectRatio", NUMBER, 0}};
constexpr Kind ORTHOGONAL = {Kind::Content::Members, ORTHOGONAL_MEMBERS};

constexpr Member LINE_MEMBERS[] = {{"StartPoint", VECTOR}, {"EndPoint", VECTOR}};
constexpr Kind LINE = {Kind::Content::Members, LINE_MEMBERS};
constexpr Member LINES_MEMBERS[] = {{"Line", LINE, 0, ANY_NUMBER}};
constexpr Kind LINES = {Kind::Content::Members, LINES_MEMBERS};

constexpr Member PLANE_MEMBERS[] = {{"Location", VECTOR}, {"Direction", VECTOR}};
constexpr Kind PLANE = {Kind::Content::Members, PLANE_MEMBERS};
constexpr Member PLANES_MEMBERS[] = {{"ClippingPlane", PLANE, 0, ANY_NUMBER}};
constexpr Kind PLANES = {Kind::Content::Members, PLANES_MEMBERS};

// Version 2.1 has each bitmap here, the others have them in one element or several.
constexpr Member ROOT_MEMBERS[] = {{"Components", ANYTHING, 0},           {"OrthogonalCamera", ORTHOGONAL, 0},
                                   {"PerspectiveCamera", PERSPECTIVE, 0}, {"Lines", LINES, 0},
                                   {"ClippingPlanes", PLANES, 0},         {"Bitmap", ANYTHING, 0, ANY_NUMBER},
                                   {"Bitmaps", ANYTHING, 0, ANY_NUMBER}};
constexpr Kind ROOT = {Kind::Content::Members, ROOT_MEMBERS};
constexpr const char* ROOT_NAME = "VisualizationInfo";

bool Refuse(const std::string& at, const std::string& wrong, std::string& error) {
  error = at + ": " + wrong;
  return false;
}

// On one line whatever it holds, and short.
std::string Quote(std::string_view name) {
  constexpr std::size_t LONGEST = 40;
  std::string quoted = "\"" + std::string(name.substr(0, LONGEST)) + "\"";
  std::replace_if(
      quoted.begin(), quoted.end(), [](char byte) { return byte < ' ' || byte > '~'; }, '?');
  return quoted;
}

bool IsText(const pugi::xml_node& node) {
  return node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata;
}

class Checker {
 public:
  explicit Checker(std::string& reason) : error(reason) {}

  // No deeper than the tables.
  bool Check(const pugi::xml_node& node, const Kind& kind,
             const std::string& at) {  // NOLINT(misc-no-recursion)
    switch (kind.content) {
      case Kind::Content::Anything:
        return true;
      case Kind::Content::Number:
        return CheckNumber(node, at);
      case Kind::Content::Members:
        return CheckMembers(node, kind.members, at);
    }
    return true;
  }

 private:
  bool CheckNumber(const pugi::xml_node& node, const std::string& at) {
    double ignored = 0.0;
    const pugi::xml_node only = node.first_child();
    const bool isPlain = IsText(only) && !only.next_sibling();
    return (isPlain && ReadNumber(only.value(), ignored)) || Refuse(at, "it is no number", error);
  }

  // NOLINTNEXTLINE(misc-no-recursion)
  bool CheckMembers(const pugi::xml_node& node, std::span<const Member> members, const std::string& at) {
    auto member = members.begin();
    int count = 0;
    for (const pugi::xml_node& child : node.children()) {
      if (IsText(child)) return Refuse(at, "there is text where none belongs", error);
      if (child.type() != pugi::node_element) continue;
      const std::string_view name = LocalName(child.name());
      for (; member != members.end() && name != member->name; ++member, count = 0) {
        if (count < member->least) return RefuseMember(members, *member, name, at);
      }
      if (member == members.end()) return RefuseChild(members, name, at);
      const std::string below = at + "." + member->name;
      if (++count > member->most) return Refuse(below, "there are too many", error);
      if (!Check(child, member->kind, below)) return false;
    }
    for (; member != members.end(); ++member, count = 0) {
      if (count < member->least) return Refuse(at + "." + member->name, "it is missing", error);
    }
    return true;
  }

  static bool IsOneOf(std::span<const Member> members, std::string_view name) {
    return std::any_of(members.begin(), members.end(),
                       [name](const Member& each) { return name == each.name; });
  }

  // Something else stands in the place of a member that is needed.
  bool RefuseMember(std::span<const Member> members, const Member& wanted, std::string_view found,
                    const std::string& at) {
    if (!IsOneOf(members, found)) return RefuseChild(members, found, at);
    return Refuse(at + "." + wanted.name, "it is missing, or not in its place", error);
  }

  bool RefuseChild(std::span<const Member> members, std::string_view name, const std::string& at) {
    const bool isKnown = IsOneOf(members, name);
    return Refuse(at, Quote(name) + (isKnown ? " is not in its place" : " does not belong there"), error);
  }

  std::string& error;
};

bool CheckRootAttributes(const pugi::xml_node& root, std::string& error) {
  int guids = 0;
  for (const pugi::xml_attribute& attribute : root.attributes()) {
    const std::string_view name = attribute.name();
    const bool isOfXml = name.find(':') != std::string_view::npos || name == "xmlns";
    if (name == "Guid") ++guids;
    if (!isOfXml && name != "Guid") {
      return Refuse(ROOT_NAME, "the attribute " + Quote(name) + " does not belong there", error);
    }
  }
  return guids <= 1 || Refuse(ROOT_NAME, "the attribute \"Guid\" stands there twice", error);
}

}  // namespace

std::string_view LocalName(const char* name) {
  const std::string_view whole = name;
  return whole.substr(whole.rfind(':') + 1);
}

bool ReadNumber(const char* text, double& number) {
  std::string_view digits = text;
  digits.remove_prefix(std::min(digits.size(), digits.find_first_not_of(BLANKS)));
  digits = digits.substr(0, digits.find_last_not_of(BLANKS) + 1);
  const bool hasPlus = digits.size() > 1 && digits.front() == '+' && digits[1] != '-';
  if (hasPlus) digits.remove_prefix(1);
  const char* const end = digits.data() + digits.size();
  double read = 0.0;
  const auto [stop, failure] = std::from_chars(digits.data(), end, read);
  if (failure != std::errc() || stop != end || !std::isfinite(read)) return false;
  number = read;
  return true;
}

bool LoadXml(std::string_view text, pugi::xml_document& document, std::string& error) {
  const pugi::xml_parse_result result =
      document.load_buffer(text.data(), text.size(), pugi::parse_default | pugi::parse_doctype);
  if (result.status == pugi::status_out_of_memory) return Refuse("it", "there is no memory for it", error);
  if (!result) {
    const std::size_t end = std::min(text.size(), static_cast<std::size_t>(result.offset));
    const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(end), '\n');
    return Refuse("line " + std::to_string(line), "it is no XML", error);
  }
  int roots = 0;
  for (const pugi::xml_node& node : document.children()) {
    if (node.type() == pugi::node_doctype) {
      error = "it has a document type, which none of these files needs";
      return false;
    }
    if (node.type() == pugi::node_element) ++roots;
    if (IsText(node)) roots = ANY_NUMBER;
  }
  if (roots == 1) return true;
  error = "it is no XML: there is something beside its element";
  return false;
}

bool CheckVisualizationInfo(const pugi::xml_node& root, std::string& error) {
  if (LocalName(root.name()) != ROOT_NAME) {
    error = "it is no viewpoint, but " + Quote(LocalName(root.name()));
    return false;
  }
  return CheckRootAttributes(root, error) && Checker(error).Check(root, ROOT, ROOT_NAME);
}

}  // namespace zovhost
