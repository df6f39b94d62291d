# odomira_delayed_library(<target> <library> <function>...)
#
# A library of the system that is loaded when one of the functions is called first, and not with the program. Windows looks
# for what is loaded with the program in the program's folder too, unless it is one of the libraries that it always takes
# from the system folder; what is loaded later is looked for where LoadLibrariesFromSystemFolderOnly says.
function(odomira_delayed_library target library)
  add_library(${target} INTERFACE)
  add_library(odomira::${target} ALIAS ${target})
  if(MSVC)
    target_link_libraries(${target} INTERFACE ${library} delayimp)
    target_link_options(${target} INTERFACE /DELAYLOAD:${library}.dll)
    return()
  endif()
  set(definition ${CMAKE_CURRENT_BINARY_DIR}/${target}.def)
  set(import_library ${CMAKE_CURRENT_BINARY_DIR}/lib${target}.a)
  list(JOIN ARGN "\n" functions)
  file(CONFIGURE OUTPUT ${definition} CONTENT "LIBRARY ${library}.dll\nEXPORTS\n${functions}\n")
  add_custom_command(OUTPUT ${import_library}
    COMMAND ${CMAKE_DLLTOOL} --input-def ${definition} --output-delaylib ${import_library}
    DEPENDS ${definition}
    VERBATIM)
  add_custom_target(${target}_library DEPENDS ${import_library})
  add_dependencies(${target} ${target}_library)
  target_link_libraries(${target} INTERFACE ${import_library} delayimp)
endfunction()
