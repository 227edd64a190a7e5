#include "stories/story_reader.h"

#include <cstddef>
#include <utility>

#include "stories/camera_fields.h"
#include "stories/field_taker.h"

namespace zovhost {

using Korvane::CameraParameters;
using Korvane::Sequence;
using Korvane::ShotSpecification;
using Korvane::Story;

namespace {

std::string PlaceOf(const char* list, std::size_t index) {
  return std::string(".") + list + "[" + std::to_string(index) + "]";
}

bool IsArray(const Json& list, const char* name, std::string& error) {
  return list.is_array() || RefuseField(name, "it is no list", error);
}

// What is left of it is in `unknown`.
bool TakeCameraField(FieldTaker& fields, CameraParameters& camera, Json& unknown, std::string& error) {
  if (!fields.Needs(field::CAMERA)) return false;
  unknown = *fields.Take(field::CAMERA);
  return Within(std::string(".") + field::CAMERA, TakeCamera(unknown, camera, error), error);
}

// ---- the file ----

class StoryReader {
 public:
  StoryReader(UnknownFields& kept, std::string& reason) : unknown(kept), error(reason) {}

  std::unique_ptr<Story> TakeStory(Json object) {
    auto story = std::make_unique<Story>();
    FieldTaker fields(object, error);
    std::wstring name;
    if (!fields.IsObject() || !fields.TakeText(field::NAME, name)) return nullptr;
    story->SetName(name);
    if (!TakeSequences(fields.Take(field::SEQUENCES), *story)) return nullptr;
    Keep(unknown.stories, *story, std::move(object));
    return story;
  }

 private:
  template <class Map, class Object>
  auto& Watch(Map& kept, Object& object) {
    auto& entry = kept[&object];
    entry.object.Set(&object);
    return entry;
  }

  template <class Map, class Object>
  void Keep(Map& kept, Object& object, Json&& fields) {
    if (!fields.empty()) Watch(kept, object).fields = std::move(fields);
  }

  bool TakeSequences(std::optional<Json> list, Story& story) {
    if (!list) return true;
    if (!IsArray(*list, field::SEQUENCES, error)) return false;
    if (list->size() > MOST_SEQUENCES) return RefuseField(field::SEQUENCES, "there are too many", error);
    for (Json& object : *list) {
      std::unique_ptr<Sequence> sequence = TakeSequence(object);
      if (!Within(PlaceOf(field::SEQUENCES, story.GetSequenceCount()), sequence != nullptr, error))
        return false;
      story.AddSequence(sequence.release());
    }
    return true;
  }

  std::unique_ptr<Sequence> TakeSequence(Json& object) {
    auto sequence = std::make_unique<Sequence>();
    FieldTaker fields(object, error);
    std::wstring name;
    if (!fields.IsObject() || !fields.TakeText(field::NAME, name)) return nullptr;
    sequence->SetName(name);
    if (!TakeShots(fields.Take(field::SHOTS), *sequence)) return nullptr;
    Keep(unknown.sequences, *sequence, std::move(object));
    return sequence;
  }

  bool TakeShots(std::optional<Json> list, Sequence& sequence) {
    if (!list) return true;
    if (!IsArray(*list, field::SHOTS, error)) return false;
    shotCount += list->size();
    if (shotCount > MOST_SHOTS) return RefuseField(field::SHOTS, "there are too many", error);
    for (Json& object : *list) {
      std::unique_ptr<ShotSpecification> shot = TakeShot(object);
      if (!Within(PlaceOf(field::SHOTS, sequence.GetShotCount()), shot != nullptr, error)) return false;
      sequence.AddShot(shot.release());
    }
    return true;
  }

  std::unique_ptr<ShotSpecification> TakeShot(Json& object) {
    FieldTaker fields(object, error);
    UnknownFields::OfShot left;
    CameraParameters camera;
    if (!fields.IsObject() || !TakeCameraField(fields, camera, left.camera, error)) return nullptr;
    auto shot = std::make_unique<ShotSpecification>(camera);
    if (!TakeMove(fields, *shot)) return nullptr;
    if (!TakeElements(fields.Take(field::RECORDED_ELEMENTS), *shot, left.elements)) return nullptr;
    if (object.empty() && left.camera.empty() && left.elements.empty()) return shot;
    UnknownFields::OfShot& entry = Watch(unknown.shots, *shot);
    entry.fields = std::move(object);
    entry.camera = std::move(left.camera);
    entry.elements = std::move(left.elements);
    return shot;
  }

  bool TakeMove(FieldTaker& fields, ShotSpecification& shot) {
    std::wstring name;
    bool looksAtCentre = shot.GetLookAtCenterOfInterest();
    if (!fields.TakeText(field::NAME, name)) return false;
    if (!fields.TakeSwitch(field::LOOK_AT_CENTRE, looksAtCentre)) return false;
    shot.SetName(name);
    shot.SetLookAtCenterOfInterest(looksAtCentre);
    for (const Choice<ShotSpecification>& choice : SHOT_CHOICES) {
      if (!fields.TakeChoice(choice, shot)) return false;
    }
    for (const ShotNumber& number : SHOT_NUMBERS) {
      double value = (shot.*number.get)();
      if (!fields.TakeNumber(number.name, value)) return false;
      (shot.*number.set)(value);
    }
    return true;
  }

  bool TakeElements(std::optional<Json> list, ShotSpecification& shot,
                    std::vector<UnknownFields::OfElement>& left) {
    if (!list) return true;
    if (!IsArray(*list, field::RECORDED_ELEMENTS, error)) return false;
    for (Json& object : *list) {
      UnknownFields::OfElement element;
      element.place = shot.GetRecordedElementCount();
      const bool good = TakeElement(object, element);
      if (!Within(PlaceOf(field::RECORDED_ELEMENTS, element.place), good, error)) return false;
      shot.AddRecordedElement(element.read);
      if (element.fields.empty() && element.camera.empty()) continue;
      left.push_back(std::move(element));
    }
    return true;
  }

  bool TakeElement(Json& object, UnknownFields::OfElement& element) {
    FieldTaker fields(object, error);
    const bool good = fields.IsObject() &&
                      TakeCameraField(fields, element.read.camera, element.camera, error) &&
                      fields.TakeNumber(field::TIME, element.read.time);
    element.fields = std::move(object);
    return good;
  }

  UnknownFields& unknown;
  std::string& error;
  std::size_t shotCount = 0;
};

}  // namespace

std::unique_ptr<Story> ReadStory(Json file, UnknownFields& unknown, std::string& error) {
  FieldTaker fields(file, error);
  if (!fields.TakeHead(FORMAT_MARK, FORMAT_VERSION, "it is no story")) return nullptr;
  std::optional<Json> object = fields.Take(field::STORY);
  if (!object) {
    error = "story: it is missing";
    return nullptr;
  }
  StoryReader reader(unknown, error);
  std::unique_ptr<Story> story = reader.TakeStory(std::move(*object));
  if (!Within(field::STORY, story != nullptr, error)) return nullptr;
  unknown.file = std::move(file);
  return story;
}

}  // namespace zovhost
