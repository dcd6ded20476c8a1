# Compiler settings that hold for every room.
include(CTest)

option(TESSARO_FUZZ "Build the libFuzzer targets" OFF)
set(TESSARO_SANITIZE "" CACHE STRING "Sanitizers to build with, as -fsanitize= takes them")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_LIBRARY_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/bin)
set(CMAKE_BUILD_RPATH_USE_ORIGIN ON)
set(CMAKE_INSTALL_RPATH $ORIGIN)

# No NDEBUG: our checks stay on in what users run.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -g1")
set(CMAKE_CXX_FLAGS_DEBUG "-O0 -g1")
if(TESSARO_FUZZ)
  set(CMAKE_CXX_FLAGS_DEBUG "-O1 -g1") # executions count
endif()

add_compile_options(-Wall -Wextra -Wnon-virtual-dtor)
# The product's compiler decides what is an error; the other one serves lint, fuzzing and sanitizers, and takes names of
# a namespace that is used for shadowed ones.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options(-Wshadow -Werror)
endif()
# With optimization this compiler's flow warnings report faults that aren't there, inside its own library.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  add_compile_options("$<$<CONFIG:Release>:-Wno-array-bounds;-Wno-stringop-overflow;-Wno-stringop-overread;-Wno-restrict;-Wno-maybe-uninitialized;-Wno-attribute-warning>")
endif()
add_compile_definitions(_FILE_OFFSET_BITS=64)

# What users run carries the compiler's and the linker's protections; dev/hardening checks that they are there.
add_compile_options("$<$<CONFIG:Release>:-U_FORTIFY_SOURCE;-D_FORTIFY_SOURCE=2;-fstack-protector-strong;-fstack-clash-protection>")
if(CMAKE_SYSTEM_PROCESSOR MATCHES "x86_64|AMD64")
  add_compile_options("$<$<CONFIG:Release>:-fcf-protection=full>")
endif()
add_link_options("$<$<CONFIG:Release>:-Wl,-z,relro;-Wl,-z,now;-Wl,-z,noexecstack>")
set(CMAKE_EXE_LINKER_FLAGS_RELEASE "-pie")

# The check of object types opens a pipe to look at memory, which a test that runs out of descriptors forbids.
if(TESSARO_SANITIZE)
  add_compile_options(-fsanitize=${TESSARO_SANITIZE} -fno-sanitize-recover=all -fno-sanitize=vptr -fno-omit-frame-pointer -O1)
  add_link_options(-fsanitize=${TESSARO_SANITIZE})
endif()
if(TESSARO_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()

# A linker that takes shared libraries only as needed looks from left to right, and CMake names the host ahead of the
# rooms that a target reaches through others.
add_link_options(-Wl,--no-as-needed)
