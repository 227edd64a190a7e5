#pragma once

#include <string>

#include "cube/cube_layout.h"
#include "cube/quad_sink.h"
#include "korvane/lifeline.h"

namespace Korvane {

class DynamicIcon2D;

/// The label of the coordinate system below the cube, in its two forms. The icons are made, and destroyed, by
/// the renderer; a host may take the renderer away or give another name while it makes them. Icons that go
/// without the cube are none, nor are those whose renderer has gone.
class CubeLabel {
 public:
  static constexpr int ID = 5;  // among the parts of the overlay

  void SetDefaultName(const std::wstring& name) { defaultName = name; }
  /// True when that is another name.
  bool SetName(const wchar_t* name);
  const std::wstring& GetName() const { return activeName; }
  /// A scene that is not oriented to the system shows the default name, too.
  bool ShowsSecondName(const OrientorParameters& parameters) const;

  /// There is a label and none is wanted, or the other way round.
  bool IsMismatched(const OrientorParameters& parameters) const;
  /// Whether it must be made anew after the size may have changed from `sizeBefore`.
  bool IsOutdated(const OrientorParameters& parameters, const CubeLayout& layout, int sizeBefore) const;
  /// Remembers what it is made for.
  void NoteCompass(const OrientorParameters& parameters) { madeWithCompass = parameters.draw_compass; }
  void Make(Renderer& renderer, const OrientorParameters& parameters, const CubeLayout& layout);
  void Destroy(Renderer& renderer);
  /// What is being made now is destroyed as soon as it is made.
  void ForsakeMaking() { making.Cut(); }

  /// Null when none shows.
  DynamicIcon2D* Find(const OrientorParameters& parameters, bool lit) const;
  /// Where it belongs, with the opacity of the cube.
  static void Place(DynamicIcon2D& icon, const OrientorParameters& parameters, const CubeLayout& layout,
                    double opacity);
  static void Offer(const DynamicIcon2D& icon, QuadSink& sink);

  /// Whether or not it shows; null when there is none.
  DynamicIcon2D* GetPlain() const { return maker.Get() != nullptr ? plain.Get() : nullptr; }
  DynamicIcon2D* GetHighlighted() const { return maker.Get() != nullptr ? highlighted.Get() : nullptr; }

  // As they were made; asked for by the two above.
  Borrowed<DynamicIcon2D> plain;
  Borrowed<DynamicIcon2D> highlighted;
  bool madeWithCompass = false;

 private:
  void DestroyIcons(Renderer& renderer);

  Borrowed<Renderer> maker;
  Lifeline making;  // cut when what is being made is no longer wanted
  std::wstring activeName;
  std::wstring defaultName;
};

}  // namespace Korvane
