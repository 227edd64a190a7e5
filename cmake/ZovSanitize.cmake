# What the programs of a sanitized build need beyond the compiler's options.
if(ZOV_SANITIZE AND TARGET zov_scene AND UNIX)
  foreach(library scene window)
    target_sources(zov_${library} INTERFACE $<BUILD_INTERFACE:${CMAKE_CURRENT_LIST_DIR}/keep_libraries.cpp>)
  endforeach()
endif()
