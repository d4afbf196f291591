#pragma once

/// @file
/// File names as the system takes them, and what replacing a file needs.

#include <cstdio>
#include <filesystem>
#include <string>

namespace zel {

/// A path name as the system parts it: backslashes, which part directories everywhere in this
/// library, become slashes where the system wants those. A file whose own name holds one is not
/// found there.
/// @param name as the application gave it; null counts as empty.
[[nodiscard]] std::string presentFileName(const char* name);

/// @return the path behind a name; std::filesystem by itself takes every narrow name for UTF-8,
///         also where the system's are in another code page.
[[nodiscard]] std::filesystem::path pathOfName(const std::string& name);

/// @return the name by which the system opens a path.
[[nodiscard]] std::string nameOfPath(const std::filesystem::path& path);

/// What a file is replaced through.
struct FileToReplace {
  std::string name;  ///< with links followed, so that the link stays
  /// Whether another file may take its place: it is an ordinary file of this user's under one name,
  /// or none yet. A device, a file with several hard links or of another owner, or the file that a
  /// link names but that is not there yet, must be written directly.
  bool isReplaceable;
};
[[nodiscard]] FileToReplace fileToReplace(const std::string& name);

/// Creates a file for writing bytes that removeFile() may remove while it is open.
/// @return null with errno set when it could not, EEXIST when there is one already.
[[nodiscard]] std::FILE* createFile(const std::string& name);

/// As createFile(), for nobody but the owner to read until inheritFileRights().
[[nodiscard]] std::FILE* createPrivateFile(const std::string& name);

/// @return a few characters that no other process or thread uses in a file name right now.
[[nodiscard]] std::string uniqueNamePart();

/// @return whether this process may write an existing file and its attributes allow it.
[[nodiscard]] bool isWritableFile(const std::string& name);

/// Gives `target` the permissions of `source` without its setuid and setgid marks, and as far as
/// the system allows its owner and group; nothing happens without a `source`.
void inheritFileRights(const std::string& source, const std::string& target);

/// Flushes a file and has the system write it to the disk. @return false with errno set.
[[nodiscard]] bool bringToDisk(std::FILE* file);

/// Has the system write the directory of a file to the disk, where that can be asked for.
void bringDirectoryToDisk(const std::string& file) noexcept;

/// Removes a file. Signal handlers may call it.
void removeFile(const char* name) noexcept;

/// Gives `target` the permissions and attributes of `source`; nothing happens without a `source`.
void copyPermissions(const std::string& source, const std::string& target);

/// Moves a file over another one in the same directory. @return false with errno set when it could
/// not be moved.
[[nodiscard]] bool moveFileOver(const std::string& source, const std::string& target);

}  // namespace zel
