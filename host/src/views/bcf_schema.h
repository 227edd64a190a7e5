#pragma once

#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace zovhost {

/// The name without the prefix of its namespace.
std::string_view LocalName(const char* name);

/// Finite, and nothing else stands there but blanks around it.
bool ReadNumber(const char* text, double& number);

/// One element and nothing beside it but comments and instructions, and no document type. False puts one line
/// into `error`.
bool LoadXml(std::string_view text, pugi::xml_document& document, std::string& error);

/// By the rules of the schema of all versions together, but the attributes below the root. False puts one
/// line that begins with the path of the element into `error`.
bool CheckVisualizationInfo(const pugi::xml_node& root, std::string& error);

}  // namespace zovhost
