# quorvane_version_library()
#
# The library quorvane_version: version() and commit() of support/version.h. The commit is read at
# every build, but its source is only written if it changed. It is a library of its own, so that a
# new commit relinks only the programs that show it.
function(quorvane_version_library)
  set(source "${CMAKE_CURRENT_BINARY_DIR}/version.cpp")
  add_custom_target(quorvane_commit
    COMMAND "${CMAKE_COMMAND}"
      "-DSOURCE=${PROJECT_SOURCE_DIR}"
      "-DVERSION=${PROJECT_VERSION}"
      "-DTEMPLATE=${CMAKE_CURRENT_SOURCE_DIR}/version.cpp.in"
      "-DOUTPUT=${source}"
      -P "${PROJECT_SOURCE_DIR}/cmake/write_version.cmake"
    BYPRODUCTS "${source}"
    COMMENT "Looking up the commit"
    VERBATIM)
  add_library(quorvane_version STATIC "${source}")
  target_include_directories(quorvane_version PUBLIC "${PROJECT_SOURCE_DIR}")
  target_link_libraries(quorvane_version PRIVATE quorvane_flags)
  add_dependencies(quorvane_version quorvane_commit)
endfunction()
