# What the programs of a sanitized build need beyond the compiler's options.
if(ZOV_SANITIZE AND TARGET zovhost AND UNIX)
  target_sources(zovhost INTERFACE ${CMAKE_CURRENT_LIST_DIR}/keep_libraries.cpp)
endif()
