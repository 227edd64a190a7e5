#include "window/gui_look.h"

#include <imgui.h>

#include <array>

#include "zovhost/accent.h"

namespace zovhost {

namespace {

using Colour = std::array<float, 4>;  // sRGB and opacity

constexpr Colour MakeOpaque(const std::array<double, 3>& colour) {
  return {static_cast<float>(colour[0]), static_cast<float>(colour[1]), static_cast<float>(colour[2]), 1.0F};
}
ImVec4 ToVector(const Colour& colour) { return {colour[0], colour[1], colour[2], colour[3]}; }

constexpr Colour accent = MakeOpaque(ACCENT_COLOUR);
constexpr Colour lightAccent = MakeOpaque(ACCENT_LIGHT_COLOUR);

// What a look is made of. Words, the quiet ones too, stand at 4.5 to 1 or more on each of its grounds, over
// any view below.
struct Palette {
  Colour words;
  Colour quietWords;
  Colour panel;  // as good as opaque, so that no word below is read through it
  Colour menu;
  Colour field;  // buttons, boxes and headers, at rest
  Colour hovered;
  Colour chosen;  // what is pressed or lit
  Colour line;
  Colour mark;  // in a box, and on the handle of a slider
  Colour handle;
  Colour shade;  // over all else while something is asked
};

constexpr Palette darkPalette = {.words = {1.0F, 1.0F, 1.0F, 1.0F},
                                 .quietWords = {0.87F, 0.88F, 0.89F, 1.0F},
                                 .panel = {0.11F, 0.12F, 0.13F, 0.98F},
                                 .menu = {0.09F, 0.10F, 0.11F, 0.99F},
                                 .field = {1.0F, 1.0F, 1.0F, 0.12F},
                                 .hovered = {1.0F, 1.0F, 1.0F, 0.18F},
                                 .chosen = accent,
                                 .line = {1.0F, 1.0F, 1.0F, 0.16F},
                                 .mark = lightAccent,
                                 .handle = {1.0F, 1.0F, 1.0F, 0.45F},
                                 .shade = {0.0F, 0.0F, 0.0F, 0.5F}};

constexpr Palette lightPalette = {.words = {0.11F, 0.13F, 0.16F, 1.0F},
                                  .quietWords = {0.27F, 0.30F, 0.34F, 1.0F},
                                  .panel = {0.975F, 0.98F, 0.985F, 0.98F},
                                  .menu = {0.985F, 0.985F, 0.99F, 0.99F},
                                  .field = {0.06F, 0.09F, 0.14F, 0.075F},
                                  .hovered = {0.06F, 0.09F, 0.14F, 0.13F},
                                  .chosen = lightAccent,
                                  .line = {0.0F, 0.0F, 0.0F, 0.16F},
                                  .mark = accent,
                                  .handle = {0.0F, 0.0F, 0.0F, 0.35F},
                                  .shade = {0.06F, 0.09F, 0.14F, 0.35F}};

struct Part {
  ImGuiCol_ part;
  Colour Palette::*colour;
};

constexpr auto parts = std::to_array<Part>({
    {ImGuiCol_Text, &Palette::words},
    {ImGuiCol_TextDisabled, &Palette::quietWords},
    {ImGuiCol_WindowBg, &Palette::panel},
    {ImGuiCol_TitleBg, &Palette::panel},
    {ImGuiCol_TitleBgActive, &Palette::panel},
    {ImGuiCol_TitleBgCollapsed, &Palette::panel},
    {ImGuiCol_PopupBg, &Palette::menu},
    {ImGuiCol_MenuBarBg, &Palette::menu},
    {ImGuiCol_FrameBg, &Palette::field},
    {ImGuiCol_FrameBgHovered, &Palette::hovered},
    {ImGuiCol_FrameBgActive, &Palette::hovered},
    {ImGuiCol_Button, &Palette::field},
    {ImGuiCol_ButtonHovered, &Palette::hovered},
    {ImGuiCol_ButtonActive, &Palette::chosen},
    {ImGuiCol_Header, &Palette::field},
    {ImGuiCol_HeaderHovered, &Palette::hovered},
    {ImGuiCol_HeaderActive, &Palette::chosen},
    {ImGuiCol_TextSelectedBg, &Palette::chosen},
    {ImGuiCol_Tab, &Palette::field},
    {ImGuiCol_TabHovered, &Palette::hovered},
    {ImGuiCol_TabActive, &Palette::chosen},
    {ImGuiCol_Separator, &Palette::line},
    {ImGuiCol_SeparatorHovered, &Palette::line},
    {ImGuiCol_SeparatorActive, &Palette::line},
    {ImGuiCol_Border, &Palette::line},
    {ImGuiCol_ResizeGrip, &Palette::field},
    {ImGuiCol_ResizeGripHovered, &Palette::hovered},
    {ImGuiCol_ResizeGripActive, &Palette::chosen},
    {ImGuiCol_CheckMark, &Palette::mark},
    {ImGuiCol_SliderGrab, &Palette::mark},
    {ImGuiCol_SliderGrabActive, &Palette::mark},
    {ImGuiCol_NavHighlight, &Palette::mark},
    {ImGuiCol_DragDropTarget, &Palette::mark},
    {ImGuiCol_ModalWindowDimBg, &Palette::shade},
    {ImGuiCol_ScrollbarGrab, &Palette::line},
    {ImGuiCol_ScrollbarGrabHovered, &Palette::handle},
    {ImGuiCol_ScrollbarGrabActive, &Palette::handle},
});

}  // namespace

void SetShapes(ImGuiStyle& style) {
  style.WindowRounding = 6.0F;
  style.PopupRounding = 6.0F;
  style.FrameRounding = 4.0F;
  style.GrabRounding = 4.0F;
  style.WindowPadding = ImVec2(12.0F, 10.0F);
}

void SetColours(ImGuiStyle& style, bool light) {
  light ? ImGui::StyleColorsLight(&style) : ImGui::StyleColorsDark(&style);
  const Palette& palette = light ? lightPalette : darkPalette;
  for (const Part& part : parts) style.Colors[part.part] = ToVector(palette.*part.colour);
  style.Colors[ImGuiCol_PlotHistogram] = ToVector(accent);
  style.Colors[ImGuiCol_PlotHistogramHovered] = ToVector(accent);
  style.Colors[ImGuiCol_ScrollbarBg] = ImVec4(0.0F, 0.0F, 0.0F, 0.0F);
}

}  // namespace zovhost
