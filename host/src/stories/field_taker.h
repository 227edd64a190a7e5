#pragma once

#include <optional>
#include <string>

#include "korvane/vector3.h"
#include "stories/story_fields.h"
#include "stories/story_text.h"

namespace zovhost {

/// Tells in `error` what is wrong; whoever it is within puts its own place before it. False.
bool RefuseField(const char* name, const char* wrong, std::string& error);
/// `good`, with `place` put before what is wrong unless it is.
bool Within(const std::string& place, bool good, std::string& error);

/// The known fields of an object of a file. What is taken is taken out of it, so that in the end it holds
/// what is not known. A field that is missing leaves its place as it was; one of a wrong kind is refused.
class FieldTaker {
 public:
  FieldTaker(Json& from, std::string& reason) : object(from), error(reason) {}

  /// False unless it is an object.
  bool IsObject();
  /// Takes the mark of the format and a version of it up to `newest`; `otherwise` is what is wrong with
  /// another file.
  bool TakeHead(const char* mark, int newest, const char* otherwise);
  bool Needs(const char* name);
  std::optional<Json> Take(const char* name);
  bool TakeNumber(const char* name, double& number);
  bool TakeSwitch(const char* name, bool& value);
  bool TakeText(const char* name, std::wstring& text);
  bool TakePoint(const char* name, Korvane::Vector3& point);

  template <class Object>
  bool TakeChoice(const Choice<Object>& choice, Object& into) {
    const std::optional<Json> value = Take(choice.name);
    for (int number = 0; value && number < choice.count; ++number) {
      if (*value != choice.names[number]) continue;
      choice.set(into, number);
      return true;
    }
    return !value || RefuseField(choice.name, "it is none of the names for it", error);
  }

 private:
  Json& object;
  std::string& error;
};

}  // namespace zovhost
