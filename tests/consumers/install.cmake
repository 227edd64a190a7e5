# Installs these COMPONENTS, which is all that a program needs that uses the library, into an empty PREFIX.
file(REMOVE_RECURSE ${PREFIX})
foreach(component IN LISTS COMPONENTS)
  execute_process(
    COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX} --component ${component}
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()
