#include "zel/core/desktop_types.h"

// Defined here so that the classes' type information lives in the library alone.
CWnd::~CWnd() = default;
CDataExchange::~CDataExchange() = default;
