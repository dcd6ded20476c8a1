# A room is one target: every .cpp of its folder (not of the folders below it) and what it may include.
# Each room offers its headers through a view of its own in the build folder, so that an include of a room
# that is not linked does not build.
#
#   tessaro_room(NAME [SOURCES file...] [EXCLUDE file...] [LINKS target...])
#
# Adding a source file is adding a file. A room without sources is its headers.
function(tessaro_room NAME)
  cmake_parse_arguments(ROOM "" "" "EXCLUDE;LINKS;SOURCES" ${ARGN})
  if(NOT ROOM_SOURCES)
    file(GLOB ROOM_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
    foreach(FILE IN LISTS ROOM_EXCLUDE)
      list(REMOVE_ITEM ROOM_SOURCES ${CMAKE_CURRENT_SOURCE_DIR}/${FILE})
    endforeach()
  endif()

  file(RELATIVE_PATH PLACE ${CMAKE_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR})
  get_filename_component(PARENT ${PLACE} DIRECTORY)
  set(VIEW ${CMAKE_BINARY_DIR}/rooms/${NAME})
  file(MAKE_DIRECTORY ${VIEW}/${PARENT})
  file(CREATE_LINK ${CMAKE_CURRENT_SOURCE_DIR} ${VIEW}/${PLACE} SYMBOLIC)

  if(ROOM_SOURCES)
    add_library(${NAME} STATIC ${ROOM_SOURCES})
    set(SCOPE PUBLIC)
  else()
    add_library(${NAME} INTERFACE)
    set(SCOPE INTERFACE)
  endif()
  target_include_directories(${NAME} ${SCOPE} ${VIEW})
  if(ROOM_LINKS)
    target_link_libraries(${NAME} ${SCOPE} ${ROOM_LINKS})
  endif()
endfunction()
