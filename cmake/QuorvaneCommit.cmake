# quorvane_commit(SOURCE HASH TIME)
#
# Sets HASH to the first ten digits of the commit of the tree SOURCE, and TIME to its time in
# seconds since 1970. Both come from git in a checkout, and from commit.txt in a tree made by git
# archive. If neither is available, HASH is "unknown" and TIME is empty.
function(quorvane_commit source hash time)
  set(commit "")
  if(EXISTS "${source}/.git")
    execute_process(
      COMMAND git -C "${source}" log -1 --no-show-signature "--format=%H %ct"
      OUTPUT_VARIABLE commit
      OUTPUT_STRIP_TRAILING_WHITESPACE
      ERROR_QUIET)
  else()
    file(STRINGS "${source}/cmake/commit.txt" commit LIMIT_COUNT 1)
  endif()
  set(${hash} unknown PARENT_SCOPE)
  set(${time} "" PARENT_SCOPE)
  if(commit MATCHES "^([0-9a-f]+) ([0-9]+)$")
    string(SUBSTRING "${CMAKE_MATCH_1}" 0 10 short)
    set(${hash} "${short}" PARENT_SCOPE)
    set(${time} "${CMAKE_MATCH_2}" PARENT_SCOPE)
  endif()
endfunction()
