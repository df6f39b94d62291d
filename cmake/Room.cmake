# odomira_room(<name> [SOURCES ...] [USES other rooms ...])
#
# One room of the house is one static library. Headers are named from the top of the tree ("data/DataInterface.h"), and
# only those of the rooms in USES can be reached through the link: a call in the wrong direction does not link.
function(odomira_room name)
  cmake_parse_arguments(PARSE_ARGV 1 room "" "" "SOURCES;USES")
  add_library(odomira_${name} STATIC ${room_SOURCES})
  add_library(odomira::${name} ALIAS odomira_${name})
  target_include_directories(odomira_${name} PUBLIC ${PROJECT_SOURCE_DIR})
  target_link_libraries(odomira_${name} PUBLIC odomira::options)
  foreach(other IN LISTS room_USES)
    target_link_libraries(odomira_${name} PUBLIC odomira::${other})
  endforeach()
endfunction()
