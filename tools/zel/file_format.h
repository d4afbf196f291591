#pragma once

#include <string>
#include <vector>

#include "zel/io/formats.h"

namespace zel::program {

/// A mesh file format that the program knows, named by its usual extension.
struct KnownFormat {
  std::string name;                 ///< lower case, without the dot: "obj"
  std::string description;          ///< one line
  bool isWritten = false;           ///< every format of the table is read
  const FileFormat* own = nullptr;  ///< the library's; null: it comes through Assimp
};

/// The library's own formats, followed by those that are only read.
[[nodiscard]] const std::vector<KnownFormat>& knownFormats();

/// Finds the format of an input by its name.
/// @param file  what the user named. @param given the value of --from, or empty.
/// @return null when neither tells a format, so that the content must.
/// @throws Failure (code 2) when `given` is not a format.
[[nodiscard]] const KnownFormat* inputFormat(const std::string& file, const std::string& given);

/// @return the name of that format; empty when only the content tells it. @throws Failure as above.
[[nodiscard]] std::string inputFormatName(const std::string& file, const std::string& given);

/// Finds the format of an output.
/// @param file  what the user named. @param given the value of --to, or empty.
/// @throws Failure: code 2 when `given` is not a format that is written, code 4 when the file's
///         name tells none.
[[nodiscard]] const KnownFormat& outputFormat(const std::string& file, const std::string& given);

}  // namespace zel::program
