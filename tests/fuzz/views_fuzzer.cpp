// Files of named views, and of the viewpoints that other programs exchange: which of them tells the first
// byte. What is read is written, and what is written is read as the same again.
#include <cstdint>
#include <cstdlib>
#include <string>

#include "zovhost/bcf_file.h"
#include "zovhost/named_views_file.h"

namespace {

using namespace zovhost;

void Require(bool condition) {
  if (!condition) std::abort();
}

void RequireLine(const std::string& error) {
  Require(!error.empty() && error.find('\n') == std::string::npos);
}

void ReadNamedViews(std::string_view text) {
  NamedViews views;
  std::string error;
  if (!ParseNamedViews(text, views, error)) return RequireLine(error);
  const std::string written = FormatNamedViews(views);
  NamedViews again;
  Require(ParseNamedViews(written, again, error) && FormatNamedViews(again) == written);
}

void Show(const BcfViewpoint& viewpoint) {
  Korvane::CameraParameters camera;
  if (CameraFromBcf(viewpoint, {}, 10.0, camera)) Require(CanShowView(camera));
}

void ReadViewpoint(std::string_view xml) {
  BcfViewpoint viewpoint;
  std::string error;
  if (!ParseBcfViewpoint(xml, viewpoint, error)) return RequireLine(error);
  Show(viewpoint);
  std::string written;
  BcfViewpoint again;
  if (FormatBcfViewpoint(viewpoint, written, error)) Require(ParseBcfViewpoint(written, again, error));
}

void ReadContainer(std::string_view bytes) {
  std::vector<BcfView> views;
  std::string error;
  if (!ParseBcfContainer(bytes, views, error)) return RequireLine(error);
  for (const BcfView& view : views) Show(view.viewpoint);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  static constexpr void (*READERS[])(std::string_view) = {&ReadNamedViews, &ReadViewpoint, &ReadContainer};
  if (count == 0) return 0;
  READERS[bytes[0] % std::size(READERS)]({reinterpret_cast<const char*>(bytes) + 1, count - 1});
  return 0;
}
