#pragma once

#if defined(_MSVC_LANG) ? _MSVC_LANG < 202002L : __cplusplus < 202002L
#  error "libzovtools needs C++20: compile with -std=c++20 or /std:c++20, or newer"
#endif

/// Marks what the shared library shows. The library itself is compiled with `ZOVTOOLS_BUILDING`.
#if defined(_WIN32)
#  if defined(ZOVTOOLS_BUILDING)
#    define ZOVTOOLS_API __declspec(dllexport)
#  else
#    define ZOVTOOLS_API __declspec(dllimport)
#  endif
#else
#  define ZOVTOOLS_API __attribute__((visibility("default")))
#endif
