#pragma once

namespace zovview {

/// What a user wants of the files of a story. Whoever is asked asks back: where, and whether changes may be
/// lost.
enum class StoryRequest : int { New, Open, Save, SaveAs, Export };

}  // namespace zovview
