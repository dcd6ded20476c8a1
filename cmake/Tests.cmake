# Tests of a room: every .cpp of the folder becomes part of one binary, every test its own process.
#
#   tessaro_tests(NAME [LABELS label...] LINKS target...)
include(GoogleTest)

function(tessaro_tests NAME)
  cmake_parse_arguments(TESTS "" "" "LABELS;LINKS;DEPENDS" ${ARGN})
  file(GLOB SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  if(NOT SOURCES)
    return()
  endif()
  add_executable(${NAME} ${SOURCES})
  target_include_directories(${NAME} PRIVATE ${CMAKE_SOURCE_DIR})
  target_link_libraries(${NAME} PRIVATE ${TESTS_LINKS} tests_support GTest::gmock)
  target_compile_definitions(${NAME} PRIVATE
    TESSARO_SOURCE_DIR="${CMAKE_SOURCE_DIR}"
    TESSARO_BIN_DIR="${CMAKE_BINARY_DIR}/bin")
  if(TESTS_DEPENDS)
    add_dependencies(${NAME} ${TESTS_DEPENDS})
  endif()
  gtest_discover_tests(${NAME}
    DISCOVERY_TIMEOUT 120
    PROPERTIES TIMEOUT 300 LABELS "${TESTS_LABELS}")
endfunction()
