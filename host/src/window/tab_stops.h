#pragma once

#include <vector>

struct ImGuiContext;
struct ImGuiWindow;

namespace zovhost {

/// What Tab goes through in a question, in the order in which it is drawn: the library that draws panels
/// leads Tab from text to text only.
class TabStops {
 public:
  /// A frame of the library begins: what is drawn in it is noted anew.
  void BeginFrame() { stops.clear(); }
  /// The last item. `first`: it is marked where nothing is.
  void Note(const ImGuiContext& context, bool first);
  /// Of the question that is open.
  bool AreThere(const ImGuiContext& context) const;
  /// One of them is marked.
  bool IsMarked(const ImGuiContext& context) const;
  /// To the next one, round and round.
  void Step(ImGuiContext& context, bool back) const;
  /// When all are drawn. True when what is marked has changed.
  bool MarkFirst(ImGuiContext& context, bool shown) const;

 private:
  struct Stop {
    unsigned id;
    ImGuiWindow* panel;
    bool isText;
    bool first;
  };

  const Stop* Find(unsigned id) const;

  std::vector<Stop> stops;
};

}  // namespace zovhost
