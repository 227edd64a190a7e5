# What every target of the project is compiled with. The same recording must give the same stream of
# cameras on every machine, so nothing here may let the compiler reorder or fuse floating-point work.
# Nothing here reaches a project that adds this one as a subdirectory or finds it installed.
add_library(zov_compiler_options INTERFACE)
target_compile_features(zov_compiler_options INTERFACE cxx_std_20)

if(MSVC)
  target_compile_options(zov_compiler_options INTERFACE /W4 /fp:precise /utf-8
    $<$<BOOL:${ZOV_WERROR}>:/WX>)
else()
  target_compile_options(zov_compiler_options INTERFACE
    -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
    -Woverloaded-virtual -Wold-style-cast -Wcast-align
    -ffp-contract=off
    # GCC 12 at -O3 warns of copies and elements within std::string and std::tuple that cannot be.
    $<$<AND:$<CONFIG:Release>,$<CXX_COMPILER_ID:GNU>,$<VERSION_LESS:$<CXX_COMPILER_VERSION>,13>>:-Wno-restrict;-Wno-array-bounds>
    $<$<BOOL:${ZOV_WERROR}>:-Werror>)
endif()

# GCC 12 keeps a double where the program narrows to float and widens again, when it packs neighbouring
# values into one vector; the narrowing is part of the result.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  target_compile_options(zov_compiler_options INTERFACE -fno-tree-slp-vectorize)
endif()

if(ZOV_SANITIZE)
  target_compile_options(zov_compiler_options INTERFACE
    -fsanitize=${ZOV_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all
    # What the sanitizers add confuses this warning of gcc inside the standard library.
    $<$<CXX_COMPILER_ID:GNU>:-Wno-maybe-uninitialized>)
  target_link_options(zov_compiler_options INTERFACE -fsanitize=${ZOV_SANITIZE})
endif()

if(ZOV_COVERAGE)
  target_compile_options(zov_compiler_options INTERFACE --coverage)
  target_link_options(zov_compiler_options INTERFACE --coverage)
endif()

find_program(ZOV_CCACHE ccache)
mark_as_advanced(ZOV_CCACHE)
if(ZOV_CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${ZOV_CCACHE})
endif()
if(PROJECT_IS_TOP_LEVEL AND NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE RelWithDebInfo)
endif()
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
