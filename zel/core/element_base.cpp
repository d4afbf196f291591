#include "zel/core/element_base.h"

namespace {

/// Inline code has a symbol only where something takes its address. The library keeps these for
/// callers that were compiled without the inline code or look the names up.
struct OutOfLine : KwBaseCL {
  [[gnu::used]] static constexpr auto kTag = &KwBaseCL::IsAvailableM;
  [[gnu::used]] static constexpr auto kSetTag = &KwBaseCL::SetDeleteTagM;
  [[gnu::used]] static constexpr auto kDelete = &OutOfLine::DelItemM;
};

}  // namespace

int KwBaseCL::InitialM() { return 1; }
