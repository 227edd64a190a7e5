#pragma once

namespace zovhost {

/// The typefaces of the kit's texts, in pictures and in panels, the first that the system has; what it lacks
/// comes from others that the system finds for the language.
inline constexpr const char* TYPEFACES[] = {"Inter", "Noto Sans", "DejaVu Sans", "sans-serif"};
/// As one list.
inline constexpr const char* TYPEFACE_LIST = "Inter, Noto Sans, DejaVu Sans, sans-serif";

}  // namespace zovhost
