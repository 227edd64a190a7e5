#include "views/zip_archive.h"

#include <zip.h>

#include <algorithm>

namespace zovhost {

namespace {

// On one line, whatever the library says.
std::string Describe(zip_error_t* failure) {
  std::string text = zip_error_strerror(failure);
  std::replace_if(
      text.begin(), text.end(), [](char byte) { return byte < ' ' || byte > '~'; }, ' ');
  return text;
}

zip_source_t* MakeSource(std::string_view bytes, zip_error_t* failure) {
  return zip_source_buffer_create(bytes.data(), bytes.size(), 0, failure);
}

bool Add(zip_t* archive, const ZipEntry& entry) {
  zip_source_t* const source = zip_source_buffer(archive, entry.bytes.data(), entry.bytes.size(), 0);
  if (source == nullptr) return false;
  const zip_int64_t index = zip_file_add(archive, entry.name.c_str(), source, ZIP_FL_ENC_UTF_8);
  if (index < 0) {
    zip_source_free(source);
    return false;
  }
  const zip_int32_t method = entry.compressed ? ZIP_CM_DEFLATE : ZIP_CM_STORE;
  return zip_set_file_compression(archive, static_cast<zip_uint64_t>(index), method, 0) == 0;
}

// What the archive was written into.
bool ReadBack(zip_source_t* source, std::string& bytes) {
  zip_stat_t status;
  if (zip_source_stat(source, &status) != 0 || (status.valid & ZIP_STAT_SIZE) == 0) return false;
  if (zip_source_open(source) != 0) return false;
  bytes.resize(status.size);
  const zip_int64_t read = zip_source_read(source, bytes.data(), bytes.size());
  zip_source_close(source);
  return read >= 0 && static_cast<std::size_t>(read) == bytes.size();
}

}  // namespace

std::unique_ptr<ZipReader> ZipReader::Open(std::string_view bytes, std::string& error) {
  zip_error_t failure;
  zip_error_init(&failure);
  zip_source_t* const source = MakeSource(bytes, &failure);
  zip_t* const opened = source != nullptr ? zip_open_from_source(source, ZIP_RDONLY, &failure) : nullptr;
  if (opened == nullptr) {
    error = "it is no zip archive: " + Describe(&failure);
    zip_source_free(source);
  }
  zip_error_fini(&failure);
  return opened != nullptr ? std::unique_ptr<ZipReader>(new ZipReader(opened)) : nullptr;
}

ZipReader::~ZipReader() { zip_discard(archive); }

std::size_t ZipReader::GetCount() const {
  return static_cast<std::size_t>(std::max<zip_int64_t>(0, zip_get_num_entries(archive, 0)));
}

std::string ZipReader::GetName(std::size_t index) const {
  const char* const name = zip_get_name(archive, index, ZIP_FL_ENC_GUESS);
  return name != nullptr ? name : "";
}

bool ZipReader::Read(std::size_t index, std::size_t most, std::string& bytes, std::string& error) const {
  zip_file_t* const file = zip_fopen_index(archive, index, 0);
  if (file == nullptr) {
    error = Describe(zip_get_error(archive));
    return false;
  }
  // Not by the size that the archive states, which may be any.
  constexpr std::size_t CHUNK = 65'536;
  std::string read;
  zip_int64_t count = 1;
  while (count > 0 && read.size() <= most) {
    const std::size_t size = read.size();
    read.resize(size + CHUNK);
    count = zip_fread(file, read.data() + size, CHUNK);
    read.resize(size + static_cast<std::size_t>(std::max<zip_int64_t>(0, count)));
  }
  if (count < 0) error = Describe(zip_file_get_error(file));
  zip_fclose(file);
  if (count < 0) return false;
  if (read.size() > most) {
    error = "it is too large";
    return false;
  }
  bytes = std::move(read);
  return true;
}

bool WriteZip(const std::vector<ZipEntry>& entries, std::string& bytes, std::string& error) {
  zip_error_t failure;
  zip_error_init(&failure);
  zip_source_t* const source = zip_source_buffer_create(nullptr, 0, 0, &failure);
  zip_t* const archive =
      source != nullptr ? zip_open_from_source(source, ZIP_CREATE | ZIP_TRUNCATE, &failure) : nullptr;
  if (archive == nullptr) {
    error = "there is no memory for it";
    zip_source_free(source);
    zip_error_fini(&failure);
    return false;
  }
  zip_source_keep(source);
  const bool added = std::all_of(entries.begin(), entries.end(),
                                 [archive](const ZipEntry& entry) { return Add(archive, entry); });
  const bool closed = added && zip_close(archive) == 0;
  if (!closed) {
    error = "it cannot be packed: " + Describe(zip_get_error(archive));
    zip_discard(archive);
  }
  const bool good = closed && ReadBack(source, bytes);
  if (closed && !good) error = "it cannot be packed";
  zip_source_free(source);
  zip_error_fini(&failure);
  return good;
}

}  // namespace zovhost
