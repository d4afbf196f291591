#pragma once

/// @file
/// How a reading process answers: one message through a pipe.

#include <optional>
#include <string>

#include "tools/zel/exit_code.h"
#include "tools/zel/file_descriptor.h"
#include "tools/zel/foreign/scene_reader.h"

namespace zel::program {

/// What a reading process answers.
struct ForeignAnswer {
  ExitCode code = ExitCode::kDone;
  std::string why;   ///< unless the code is kDone
  ForeignMesh mesh;  ///< if the code is kDone
};

/// Sends a mesh. @return false when nobody takes it.
[[nodiscard]] bool sendMesh(const FileDescriptor& pipe, const ForeignMesh& mesh);

/// Sends a reason why there is no mesh. Needs no memory.
bool sendRefusal(const FileDescriptor& pipe, ExitCode code, const char* why) noexcept;

/// Receives what the other two send. Nothing of it is believed: memory is taken only for bytes
/// that have come, and lengths that do not fit together are no answer.
/// @param seconds how long to wait for it.
/// @param isLate set to whether that time has passed.
/// @return nothing when the answer is not whole.
[[nodiscard]] std::optional<ForeignAnswer> receiveAnswer(const FileDescriptor& pipe, double seconds,
                                                         bool& isLate);

}  // namespace zel::program
