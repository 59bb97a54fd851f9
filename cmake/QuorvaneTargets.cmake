# Sources are found by pattern at every build, so a new file needs no edit here.

# quorvane_precompile(TARGET HEADER...)
#
# Precompiles headers of libraries that most sources of the target include. Does nothing without
# QUORVANE_PCH, as in builds that compile several sources at once.
function(quorvane_precompile target)
  if(QUORVANE_PCH)
    target_precompile_headers(${target} PRIVATE
      <algorithm> <functional> <map> <memory> <optional> <string> <vector> <fmt/format.h> ${ARGN})
  endif()
endfunction()

# quorvane_library(FOLDER [SUBFOLDERS NAME...] [DEPENDS TARGET...])
#
# The static library quorvane_FOLDER, made of every .cpp in the calling folder and the named sub-
# folders except main.cpp, which belongs to a program. Includes are relative to the root of the
# source tree.
function(quorvane_library folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SUBFOLDERS;DEPENDS")
  set(patterns *.h *.cpp)
  foreach(subfolder IN LISTS arg_SUBFOLDERS)
    list(APPEND patterns ${subfolder}/*.h ${subfolder}/*.cpp)
  endforeach()
  file(GLOB sources CONFIGURE_DEPENDS ${patterns})
  list(FILTER sources EXCLUDE REGEX "/main\\.cpp$")

  add_library(quorvane_${folder} STATIC ${sources})
  target_include_directories(quorvane_${folder} PUBLIC "${PROJECT_SOURCE_DIR}")
  target_link_libraries(quorvane_${folder} PUBLIC ${arg_DEPENDS} PRIVATE quorvane_flags)
  set(headers "")
  if(folder STREQUAL ui)
    set(headers <QtWidgets>)
  elseif(folder STREQUAL cli)
    set(headers <CLI/CLI.hpp> <nlohmann/json.hpp>)
  endif()
  quorvane_precompile(quorvane_${folder} ${headers})
endfunction()

# quorvane_program(NAME SOURCES FILE... DEPENDS TARGET...)
function(quorvane_program name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;DEPENDS")
  add_executable(${name} ${arg_SOURCES})
  target_link_libraries(${name} PRIVATE ${arg_DEPENDS} quorvane_flags)
endfunction()

# quorvane_test(FOLDER [DEPENDS TARGET...])
#
# FOLDER_test, made of every .cpp below tests/FOLDER, and one test for each TEST in it. It may have a
# main.cpp of its own. A test that hangs fails.
function(quorvane_test folder)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "DEPENDS")
  set(here "${PROJECT_SOURCE_DIR}/tests/${folder}")
  file(GLOB_RECURSE sources CONFIGURE_DEPENDS "${here}/*.h" "${here}/*.cpp")
  set(main GTest::gtest_main)
  if(EXISTS "${here}/main.cpp")
    set(main GTest::gtest)
  endif()
  quorvane_program(${folder}_test
    SOURCES ${sources}
    DEPENDS quorvane_${folder} ${arg_DEPENDS} ${main})
  set(headers <gtest/gtest.h>)
  if(folder STREQUAL ui)
    list(APPEND headers <QtWidgets>)
  endif()
  quorvane_precompile(${folder}_test ${headers})
  add_dependencies(suites ${folder}_test)
  gtest_discover_tests(${folder}_test
    TEST_PREFIX "${folder}/"
    DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 120)
endfunction()
