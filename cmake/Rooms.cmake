# trovel_room(NAME DIRECTORIES dirs... [EXCLUDE files...] [LINK targets...])
# A static library of all C++ sources in those folders: what lies in a room belongs to it. Includes
# are written from the root of the tree; no toolkit is on the include path.
function(trovel_room name)
  cmake_parse_arguments(ROOM "" "" "DIRECTORIES;EXCLUDE;LINK" ${ARGN})
  set(sources)
  foreach(directory IN LISTS ROOM_DIRECTORIES)
    file(GLOB found RELATIVE "${CMAKE_SOURCE_DIR}" CONFIGURE_DEPENDS
      "${CMAKE_SOURCE_DIR}/${directory}/*.cpp")
    list(APPEND sources ${found})
  endforeach()
  list(REMOVE_ITEM sources ${ROOM_EXCLUDE})
  list(TRANSFORM sources PREPEND "${CMAKE_SOURCE_DIR}/")
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PUBLIC ${ROOM_LINK} PRIVATE trovel_warnings)
endfunction()
