#pragma once

/// @file
/// What a reader or writer of files had to leave out or change.

#include <string>
#include <vector>

namespace zel {

/// One thing that a file and the mesh made from it, or a mesh and its file, do not share.
struct Remark {
  /// What became of it.
  enum class Kind {
    kLeftOut,  ///< the source has something that the target cannot hold
    kChanged,  ///< it is there in another form, or less exactly
    kDamaged,  ///< the file is not whole; what stands is what was read
    kNote,     ///< worth knowing, nothing is lost
  };

  Kind kind = Kind::kNote;  ///< what became of it
  std::string text;         ///< one sentence for people, the count included, without a full stop
  long long count = 0;      ///< how many things it concerns; 0 when they are not counted
};

/// All of them, in the order in which they were met.
using Remarks = std::vector<Remark>;

}  // namespace zel
