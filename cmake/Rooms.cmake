# trovel_room(NAME DIRECTORY dir [EXCLUDE files...] [LINK targets...])
# A static library of all C++ sources in that folder: what lies in a room belongs to it. `LINK` is
# what its headers may include. Includes are written from the root of the tree; no toolkit is on the
# include path of a portable room.
function(trovel_room name)
  cmake_parse_arguments(ROOM "" "DIRECTORY" "EXCLUDE;LINK" ${ARGN})
  file(GLOB sources RELATIVE "${CMAKE_SOURCE_DIR}" CONFIGURE_DEPENDS
    "${CMAKE_SOURCE_DIR}/${ROOM_DIRECTORY}/*.cpp")
  list(REMOVE_ITEM sources ${ROOM_EXCLUDE})
  list(TRANSFORM sources PREPEND "${CMAKE_SOURCE_DIR}/")
  add_library(${name} STATIC ${sources})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name} PUBLIC ${ROOM_LINK} PRIVATE trovel_warnings)
endfunction()
