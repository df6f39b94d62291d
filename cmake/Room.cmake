# odomira_room(<name>
#   [SOURCES <file>...]     without any, the room has headers only
#   [USES <room>...]        the rooms whose headers it includes
#   [WIN32]                 it calls Windows
#   [LIBRARIES <name>...])  the system libraries that it calls
#
# A room is a static library. Its headers are included by their path from the top of the tree ("data/DataInterface.h").
# The include path gives every room all headers; odomira_check_includes therefore checks the includes.
function(odomira_room name)
  cmake_parse_arguments(PARSE_ARGV 1 room "WIN32" "" "SOURCES;USES;LIBRARIES")
  if(room_SOURCES)
    add_library(odomira_${name} STATIC ${room_SOURCES})
    target_include_directories(odomira_${name} PUBLIC ${PROJECT_SOURCE_DIR})
    target_link_libraries(odomira_${name} PUBLIC odomira::options PRIVATE ${room_LIBRARIES})
  else()
    add_library(odomira_${name} INTERFACE)
  endif()
  add_library(odomira::${name} ALIAS odomira_${name})
  if(room_WIN32)
    target_link_libraries(odomira_${name} PRIVATE odomira::win32)
  endif()
  odomira_uses(odomira_${name} ${room_USES})
endfunction()

# odomira_uses(<target> <room>...): links the rooms, and lets the sources of the target include their headers.
function(odomira_uses target)
  list(TRANSFORM ARGN PREPEND "odomira::" OUTPUT_VARIABLE libraries)
  get_target_property(type ${target} TYPE)
  if(type STREQUAL INTERFACE_LIBRARY)
    target_link_libraries(${target} INTERFACE ${libraries})
    set(sources)
  else()
    target_link_libraries(${target} PUBLIC ${libraries})
    get_target_property(sources ${target} SOURCES)
    get_target_property(linked ${target} LINK_LIBRARIES)
  endif()
  set(windows no)
  if("odomira::win32" IN_LIST linked)
    set(windows yes)
  endif()
  string(REPLACE "odomira_" "" name ${target})
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  list(JOIN sources " " sources)
  list(JOIN ARGN " " uses)
  set_property(GLOBAL APPEND_STRING PROPERTY ODOMIRA_ROOMS "${name}|${folder}|${windows}|${sources}|${uses}\n")
  add_dependencies(${target} odomira_includes)
endfunction()

# odomira_check_includes(<folder>...): writes the declared rooms to rooms.txt, and makes every build first check the
# includes of the sources in these folders. Call it after the last room.
function(odomira_check_includes)
  get_property(rooms GLOBAL PROPERTY ODOMIRA_ROOMS)
  file(CONFIGURE OUTPUT ${CMAKE_BINARY_DIR}/rooms.txt CONTENT "${rooms}" @ONLY)
  find_program(ODOMIRA_PYTHON python3 HINTS /usr/bin)
  if(NOT ODOMIRA_PYTHON)
    message(WARNING "no python3: the includes of the rooms are not checked")
    add_custom_target(odomira_includes)
    return()
  endif()
  list(TRANSFORM ARGN APPEND "/*.h" OUTPUT_VARIABLE headers)
  list(TRANSFORM ARGN APPEND "/*.cpp" OUTPUT_VARIABLE sources)
  file(GLOB_RECURSE checked CONFIGURE_DEPENDS ${headers} ${sources})
  set(script ${PROJECT_SOURCE_DIR}/tools/check_includes.py)
  set(stamp ${CMAKE_BINARY_DIR}/includes.checked)
  add_custom_command(OUTPUT ${stamp}
    COMMAND ${ODOMIRA_PYTHON} ${script} ${CMAKE_BINARY_DIR}/rooms.txt ${PROJECT_SOURCE_DIR}
    COMMAND ${CMAKE_COMMAND} -E touch ${stamp}
    DEPENDS ${script} ${CMAKE_BINARY_DIR}/rooms.txt ${checked}
    COMMENT "Checking the includes of the rooms"
    VERBATIM)
  add_custom_target(odomira_includes DEPENDS ${stamp})
endfunction()
