# Installs what a program that uses the library needs, and nothing else, into an empty PREFIX.
file(REMOVE_RECURSE ${PREFIX})
foreach(component runtime development)
  execute_process(
    COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${PREFIX} --component ${component}
    COMMAND_ERROR_IS_FATAL ANY)
endforeach()
