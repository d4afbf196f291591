#include "tools/zel/file_format.h"

#include <algorithm>
#include <assimp/Importer.hpp>
#include <cctype>
#include <filesystem>

#include "tools/zel/failure.h"

namespace zel::program {

namespace {

std::string lowerCase(std::string text) {
  std::ranges::transform(text, text.begin(),
                         [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return text;
}

std::string extensionOf(const std::string& file) {
  const std::string extension = std::filesystem::path(file).extension().string();
  return extension.empty() ? "" : lowerCase(extension.substr(1));
}

const FileFormat* findFormat(const std::vector<FileFormat>& formats, const std::string& name) {
  const auto found = std::ranges::find(formats, name, &FileFormat::name);
  return found == formats.end() ? nullptr : &*found;
}

/// The extensions of every importer, from Assimp's list "*.3ds;*.obj;...".
std::vector<std::string> assimpExtensions() {
  std::string list;
  Assimp::Importer().GetExtensionList(list);
  std::vector<std::string> extensions;
  for (std::size_t start = 0; start < list.size();) {
    const std::size_t end = std::min(list.find(';', start), list.size());
    extensions.push_back(lowerCase(list.substr(start + 2, end - start - 2)));
    start = end + 1;
  }
  std::ranges::sort(extensions);
  return extensions;
}

std::vector<FileFormat> makeFormats() {
  std::vector<FileFormat> formats = {
      {"zel", "Zel document: nodes, triangles, quads, texture coordinates", true},
      {"obj", "Wavefront OBJ, numbers exact to the last bit", true},
      {"ply", "Polygon file, written binary", true},
      {"stl", "Stereolithography: unconnected triangles, written binary", true},
  };
  for (const std::string& extension : assimpExtensions()) {
    if (findFormat(formats, extension) == nullptr) {
      formats.push_back({extension, "read through Assimp", false});
    }
  }
  return formats;
}

}  // namespace

const std::vector<FileFormat>& fileFormats() {
  static const std::vector<FileFormat> formats = makeFormats();
  return formats;
}

std::string inputFormat(const std::string& file, const std::string& given) {
  if (!given.empty()) {
    std::string name = lowerCase(given);
    if (findFormat(fileFormats(), name) == nullptr) {
      throw misuse("--from " + given, "no such format");
    }
    return name;
  }
  std::string extension = extensionOf(file);
  if (findFormat(fileFormats(), extension) == nullptr) {
    throw unreadable(file, "the name tells no known format; name one with --from");
  }
  return extension;
}

std::string outputFormat(const std::string& file, const std::string& given) {
  std::string name = given.empty() ? extensionOf(file) : lowerCase(given);
  const FileFormat* const format = findFormat(fileFormats(), name);
  if (format != nullptr && format->isWritten) {
    return name;
  }
  if (!given.empty()) {
    throw misuse("--to " + given, "no format that is written");
  }
  throw unwritable(file, "the name tells no format that is written; name one with --to");
}

}  // namespace zel::program
