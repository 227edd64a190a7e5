#pragma once

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
