# Headers, the library, a package for find_package and one for pkg-config. Components: `runtime` is what a
# program needs to run, `development` what it needs to be built, `kit` what it needs besides to be built with the
# host kit; `viewer` is the viewer.
include(CMakePackageConfigHelpers)

set(ZOV_PACKAGE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/zovtools)

install(TARGETS zovtools EXPORT zovtoolsTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/include/
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development FILES_MATCHING PATTERN "*.h")
install(EXPORT zovtoolsTargets NAMESPACE zov::
  DESTINATION ${ZOV_PACKAGE_DIR} COMPONENT development)

if(ZOV_BUILD_HOST)
  include(${CMAKE_CURRENT_LIST_DIR}/ZovKitPackages.cmake)
  foreach(library IN LISTS ZOV_KIT_LIBRARIES)
    install(TARGETS zov_${library} EXPORT zovtools_${library}Targets
      ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT kit
      FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT kit)
    install(EXPORT zovtools_${library}Targets NAMESPACE zov::
      DESTINATION ${ZOV_PACKAGE_DIR} COMPONENT kit)
  endforeach()
  install(FILES ${CMAKE_CURRENT_LIST_DIR}/ZovKitPackages.cmake
    DESTINATION ${ZOV_PACKAGE_DIR} COMPONENT kit)
endif()

configure_package_config_file(${CMAKE_CURRENT_LIST_DIR}/zovtoolsConfig.cmake.in
  ${PROJECT_BINARY_DIR}/zovtoolsConfig.cmake INSTALL_DESTINATION ${ZOV_PACKAGE_DIR}
  NO_SET_AND_CHECK_MACRO)
# Before 1.0 a new minor version may change the interface.
write_basic_package_version_file(${PROJECT_BINARY_DIR}/zovtoolsConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
if(NOT ZOV_PACKAGES)  # which have it as the distribution wants it
  install(FILES ${PROJECT_SOURCE_DIR}/LICENSE
    DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT runtime)
endif()
install(FILES ${PROJECT_BINARY_DIR}/zovtoolsConfig.cmake ${PROJECT_BINARY_DIR}/zovtoolsConfigVersion.cmake
  DESTINATION ${ZOV_PACKAGE_DIR} COMPONENT development)

# The package finds its prefix from its own place, so an installed tree may be moved. With an absolute
# library or include folder it names that one.
set(ZOV_PC_DIR ${CMAKE_INSTALL_LIBDIR}/pkgconfig)
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  set(ZOV_PC_PREFIX ${CMAKE_INSTALL_PREFIX})
else()
  file(RELATIVE_PATH up ${CMAKE_INSTALL_PREFIX}/${ZOV_PC_DIR} ${CMAKE_INSTALL_PREFIX})
  string(REGEX REPLACE "/$" "" up "${up}")
  set(ZOV_PC_PREFIX "\${pcfiledir}/${up}")
endif()
foreach(folder LIBDIR INCLUDEDIR)
  if(IS_ABSOLUTE ${CMAKE_INSTALL_${folder}})
    set(ZOV_PC_${folder} ${CMAKE_INSTALL_${folder}})
  else()
    set(ZOV_PC_${folder} "\${prefix}/${CMAKE_INSTALL_${folder}}")
  endif()
endforeach()
configure_file(${CMAKE_CURRENT_LIST_DIR}/zovtools.pc.in ${PROJECT_BINARY_DIR}/zovtools.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/zovtools.pc DESTINATION ${ZOV_PC_DIR} COMPONENT development)

# The libraries of the kit are static, so what they are made with is for each program to link.
if(ZOV_BUILD_HOST)
  set(ZOV_PC_OTHERS_scene " -lembree3")  # has no module
  foreach(library IN LISTS ZOV_KIT_LIBRARIES)
    list(TRANSFORM ZOV_KIT_NEEDS_${library} PREPEND zovhost- OUTPUT_VARIABLE requires)
    set(requires ${requires} "zovtools = ${PROJECT_VERSION}")
    foreach(row IN LISTS ZOV_KIT_PACKAGES)
      if(row MATCHES "^${library}\\|[^|]*\\|[^|]*\\|(.*)$")
        string(REPLACE " " ";" modules "${CMAKE_MATCH_1}")
        list(APPEND requires ${modules})
      endif()
    endforeach()
    list(JOIN requires ", " requires)
    set(others "${ZOV_PC_OTHERS_${library}}")
    configure_file(${CMAKE_CURRENT_LIST_DIR}/zovhost.pc.in ${PROJECT_BINARY_DIR}/zovhost-${library}.pc @ONLY)
    install(FILES ${PROJECT_BINARY_DIR}/zovhost-${library}.pc DESTINATION ${ZOV_PC_DIR} COMPONENT kit)
  endforeach()
endif()
