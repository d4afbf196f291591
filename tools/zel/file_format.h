#pragma once

#include <string>
#include <vector>

namespace zel::program {

/// A mesh file format, named by its usual extension.
struct FileFormat {
  std::string name;         ///< lower case, without the dot: "obj"
  std::string description;  ///< one line
  bool isWritten = false;   ///< every format of the table is read
};

/// The program's own format and those it writes, followed by those that it only reads.
[[nodiscard]] const std::vector<FileFormat>& fileFormats();

/// Finds the format of an input.
/// @param file  what the user named. @param given the value of --from, or empty.
/// @throws Failure: code 2 when `given` is not a format, code 3 when the file's name tells none.
[[nodiscard]] std::string inputFormat(const std::string& file, const std::string& given);

/// Finds the format of an output.
/// @param file  what the user named. @param given the value of --to, or empty.
/// @throws Failure: code 2 when `given` is not a format that is written, code 4 when the file's
///         name tells none.
[[nodiscard]] std::string outputFormat(const std::string& file, const std::string& given);

}  // namespace zel::program
