// Whether text is read in blocks of sixteen bytes: SSE2 is part of every x86-64.
#pragma once

#if defined(__SSE2__) || defined(_M_X64)
#define LUMODIR_SSE2 1
#include <emmintrin.h>
#endif

// Sanitizers would take what is read of a block behind a terminator for an error.
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define LUMODIR_UNIDAD_A_UNIDAD 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define LUMODIR_UNIDAD_A_UNIDAD 1
#endif
#endif
