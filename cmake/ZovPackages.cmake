# The Debian packages, made by cpack of what is installed; scripts/package makes and tries them.
find_program(ZOV_HELP2MAN help2man REQUIRED)
find_program(ZOV_GZIP gzip REQUIRED)

file(STRINGS ${PROJECT_SOURCE_DIR}/packaging/changelog zov_release LIMIT_COUNT 1)
string(REGEX MATCH "\\(([^)]+)-([^)-]+)\\)" zov_release "${zov_release}")
set(ZOV_RELEASE ${CMAKE_MATCH_2})
if(NOT CMAKE_MATCH_1 STREQUAL PROJECT_VERSION)
  message(FATAL_ERROR "The newest release in packaging/changelog is ${CMAKE_MATCH_1}, not ${PROJECT_VERSION}.")
endif()
set(ZOV_SAME_RELEASE "(= ${PROJECT_VERSION}-${ZOV_RELEASE})")

# zov_compress(<file> <to>)
function(zov_compress file to)
  execute_process(COMMAND ${ZOV_GZIP} -9nc ${file} OUTPUT_FILE ${to} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

# zov_add_package(<component> <package> SECTION <name> SUMMARY <line> DESCRIPTION <text> DEPENDS <package>...
# [ARCH all]): what the install rules give that component.
set(ZOV_PACKAGE_FILES ${PROJECT_BINARY_DIR}/packaging)
file(MAKE_DIRECTORY ${ZOV_PACKAGE_FILES})
zov_compress(${PROJECT_SOURCE_DIR}/packaging/changelog ${ZOV_PACKAGE_FILES}/changelog.Debian.gz)
function(zov_add_package component package)
  cmake_parse_arguments(PARSE_ARGV 2 package "" "SECTION;SUMMARY;DESCRIPTION;ARCH" "DEPENDS")
  install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright ${ZOV_PACKAGE_FILES}/changelog.Debian.gz
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package} COMPONENT ${component})
  string(TOUPPER ${component} key)
  list(JOIN package_DEPENDS ", " depends)
  set(CPACK_DEBIAN_${key}_PACKAGE_NAME ${package} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_SECTION ${package_SECTION} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_PACKAGE_DEPENDS ${depends} PARENT_SCOPE)
  set(CPACK_DEBIAN_${key}_DESCRIPTION "${package_SUMMARY}\n${package_DESCRIPTION}" PARENT_SCOPE)
  if(package_ARCH)
    set(CPACK_DEBIAN_${key}_PACKAGE_ARCHITECTURE ${package_ARCH} PARENT_SCOPE)
  endif()
  set(CPACK_COMPONENTS_ALL ${CPACK_COMPONENTS_ALL} ${component} PARENT_SCOPE)
endfunction()

set(CPACK_COMPONENTS_ALL "")
zov_add_package(runtime libzovtools${ZOV_ABI} SECTION libs
  SUMMARY "camera navigation devices for 3D viewports: the library"
  DESCRIPTION "Moves the camera of any 3D application: an orientation cube, discs that\nfollow the pointer, navigation bars, mouse tools, animated moves, a history\nof views, storyboards and six-axis devices. Draws through a renderer of the\nprogram's own and needs nothing but the standard library.")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)

zov_add_package(development libzovtools-dev SECTION libdevel
  DEPENDS "libzovtools${ZOV_ABI} ${ZOV_SAME_RELEASE}"
  SUMMARY "camera navigation devices for 3D viewports: to build with"
  DESCRIPTION "The headers of the library, with what CMake and pkg-config need to find it.")

set(ZOV_KIT_DEPENDS "")
foreach(row IN LISTS ZOV_KIT_PACKAGES)
  string(REPLACE "|" ";" row "${row}")
  list(GET row 2 debian)
  list(APPEND ZOV_KIT_DEPENDS ${debian})
endforeach()
zov_add_package(kit libzovhost-dev SECTION libdevel
  DEPENDS "libzovtools-dev ${ZOV_SAME_RELEASE}" libembree-dev ${ZOV_KIT_DEPENDS}
  SUMMARY "camera navigation devices for 3D viewports: the host kit"
  DESCRIPTION "What a program around the library needs and the library does not know, as\nstatic libraries: a window with its input, menus and panels, a renderer with\nall pictures and words, models with rays and bounds, stories and named views\nin files.")

zov_add_package(viewer zovview SECTION graphics
  DEPENDS "libzovtools${ZOV_ABI} ${ZOV_SAME_RELEASE}" fonts-dejavu-core libegl1 libgl1
  SUMMARY "viewer of 3D models with every device of navigation"
  DESCRIPTION "Opens glTF, OBJ, STL, PLY, FBX, DAE, 3MF and IFC, and has all devices of the\nlibrary libzovtools: cube, discs, bars, tools, named views, storyboards.\nWithout a display it writes a tour of the model as pictures.")
set(CPACK_DEBIAN_VIEWER_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_VIEWER_PACKAGE_RECOMMENDS "fonts-noto-cjk, libgl1-mesa-dri")
set(CPACK_DEBIAN_VIEWER_PACKAGE_SUGGESTS "assimp-testmodels, spacenavd")

zov_add_package(documentation zovtools-doc SECTION doc ARCH all
  SUMMARY "camera navigation devices for 3D viewports: documentation"
  DESCRIPTION "How the library libzovtools is embedded and extended, with examples.")

# What only the site is made of stays out. The pages link to two files that have other names in a package.
install(DIRECTORY ${PROJECT_SOURCE_DIR}/docs ${PROJECT_SOURCE_DIR}/examples
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zovtools-doc COMPONENT documentation PATTERN docs/site EXCLUDE)
zov_compress(${PROJECT_SOURCE_DIR}/CHANGELOG.md ${ZOV_PACKAGE_FILES}/changelog.gz)
foreach(page README.md CONTRIBUTING.md)
  file(READ ${PROJECT_SOURCE_DIR}/${page} text)
  string(REPLACE "](CHANGELOG.md)" "](changelog.gz)" text "${text}")
  string(REPLACE "](LICENSE)" "](copyright)" text "${text}")
  file(WRITE ${ZOV_PACKAGE_FILES}/${page} "${text}")
  install(FILES ${ZOV_PACKAGE_FILES}/${page}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zovtools-doc COMPONENT documentation)
endforeach()
install(FILES ${ZOV_PACKAGE_FILES}/changelog.gz
  DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/zovtools-doc COMPONENT documentation)

# The page of the manual is what the viewer says of itself.
set(page ${ZOV_PACKAGE_FILES}/zovview.1)
add_custom_command(OUTPUT ${page}.gz
  COMMAND ${ZOV_HELP2MAN} --no-info --name "look at 3D models with every device of navigation"
    --output ${page} $<TARGET_FILE:zovview>
  COMMAND ${ZOV_GZIP} -9nf ${page}
  DEPENDS zovview VERBATIM)
add_custom_target(zov_manual ALL DEPENDS ${page}.gz)
install(FILES ${page}.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1 COMPONENT viewer)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME zovtools)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")  # each has its own
set(CPACK_PACKAGE_CONTACT "The libzovtools developers <developers@libzovtools.invalid>")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${ZOV_RELEASE})
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON)
# What the viewer is linked with is in a package of the same run.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/src)
include(CPack)
