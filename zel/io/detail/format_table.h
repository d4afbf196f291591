#pragma once

/// @file
/// The one place where the readers and writers of the formats are named.

#include <string_view>

#include "zel/io/detail/codec.h"
#include "zel/io/formats.h"

namespace zel {

/// How a format is read and written.
struct FormatWork {
  ReadFunction read;
  WriteFunction write;
  /// @return whether the start of a file, or a whole small one, is of this format.
  bool (*tells)(std::string_view start, bool isWhole);
};

/// @param format one of fileFormats().
[[nodiscard]] const FormatWork& workOf(const FileFormat& format);

/// @return whether bytes begin a text STL file: a binary one may begin with the same word.
[[nodiscard]] bool isTextStl(std::string_view start);

}  // namespace zel
