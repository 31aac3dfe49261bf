#pragma once

#include <QtGlobal>

/// Marks what hosts may call. Hosts that link the rooms statically define MATERIALUI_STATIC.
#if defined(MATERIALUI_STATIC)
#define MATERIALUI_EXPORT
#elif defined(MATERIALUI_LIBRARY)
#define MATERIALUI_EXPORT Q_DECL_EXPORT
#else
#define MATERIALUI_EXPORT Q_DECL_IMPORT
#endif
