# The libraries of the host kit, and what they are made with. Read when they are built, and by the installed package
# when a program asks for them.
find_package(PkgConfig QUIET)

# Each after those of the kit that it needs itself.
set(ZOV_KIT_LIBRARIES files stories views scene gl window)
set(ZOV_KIT_NEEDS_stories files)
set(ZOV_KIT_NEEDS_views stories)
set(ZOV_KIT_NEEDS_gl files scene)
set(ZOV_KIT_NEEDS_window files)

# zov_add_needed_kit(<variable>): to the libraries in it come all those that they need.
macro(zov_add_needed_kit libraries)
  set(zov_order ${ZOV_KIT_LIBRARIES})
  list(REVERSE zov_order)
  foreach(zov_library IN LISTS zov_order)
    if(zov_library IN_LIST ${libraries})
      list(APPEND ${libraries} ${ZOV_KIT_NEEDS_${zov_library}})
    endif()
  endforeach()
endmacro()

# A row: the library of the kit, the name here, the Debian package, and the modules of pkg-config.
set(ZOV_KIT_PACKAGES
  "files|ZOV_FRIBIDI|libfribidi-dev|fribidi"
  "views|ZOV_PUGIXML|libpugixml-dev|pugixml"
  "views|ZOV_ZIP|libzip-dev|libzip"
  "scene|ZOV_ASSIMP|libassimp-dev|assimp"
  "scene|ZOV_PIXBUF|libgdk-pixbuf-2.0-dev|gdk-pixbuf-2.0"
  "gl|ZOV_EPOXY|libepoxy-dev|epoxy"
  "gl|ZOV_PANGO|libpango1.0-dev|pangocairo pangoft2"
  "gl|ZOV_RSVG|librsvg2-dev|librsvg-2.0"
  "gl|ZOV_PNG|libpng-dev|libpng"
  "gl|ZOV_WEBP|libwebp-dev|libwebp libwebpmux"
  "window|ZOV_SDL2|libsdl2-dev|sdl2"
  "window|ZOV_IMGUI|libimgui-dev|imgui"
  "window|ZOV_X11|libx11-dev|x11"
  "window|ZOV_FONTCONFIG|libfontconfig-dev|fontconfig"
  "window|ZOV_FREETYPE|libfreetype-dev|freetype2")
if(ZOV_WITH_SPNAV)
  list(APPEND ZOV_KIT_PACKAGES "window|ZOV_SPNAV|libspnav-dev|spnav")
endif()
if(ZOV_WITH_PORTAL)
  list(APPEND ZOV_KIT_PACKAGES "window|ZOV_PORTAL|libportal-dev|libportal")
endif()

# zov_find_kit_packages(<library> <variable>): the variable becomes a list of the Debian packages that are
# missing.
macro(zov_find_kit_packages library missing)
  set(${missing} "")
  foreach(zov_row IN LISTS ZOV_KIT_PACKAGES)
    string(REPLACE "|" ";" zov_row "${zov_row}")
    list(POP_FRONT zov_row zov_of zov_name zov_debian zov_modules)
    if(zov_of STREQUAL "${library}")
      string(REPLACE " " ";" zov_modules "${zov_modules}")
      if(PKG_CONFIG_FOUND)
        pkg_check_modules(${zov_name} QUIET IMPORTED_TARGET GLOBAL ${zov_modules})
      endif()
      if(NOT ${zov_name}_FOUND)
        list(APPEND ${missing} ${zov_debian})
      endif()
    endif()
  endforeach()
  if("${library}" STREQUAL "scene")
    find_package(embree 3 CONFIG QUIET)
    if(NOT embree_FOUND)
      list(APPEND ${missing} libembree-dev)
    endif()
  endif()
endmacro()
