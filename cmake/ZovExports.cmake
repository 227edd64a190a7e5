# What the shared library shows, and what it may lean on, where the linker is an ELF one.
if(UNIX AND NOT APPLE AND NOT EMSCRIPTEN)
  target_link_options(zovtools PRIVATE
    "LINKER:--version-script=${PROJECT_SOURCE_DIR}/cmake/zovtools.map"
    LINKER:--as-needed)
  set_property(TARGET zovtools APPEND PROPERTY LINK_DEPENDS ${PROJECT_SOURCE_DIR}/cmake/zovtools.map)
  # The sanitizers' runtime is found only when a program starts, so with them names stay open.
  if(NOT ZOV_SANITIZE)
    target_link_options(zovtools PRIVATE LINKER:--no-undefined)
  endif()
endif()
