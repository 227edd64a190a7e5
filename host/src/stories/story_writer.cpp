#include "stories/story_writer.h"

#include <utility>

#include "stories/camera_fields.h"
#include "stories/field_taker.h"
#include "zovhost/wide_text.h"

namespace zovhost {

using Korvane::Sequence;
using Korvane::ShotSpecification;
using Korvane::Story;

namespace {

// None of them is there already, so none is looked for: there may be very many.
void Append(const Json& unknown, OrderedJson& object) {
  auto& members = object.get_ref<OrderedJson::object_t&>();
  for (const auto& [name, value] : unknown.items()) members.emplace_back(name, OrderedJson(value));
}

class StoryWriter {
 public:
  StoryWriter(const UnknownFields& kept, std::string& reason) : unknown(kept), error(reason) {}

  bool PutStory(const Story& story, OrderedJson& object) {
    object[field::NAME] = WideToUtf8(story.GetName());
    OrderedJson& list = object[field::SEQUENCES] = OrderedJson::array();
    if (story.GetSequenceCount() > MOST_SEQUENCES) {
      return RefuseField(field::SEQUENCES, "there are too many", error);
    }
    for (std::uint64_t i = 0; i < story.GetSequenceCount(); ++i) {
      const bool good = PutSequence(*story.GetSequence(i), list.emplace_back());
      if (!InList(field::SEQUENCES, i, good)) return false;
    }
    if (const auto* const kept = FindKept(unknown.stories, story)) Append(kept->fields, object);
    return true;
  }

 private:
  bool InList(const char* list, std::uint64_t index, bool good) {
    return Within(std::string(".") + list + "[" + std::to_string(index) + "]", good, error);
  }

  bool PutSequence(const Sequence& sequence, OrderedJson& object) {
    object[field::NAME] = WideToUtf8(sequence.GetName());
    OrderedJson& list = object[field::SHOTS] = OrderedJson::array();
    shotCount += sequence.GetShotCount();
    if (shotCount > MOST_SHOTS) return RefuseField(field::SHOTS, "there are too many", error);
    for (std::uint64_t i = 0; i < sequence.GetShotCount(); ++i) {
      if (!InList(field::SHOTS, i, PutShot(*sequence.GetShot(i), list.emplace_back()))) return false;
    }
    if (const auto* const kept = FindKept(unknown.sequences, sequence)) Append(kept->fields, object);
    return true;
  }

  bool PutShot(const ShotSpecification& shot, OrderedJson& object) {
    const UnknownFields::OfShot* const kept = FindKept(unknown.shots, shot);
    object[field::NAME] = WideToUtf8(shot.GetName());
    for (const Choice<ShotSpecification>& choice : SHOT_CHOICES) {
      if (!PutChoice(choice, shot, object, error)) return false;
    }
    for (const ShotNumber& number : SHOT_NUMBERS) object[number.name] = (shot.*number.get)();
    object[field::LOOK_AT_CENTRE] = shot.GetLookAtCenterOfInterest();
    if (!PutCameraField(shot.GetCameraParameters(), object, error)) return false;
    if (shot.GetRecordedElementCount() > 0 && !PutElements(shot, object[field::RECORDED_ELEMENTS])) {
      return false;
    }
    if (kept == nullptr) return true;
    Append(kept->camera, object[field::CAMERA]);
    AppendToElements(*kept, shot, object);
    Append(kept->fields, object);
    return true;
  }

  bool PutElements(const ShotSpecification& shot, OrderedJson& list) {
    for (std::uint64_t i = 0; i < shot.GetRecordedElementCount(); ++i) {
      const bool good = PutElement(shot.GetRecordedElement(i), list.emplace_back());
      if (!InList(field::RECORDED_ELEMENTS, i, good)) return false;
    }
    return true;
  }

  bool PutElement(const ShotSpecification::RecordedElement& element, OrderedJson& object) {
    object[field::TIME] = element.time;
    return PutCameraField(element.camera, object, error);
  }

  void AppendToElements(const UnknownFields::OfShot& kept, const ShotSpecification& shot,
                        OrderedJson& object) {
    for (const UnknownFields::OfElement& element : kept.elements) {
      OrderedJson asRead;
      if (element.place >= shot.GetRecordedElementCount() || !PutElement(element.read, asRead)) continue;
      OrderedJson& now = object[field::RECORDED_ELEMENTS][element.place];
      if (now != asRead) continue;
      Append(element.camera, now[field::CAMERA]);
      Append(element.fields, now);
    }
  }

  const UnknownFields& unknown;
  std::string& error;
  std::uint64_t shotCount = 0;
};

}  // namespace

bool WriteStory(const Story& story, const UnknownFields& unknown, OrderedJson& file, std::string& error) {
  file[field::FORMAT] = FORMAT_MARK;
  file[field::VERSION] = FORMAT_VERSION;
  StoryWriter writer(unknown, error);
  if (!Within(field::STORY, writer.PutStory(story, file[field::STORY]), error)) return false;
  Append(unknown.file, file);
  return true;
}

}  // namespace zovhost
