#pragma once

/// @file
/// Everything public. Single headers may be included instead.

#include "zel/containers/int2d_arr.h"
#include "zel/containers/int3d_arr.h"
#include "zel/containers/int4d_arr.h"
#include "zel/containers/int_arr.h"
#include "zel/containers/pixel_arr.h"
#include "zel/containers/point2d_arr.h"
#include "zel/containers/point3d_arr.h"
#include "zel/containers/real_arr.h"
#include "zel/core/api.h"
#include "zel/core/assertion.h"
#include "zel/core/constants.h"
#include "zel/core/desktop.h"
#include "zel/core/desktop_types.h"
#include "zel/core/element_base.h"
#include "zel/core/memory.h"
#include "zel/core/platform.h"
#include "zel/geometry/geometry.h"
#include "zel/image/bmp.h"
#include "zel/image/drawing.h"
#include "zel/textfile/files.h"
#include "zel/textfile/kw_iocl.h"
#include "zel/textfile/list_tags.h"
#include "zel/textfile/paths.h"
#include "zel/textfile/string_edit.h"
