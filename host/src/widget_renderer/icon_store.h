#pragma once

#include <epoxy/gl.h>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>

#include "korvane/icon2d.h"
#include "pictures/text_painter.h"

namespace zovhost {

/// What a label shows, to draw it again in another language or on another display.
struct LabelText {
  TextStyle style;
  std::string text;  // UTF-8
  std::string second;
  int textID = -1;  // of the pack, when it is one of its texts
  int secondID = -1;
};

/// A texture and its size in pixels; no texture when it could not be made.
struct LabelPicture {
  GLuint texture = 0;
  int width = 0;
  int height = 0;
};

/// The icons of texts and screenshots, with their pictures. An icon's number is its key, so copies of an
/// icon draw the same picture.
class IconStore {
 public:
  /// Takes the texture over. `width` and `height` in pixels.
  Korvane::DynamicIcon2D* Add(GLuint texture, int width, int height);
  /// The same for a text, which can be drawn again.
  Korvane::DynamicIcon2D* AddLabel(LabelText label, const LabelPicture& picture);
  using Draw = std::function<LabelPicture(LabelText& label)>;
  /// Draws each label again, for a display that has `growth` times the pixels. A widget that has given its
  /// icon a size of its own keeps that. What fails keeps its old picture.
  void RedrawLabels(const Draw& draw, double growth);
  /// From now on the icon is the caption of a small disc: see FindPlace. `gap` in pixels.
  void SetRiding(int id, double gap);
  /// Where an icon is drawn: in its bounds. The caption of a small disc is given bounds twice as wide and
  /// high as the disc, to be drawn at any size of it; it keeps its own size and stands above the disc by its
  /// gap.
  Korvane::Box2 FindPlace(const Korvane::DynamicIcon2D& icon) const;
  /// 0 for an icon that is not here or has lost its picture.
  GLuint FindTexture(int id) const;
  /// False for a pointer that is none of ours; it is not followed.
  bool Destroy(const Korvane::DynamicIcon2D* icon);
  /// The icons stay, for whoever still holds one, and draw nothing.
  void DestroyTextures();

 private:
  struct Entry {
    std::unique_ptr<Korvane::DynamicIcon2D> icon;
    GLuint texture = 0;
    Korvane::Vector2 half = {};  // of its own size
    bool rides = false;
    double gap = 0.0;
    std::optional<LabelText> label = {};
  };
  static void Show(Entry& entry, const LabelPicture& picture);

  std::unordered_map<int, Entry> entries;
  int nextID = 1;
};

}  // namespace zovhost
