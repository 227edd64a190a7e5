// Draws a picture of the whole window of the viewer, with its panel and views that are kept, for the pages of
// the documentation:
//   zovview_window_picture [--views N] [--kept] [--width W] [--height H] MODEL FILE.png
#include <epoxy/gl.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <string_view>

#include "viewer/viewer.h"
#include "zovhost/picture.h"

namespace {

struct Wanted {
  std::string model;
  std::string file;
  int views = 1;
  int width = 1280;
  int height = 800;
  bool kept = false;
};

// The commands that lead to a view, and the name that it is kept under.
struct Kept {
  std::string_view command;
  const char* name;
};
constexpr std::array<Kept, 4> KEPT = {{{"home", "The whole house"},
                                       {"front", "The front"},
                                       {"top", "The roof"},
                                       {"isometric", "From the garden"}}};

void ComeToRest(zovhost::Window& window, const zovview::Viewer& viewer) {
  constexpr int WAIT = 10;  // milliseconds
  while (window.Step(WAIT) && (viewer.IsLoading() || window.IsFrameRequested())) {
  }
}

void KeepViews(zovhost::Window& window, zovview::Viewer& viewer) {
  viewer.GetPreferences().Edit(
      [](zovview::Choices& choices) { choices.panel = zovview::Choices::PANEL_OPEN; });
  for (const Kept& kept : KEPT) {
    for (const std::string_view command : {kept.command, std::string_view("keep-view")}) {
      viewer.GetView(0).Run(*zovview::FindViewCommand(command));
      ComeToRest(window, viewer);
    }
    viewer.GetNamedViews().Rename(viewer.GetNamedViews().GetViews().GetCount() - 1, kept.name);
    ComeToRest(window, viewer);
  }
}

zovhost::Image ReadWindow(const zovhost::Window& window) {
  zovhost::Image image;
  image.width = window.GetWidth();
  image.height = window.GetHeight();
  const auto row = static_cast<std::ptrdiff_t>(image.width) * 4;
  image.rgba.resize(static_cast<std::size_t>(row) * static_cast<std::size_t>(image.height));
  glReadPixels(0, 0, image.width, image.height, GL_RGBA, GL_UNSIGNED_BYTE, image.rgba.data());
  for (int low = 0, high = image.height - 1; low < high; ++low, --high) {
    std::swap_ranges(image.rgba.begin() + low * row, image.rgba.begin() + (low + 1) * row,
                     image.rgba.begin() + high * row);
  }
  for (std::size_t i = 3; i < image.rgba.size(); i += 4) image.rgba[i] = 255;
  return image;
}

bool Draw(const Wanted& wanted, std::string& error) {
  zovhost::Window::Options options;
  options.width = wanted.width;
  options.height = wanted.height;
  options.offscreen = true;
  const std::unique_ptr<zovhost::Window> window = zovhost::Window::Create(options, error);
  if (window == nullptr) return false;
  zovview::Viewer::Options viewerOptions;
  viewerOptions.views = wanted.views;
  viewerOptions.language = "en";
  zovview::Viewer viewer(*window, viewerOptions);
  viewer.Open({wanted.model});
  ComeToRest(*window, viewer);
  error = wanted.model + " does not show";
  if (viewer.GetScene() == nullptr) return false;
  if (wanted.kept) KeepViews(*window, viewer);
  return zovhost::WritePng(wanted.file, ReadWindow(*window), error);
}

}  // namespace

int main(int argc, char** argv) try {
  Wanted wanted;
  CLI::App app("Draws a picture of the whole window of the viewer");
  app.add_option("MODEL", wanted.model)->required();
  app.add_option("FILE", wanted.file)->required();
  app.add_option("--views", wanted.views)->check(CLI::Range(1, zovview::MOST_VIEWS));
  app.add_option("--width", wanted.width)->check(CLI::Range(1, 8192));
  app.add_option("--height", wanted.height)->check(CLI::Range(1, 8192));
  app.add_flag("--kept", wanted.kept, "With views that are kept, beside the model");
  CLI11_PARSE(app, argc, argv);
  std::string error;
  if (Draw(wanted, error)) return 0;
  std::fprintf(stderr, "%s\n", error.c_str());
  return 1;
} catch (const std::exception& failure) {  // memory is short, a path cannot be had
  std::fputs(failure.what(), stderr);
  return 1;
}
