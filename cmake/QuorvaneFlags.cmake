# Language, warnings and sanitizers. Warnings belong to the target quorvane_flags, which each of our
# targets links privately. Options for a whole program (sanitizers, link options) are set for the
# directory tree.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

add_library(quorvane_flags INTERFACE)
target_compile_options(quorvane_flags INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wold-style-cast
  -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-align
  -Wimplicit-fallthrough -Wswitch)
if(CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  target_compile_options(quorvane_flags INTERFACE -Wthread-safety -Wnull-dereference)
else()
  # These warnings of GCC give false alarms in inlined functions of vector, string and optional.
  # Clang's warnings, clang-tidy and AddressSanitizer find the same mistakes without them.
  target_compile_options(quorvane_flags INTERFACE
    -Wno-array-bounds -Wno-maybe-uninitialized -Wno-restrict -Wno-stringop-overflow
    -Wno-stringop-overread)
endif()

if(CMAKE_UNITY_BUILD)
  # In a unity build, files may shadow each other's names. GCC finds less of that, and so less that is
  # no mistake; but it treats the included files as headers, in which it warns about unnamed namespaces.
  target_compile_options(quorvane_flags INTERFACE
    $<$<CXX_COMPILER_ID:Clang>:-Wno-shadow> $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endif()

add_link_options(LINKER:--as-needed)

if(QUORVANE_ASSERTIONS)
  add_compile_options(-D_GLIBCXX_ASSERTIONS)
endif()
if(QUORVANE_LLD AND NOT CMAKE_EXE_LINKER_FLAGS MATCHES "-fuse-ld=")
  add_link_options(-fuse-ld=lld)
endif()

# Makes paths in debug information and __FILE__ relative to the root of the tree. Coverage needs the
# real paths. A path with a space stays one argument here, unlike in CMAKE_CXX_FLAGS.
if(NOT QUORVANE_COVERAGE)
  add_compile_options(
    "$<$<CONFIG:RelWithDebInfo,Release,MinSizeRel>:-ffile-prefix-map=${PROJECT_SOURCE_DIR}/=>")
endif()

if(QUORVANE_SANITIZE)
  list(JOIN QUORVANE_SANITIZE "," sanitizers)
  add_compile_options(
    -fsanitize=${sanitizers} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_link_options(-fsanitize=${sanitizers})
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    # The instrumentation of shifts inserts conversions of its own, which GCC then warns about.
    target_compile_options(quorvane_flags INTERFACE -Wno-sign-conversion)
  endif()
endif()

if(QUORVANE_COVERAGE)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "QUORVANE_COVERAGE needs clang: leave CXX unset, or set it to clang++")
  endif()
  add_compile_options(
    -fprofile-instr-generate -fcoverage-mapping -fprofile-update=atomic)
  add_link_options(-fprofile-instr-generate)
endif()

if(QUORVANE_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "QUORVANE_FUZZ needs clang: leave CXX unset, or set it to clang++")
  endif()
  # Instruments all code for coverage. The fuzzers get their main() by a link option of their own.
  add_compile_options(-fsanitize=fuzzer-no-link)
  add_link_options(-fsanitize=fuzzer-no-link)
endif()
