#include "zel/containers/pixel_arr.h"

#include "zel/containers/detail/rows.h"
#include "zel/containers/detail/slot_store_impl.h"

template class zel::SlotStore<zel::Float4, zel::FloatTuplePolicy>;

#define ZEL_ARR PixelArr
#define ZEL_SLOT zel::Float4
#define ZEL_IN const float*
#define ZEL_OUT float*
#include "zel/containers/detail/family.inl"
