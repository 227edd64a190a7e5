// The file of the viewer's settings. A file that is of no use leaves those of a first start.
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>

#include "korvane/korvane.h"
#include "settings/settings_file.h"

namespace {

const std::filesystem::path& GetPlace() {
  static const std::filesystem::path place =
      std::filesystem::temp_directory_path() / ("settings_fuzzer." + std::to_string(getpid()) + ".json");
  return place;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
  std::ofstream(GetPlace(), std::ios::binary)
      .write(reinterpret_cast<const char*>(bytes), static_cast<std::streamsize>(count));
  std::string error;
  Korvane::HelmDisc disc;
  zovview::SettingsFile file(GetPlace());
  if (!file.Read(disc, error) && (error.empty() || error.find('\n') != std::string::npos)) std::abort();
  // What the program writes it reads again, but what a newer one has written.
  disc.GetParameters().clickZoom = !disc.GetParameters().clickZoom;
  const bool isOurs = file.Keep(disc, error) && error.find("newer") == std::string::npos;
  std::string next;
  if (isOurs && !zovview::SettingsFile(GetPlace()).Read(disc, next)) std::abort();
  std::filesystem::remove(GetPlace());
  std::filesystem::remove(zovview::SettingsFile::FindAside(GetPlace()));
  return 0;
}
