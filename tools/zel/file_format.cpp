#include "tools/zel/file_format.h"

#include <algorithm>
#include <filesystem>

#include "tools/zel/failure.h"
#include "tools/zel/foreign/foreign_mesh.h"

namespace zel::program {

namespace {

const KnownFormat* formatNamed(const std::string& name) {
  const FileFormat* const own = findFormat(name);
  for (const KnownFormat& format : knownFormats()) {
    if (own != nullptr ? format.own == own : format.name == lowerCase(name)) {
      return &format;
    }
  }
  return nullptr;
}

std::string extensionOf(const std::string& file) {
  const std::string extension = std::filesystem::path(file).extension().string();
  return extension.empty() ? "" : extension.substr(1);
}

std::vector<KnownFormat> makeFormats() {
  std::vector<KnownFormat> formats;
  for (const FileFormat& own : fileFormats()) {
    formats.push_back({std::string(own.name), std::string(own.description), own.isWritten, &own});
  }
  for (const std::string& extension : foreignExtensions()) {
    if (findFormat(extension) == nullptr) {
      formats.push_back({extension, "read through Assimp", false});
    }
  }
  return formats;
}

}  // namespace

const std::vector<KnownFormat>& knownFormats() {
  static const std::vector<KnownFormat> formats = makeFormats();
  return formats;
}

const KnownFormat* inputFormat(const std::string& file, const std::string& given) {
  const KnownFormat* const format = formatNamed(given.empty() ? extensionOf(file) : given);
  if (format == nullptr && !given.empty()) {
    throw misuse("--from " + given, "no such format");
  }
  return format;
}

std::string inputFormatName(const std::string& file, const std::string& given) {
  const KnownFormat* const format = inputFormat(file, given);
  return format == nullptr ? "" : format->name;
}

const KnownFormat& outputFormat(const std::string& file, const std::string& given) {
  const KnownFormat* const format = formatNamed(given.empty() ? extensionOf(file) : given);
  if (format != nullptr && format->isWritten) {
    return *format;
  }
  if (!given.empty()) {
    throw misuse("--to " + given, "no format that is written");
  }
  throw unwritable(file, "the name tells no format that is written; name one with --to");
}

}  // namespace zel::program
